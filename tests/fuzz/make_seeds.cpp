#include "diskimage/create.h"
#include "diskimage/volume.h"

#include <QTemporaryDir>

#include <fstream>
#include <iostream>

using namespace stowlark;

namespace {

class Buffer final : public Volume::Sink {
public:
    std::span<std::uint8_t> room() override { return room_; }
    void advance(std::size_t filled) override { bytes.append(room_.begin(), room_.begin() + filled); }
    std::string bytes;

private:
    std::array<std::uint8_t, 4096> room_{};
};

void write(const Path &file, std::string_view bytes) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
}

std::string contentsOf(const Path &file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator(stream), {}};
}

void writeImages(const Path &seeds) {
    const QTemporaryDir home;
    const Path source = Path(home.path().toStdString()) / "source";
    write(source / "folder/e\u0301", "text");
    write(source / "file", std::string(5000, 'x') + std::string(5000, '\0'));
    std::filesystem::create_symlink("folder/nowhere", source / "link");
    for (const auto method : {Compression::Method::zlib, Compression::Method::bzip2}) {
        const Path image = Path(home.path().toStdString()) / "image";
        createImage({.volumeName = "v",
                     .sourceFolder = source,
                     .overwrite = true,
                     .compression = {.method = method},
                     .image = image});
        write(seeds / (method == Compression::Method::zlib ? "zlib" : "bzip2"), 'i' + contentsOf(image));
    }
    Buffer buffer;
    Volume(SourceTree(source), u"v", {}).write(buffer);
    write(seeds / "volume", 'v' + buffer.bytes);
    write(seeds / "names", std::string("na\0text\0b:c\0\0e\xCC\x81\0zz", 20));
}

} // namespace

/// Writes what the fuzzers begin with into a folder for each of them.
int main(int, char **argv) {
    const Path seeds = argv[1];
    write(seeds / "version/1", std::string("1.2.10\0+1.2\0v1.-2.3b", 20));
    write(seeds / "version/2", std::string("9223372036854775808.1\0"
                                           "2..0\0",
                                           27));
    write(seeds / "feed/1", R"({"version": "2.0", "releaseNotes": "a\nb \u00e9 \uD83D\uDE00", "downloadURL":
        "https://stowlark.example/x", "releaseDate": null, "more": [1, -2.5e3, true, {"a": {}}]})");
    write(seeds / "names/1",
          std::string(18, '\x7f') + "file:///a%20b/c%FF.tar.gz\r\n# x\r\nfile://localhost/d/\n");
    write(seeds / "names/2", std::string(18, '\1') + ".tar.bz2 \u212A");
    writeImages(seeds / "image");
    return 0;
}
