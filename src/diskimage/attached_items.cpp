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
        if (!openParent(slash == std::string::npos ? std::string() : path.substr(0, slash))) {
            return errno == ENOENT;
        }
        const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
        return ::unlinkat(parent_.get(), name.c_str(), isFolder ? AT_REMOVEDIR : 0) == 0 || errno == ENOENT;
    }

private:
    /// Step by step, so that no link is followed. On failure errno tells why.
    bool openParent(const std::string &path) {
        if (parent_ && path == parentPath_) {
            return true;
        }
        parentPath_ = path;
        parent_ = openFolderToChange(root_.get(), ".");
        for (std::size_t begin = 0; parent_ && begin < path.size();) {
            const std::size_t end = std::min(path.find('/', begin), path.size());
            const std::string name = path.substr(begin, end - begin);
            if (name == "..") {
                errno = EINVAL;
                parent_ = Descriptor();
            } else {
                parent_ = openFolderToChange(parent_.get(), name.c_str());
            }
            begin = end + 1;
        }
        return static_cast<bool>(parent_);
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
    list.commit(NewFile::Existing::replace);
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
    if (!removal.remove(listName)) {
        throw PlatformError(PlatformError::Action::remove, mountPoint / listName, errno);
    }
}

} // namespace stowlark
