#include "diskimage/source_tree.h"

#include "diskimage/image_error.h"
#include "foundation/errors.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <limits>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace stowlark {
namespace {

using Action = PlatformError::Action;

/// The name of a folder's entry, and how the volume stores it where that is more than other bytes.
struct Name {
    std::string file;
    std::u16string stored; ///< empty if the name is plain ASCII, to save memory

    explicit Name(std::string name)
        : file(std::move(name)) {
        if (std::u16string whole = hfsName(file); !std::ranges::equal(whole, file)) {
            stored = std::move(whole);
        }
    }
    std::size_t size() const { return stored.empty() ? file.size() : stored.size(); }
    char16_t at(std::size_t i) const {
        return stored.empty() ? static_cast<unsigned char>(file[i]) : stored[i];
    }
    std::u16string whole() const {
        return stored.empty() ? std::u16string(file.begin(), file.end()) : stored;
    }
};

int compare(const Name &one, const Name &other) {
    const std::size_t both = std::min(one.size(), other.size());
    for (std::size_t i = 0; i < both; ++i) {
        if (one.at(i) != other.at(i)) {
            return one.at(i) < other.at(i) ? -1 : 1;
        }
    }
    return one.size() == other.size() ? 0 : one.size() < other.size() ? -1 : 1;
}

std::vector<Name> sortedNames(int folder, const Path &path) {
    std::vector<FolderEntry> entries;
    if (const int error = readFolder(folder, entries)) {
        throw PlatformError(Action::openFolder, path, error);
    }
    std::vector<Name> names;
    names.reserve(entries.size());
    for (FolderEntry &entry : entries) {
        names.emplace_back(std::move(entry.name));
    }
    std::ranges::sort(names, [](const Name &a, const Name &b) { return compare(a, b) < 0; });
    const auto twin =
        std::ranges::adjacent_find(names, [](const Name &a, const Name &b) { return compare(a, b) == 0; });
    if (twin != names.end()) {
        throw ImageError(
            QStringLiteral("A disk image can’t hold both of the items named “%1” in the folder “%2”, "
                           "which differ only in how their letters are composed.")
                .arg(displayText(twin->file), displayText(lastPathComponent(path))));
    }
    return names;
}

} // namespace

SourceTree::SourceTree(const Path &folder)
    : folder_(folder)
    , opened_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    struct stat info {};
    if (!opened_ || ::fstat(opened_.get(), &info) != 0) {
        throw PlatformError(Action::openFolder, folder, errno);
    }
    root_.numbers = {.id = hfs::rootFolder,
                     .parent = hfs::rootFolder - 1,
                     .mode = S_IFDIR | 0755, // a staging folder is this user's alone, a volume everybody's
                     .owner = info.st_uid,
                     .group = info.st_gid,
                     .modified = info.st_mtime};
    root_.path.assign(1, '.');
    addChildren(root_);
    ItemJournal::Cursor cursor(journal_);
    for (VolumeItem item; cursor.next(item);) {
        if (S_ISDIR(item.numbers.mode)) {
            addChildren(item);
            journal_.setCounts(cursor.offset(), item.numbers.children, item.numbers.folders);
        }
    }
}

Descriptor SourceTree::open(const VolumeItem &item) const {
    const auto [parent, name] = openParentBelow(opened_.get(), item.path);
    // Not blocking, should a FIFO have taken the file's place.
    return Descriptor(
        parent ? ::openat(parent.get(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC) : -1);
}

std::string SourceTree::linkTarget(const VolumeItem &item) const {
    const auto [parent, name] = openParentBelow(opened_.get(), item.path);
    std::string target(PATH_MAX, '\0');
    const ssize_t length =
        parent ? ::readlinkat(parent.get(), name.c_str(), target.data(), target.size()) : -1;
    target.resize(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    return target;
}

void SourceTree::addChildren(VolumeItem &parent) {
    const Descriptor folder = open(parent);
    if (!folder) {
        throw PlatformError(Action::openFolder, fullPath(parent), errno);
    }
    for (const Name &name : sortedNames(folder.get(), fullPath(parent))) {
        const VolumeItem item = makeItem(folder.get(), parent, name.whole(), name.file);
        const bool isFolder = S_ISDIR(item.numbers.mode);
        ++(isFolder ? folders_ : files_);
        parent.numbers.folders += isFolder ? 1 : 0;
        ++parent.numbers.children;
        journal_.append(item);
    }
}

VolumeItem SourceTree::makeItem(int folder, const VolumeItem &parent, std::u16string name,
                                const std::string &fileName) {
    VolumeItem item;
    item.path = parent.numbers.id == hfs::rootFolder ? fileName : parent.path + '/' + fileName;
    item.name = std::move(name);
    struct stat info {};
    if (::fstatat(folder, fileName.c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0) {
        throw PlatformError(Action::open, fullPath(item), errno);
    }
    const bool hasContents = S_ISREG(info.st_mode) || S_ISLNK(info.st_mode);
    if (!hasContents && !S_ISDIR(info.st_mode)) {
        throw PlatformError(Action::copy, fullPath(item),
                            QStringLiteral("it is neither a file, a folder nor a link"));
    }
    if (nextID_ == std::numeric_limits<std::uint32_t>::max()) {
        throw ImageError(QStringLiteral("A disk image can’t hold that many items."));
    }
    item.numbers = {.id = nextID_++,
                    .parent = parent.numbers.id,
                    .mode = info.st_mode,
                    .owner = info.st_uid,
                    .group = info.st_gid,
                    .modified = info.st_mtime,
                    .size = hasContents ? static_cast<std::uint64_t>(info.st_size) : 0,
                    .block = contentBlocks_};
    contentBlocks_ += blocksFor(item.numbers.size);
    return item;
}

} // namespace stowlark
