#pragma once

#include "foundation/path_name.h"

#include <QCoro/QCoroTask>

#include <QByteArray>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace stowlark {

/// What to run. Everything reaches the child byte for byte; no shell is involved.
struct Command {
    Path tool; ///< absolute
    std::vector<std::string> arguments{};
    std::optional<Path> workingDirectory{};           ///< none: this program's
    std::map<std::string, std::string> environment{}; ///< added to this program's, replacing its values
    /// If there are any: below which alone the child can make, write, move and remove files, in so far as the
    /// system can see to that.
    std::vector<Path> writableFolders{};
};

/// How a child ended.
struct ChildEnd {
    bool succeeded = false; ///< it exited, with status 0
    QByteArray output{};    ///< standard output and error, interleaved as written, shortened in the middle if
                            ///< huge; empty if it succeeded
};

/// Runs a child to its end, suspending the awaiting coroutine. There is no time-out and no way to cancel.
///
/// The child's standard input is the null device and it has no controlling terminal, so a question that it
/// asks fails instead of waiting for a person. Its output goes to an unlinked temporary file: it never has to
/// be drained. Throws PlatformError if the child cannot be launched, at once.
QCoro::Task<ChildEnd> runChild(Command command);

/// Runs a child to its end with its output and errors going to the open file `output`, blocking this thread.
/// Returns whether it exited with status 0. Throws PlatformError if it cannot be launched.
bool runChildInto(const Command &command, int output);

/// Runs a child to its end with its output discarded, blocking this thread. Returns false if it could not be
/// launched or failed.
bool runChildQuietly(const Command &command) noexcept;

} // namespace stowlark
