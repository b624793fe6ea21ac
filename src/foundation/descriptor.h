#pragma once

#include "foundation/path_name.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace stowlark {

/// An open file descriptor that it owns and closes; -1 holds none.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int fd)
        : fd_(fd) {}
    Descriptor(Descriptor &&other) noexcept
        : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor &operator=(Descriptor &&other) noexcept {
        std::swap(fd_, other.fd_);
        return *this;
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor();

    int get() const { return fd_; }
    explicit operator bool() const { return fd_ >= 0; }

private:
    int fd_ = -1;
};

/// Opens a folder for reading, by a path relative to `folder`. The last component is not followed if it is a
/// link. On failure it holds none and errno tells why.
Descriptor openFolder(int folder, const char *name);

/// The same, after it has let this user write to the folder if that was not so.
Descriptor openFolderToChange(int folder, const char *name);

/// Opens the folder `path`, relative to `folder`, also where that is longer than the system takes at once. No
/// component is followed if it is a link, as another user may put one in a folder's place.
Descriptor openFolderBelow(int folder, std::string_view path);

/// The folder that holds the item `path`, opened so, and the item's name there.
std::pair<Descriptor, std::string> openParentBelow(int folder, std::string_view path);

struct FolderEntry {
    std::string name;
    bool isFolder;
};

/// The entries of an open folder but "." and "..", in the system's order, hidden ones included. Reads from
/// the start, once for each open folder. Returns errno, 0 on success.
int readFolder(int folder, std::vector<FolderEntry> &entries);

/// The names that the folder at `path` holds, likewise. Throws PlatformError.
std::vector<std::string> namesIn(const Path &path);

} // namespace stowlark
