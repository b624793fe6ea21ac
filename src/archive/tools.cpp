#include "archive/tools.h"

#include "archive/archive_error.h"
#include "foundation/child_process.h"

namespace stowlark {
namespace {

std::optional<QString> warningUnlessFound(const Tools &tools, const QString &tool,
                                          const QString &installCommand) {
    if (tools.findTool(tool.toStdString())) {
        return std::nullopt;
    }
    return u'\'' + tool + QStringLiteral("' not installed. Run: ") + installCommand;
}

} // namespace

Path diskImageTool() {
    Path ofSystem = "/usr/bin/hdiutil";
#ifdef __linux__
    std::error_code error;
    if (!std::filesystem::exists(ofSystem, error)) {
        const Path program = std::filesystem::read_symlink("/proc/self/exe", error);
        return program.parent_path().parent_path() / "libexec/stowlark/stowlark-hdiutil";
    }
#endif
    return ofSystem;
}

std::optional<Path> Tools::findTool(const std::string &name) const {
    for (const std::string &folder : searchFolders) {
        const Path candidate = folder + name;
        std::error_code ignored;
        if (std::filesystem::exists(candidate, ignored)) {
            clearQuarantine(candidate);
            return candidate;
        }
    }
    return std::nullopt;
}

Path Tools::findTool(const std::vector<std::string> &names, const QString &installCommand) const {
    for (const std::string &name : names) {
        if (auto tool = findTool(name)) {
            return *std::move(tool);
        }
    }
    throw ArchiveError::toolNotFound(QString::fromStdString(names.front()), installCommand);
}

void Tools::clearQuarantine(const Path &tool) const {
    runChildQuietly({.tool = xattr, .arguments = {"-d", "com.apple.quarantine", tool.native()}});
}

std::optional<QString> Tools::toolWarning(ArchiveFormat format) const {
    switch (format) {
    case ArchiveFormat::sevenZ:
        return warningUnlessFound(*this, QStringLiteral("7z"), installSevenZip);
    case ArchiveFormat::rar:
        return warningUnlessFound(*this, QStringLiteral("rar"), installRar);
    case ArchiveFormat::zip:
    case ArchiveFormat::tarGz:
    case ArchiveFormat::dmg:
        break;
    }
    return std::nullopt;
}

} // namespace stowlark
