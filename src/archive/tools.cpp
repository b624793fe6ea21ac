#include "archive/tools.h"

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

void Tools::clearQuarantine(const Path &tool) const {
    runChildQuietly({.tool = xattr, .arguments = {"-d", "com.apple.quarantine", tool.native()}});
}

std::optional<QString> Tools::toolWarning(ArchiveFormat format) const {
    switch (format) {
    case ArchiveFormat::sevenZ:
        return warningUnlessFound(*this, QStringLiteral("7z"), QStringLiteral("brew install p7zip"));
    case ArchiveFormat::rar:
        return warningUnlessFound(*this, QStringLiteral("rar"), QStringLiteral("brew install rar"));
    case ArchiveFormat::zip:
    case ArchiveFormat::tarGz:
    case ArchiveFormat::dmg:
        break;
    }
    return std::nullopt;
}

} // namespace stowlark
