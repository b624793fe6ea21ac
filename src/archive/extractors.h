#pragma once

#include "archive/tools.h"

#include <QCoro/QCoroTask>

namespace stowlark {

/// The extractors. Each unpacks `archive` into the empty folder `outputDir` with one run of its tool, and
/// throws what `shell` throws, or ArchiveError::toolNotFound if its tool is optional and not installed. What
/// was unpacked before a failure stays.
QCoro::Task<> runUnzip(Tools tools, Path archive, Path outputDir);
QCoro::Task<> runUntar(Tools tools, Path archive, Path outputDir);
QCoro::Task<> runSevenZipExtract(Tools tools, Path archive, Path outputDir);
QCoro::Task<> runRarExtract(Tools tools, Path archive, Path outputDir);

/// Awaits the extractor that the archive's name calls for; throws ArchiveError::commandFailed if there is
/// none.
QCoro::Task<> extractInto(Tools tools, Path archive, Path outputDir);

} // namespace stowlark
