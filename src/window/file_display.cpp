#include "window/file_display.h"

#include "foundation/byte_count.h"

#include <sys/stat.h>

namespace stowlark {

bool isFolder(const Path &file) {
    struct stat info {};
    return ::stat(file.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

std::optional<qint64> attributeSize(const Path &file) {
    struct stat info {};
    if (::lstat(file.c_str(), &info) != 0) {
        return std::nullopt;
    }
    return info.st_size;
}

std::optional<QString> fileSize(const Path &file) {
    if (isFolder(file)) {
        return std::nullopt;
    }
    const auto size = attributeSize(file);
    return size ? std::optional(byteCountText(*size)) : std::nullopt;
}

} // namespace stowlark
