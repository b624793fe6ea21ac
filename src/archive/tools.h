#pragma once

#include "archive/archive_format.h"
#include "foundation/path_name.h"

#include <QString>

#include <optional>
#include <string>
#include <vector>

namespace stowlark {

/// What installs the optional tools.
inline constexpr QLatin1String installSevenZip("brew install p7zip");
inline constexpr QLatin1String installRar("brew install rar");

/// The system's disk image tool; where it has none, the one that comes with this program.
Path diskImageTool();

/// Where the archive tools are. The default is what the program uses.
struct Tools {
    Path zip = "/usr/bin/zip";
    Path unzip = "/usr/bin/unzip";
    Path tar = "/usr/bin/tar";
    Path hdiutil = diskImageTool();
    Path xattr = "/usr/bin/xattr";
    /// Where optional tools are looked up, in this order; each ends in a slash.
    std::vector<std::string> searchFolders = {"/opt/homebrew/bin/", "/usr/local/bin/", "/usr/bin/", "/bin/"};

    /// The first existing candidate, whatever it is, with its quarantine mark cleared.
    std::optional<Path> findTool(const std::string &name) const;

    /// The same for the first of `names` that is there; throws ArchiveError::toolNotFound, about the first of
    /// them, if none is.
    Path findTool(const std::vector<std::string> &names, const QString &installCommand) const;

    /// Takes the mark of a downloaded file off a tool. Blocks until done; failures are ignored.
    void clearQuarantine(const Path &tool) const;

    /// A text if the tool that creates `format` is optional and not installed.
    std::optional<QString> toolWarning(ArchiveFormat format) const;
};

} // namespace stowlark
