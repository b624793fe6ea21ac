#include "foundation/descriptor.h"

#include "foundation/errors.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#ifdef __linux__
#include <linux/openat2.h>
#include <sys/syscall.h>
#endif
#include <unistd.h>

namespace stowlark {
namespace {

/// `path` is relative and shorter than PATH_MAX.
Descriptor openWithoutLinks(int folder, const std::string &path) {
#ifdef __linux__
    open_how how{};
    how.flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
    how.resolve = RESOLVE_NO_SYMLINKS;
    const long fd = ::syscall(SYS_openat2, folder, path.c_str(), &how, sizeof how);
    if (fd >= 0 || (errno != ENOSYS && errno != EPERM)) { // old systems, and filters that do not know it
        return Descriptor(static_cast<int>(fd));
    }
#endif
    Descriptor reached = openFolder(folder, ".");
    for (const Path &name : Path(path)) {
        if (reached && !name.empty()) {
            reached = openFolder(reached.get(), name.c_str());
        }
    }
    return reached;
}

} // namespace

Descriptor::~Descriptor() {
    if (fd_ >= 0) {
        ::close(fd_);
    }
}

Descriptor openFolder(int folder, const char *name) {
    return Descriptor(::openat(folder, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

Descriptor openFolderToChange(int folder, const char *name) {
    struct stat info {};
    Descriptor opened = openFolder(folder, name);
    if (!opened && errno == EACCES && ::fstatat(folder, name, &info, AT_SYMLINK_NOFOLLOW) == 0 &&
        S_ISDIR(info.st_mode) && ::fchmodat(folder, name, 0700, 0) == 0) {
        opened = openFolder(folder, name);
    }
    if (opened && ::fstat(opened.get(), &info) == 0 && (info.st_mode & 0700) != 0700) {
        ::fchmod(opened.get(), 0700);
    }
    return opened;
}

Descriptor openFolderBelow(int folder, std::string_view path) {
    Descriptor reached;
    while (path.size() >= PATH_MAX) {
        const auto slash = path.rfind('/', PATH_MAX - 1);
        reached = openWithoutLinks(reached ? reached.get() : folder, std::string(path.substr(0, slash)));
        if (!reached) {
            return reached;
        }
        path.remove_prefix(slash + 1);
    }
    return openWithoutLinks(reached ? reached.get() : folder, std::string(path));
}

std::pair<Descriptor, std::string> openParentBelow(int folder, std::string_view path) {
    const auto slash = path.rfind('/');
    if (slash == std::string_view::npos) {
        return {openFolder(folder, "."), std::string(path)};
    }
    return {openFolderBelow(folder, path.substr(0, slash)), std::string(path.substr(slash + 1))};
}

int readFolder(int folder, std::vector<FolderEntry> &entries) {
    // The stream takes over the descriptor it is given, so it gets one of its own.
    const int fd = ::fcntl(folder, F_DUPFD_CLOEXEC, 0);
    const std::unique_ptr<DIR, int (*)(DIR *)> stream(fd < 0 ? nullptr : ::fdopendir(fd), &::closedir);
    if (!stream) {
        const int error = errno;
        if (fd >= 0) {
            ::close(fd);
        }
        return error;
    }
    while (true) {
        errno = 0;
        const dirent *entry = ::readdir(stream.get()); // NOLINT(concurrency-mt-unsafe): a stream of its own
        if (entry == nullptr) {
            return errno;
        }
        const std::string name = entry->d_name;
        if (name == "." || name == "..") {
            continue;
        }
        bool isFolder = entry->d_type == DT_DIR;
        if (entry->d_type == DT_UNKNOWN) {
            struct stat info {};
            isFolder =
                ::fstatat(folder, name.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(info.st_mode);
        }
        entries.push_back({name, isFolder});
    }
}

std::vector<std::string> namesIn(const Path &path) {
    const Descriptor folder = openFolder(AT_FDCWD, path.c_str());
    std::vector<FolderEntry> entries;
    const int error = folder ? readFolder(folder.get(), entries) : errno;
    if (error != 0) {
        throw PlatformError(PlatformError::Action::openFolder, path, error);
    }
    std::vector<std::string> names(entries.size());
    std::ranges::transform(entries, names.begin(), [](FolderEntry &entry) { return std::move(entry.name); });
    return names;
}

} // namespace stowlark
