#include "foundation/errors.h"

#include <cerrno>
#include <system_error>

namespace stowlark {
namespace {

using Action = PlatformError::Action;

QString verb(Action action) {
    switch (action) {
    case Action::open:
    case Action::openFolder:
        return QStringLiteral("opened");
    case Action::read:
        return QStringLiteral("read");
    case Action::write:
        return QStringLiteral("written");
    case Action::copy:
        return QStringLiteral("copied");
    case Action::createFolder:
        return QStringLiteral("created");
    case Action::remove:
        return QStringLiteral("removed");
    case Action::launch:
        return QStringLiteral("launched");
    }
    return {};
}

QString noun(Action action, const Path &item) {
    if (action == Action::launch) {
        return QStringLiteral("tool");
    }
    std::error_code ignored;
    const bool folder = action == Action::openFolder || action == Action::createFolder ||
                        std::filesystem::is_directory(std::filesystem::symlink_status(item, ignored));
    return folder ? QStringLiteral("folder") : QStringLiteral("file");
}

QString reasonText(Action action, int error) {
    switch (error) {
    case ENOENT:
        return action == Action::openFolder ? QStringLiteral("there is no such folder")
               : action == Action::createFolder
                   ? QStringLiteral("the folder that is to hold it doesn’t exist")
                   : QStringLiteral("there is no such file");
    case EACCES:
    case EPERM:
        return QStringLiteral("you don’t have permission");
    case ENOSPC:
        return QStringLiteral("there isn’t enough space on the disk");
    case EDQUOT:
        return QStringLiteral("your share of the disk is used up");
    case EROFS:
        return QStringLiteral("the disk is read-only");
    case EEXIST:
        return QStringLiteral("an item with the same name already exists");
    case ENOTDIR:
        return QStringLiteral("a part of its path isn’t a folder");
    case ENAMETOOLONG:
        return QStringLiteral("its name or path is too long");
    case ELOOP:
        return QStringLiteral("it was replaced by a link or lies behind too many of them");
    case EMFILE:
    case ENFILE:
        return QStringLiteral("too many files are open");
    case EFBIG:
        return QStringLiteral("it is too large for the disk");
    case EIO:
        return QStringLiteral("the disk reported an error");
    case ENOEXEC:
        return QStringLiteral("it isn’t a program that this system can run");
    case E2BIG:
        return QStringLiteral("too many items were passed to it");
    default:
        return QStringLiteral("of an error of the system (%1)")
            .arg(QString::fromStdString(std::generic_category().message(error)));
    }
}

} // namespace

PlatformError::PlatformError(Action action, const Path &item, int error)
    : PlatformError(action, item, reasonText(action, error)) {}

PlatformError::PlatformError(Action action, const Path &item, const QString &reason)
    : description_(QStringLiteral("The %1 “%2” couldn’t be %3 because %4.")
                       .arg(noun(action, item), displayText(lastPathComponent(item)), verb(action), reason)) {
}

QString localizedDescription(const std::exception &error) {
    if (const auto *localized = dynamic_cast<const LocalizedError *>(&error)) {
        return localized->errorDescription();
    }
    if (const auto *filesystem = dynamic_cast<const std::filesystem::filesystem_error *>(&error)) {
        return PlatformError(Action::write, filesystem->path1(), filesystem->code().value())
            .errorDescription();
    }
    return QStringLiteral("The operation couldn’t be completed (%1).").arg(QString::fromUtf8(error.what()));
}

} // namespace stowlark
