#pragma once

#include "archive/archive_format.h"
#include "archive/compression_level.h"
#include "archive/tools.h"

#include <QCoro/QCoroTask>

namespace stowlark {

/// The writers. Each archives what the folder `stageDir` holds (not the folder itself) into the new file
/// `output`, with one run of its tool, and throws what `shell` throws, PlatformError if the folder cannot be
/// read, or ArchiveError::toolNotFound if its tool is optional and not installed.
QCoro::Task<> runZip(Tools tools, Path stageDir, CompressionLevel level, Path output);
QCoro::Task<> runTarGz(Tools tools, Path stageDir, CompressionLevel level, Path output);
QCoro::Task<> runSevenZip(Tools tools, Path stageDir, CompressionLevel level, Path output);
QCoro::Task<> runRar(Tools tools, Path stageDir, CompressionLevel level, Path output);
QCoro::Task<> runDMG(Tools tools, Path stageDir, CompressionLevel level, Path output);

/// Awaits the writer of `format`.
QCoro::Task<> writeArchive(Tools tools, ArchiveFormat format, Path stageDir, CompressionLevel level,
                           Path output);

} // namespace stowlark
