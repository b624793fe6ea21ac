#include "foundation/copy_file.h"

#include <copyfile.h>
#include <errno.h>
#include <fcntl.h>
#include <sys/clonefile.h>
#include <unistd.h>

namespace stowlark {

int copyFile(int source, const struct stat & /*info*/, int folder, const char *name) {
    // What COPYFILE_CLONE does, which copyfile() takes for paths only. Like that it replaces nothing.
    if (::fclonefileat(source, folder, name, CLONE_NOOWNERCOPY) == 0) {
        return 0;
    }
    if (errno == EEXIST) {
        return EEXIST;
    }
    const int target = ::openat(folder, name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (target < 0) {
        return errno;
    }
    const int copied = ::fcopyfile(source, target, nullptr, COPYFILE_ALL | COPYFILE_DATA_SPARSE);
    const int error = copied == 0 ? 0 : errno;
    ::close(target);
    return error;
}

int copyFolderMetadata(int source, const struct stat & /*info*/, int target) {
    return ::fcopyfile(source, target, nullptr, COPYFILE_METADATA) == 0 ? 0 : errno;
}

} // namespace stowlark
