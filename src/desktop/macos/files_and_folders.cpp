#include "desktop/open_panel.h"

#include "desktop/macos/appkit_open_panel.h"

namespace stowlark {

QCoro::Task<QList<QUrl>> chooseFilesAndFolders(QUrl /*begin*/) { // the panel begins where it ended last
    QList<QUrl> chosen;
    appkit::runOpenPanel(
        [](void *context, const char *lines) {
            for (const QByteArray &url : QByteArray(lines).split('\n')) {
                static_cast<QList<QUrl> *>(context)->append(QUrl::fromEncoded(url, QUrl::StrictMode));
            }
        },
        &chosen);
    co_return chosen;
}

} // namespace stowlark
