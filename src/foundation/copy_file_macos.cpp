#include "foundation/copy_file.h"

#include "foundation/descriptor.h"

#include <array>
#include <cerrno>

#include <copyfile.h>
#include <fcntl.h>
#include <sys/acl.h>
#include <sys/clonefile.h>
#include <unistd.h>

namespace stowlark {
namespace {

/// A clone loses its set-id bits, and may get the access list and all flags of the file, which can keep the
/// copy from being removed.
bool canBeCloned(int source, const struct stat &info) {
    constexpr auto harmless = static_cast<unsigned>(UF_NODUMP | UF_COMPRESSED | UF_TRACKED | UF_HIDDEN);
    if ((info.st_flags & ~harmless) != 0 || (info.st_mode & (S_ISUID | S_ISGID)) != 0) {
        return false;
    }
    const acl_t list = ::acl_get_fd(source);
    if (list != nullptr) {
        ::acl_free(list);
    }
    return list == nullptr;
}

bool isRefused() {
    return errno == EPERM || errno == ENOTSUP;
}

/// What the target's file system or the user's rights do not allow is left out.
int copyMetadata(int source, const struct stat &info, int target) {
    if (::fcopyfile(source, target, nullptr, COPYFILE_XATTR) != 0 && (errno == ENOSPC || errno == EDQUOT)) {
        return errno;
    }
    if ((info.st_flags & UF_HIDDEN) != 0) {
        ::fchflags(target, UF_HIDDEN);
    }
    const std::array<timespec, 2> times{info.st_atimespec, info.st_mtimespec};
    const bool hasMode = ::fchmod(target, info.st_mode & 07777) == 0 ||
                         (isRefused() && (::fchmod(target, info.st_mode & 0777) == 0 || isRefused()));
    return hasMode && (::futimens(target, times.data()) == 0 || isRefused()) ? 0 : errno;
}

} // namespace

int copyFile(int source, const struct stat &info, int folder, const char *name) {
    if (canBeCloned(source, info)) {
        if (::fclonefileat(source, folder, name, CLONE_NOOWNERCOPY) == 0) {
            return 0;
        }
        if (errno == EEXIST) {
            return EEXIST;
        }
    }
    const Descriptor target(::openat(folder, name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!target || ::fcopyfile(source, target.get(), nullptr, COPYFILE_DATA | COPYFILE_DATA_SPARSE) != 0) {
        return errno;
    }
    return copyMetadata(source, info, target.get());
}

int copyFolderMetadata(int source, const struct stat &info, int target) {
    return copyMetadata(source, info, target);
}

} // namespace stowlark
