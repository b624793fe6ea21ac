#include "foundation/copy_item.h"

#include "foundation/copy_file.h"
#include "foundation/descriptor.h"
#include "foundation/errors.h"
#include "foundation/job_stack.h"

#include <array>
#include <cerrno>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace stowlark {
namespace {

using Action = PlatformError::Action;

#ifdef __APPLE__
std::array<timespec, 2> timesOf(const struct stat &info) {
    return {info.st_atimespec, info.st_mtimespec};
}
#else
std::array<timespec, 2> timesOf(const struct stat &info) {
    return {info.st_atim, info.st_mtim};
}
#endif

/// A place for one item: its name in an open folder, and its path for error texts.
struct Place {
    int folder;
    const char *name;
    Path path;
};

void copyRegularFile(const Place &from, const Place &to) {
    // A file that is replaced by a pipe at this moment must not block.
    const Descriptor source(::openat(from.folder, from.name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat info {};
    if (!source || ::fstat(source.get(), &info) != 0) {
        throw PlatformError(Action::open, from.path, errno);
    }
    if (!S_ISREG(info.st_mode)) {
        throw PlatformError(Action::open, from.path, QStringLiteral("it was replaced meanwhile"));
    }
    if (const int error = copyFile(source.get(), info, to.folder, to.name)) {
        throw PlatformError(Action::copy, from.path, error);
    }
}

void copyLink(const Place &from, const Place &to, const struct stat &info) {
    std::string target(static_cast<std::size_t>(info.st_size) + 1, '\0');
    while (true) {
        const ssize_t length = ::readlinkat(from.folder, from.name, target.data(), target.size());
        if (length < 0) {
            throw PlatformError(Action::open, from.path, errno);
        }
        if (static_cast<std::size_t>(length) < target.size()) {
            target.resize(static_cast<std::size_t>(length));
            break;
        }
        target.resize(target.size() * 2);
    }
    const auto times = timesOf(info);
    if (::symlinkat(target.c_str(), to.folder, to.name) != 0 ||
        ::utimensat(to.folder, to.name, times.data(), AT_SYMLINK_NOFOLLOW) != 0) {
        throw PlatformError(Action::copy, from.path, errno);
    }
}

void copyOther(const Place &from, const Place &to) {
    struct stat info {};
    if (::fstatat(from.folder, from.name, &info, AT_SYMLINK_NOFOLLOW) != 0) {
        throw PlatformError(Action::open, from.path, errno);
    }
    if (S_ISREG(info.st_mode)) {
        copyRegularFile(from, to);
    } else if (S_ISLNK(info.st_mode)) {
        copyLink(from, to, info);
    } else {
        const QString kind = S_ISFIFO(info.st_mode)   ? QStringLiteral("it is a named pipe")
                             : S_ISSOCK(info.st_mode) ? QStringLiteral("it is a socket")
                             : S_ISDIR(info.st_mode) ? QStringLiteral("it was replaced by a folder meanwhile")
                                                     : QStringLiteral("it is a device");
        throw PlatformError(Action::copy, from.path, kind);
    }
}

/// Copies one folder with all that it holds. Folders below it are named by their path relative to it; "." is
/// itself.
class TreeCopy {
public:
    TreeCopy(const Path &source, const Path &target)
        : sourcePath_(source)
        , source_(openFolder(AT_FDCWD, source.c_str())) {
        if (!source_) {
            throw PlatformError(Action::open, source, errno);
        }
        refuseToCopyIntoItself(target);
        if (::mkdir(target.c_str(), 0700) != 0) {
            throw PlatformError(Action::createFolder, target, errno);
        }
        target_ = openFolder(AT_FDCWD, target.c_str());
        if (!target_) {
            throw PlatformError(Action::open, target, errno);
        }
    }

    void run() {
        addFolder(".");
        jobs_.run([this](const Job &job) {
            if (const auto *relative = std::get_if<std::string>(&job)) {
                readFolderAt(*relative);
            } else {
                copySlice(std::get<Slice>(job));
            }
        });
        // Only now, from the inside out: filling a folder changes its times, and its mode may forbid it.
        for (auto at = folders_.rbegin(); at != folders_.rend(); ++at) {
            finishFolder(*at);
        }
    }

private:
    struct OpenFolder {
        Descriptor from;
        Descriptor to;
        std::string relative;
        std::vector<std::string> names;
    };
    /// Some of an open folder's items that are no folders.
    struct Slice {
        std::shared_ptr<const OpenFolder> folder;
        std::size_t begin;
        std::size_t end;
    };
    using Job = std::variant<std::string, Slice>;

    static std::string join(const std::string &relative, const std::string &name) {
        return relative == "." ? name : relative + '/' + name;
    }

    Path sourcePath(const std::string &relative) const {
        return relative == "." ? sourcePath_ : sourcePath_ / relative;
    }

    void refuseToCopyIntoItself(const Path &target) const {
        struct stat source {};
        struct stat ancestor {};
        ::fstat(source_.get(), &source);
        for (Path folder = parentFolder(target); ::stat(folder.c_str(), &ancestor) == 0;
             folder = parentFolder(folder)) {
            if (ancestor.st_dev == source.st_dev && ancestor.st_ino == source.st_ino) {
                throw PlatformError(Action::copy, sourcePath_,
                                    QStringLiteral("it holds the folder that the copy would go to"));
            }
            if (folder == parentFolder(folder)) {
                return;
            }
        }
    }

    void addFolder(std::string relative) {
        {
            const std::lock_guard lock(foldersMutex_);
            folders_.push_back(relative);
        }
        jobs_.push(std::move(relative));
    }

    void readFolderAt(const std::string &relative) {
        auto folder = std::make_shared<OpenFolder>();
        folder->relative = relative;
        folder->from = openFolderBelow(source_.get(), relative);
        std::vector<FolderEntry> entries;
        const int error = folder->from ? readFolder(folder->from.get(), entries) : errno;
        if (error != 0) {
            throw PlatformError(Action::open, sourcePath(relative), error);
        }
        folder->to = openFolderBelow(target_.get(), relative);
        if (!folder->to) {
            throw PlatformError(Action::copy, sourcePath(relative), errno);
        }
        for (FolderEntry &entry : entries) {
            if (!entry.isFolder) {
                folder->names.push_back(std::move(entry.name));
                continue;
            }
            std::string below = join(relative, entry.name);
            if (::mkdirat(folder->to.get(), entry.name.c_str(), 0700) != 0) {
                throw PlatformError(Action::copy, sourcePath(below), errno);
            }
            addFolder(std::move(below));
        }
        pushSlices(folder);
    }

    /// The folder's files come after its folders, and so are taken first: few folders are open at a time.
    void pushSlices(const std::shared_ptr<const OpenFolder> &folder) {
        const std::size_t count = folder->names.size();
        const std::size_t size = std::clamp<std::size_t>(count / (4UL * fileThreads()), 1, 64);
        for (std::size_t begin = 0; begin < count; begin += size) {
            jobs_.push(Slice{folder, begin, std::min(begin + size, count)});
        }
    }

    void copySlice(const Slice &slice) const {
        const OpenFolder &folder = *slice.folder;
        for (std::size_t i = slice.begin; i < slice.end; ++i) {
            const std::string &name = folder.names[i];
            const Path path = sourcePath(join(folder.relative, name));
            copyOther({folder.from.get(), name.c_str(), path}, {folder.to.get(), name.c_str(), {}});
        }
    }

    void finishFolder(const std::string &relative) const {
        const Descriptor from = openFolderBelow(source_.get(), relative);
        struct stat info {};
        if (!from || ::fstat(from.get(), &info) != 0) {
            throw PlatformError(Action::open, sourcePath(relative), errno);
        }
        const Descriptor to = openFolderBelow(target_.get(), relative);
        const int error = to ? copyFolderMetadata(from.get(), info, to.get()) : errno;
        if (error != 0) {
            throw PlatformError(Action::copy, sourcePath(relative), error);
        }
    }

    Path sourcePath_;
    Descriptor source_;
    Descriptor target_;
    JobStack<Job> jobs_;
    std::mutex foldersMutex_;
    std::vector<std::string> folders_; ///< each after the one that holds it
};

} // namespace

void copyItem(const Path &source, const Path &target) {
    struct stat info {};
    if (::lstat(source.c_str(), &info) != 0) {
        throw PlatformError(Action::open, source, errno);
    }
    if (S_ISDIR(info.st_mode)) {
        TreeCopy(source, target).run();
    } else {
        copyOther({AT_FDCWD, source.c_str(), source}, {AT_FDCWD, target.c_str(), {}});
    }
}

} // namespace stowlark
