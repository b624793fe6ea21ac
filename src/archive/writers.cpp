#include "archive/writers.h"

#include "archive/shell.h"
#include "foundation/descriptor.h"

#include <iterator>

namespace stowlark {
namespace {

/// `option` with the one of the three `digits` that stands for the level.
std::string levelOption(const std::string &option, const char *digits, CompressionLevel level) {
    return option + digits[static_cast<int>(level)];
}

/// `leading`, then the archive, then the names that the staging folder holds.
std::vector<std::string> arguments(std::vector<std::string> leading, const Path &output,
                                   const Path &stageDir) {
    std::vector<std::string> names = namesIn(stageDir);
    leading.push_back(output.native());
    leading.insert(leading.end(), std::move_iterator(names.begin()), std::move_iterator(names.end()));
    return leading;
}

} // namespace

QCoro::Task<> runZip(Tools tools, Path stageDir, CompressionLevel level, Path output) {
    auto args = arguments({levelOption("-", "169", level), "-r"}, output, stageDir);
    co_await shell(tools.zip, std::move(args), stageDir);
}

QCoro::Task<> runTarGz(Tools tools, Path stageDir, CompressionLevel level, Path output) {
    auto args = arguments({"-czf"}, output, stageDir);
    std::map<std::string, std::string> env{{"GZIP", levelOption("-", "169", level)}};
    co_await shell(tools.tar, std::move(args), stageDir, std::move(env));
}

QCoro::Task<> runSevenZip(Tools tools, Path stageDir, CompressionLevel level, Path output) {
    const Path tool = tools.findTool({"7z", "7za"}, installSevenZip);
    auto args = arguments({"a", "-t7z", levelOption("-mx=", "159", level)}, output, stageDir);
    co_await shell(tool, std::move(args), stageDir);
}

QCoro::Task<> runRar(Tools tools, Path stageDir, CompressionLevel level, Path output) {
    const Path tool = tools.findTool({"rar"}, installRar);
    auto args = arguments({"a", levelOption("-m", "135", level)}, output, stageDir);
    co_await shell(tool, std::move(args), stageDir);
}

QCoro::Task<> runDMG(Tools tools, Path stageDir, CompressionLevel level, Path output) {
    const std::string volume = deletingPathExtension(lastPathComponent(output));
    std::vector<std::string> args{"create",          "-volname", volume,   "-srcfolder",
                                  stageDir.native(), "-ov",      "-format"};
    args.emplace_back(level == CompressionLevel::best ? "UDBZ" : "UDZO");
    if (level == CompressionLevel::fast) {
        args.insert(args.end(), {"-imagekey", "zlib-level=1"});
    }
    args.push_back(output.native());
    co_await shell(tools.hdiutil, std::move(args));
}

QCoro::Task<> writeArchive(Tools tools, ArchiveFormat format, Path stageDir, CompressionLevel level,
                           Path output) {
    const auto writer = [format] {
        switch (format) {
        case ArchiveFormat::zip:
            return runZip;
        case ArchiveFormat::tarGz:
            return runTarGz;
        case ArchiveFormat::sevenZ:
            return runSevenZip;
        case ArchiveFormat::rar:
            return runRar;
        case ArchiveFormat::dmg:
            break;
        }
        return runDMG;
    }();
    return writer(std::move(tools), std::move(stageDir), level, std::move(output));
}

} // namespace stowlark
