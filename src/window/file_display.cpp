#include "window/file_display.h"

#include "archive/extraction.h"
#include "foundation/byte_count.h"

#include <QStringList>

#include <sys/stat.h>

namespace stowlark {
namespace {

struct Kind {
    QString extensions; ///< with a space between
    QString symbol;
};

QString symbolOf(const Path &file, const QList<Kind> &kinds) {
    const QString extension = lowerCaseExtension(lastPathComponent(file));
    for (const Kind &kind : kinds) {
        if (kind.extensions.split(u' ').contains(extension)) {
            return kind.symbol;
        }
    }
    return QStringLiteral("doc.fill");
}

} // namespace

FileAttributes fileAttributes(const Path &file) {
    FileAttributes attributes;
    struct stat info {};
    if (::lstat(file.c_str(), &info) != 0) {
        return attributes;
    }
    attributes.size = info.st_size;
    if (S_ISLNK(info.st_mode) && ::stat(file.c_str(), &info) != 0) {
        return attributes;
    }
    attributes.isFolder = S_ISDIR(info.st_mode);
    return attributes;
}

std::optional<QString> fileSize(const FileAttributes &attributes) {
    if (attributes.isFolder || !attributes.size) {
        return std::nullopt;
    }
    return byteCountText(*attributes.size);
}

QString smartIcon(const Path &file) {
    static const QList<Kind> kinds{{QStringLiteral("zip rar 7z gz tar"), QStringLiteral("doc.zipper")},
                                   {QStringLiteral("pdf"), QStringLiteral("doc.richtext")},
                                   {QStringLiteral("jpg jpeg png gif heic webp"), QStringLiteral("photo")},
                                   {QStringLiteral("mp4 mov avi mkv"), QStringLiteral("film")},
                                   {QStringLiteral("mp3 m4a wav flac"), QStringLiteral("music.note")},
                                   {QStringLiteral("swift py js ts html css"),
                                    QStringLiteral("chevron.left.forwardslash.chevron.right")}};
    return symbolOf(file, kinds);
}

QString archiveIcon(const Path &file) {
    static const QList<Kind> kinds{{QStringLiteral("zip"), QStringLiteral("doc.zipper")},
                                   {QStringLiteral("gz tgz"), QStringLiteral("shipping.box")},
                                   {QStringLiteral("7z"), QStringLiteral("cylinder")},
                                   {QStringLiteral("rar"), QStringLiteral("archivebox")},
                                   {QStringLiteral("dmg"), QStringLiteral("opticaldiscdrive")}};
    return symbolOf(file, kinds);
}

} // namespace stowlark
