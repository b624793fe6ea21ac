#include "window/uri_list.h"

#include "foundation/file_url.h"

namespace stowlark {
namespace {

std::optional<QUrl> fileIn(const QByteArray &line) {
    return line.startsWith('#') ? std::nullopt : fileOf(line);
}

} // namespace

std::optional<QUrl> fileOf(const QByteArray &url) {
    const QUrl parsed = QUrl::fromEncoded(url);
    return isFileUrl(parsed) ? std::optional(fileUrl(path(parsed))) : std::nullopt;
}

std::optional<QUrl> nextFile(const QByteArray &uriList, qsizetype &position) {
    const qsizetype begin = position;
    const qsizetype end = uriList.indexOf('\n', begin);
    position = end < 0 ? uriList.size() : end + 1;
    return fileIn(uriList.mid(begin, (end < 0 ? uriList.size() : end) - begin).trimmed());
}

std::optional<QUrl> lastFile(const QByteArray &uriList) {
    qsizetype end = uriList.size();
    while (end > 0) {
        const qsizetype begin = uriList.lastIndexOf('\n', end - 1) + 1;
        if (std::optional<QUrl> file = fileIn(uriList.mid(begin, end - begin).trimmed())) {
            return file;
        }
        end = begin - 1;
    }
    return std::nullopt;
}

QByteArray uriList(const QList<QUrl> &urls) {
    QByteArray list;
    for (const QUrl &url : urls) {
        list += url.toEncoded() + "\r\n";
    }
    return list;
}

} // namespace stowlark
