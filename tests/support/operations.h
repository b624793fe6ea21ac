#pragma once

#include "archive/archive_manager.h"
#include "foundation/file_url.h"

#include <QCoro/QCoroCore>
#include <QProcess>

namespace stowlark {

struct InstalledFormat {
    const char *name;
    ArchiveFormat format;
    std::string archive;       ///< a name for one
    bool followsLinks = false; ///< stores what links point to, and fails where one leads nowhere
};

/// The formats whose tools are there to create and extract.
inline std::vector<InstalledFormat> installedFormats() {
    const Tools tools;
    std::vector<InstalledFormat> formats{{"ZIP", ArchiveFormat::zip, "o.zip"},
                                         {"TAR.GZ", ArchiveFormat::tarGz, "o.tar.gz"}};
    if (const auto tool = tools.findTool("7z")) {
        QProcess information;
        information.start(displayText(tool->native()), {QStringLiteral("i")});
        information.waitForFinished();
        const bool isOfP7zip = information.readAll().contains("p7zip");
        formats.push_back({"7-Zip", ArchiveFormat::sevenZ, "o.7z", !isOfP7zip});
    }
    if (tools.findTool("rar")) {
        formats.push_back({"RAR", ArchiveFormat::rar, "o.rar", true});
    }
    if (std::filesystem::exists(tools.hdiutil)) {
        formats.push_back({"DMG", ArchiveFormat::dmg, "o.dmg"});
    }
    return formats;
}

inline std::vector<QUrl> urls(const std::vector<Path> &paths) {
    std::vector<QUrl> result;
    for (const Path &path : paths) {
        result.push_back(fileUrl(path));
    }
    return result;
}

inline void create(ArchiveManager &manager, const std::vector<Path> &files, const Path &output,
                   ArchiveFormat format = ArchiveFormat::zip,
                   CompressionLevel level = CompressionLevel::normal) {
    QCoro::waitFor(manager.createArchive(urls(files), format, level, fileUrl(output)));
}

inline void extract(ArchiveManager &manager, const Path &archive, const Path &folder) {
    QCoro::waitFor(manager.extractArchive(fileUrl(archive), fileUrl(folder)));
}

} // namespace stowlark
