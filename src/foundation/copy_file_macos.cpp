#include "foundation/copy_file.h"

#include <cerrno>

#include <copyfile.h>
#include <fcntl.h>
#include <sys/clonefile.h>
#include <unistd.h>

namespace stowlark {

int copyFile(int source, const struct stat &, int folder, const char *name) {
    if (::fclonefileat(source, folder, name, CLONE_NOOWNERCOPY) == 0) {
        return 0;
    }
    if (errno == EEXIST) {
        return EEXIST;
    }
    const Descriptor target(::openat(folder, name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!target) {
        return errno;
    }
    return ::fcopyfile(source, target.get(), nullptr, COPYFILE_ALL | COPYFILE_DATA_SPARSE) == 0 ? 0 : errno;
}

int copyFolderMetadata(int source, const struct stat &, int target) {
    return ::fcopyfile(source, target, nullptr, COPYFILE_METADATA) == 0 ? 0 : errno;
}

} // namespace stowlark
