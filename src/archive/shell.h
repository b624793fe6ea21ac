#pragma once

#include "foundation/path_name.h"

#include <QCoro/QCoroTask>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace stowlark {

/// Runs a tool to its end. Its exit status alone decides: anything but 0, or a signal, throws
/// ArchiveError::commandFailed with all that it wrote, trimmed (nothing if that is no UTF-8). A tool that
/// cannot be launched throws PlatformError. `cwd`: none for this program's. `env`: variables set on top of
/// this program's. `writableFolders`: if there are any, where alone the tool can change files, in so far as
/// the system can see to that.
QCoro::Task<> shell(Path tool, std::vector<std::string> args, std::optional<Path> cwd = std::nullopt,
                    std::optional<std::map<std::string, std::string>> env = std::nullopt,
                    std::vector<Path> writableFolders = {});

} // namespace stowlark
