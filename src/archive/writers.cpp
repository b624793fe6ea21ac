#include "archive/writers.h"

#include "archive/archive_error.h"
#include "archive/shell.h"
#include "foundation/descriptor.h"
#include "foundation/errors.h"

#include <cerrno>

#include <fcntl.h>

namespace stowlark {
namespace {

std::string levelDigit(CompressionLevel level) {
    return std::string(1, "169"[static_cast<int>(level)]);
}

/// `leading`, then the archive, then the names that the staging folder holds.
std::vector<std::string> arguments(std::vector<std::string> leading, const Path &output,
                                   const Path &stageDir) {
    const Descriptor folder = openFolder(AT_FDCWD, stageDir.c_str());
    std::vector<FolderEntry> entries;
    const int error = folder ? readFolder(folder.get(), entries) : errno;
    if (error != 0) {
        throw PlatformError(PlatformError::Action::openFolder, stageDir, error);
    }
    leading.push_back(output.native());
    for (FolderEntry &entry : entries) {
        leading.push_back(std::move(entry.name));
    }
    return leading;
}

} // namespace

QCoro::Task<> runZip(Tools tools, Path stageDir, CompressionLevel level, Path output) {
    auto args = arguments({'-' + levelDigit(level), "-r"}, output, stageDir);
    co_await shell(tools.zip, std::move(args), stageDir);
}

QCoro::Task<> runTarGz(Tools tools, Path stageDir, CompressionLevel level, Path output) {
    auto args = arguments({"-czf"}, output, stageDir);
    std::map<std::string, std::string> env{{"GZIP", '-' + levelDigit(level)}};
    co_await shell(tools.tar, std::move(args), stageDir, std::move(env));
}

QCoro::Task<> writeArchive(Tools tools, ArchiveFormat format, Path stageDir, CompressionLevel level,
                           Path output) {
    switch (format) {
    case ArchiveFormat::zip:
        return runZip(std::move(tools), std::move(stageDir), level, std::move(output));
    case ArchiveFormat::tarGz:
        return runTarGz(std::move(tools), std::move(stageDir), level, std::move(output));
    case ArchiveFormat::sevenZ:
    case ArchiveFormat::rar:
    case ArchiveFormat::dmg:
        break;
    }
    throw ArchiveError::commandFailed(
        QStringLiteral("This version of Stowlark can’t create %1 archives yet.").arg(rawValue(format)));
}

} // namespace stowlark
