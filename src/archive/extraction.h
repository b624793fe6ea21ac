#pragma once

#include "foundation/path_name.h"

#include <QString>

namespace stowlark {

/// How an archive is unpacked; chosen from its name alone.
enum class Extractor { unzip, untar, sevenZip, rar, dmg, none };

/// The first that fits, letter case ignored.
Extractor extractorFor(const std::string &archiveName);

/// The last extension in lower case, as text; empty where there is none.
QString lowerCaseExtension(const std::string &archiveName);

/// The name of the folder to unpack into: the archive's without its extension, or without both of a .tar.gz
/// or .tar.bz2.
std::string extractionFolderName(const std::string &archiveName);

/// Makes the new folder `folder`/`name`, or with "_1", "_2", ... behind the name where something has it,
/// together with missing folders above. Blocks; throws PlatformError.
Path createExtractionFolder(const Path &folder, const std::string &name);

} // namespace stowlark
