#include "foundation/temporary_file.h"

#include "foundation/errors.h"
#include "foundation/file_url.h"

#include <cerrno>
#include <cstdlib>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace stowlark {
namespace {

constexpr off_t shownHalf = 3 << 20; // bytes
constexpr int longestRest = 3;       // bytes of a character after its first

off_t sizeOf(int file) {
    struct stat info {};
    return ::fstat(file, &info) == 0 ? info.st_size : 0;
}

QByteArray contents(int file, off_t from, off_t size) {
    QByteArray bytes(static_cast<qsizetype>(size), Qt::Uninitialized);
    qsizetype length = 0;
    while (length < bytes.size()) {
        const ssize_t count = ::pread(file, bytes.data() + length,
                                      static_cast<std::size_t>(bytes.size() - length), from + length);
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

/// In UTF-8.
bool continuesCharacter(char byte) {
    return (byte & 0xC0) == 0x80;
}

} // namespace

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
    return contents(file, 0, sizeOf(file));
}

QByteArray shownContents(int file) {
    const off_t size = sizeOf(file);
    if (size <= 2 * shownHalf) {
        return wholeContents(file);
    }
    QByteArray begin = contents(file, 0, shownHalf);
    QByteArray end = contents(file, size - shownHalf, shownHalf);
    for (int i = 0; i < longestRest && begin.size() > 1 && continuesCharacter(begin.back()); ++i) {
        begin.chop(1);
    }
    begin.chop(1); // the first byte of a character
    for (int i = 0; i < longestRest && !end.isEmpty() && continuesCharacter(end.front()); ++i) {
        end.remove(0, 1);
    }
    return begin + "\n…\n" + end;
}

} // namespace stowlark
