#include "archive/extractors.h"

#include "archive/archive_error.h"
#include "archive/disk_image_extractor.h"
#include "archive/extraction.h"
#include "archive/shell.h"
#include "foundation/file_url.h"

namespace stowlark {

QCoro::Task<> runUnzip(Tools tools, Path archive, Path outputDir) {
    std::vector<std::string> args{"-o", archive.native(), "-d", outputDir.native()};
    co_await shell(tools.unzip, std::move(args));
}

QCoro::Task<> runUntar(Tools tools, Path archive, Path outputDir) {
    std::vector<std::string> args{"-xf", archive.native(), "-C", outputDir.native()};
    co_await shell(tools.tar, std::move(args));
}

QCoro::Task<> runSevenZipExtract(Tools tools, Path archive, Path outputDir) {
    const Path tool = tools.findTool({"7z", "7za"}, installSevenZip);
    std::vector<std::string> args{"x", archive.native(), "-o" + outputDir.native(), "-y"};
    co_await shell(tool, std::move(args));
}

QCoro::Task<> runRarExtract(Tools tools, Path archive, Path outputDir) {
    const Path tool = tools.findTool({"unrar", "rar"}, installRar);
    std::vector<std::string> args{"x", "-o+", archive.native(), outputDir.native() + '/'};
    // One tool by that name makes folders wherever an archive says "../".
    std::vector<Path> writable{outputDir, temporaryDirectory()};
    co_await shell(tool, std::move(args), std::nullopt, std::nullopt, std::move(writable));
}

QCoro::Task<> extractInto(Tools tools, Path archive, Path outputDir) {
    const std::string name = lastPathComponent(archive);
    switch (extractorFor(name)) {
    case Extractor::unzip:
        return runUnzip(std::move(tools), std::move(archive), std::move(outputDir));
    case Extractor::untar:
        return runUntar(std::move(tools), std::move(archive), std::move(outputDir));
    case Extractor::sevenZip:
        return runSevenZipExtract(std::move(tools), std::move(archive), std::move(outputDir));
    case Extractor::rar:
        return runRarExtract(std::move(tools), std::move(archive), std::move(outputDir));
    case Extractor::dmg:
        return runDMGExtract(std::move(tools), std::move(archive), std::move(outputDir));
    case Extractor::none:
        break;
    }
    throw ArchiveError::commandFailed(QStringLiteral("Unsupported format: .") + lowerCaseExtension(name));
}

} // namespace stowlark
