#include "archive/archive_error.h"

namespace stowlark {

QString ArchiveError::errorDescription() const {
    if (const auto *missing = std::get_if<ToolNotFound>(&case_)) {
        return u'\'' + missing->tool + QStringLiteral("' not found. Install it with: ") +
               missing->installCommand;
    }
    if (const auto *failed = std::get_if<CommandFailed>(&case_)) {
        return failed->message.isEmpty() ? QStringLiteral("Archive creation failed.") : failed->message;
    }
    return QStringLiteral("No files selected.");
}

} // namespace stowlark
