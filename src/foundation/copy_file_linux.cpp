#include "foundation/copy_file.h"

#include "foundation/descriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>
#include <string>
#include <vector>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace stowlark {
namespace {

constexpr off_t smallFile = 128 << 10;
constexpr std::size_t bufferSize = 256 << 10;

char *buffer() {
    thread_local std::vector<char> memory(bufferSize);
    return memory.data();
}

int writeAll(int target, const char *bytes, std::size_t count, off_t offset) {
    while (count > 0) {
        const ssize_t written = ::pwrite(target, bytes, count, offset);
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            return errno;
        }
        bytes += written;
        offset += written;
        count -= static_cast<std::size_t>(written);
    }
    return 0;
}

/// Copies [begin, end), or less where the source ends before.
int copyThroughMemory(int source, int target, off_t begin, off_t end) {
    while (begin < end) {
        const auto wanted = std::min(bufferSize, static_cast<std::size_t>(end - begin));
        const ssize_t count = ::pread(source, buffer(), wanted, begin);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return errno;
        }
        if (count == 0) {
            return 0;
        }
        if (const int error = writeAll(target, buffer(), static_cast<std::size_t>(count), begin)) {
            return error;
        }
        begin += count;
    }
    return 0;
}

/// The same, in the kernel where it can.
int copyRange(int source, int target, off_t begin, off_t end) {
    off_t out = begin;
    while (begin < end) {
        const ssize_t count =
            ::copy_file_range(source, &begin, target, &out, static_cast<std::size_t>(end - begin), 0);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0 && (errno == ENOSPC || errno == EDQUOT || errno == EIO || errno == EFBIG)) {
            return errno;
        }
        if (count <= 0) {
            return copyThroughMemory(source, target, begin, end);
        }
    }
    return 0;
}

int copyDataBetweenHoles(int source, int target, off_t size) {
    off_t begin = 0;
    while (begin < size) {
        begin = ::lseek(source, begin, SEEK_DATA);
        if (begin < 0) {
            if (errno == ENXIO) {
                break; // only a hole is left
            }
            return errno;
        }
        const off_t end = ::lseek(source, begin, SEEK_HOLE);
        if (end < 0) {
            return errno;
        }
        if (const int error = copyRange(source, target, begin, std::min(end, size))) {
            return error;
        }
        begin = end;
    }
    return ::ftruncate(target, size) == 0 ? 0 : errno;
}

int copyContents(int source, const struct stat &info, int target) {
    const bool hasHoles = info.st_blocks * 512 < info.st_size;
    if (info.st_size <= smallFile && !hasHoles) {
        // A size of 0 may be that of a file the system makes up as it is read.
        const off_t end = info.st_size > 0 ? info.st_size : std::numeric_limits<off_t>::max();
        return copyThroughMemory(source, target, 0, end);
    }
    if (::ioctl(target, FICLONE, source) == 0) {
        return 0;
    }
    return hasHoles ? copyDataBetweenHoles(source, target, info.st_size)
                    : copyRange(source, target, 0, info.st_size);
}

/// Attributes that the target's file system or the user's rights do not allow are left out.
int copyExtendedAttributes(int source, int target) {
    const ssize_t size = ::flistxattr(source, nullptr, 0);
    if (size <= 0) {
        return 0;
    }
    std::string names(static_cast<std::size_t>(size), '\0');
    const ssize_t listed = ::flistxattr(source, names.data(), names.size());
    names.resize(listed > 0 ? static_cast<std::size_t>(listed) : 0);
    std::vector<char> value;
    for (std::size_t at = 0; at < names.size(); at += std::string_view(names.c_str() + at).size() + 1) {
        const char *name = names.c_str() + at;
        const ssize_t length = ::fgetxattr(source, name, nullptr, 0);
        if (length < 0) {
            continue;
        }
        value.resize(static_cast<std::size_t>(length));
        const ssize_t got = ::fgetxattr(source, name, value.data(), value.size());
        if (got >= 0 && ::fsetxattr(target, name, value.data(), static_cast<std::size_t>(got), 0) != 0 &&
            (errno == ENOSPC || errno == EDQUOT)) {
            return errno;
        }
    }
    return 0;
}

int copyMetadata(int source, const struct stat &info, int target) {
    if (const int error = copyExtendedAttributes(source, target)) {
        return error;
    }
    const std::array<timespec, 2> times{info.st_atim, info.st_mtim};
    if (::fchmod(target, info.st_mode & 07777) != 0 || ::futimens(target, times.data()) != 0) {
        return errno;
    }
    return 0;
}

} // namespace

int copyFile(int source, const struct stat &info, int folder, const char *name) {
    const Descriptor target(::openat(folder, name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!target) {
        return errno;
    }
    if (const int error = copyContents(source, info, target.get())) {
        return error;
    }
    return copyMetadata(source, info, target.get());
}

int copyFolderMetadata(int source, const struct stat &info, int target) {
    return copyMetadata(source, info, target);
}

} // namespace stowlark
