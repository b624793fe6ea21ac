#include "archive/extractors.h"

#include "archive/archive_error.h"
#include "archive/disk_image_extractor.h"
#include "archive/extraction.h"
#include "archive/shell.h"

namespace stowlark {

namespace {

/// Where the system can see to that, the tool can write into its folder alone, whatever the archive says.
QCoro::Task<> unpack(Path tool, std::vector<std::string> args, Path outputDir,
                     std::optional<Path> cwd = std::nullopt) {
    std::vector<Path> writable{std::move(outputDir)};
    co_await shell(std::move(tool), std::move(args), std::move(cwd), std::nullopt, std::move(writable));
}

bool holdsAny(const std::string &path, const char *characters) {
    return path.find_first_of(characters) != std::string::npos;
}

/// The path for unzip, which takes the name of an archive for a pattern.
std::string patternFor(const Path &archive) {
    const std::string name = lastPathComponent(archive);
    if (!holdsAny(name, "*?[")) {
        return archive.native();
    }
    std::string pattern = parentFolder(archive).native() + '/';
    for (const char c : name) {
        if (c == '*' || c == '?' || c == '[') {
            pattern.append({'[', c, ']'});
        } else {
            pattern.append(c == '\\' ? 2 : 1, c);
        }
    }
    return pattern;
}

} // namespace

QCoro::Task<> runUnzip(Tools tools, Path archive, Path outputDir) {
    std::vector<std::string> args{"-o", patternFor(archive), "-d", outputDir.native()};
    co_await unpack(tools.unzip, std::move(args), std::move(outputDir));
}

QCoro::Task<> runUntar(Tools tools, Path archive, Path outputDir) {
    std::vector<std::string> args{"-xf", archive.native(), "-C", outputDir.native()};
    co_await unpack(tools.tar, std::move(args), std::move(outputDir));
}

QCoro::Task<> runSevenZipExtract(Tools tools, Path archive, Path outputDir) {
    const Path tool = tools.findTool({"7z", "7za"}, installSevenZip);
    std::vector<std::string> args{"x", archive.native(), "-o" + outputDir.native(), "-y"};
    std::optional<Path> cwd;
    if (holdsAny(archive.native() + outputDir.native(), "*?")) { // patterns, and no option helps in -o
        args = {"x", archive.native(), "-y", "-spd"};
        cwd = outputDir;
    }
    co_await unpack(tool, std::move(args), std::move(outputDir), std::move(cwd));
}

QCoro::Task<> runRarExtract(Tools tools, Path archive, Path outputDir) {
    const Path tool = tools.findTool({"unrar", "rar"}, installRar);
    std::vector<std::string> args{"x", "-o+", archive.native(), outputDir.native() + '/'};
    co_await unpack(tool, std::move(args), std::move(outputDir));
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
