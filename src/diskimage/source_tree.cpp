#include "diskimage/source_tree.h"

#include "diskimage/hfs_values.h"
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

/// Opens the folder that holds the item at `path`, in steps where the path is longer than the system takes at
/// once, and cuts `path` down to what is left of it: a path relative to that folder. `folder` if it is short.
Descriptor openLongParent(int folder, std::string_view &path) {
    Descriptor reached;
    while (path.size() >= PATH_MAX) {
        const auto slash = path.rfind('/', PATH_MAX - 1);
        reached = openFolder(reached ? reached.get() : folder, std::string(path.substr(0, slash)).c_str());
        if (!reached) {
            break;
        }
        path.remove_prefix(slash + 1);
    }
    return reached;
}

/// What the entries of a folder will be called in the volume, and are called here, sorted by the former.
using Names = std::vector<std::pair<std::u16string, std::string>>;

Names sortedNames(int folder, const Path &path) {
    std::vector<FolderEntry> entries;
    if (const int error = readFolder(folder, entries)) {
        throw PlatformError(Action::openFolder, path, error);
    }
    Names names;
    names.reserve(entries.size());
    for (FolderEntry &entry : entries) {
        names.emplace_back(hfsName(entry.name), std::move(entry.name));
    }
    std::ranges::sort(names);
    const auto twin = std::ranges::adjacent_find(names, {}, &Names::value_type::first);
    if (twin != names.end()) {
        throw ImageError(
            QStringLiteral("A disk image can’t hold both of the items named “%1” in the folder “%2”, "
                           "which differ only in how their letters are composed.")
                .arg(displayText(twin->second), displayText(lastPathComponent(path))));
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
    root_.numbers = {.id = rootFolderID,
                     .parent = rootFolderID - 1,
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
    std::string_view rest = item.path;
    const Descriptor parent = openLongParent(opened_.get(), rest);
    // Not blocking, should a FIFO have taken the file's place.
    return Descriptor(::openat(parent ? parent.get() : opened_.get(), std::string(rest).c_str(),
                               O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
}

std::string SourceTree::linkTarget(const VolumeItem &item) const {
    std::string_view rest = item.path;
    const Descriptor parent = openLongParent(opened_.get(), rest);
    std::string target(PATH_MAX, '\0');
    const ssize_t length = ::readlinkat(parent ? parent.get() : opened_.get(), std::string(rest).c_str(),
                                        target.data(), target.size());
    target.resize(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    return target;
}

void SourceTree::addChildren(VolumeItem &parent) {
    const Descriptor folder = open(parent);
    if (!folder) {
        throw PlatformError(Action::openFolder, fullPath(parent), errno);
    }
    for (auto &[name, fileName] : sortedNames(folder.get(), fullPath(parent))) {
        const VolumeItem item = makeItem(folder.get(), parent, std::move(name), fileName);
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
    item.path = parent.numbers.id == rootFolderID ? fileName : parent.path + '/' + fileName;
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
