#include "diskimage/attached_items.h"

#include "diskimage/image_error.h"
#include "diskimage/new_file.h"
#include "foundation/descriptor.h"
#include "foundation/temporary_file.h"

#include <QByteArray>
#include <QByteArrayList>

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace stowlark {
namespace {

constexpr auto listName = ".stowlark-attached";

/// Opens a folder to change what it holds, following no link.
Descriptor openToChange(int folder, const std::string &name) {
    struct stat info {};
    Descriptor opened = openFolder(folder, name.c_str());
    if (!opened && errno == EACCES && ::fstatat(folder, name.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0 &&
        S_ISDIR(info.st_mode) && ::fchmodat(folder, name.c_str(), 0700, 0) == 0) {
        opened = openFolder(folder, name.c_str());
    }
    if (opened && ::fstat(opened.get(), &info) == 0 && (info.st_mode & 0700) != 0700) {
        ::fchmod(opened.get(), 0700);
    }
    return opened;
}

/// Removes items below a folder. It keeps the folder open that it removed from last.
class Removal {
public:
    explicit Removal(Descriptor root)
        : root_(std::move(root)) {}

    /// `path` is relative, that of a folder ends in a slash. Returns false if the item is still there.
    bool remove(std::string path) {
        const bool isFolder = path.ends_with('/');
        path.resize(path.size() - (isFolder ? 1 : 0));
        const auto slash = path.rfind('/');
        openParent(slash == std::string::npos ? std::string() : path.substr(0, slash));
        const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
        return parent_ &&
               (::unlinkat(parent_.get(), name.c_str(), isFolder ? AT_REMOVEDIR : 0) == 0 || errno == ENOENT);
    }

private:
    void openParent(const std::string &path) {
        if (parent_ && path == parentPath_) {
            return;
        }
        parentPath_ = path;
        parent_ = openToChange(root_.get(), ".");
        for (std::size_t begin = 0; parent_ && begin < path.size();) {
            const std::size_t end = std::min(path.find('/', begin), path.size());
            const std::string name = path.substr(begin, end - begin);
            parent_ = name == ".." ? Descriptor() : openToChange(parent_.get(), name);
            begin = end + 1;
        }
    }

    Descriptor root_;
    Descriptor parent_;
    std::string parentPath_;
};

} // namespace

void listAttached(const AttachedItems &items, const Path &mountPoint) {
    NewFile list(mountPoint / listName);
    for (const std::string &item : items) {
        const Bytes line(item.c_str(), item.c_str() + item.size() + 1);
        list.write(line);
    }
    list.commit(NewFile::Existing::keep);
}

void removeAttached(const Path &mountPoint) {
    Descriptor root = openFolder(AT_FDCWD, mountPoint.c_str());
    if (!root) {
        throw PlatformError(PlatformError::Action::openFolder, mountPoint, errno);
    }
    const Descriptor list(::openat(root.get(), listName, O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    if (!list) {
        throw ImageError(QStringLiteral("No disk image is attached at “%1”.")
                             .arg(displayText(lastPathComponent(mountPoint))));
    }
    const QByteArrayList items = wholeContents(list.get()).split('\0');
    Removal removal(std::move(root));
    bool isEmpty = true;
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
        const std::string path = item->toStdString();
        isEmpty = (path.empty() || removal.remove(path)) && isEmpty;
    }
    if (!isEmpty) {
        throw ImageError(QStringLiteral("Something that isn’t part of the disk image was left at “%1”.")
                             .arg(displayText(lastPathComponent(mountPoint))));
    }
    removal.remove(listName);
}

} // namespace stowlark
