#include "foundation/remove_item.h"

#include "foundation/descriptor.h"
#include "foundation/errors.h"
#include "foundation/job_stack.h"

#include <cerrno>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace stowlark {
namespace {

enum class ReadOnlyFolders { keep, remove };

/// Removes what a folder holds, and then the folder. Folders below it are named by their path relative to it.
class TreeRemoval {
public:
    TreeRemoval(const Path &path, ReadOnlyFolders readOnly)
        : path_(path)
        , readOnly_(readOnly) {
        root_ = openToChange(AT_FDCWD, path.c_str());
        if (!root_) {
            throw PlatformError(PlatformError::Action::remove, path, errno);
        }
    }

    void run() {
        addFolder(".");
        jobs_.run([this](const std::string &relative) { removeFiles(relative); });
        for (auto at = folders_.rbegin(); at != folders_.rend(); ++at) {
            const bool isRoot = *at == ".";
            if ((isRoot ? ::rmdir(path_.c_str()) : removeFolder(*at)) != 0 && errno != ENOENT) {
                throw PlatformError(PlatformError::Action::remove, isRoot ? path_ : path_ / *at, errno);
            }
        }
    }

private:
    Descriptor openToChange(int folder, const char *name) const {
        return readOnly_ == ReadOnlyFolders::keep ? openFolder(folder, name)
                                                  : openFolderToChange(folder, name);
    }

    void addFolder(std::string relative) {
        {
            const std::lock_guard lock(foldersMutex_);
            folders_.push_back(relative);
        }
        jobs_.push(std::move(relative));
    }

    void removeFiles(const std::string &relative) {
        const Path path = relative == "." ? path_ : path_ / relative;
        const auto [parent, name] = openParentBelow(root_.get(), relative);
        const Descriptor folder = parent ? openToChange(parent.get(), name.c_str()) : Descriptor();
        std::vector<FolderEntry> entries;
        const int error = folder ? readFolder(folder.get(), entries) : errno;
        if (error != 0) {
            throw PlatformError(PlatformError::Action::remove, path, error);
        }
        for (const FolderEntry &entry : entries) {
            if (entry.isFolder) {
                addFolder(relative == "." ? entry.name : relative + '/' + entry.name);
            } else if (::unlinkat(folder.get(), entry.name.c_str(), 0) != 0 && errno != ENOENT) {
                throw PlatformError(PlatformError::Action::remove, path / entry.name, errno);
            }
        }
    }

    int removeFolder(const std::string &relative) const {
        const auto [parent, name] = openParentBelow(root_.get(), relative);
        return parent ? ::unlinkat(parent.get(), name.c_str(), AT_REMOVEDIR) : -1;
    }

    Path path_;
    ReadOnlyFolders readOnly_;
    Descriptor root_;
    JobStack<std::string> jobs_;
    std::mutex foldersMutex_;
    std::vector<std::string> folders_; ///< each after the one that holds it
};

} // namespace

void removeItem(const Path &item) {
    struct stat info {};
    if (::lstat(item.c_str(), &info) != 0) {
        throw PlatformError(PlatformError::Action::remove, item, errno);
    }
    if (S_ISDIR(info.st_mode)) {
        TreeRemoval(item, ReadOnlyFolders::keep).run();
    } else if (::unlink(item.c_str()) != 0) {
        throw PlatformError(PlatformError::Action::remove, item, errno);
    }
}

bool removeOwnFolder(const Path &folder) noexcept {
    try {
        TreeRemoval(folder, ReadOnlyFolders::remove).run();
        return true;
    } catch (const std::exception &) {
        return false;
    }
}

} // namespace stowlark
