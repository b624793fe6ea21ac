#include "diskimage/bytes.h"
#include "diskimage/create.h"
#include "diskimage/hfs_values.h"
#include "diskimage/put_right.h"
#include "diskimage/udif_values.h"
#include "diskimage/unpack.h"
#include "foundation/remove_item.h"
#include "fuzz/fuzz_input.h"

#include <QTemporaryDir>

#include <fstream>

using namespace stowlark;

namespace {

void write(const Path &file, const QByteArray &bytes) {
    std::ofstream(file, std::ios::binary).write(bytes.data(), bytes.size());
}

QByteArray asBytes(const Bytes &bytes) {
    return {reinterpret_cast<const char *>(bytes.data()),
            static_cast<qsizetype>(bytes.size())}; // NOLINT: bytes
}

/// An image of one partition that holds these bytes as they are, so that no compression is in the way.
QByteArray imageAround(QByteArray volume) {
    volume.append(QByteArray((512 - volume.size() % 512) % 512, '\0'));
    const auto size = static_cast<std::uint64_t>(volume.size());
    Bytes table;
    BigEndian(table).ascii("mish").u32(1).u64(0).u64(size / udif::sectorSize).zeros(176).u32(1);
    BigEndian(table).u32(udif::raw).u32(0).u64(0).u64(size / udif::sectorSize).u64(0).u64(size);
    const QByteArray list = "<plist><dict><key>resource-fork</key><dict><key>blkx</key><array><dict>"
                            "<key>Data</key><data>" +
                            asBytes(table).toBase64() + "</data></dict></array></dict></dict></plist>";
    Bytes trailer;
    BigEndian(trailer).ascii("koly").zeros(56).u32(1).zeros(152);
    BigEndian(trailer).u64(size).u64(static_cast<std::uint64_t>(list.size())).zeros(280);
    return volume + list + asBytes(trailer);
}

/// Whatever the image says, what is there afterwards is what was reported, and nothing else came about.
void unpack(const Path &home) {
    const Path folder = home / "mounted";
    std::filesystem::create_directory(folder);
    try {
        AttachedItems made = unpackVolume(home / "image", folder);
        AttachedItems there = everythingIn(folder);
        std::ranges::sort(made);
        std::ranges::sort(there);
        REQUIRE(made == there);
    } catch (const LocalizedError &error) {
        REQUIRE(!error.errorDescription().isEmpty());
    } catch (const UnsupportedImage &) {
    }
    REQUIRE(removeOwnFolder(folder));
    REQUIRE(std::distance(std::filesystem::directory_iterator(home), {}) <= 2); // the image, and a source
}

/// A folder with files of these names and contents, into an image and back.
void roundTrip(FuzzInput input, const Path &home) {
    const Path source = home / "source";
    std::filesystem::create_directory(source);
    for (int i = 0; i < 40; ++i) {
        const std::string name = input.text().left(250).replace('/', ':').toStdString();
        const QByteArray contents = input.text();
        if (!name.empty() && name != "." && name != "..") {
            write(source / name, contents.repeated(1 + contents.size() % 70));
        }
    }
    try {
        createImage({.volumeName = "v", .sourceFolder = source, .overwrite = true, .image = home / "image"});
        std::filesystem::create_directory(home / "mounted");
        unpackVolume(home / "image", home / "mounted");
        REQUIRE(everythingIn(home / "mounted").size() == everythingIn(source).size());
        for (const std::string &item : everythingIn(source)) {
            std::ifstream in(source / item, std::ios::binary);
            std::ifstream out(home / "mounted" / fileName(hfsName(item)), std::ios::binary);
            REQUIRE(out && std::equal(std::istreambuf_iterator(in), {}, std::istreambuf_iterator(out), {}));
        }
        REQUIRE(removeOwnFolder(home / "mounted"));
    } catch (const ImageError &error) { // names that a volume cannot hold
        REQUIRE(error.errorDescription().contains(u"disk image"));
    }
    REQUIRE(removeOwnFolder(source));
}

} // namespace

/// The first byte tells what the others are: an image, a volume, or names and contents.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const QTemporaryDir home;
    const Path folder = home.path().toStdString();
    FuzzInput input(data, size);
    const std::uint8_t kind = input.byte();
    if (kind == 'n') {
        roundTrip(input, folder);
        return 0;
    }
    write(folder / "image", kind == 'i' ? input.rest() : imageAround(input.rest()));
    unpack(folder);
    return 0;
}
