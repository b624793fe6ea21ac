#include "tour/compare.h"

#include "support/snapshot.h"

namespace stowlark {

std::uintmax_t totalSize(const Path &item) {
    if (!std::filesystem::is_directory(item)) {
        return std::filesystem::file_size(item);
    }
    std::uintmax_t size = 0;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(item)) {
        size += entry.is_regular_file() ? entry.file_size() : 0;
    }
    return size;
}

std::string differences(const std::vector<Path> &originals, const Path &folder) {
    std::string text;
    for (const Path &original : originals) {
        const SnapshotOptions options{.times = false};
        text += difference(snapshot(original, options), snapshot(folder / original.filename(), options))
                    .toStdString();
    }
    const auto entries = std::distance(std::filesystem::directory_iterator(folder), {});
    if (entries != static_cast<std::ptrdiff_t>(originals.size())) {
        text += "there are " + std::to_string(entries) + " items\n";
    }
    return text;
}

} // namespace stowlark
