#include "diskimage/put_right.h"

#include "diskimage/hfs_values.h"
#include "foundation/descriptor.h"
#include "foundation/errors.h"

#include <QString>

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace stowlark {
namespace {

struct stat statusOf(const Path &item) {
    struct stat info {};
    if (::lstat(item.c_str(), &info) != 0) {
        throw PlatformError(PlatformError::Action::read, item, errno);
    }
    return info;
}

void setDates(const Path &item, const struct stat &info) {
    const std::array<timespec, 2> dates{info.st_atim, info.st_mtim};
    ::utimensat(AT_FDCWD, item.c_str(), dates.data(), AT_SYMLINK_NOFOLLOW);
}

void takePrefixOffTarget(const Path &link, const std::string &prefix, const struct stat &info) {
    const std::string target = std::filesystem::read_symlink(link).native();
    if (target == prefix || target.starts_with(prefix + '/')) {
        std::filesystem::remove(link);
        std::filesystem::create_symlink(target == prefix ? "/" : target.substr(prefix.size()), link);
        setDates(link, info);
    }
}

std::string composedName(const std::string &name) {
    const QString text = displayText(name);
    return text.contains(QChar::ReplacementCharacter) ? name : composed(text).toStdString();
}

void putRightBelow(const Path &folder, const std::string &prefix) {
    const struct stat before = statusOf(folder);
    for (const std::string &name : namesIn(folder)) {
        const struct stat info = statusOf(folder / name);
        if (S_ISDIR(info.st_mode)) {
            putRightBelow(folder / name, prefix);
        } else if (S_ISLNK(info.st_mode)) {
            takePrefixOffTarget(folder / name, prefix, info);
        }
        if (const std::string better = composedName(name); better != name) {
            // Where both forms are there, both stay.
            ::renameat2(AT_FDCWD, (folder / name).c_str(), AT_FDCWD, (folder / better).c_str(),
                        RENAME_NOREPLACE);
        }
    }
    setDates(folder, before);
}

void addEverythingIn(const Path &folder, const std::string &path, AttachedItems &items) {
    for (const std::string &name : namesIn(folder)) {
        const bool isFolder = S_ISDIR(statusOf(folder / name).st_mode);
        items.push_back(path + name + (isFolder ? "/" : ""));
        if (isFolder) {
            const std::string below = items.back();
            addEverythingIn(folder / name, below, items);
        }
    }
}

} // namespace

void putRight(const Path &folder) {
    putRightBelow(folder, folder.native());
}

AttachedItems everythingIn(const Path &folder) {
    AttachedItems items;
    addEverythingIn(folder, {}, items);
    return items;
}

} // namespace stowlark
