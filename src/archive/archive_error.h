#pragma once

#include "foundation/errors.h"

#include <QString>

#include <variant>

namespace stowlark {

/// The engine's own errors. Their descriptions are what the status line shows.
class ArchiveError final : public LocalizedError {
public:
    struct ToolNotFound {
        QString tool;           ///< the command's name
        QString installCommand; ///< the shell command that installs it
    };
    struct CommandFailed {
        QString message; ///< the failed command's trimmed output
    };
    struct NoFiles {};

    static ArchiveError toolNotFound(const QString &tool, const QString &installCommand) {
        return ArchiveError(ToolNotFound{tool, installCommand});
    }
    static ArchiveError commandFailed(const QString &message) { return ArchiveError(CommandFailed{message}); }
    static ArchiveError noFiles() { return ArchiveError(NoFiles{}); }

    QString errorDescription() const override;

private:
    using Case = std::variant<ToolNotFound, CommandFailed, NoFiles>;
    explicit ArchiveError(Case value)
        : case_(std::move(value)) {}

    Case case_;
};

} // namespace stowlark
