#include "archive/extractors.h"

#include "archive/archive_error.h"
#include "archive/extraction.h"
#include "archive/shell.h"

namespace stowlark {

QCoro::Task<> runUnzip(Tools tools, Path archive, Path outputDir) {
    std::vector<std::string> args{"-o", archive.native(), "-d", outputDir.native()};
    co_await shell(tools.unzip, std::move(args));
}

QCoro::Task<> runUntar(Tools tools, Path archive, Path outputDir) {
    std::vector<std::string> args{"-xf", archive.native(), "-C", outputDir.native()};
    co_await shell(tools.tar, std::move(args));
}

QCoro::Task<> extractInto(Tools tools, Path archive, Path outputDir) {
    const std::string name = lastPathComponent(archive);
    switch (extractorFor(name)) {
    case Extractor::unzip:
        return runUnzip(std::move(tools), std::move(archive), std::move(outputDir));
    case Extractor::untar:
        return runUntar(std::move(tools), std::move(archive), std::move(outputDir));
    case Extractor::sevenZip:
    case Extractor::rar:
    case Extractor::dmg:
        throw ArchiveError::commandFailed(
            QStringLiteral("This version of Stowlark can’t extract .%1 archives yet.")
                .arg(lowerCaseExtension(name)));
    case Extractor::none:
        break;
    }
    throw ArchiveError::commandFailed(QStringLiteral("Unsupported format: .") + lowerCaseExtension(name));
}

} // namespace stowlark
