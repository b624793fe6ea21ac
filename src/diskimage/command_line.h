#pragma once

#include "diskimage/compressor.h"
#include "foundation/path_name.h"

#include <variant>

namespace stowlark {

struct CreateCommand {
    std::string volumeName;
    Path sourceFolder;
    bool overwrite = false;
    Compression compression{};
    Path image;
};

struct AttachCommand {
    Path image;
    Path mountPoint;
};

struct DetachCommand {
    Path mountPoint;
};

struct HelpCommand {};

using CommandLine = std::variant<CreateCommand, AttachCommand, DetachCommand, HelpCommand>;

/// What the arguments, without the program's own name, ask for. Throws ImageError if it is nothing that this
/// program does.
CommandLine parseCommandLine(const std::vector<std::string> &arguments);

/// What the program does, in the words of its command line.
extern const char *const usage;

} // namespace stowlark
