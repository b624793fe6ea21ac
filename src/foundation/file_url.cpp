#include "foundation/file_url.h"

#include <QDir>
#include <QFile>

namespace stowlark {

Path path(const QUrl &fileUrl) {
    QByteArray bytes = QByteArray::fromPercentEncoding(fileUrl.path(QUrl::FullyEncoded).toLatin1());
    while (bytes.size() > 1 && bytes.endsWith('/')) {
        bytes.chop(1);
    }
    return bytes.toStdString();
}

QUrl fileUrl(const Path &path) {
    const auto bytes = QByteArray::fromStdString(path.native());
    return QUrl::fromEncoded("file://" + bytes.toPercentEncoding("/"), QUrl::StrictMode);
}

bool isFileUrl(const QUrl &url) {
    if (!url.isLocalFile()) {
        return false;
    }
    const Path location = path(url);
    return location.is_absolute() && location.native().find('\0') == std::string::npos;
}

Path temporaryDirectory() {
    return QFile::encodeName(QDir::tempPath()).toStdString();
}

} // namespace stowlark
