#include "foundation/file_url.h"

#ifdef Q_OS_MACOS
#include <array>
#include <climits>

#include <unistd.h>
#endif

#include <QSysInfo>

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
    const QString host = url.host();
    const bool isHere = host.isEmpty() || host == u"localhost" ||
                        host.compare(QSysInfo::machineHostName(), Qt::CaseInsensitive) == 0;
    if (!url.isLocalFile() || !isHere) {
        return false;
    }
    const Path location = path(url);
    return location.is_absolute() && location.native().find('\0') == std::string::npos;
}

Path temporaryDirectory() {
    QByteArray folder = qgetenv("TMPDIR");
#ifdef Q_OS_MACOS
    if (!folder.startsWith('/')) {
        std::array<char, PATH_MAX> ofUser{};
        ::confstr(_CS_DARWIN_USER_TEMP_DIR, ofUser.data(), ofUser.size());
        folder = ofUser.data();
    }
#endif
    while (folder.size() > 1 && folder.endsWith('/')) {
        folder.chop(1);
    }
    return folder.startsWith('/') ? folder.toStdString() : "/tmp";
}

} // namespace stowlark
