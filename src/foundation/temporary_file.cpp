#include "foundation/temporary_file.h"

#include "foundation/errors.h"
#include "foundation/file_url.h"

#include <cerrno>
#include <cstdlib>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace stowlark {

Descriptor unlinkedTemporaryFile(int flags) {
    std::string name = (temporaryDirectory() / "stowlark-XXXXXX").native();
    std::error_code ignored; // if it cannot be made, neither can the file
    std::filesystem::create_directories(temporaryDirectory(), ignored);
    Descriptor file(::mkostemp(name.data(), flags | O_CLOEXEC));
    if (!file) {
        throw PlatformError(PlatformError::Action::openFolder, temporaryDirectory(), errno);
    }
    ::unlink(name.c_str());
    return file;
}

QByteArray wholeContents(int file) {
    struct stat info {};
    if (::fstat(file, &info) != 0) {
        return {};
    }
    QByteArray bytes(static_cast<qsizetype>(info.st_size), Qt::Uninitialized);
    qsizetype length = 0;
    while (length < bytes.size()) {
        const ssize_t count =
            ::pread(file, bytes.data() + length, static_cast<std::size_t>(bytes.size() - length), length);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            break;
        }
        length += count;
    }
    bytes.truncate(length);
    return bytes;
}

} // namespace stowlark
