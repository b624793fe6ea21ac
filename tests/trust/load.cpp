// Creates and extracts large archives in every format whose tool is there, each in a process of its own, and
// prints a line each: what came back, and how much memory this program took at most. Arguments: --long for
// the full size, and the names of formats if not all are wanted.

#include "foundation/remove_item.h"
#include "support/operations.h"
#include "support/test_folder.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <fstream>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace stowlark;

namespace {

constexpr off_t megabyte = 1 << 20;

/// How much more memory a load may take than one small file does: some, and some for each item dropped.
constexpr long allowance = 8 * 1024; // KB
constexpr long perItem = 1;          // KB
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool isInstrumented = true; // and takes memory of its own
#else
constexpr bool isInstrumented = false;
#endif

/// What a folder holds, in figures that do not depend on the order of its items.
struct Contents {
    std::size_t files = 0;
    off_t bytes = 0;
    std::size_t checksum = 0;

    bool operator==(const Contents &) const = default;
};

void add(Contents &contents, const Path &file) {
    std::ifstream stream(file, std::ios::binary);
    static std::vector<char> block(megabyte);
    std::size_t checksum = 0;
    while (stream.read(block.data(), megabyte) || stream.gcount() > 0) {
        const std::string_view part(block.data(), static_cast<std::size_t>(stream.gcount()));
        checksum = checksum * 31 + std::hash<std::string_view>{}(part);
        contents.bytes += stream.gcount();
    }
    contents.checksum += checksum;
    ++contents.files;
}

/// Follows no links.
Contents contentsOf(const std::vector<Path> &items) {
    Contents contents;
    for (const Path &item : items) {
        if (!std::filesystem::is_directory(std::filesystem::symlink_status(item))) {
            add(contents, item);
            continue;
        }
        for (const auto &entry : std::filesystem::recursive_directory_iterator(item)) {
            if (entry.is_regular_file() && !entry.is_symlink()) {
                add(contents, entry.path());
            }
        }
    }
    return contents;
}

struct Load {
    const char *name;
    std::vector<Path> items;
    off_t room = 0;            ///< on the disk for one format, in bytes
    bool mayBeRefused = false; ///< some tools have limits of their own
};

/// The loads, small ones or those of the `full` size, with their files.
std::vector<Load> makeLoads(const TestFolder &folder, bool full) {
    std::vector<Load> loads;
    const Path one = folder.write("one/file", someText(1000));
    loads.push_back({"one file", {one}});

    const int many = full ? 100'000 : 2'000;
    for (int i = 0; i < many; ++i) {
        folder.write(Path("in") / std::to_string(i % 100) / std::to_string(i), someText(1000, i));
    }
    loads.push_back({full ? "100,000 files" : "2,000 files", {folder.path() / "in"}, many * 20'000L});

    const off_t size = full ? 20'480 * megabyte : 200 * megabyte;
    const Path sparse = folder.write("sparse", "begin");
    std::filesystem::resize_file(sparse, static_cast<std::uintmax_t>(size) - 3);
    std::ofstream(sparse, std::ios::app) << "end";
    loads.push_back({full ? "20 GB, sparse" : "200 MB, sparse", {sparse}, size + size / 10});

    std::string deep = "deep";
    while (folder.path().native().size() + deep.size() < 3'870) {
        deep += "/one folder in another";
    }
    deep.resize(3'900 - folder.path().native().size() - sizeof "/f", 'x');
    folder.write(deep + "/f", "at the bottom");
    loads.push_back({"3,900 bytes deep", {folder.path() / "deep"}, 0, true});

    Load items{full ? "4,000 items" : "500 items", {}};
    for (int i = 0; i < (full ? 4'000 : 500); ++i) { // every two of the same name
        items.items.push_back(folder.write(
            Path("items") / std::to_string(i % 2) / (std::to_string(i / 2) + ".txt"), someText(1000, i)));
    }
    loads.push_back(items);
    return loads;
}

/// The most memory that this process or, of its children, the largest has used, in KB.
long peak(int who) {
    rusage usage{};
    ::getrusage(who, &usage);
#ifdef __APPLE__
    return usage.ru_maxrss / 1024;
#else
    return usage.ru_maxrss;
#endif
}

struct Result {
    std::array<char, 200> text{};
    long peak = 0;
    long peakOfTools = 0;
    bool kept = false; ///< all came back, or where a tool has its limits, it said so
};

Result run(const TestFolder &folder, const Load &load, const InstalledFormat &format) {
    const Path archive = folder.path() / "made" / format.archive;
    std::filesystem::create_directory(archive.parent_path());
    ArchiveManager manager;
    QElapsedTimer timer;
    timer.start();
    create(manager, load.items, archive, format.format, CompressionLevel::fast);
    if (!manager.statusIsError()) {
        extract(manager, archive, archive.parent_path());
    }
    const double seconds = static_cast<double>(timer.elapsed()) / 1000;
    Result result{.peak = peak(RUSAGE_SELF), .peakOfTools = peak(RUSAGE_CHILDREN)};
    std::string outcome;
    if (manager.statusIsError()) {
        outcome = "refused: " + manager.statusMessage().section(u'\n', -1).toStdString();
        result.kept = load.mayBeRefused && !manager.statusMessage().isEmpty();
    } else {
        const Contents found = contentsOf({path(manager.lastOutputURL())});
        outcome = std::to_string(found.files) + " files, " + std::to_string(found.bytes) + " bytes";
        result.kept = found == contentsOf(load.items);
    }
    result.kept = result.kept && folder.temporaryItems().empty();
    std::snprintf(result.text.data(), result.text.size(), "%7.1f s  %s", seconds, outcome.c_str());
    removeOwnFolder(archive.parent_path());
    return result;
}

/// In a process of its own, so that the peaks are those of this run.
Result runApart(const TestFolder &folder, const Load &load, const InstalledFormat &format) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) {
        return {};
    }
    const pid_t child = ::fork();
    if (child == 0) {
        int count = 1;
        std::string name = "stowlark_load";
        char *arguments = name.data();
        const QCoreApplication application(count, &arguments);
        const Result result = run(folder, load, format);
        const bool told = ::write(ends[1], &result, sizeof result) == sizeof result;
        ::_exit(told ? 0 : 1);
    }
    ::close(ends[1]);
    Result result;
    const bool told = ::read(ends[0], &result, sizeof result) == sizeof result;
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    return told && status == 0 ? result : Result{.text = {"crashed"}};
}

} // namespace

int main(int argc, char **argv) {
    const std::vector<std::string_view> words(argv + 1, argv + argc);
    const bool full = !words.empty() && words.front() == "--long";
    const TestFolder folder;
    const std::vector<Load> loads = makeLoads(folder, full);
    std::printf("%-18s %-7s %12s %12s %9s\n", "", "", "program, MB", "tools, MB", "time");
    bool allKept = true;
    for (const InstalledFormat &format : installedFormats()) {
        if (words.size() > (full ? 1U : 0U) && std::ranges::find(words, format.name) == words.end()) {
            continue;
        }
        long least = 0;
        for (const Load &load : loads) {
            if (std::filesystem::space(folder.path()).available < static_cast<std::uintmax_t>(load.room)) {
                std::printf("%-18s %-7s left out: the disk has no room for it\n", load.name, format.name);
                continue;
            }
            const Result result = runApart(folder, load, format);
            least = least == 0 ? result.peak : least;
            const bool inBounds =
                isInstrumented ||
                result.peak <= least + allowance + static_cast<long>(load.items.size()) * perItem;
            std::printf("%-18s %-7s %12.1f %12.1f %s%s%s\n", load.name, format.name,
                        static_cast<double>(result.peak) / 1024,
                        static_cast<double>(result.peakOfTools) / 1024, result.text.data(),
                        result.kept ? "" : "  LOST", inBounds ? "" : "  GREW");
            std::fflush(stdout);
            allKept = allKept && result.kept && inBounds;
        }
    }
    return allKept ? 0 : 1;
}
