#include "diskimage/free_space.h"

#include "diskimage/image_error.h"

#include <sys/statvfs.h>

namespace stowlark {

void requireSpace(std::uint64_t bytes, const Path &folder) {
    struct statvfs info {};
    if (::statvfs(folder.c_str(), &info) == 0 && bytes / info.f_frsize > info.f_bavail) {
        throw ImageError(QStringLiteral("There isn’t enough space to unpack the disk image."));
    }
}

} // namespace stowlark
