#include "app/service_handler.h"

#include "foundation/file_url.h"

#include <algorithm>

namespace stowlark {

ServiceHandler::ServiceHandler(AppState &appState, std::function<void()> activate)
    : appState_(appState)
    , activate_(std::move(activate)) {}

void ServiceHandler::extractFiles(const QStringList &urls) {
    const auto isFile = [](const QString &url) { return isFileUrl(QUrl::fromEncoded(url.toUtf8())); };
    const auto first = std::ranges::find_if(urls, isFile);
    if (first == urls.end()) {
        return;
    }
    const auto handOver = [this, file = fileUrl(path(QUrl::fromEncoded(first->toUtf8())))] {
        activate_();
        appState_.setIncomingFile(file);
    };
    QMetaObject::invokeMethod(this, handOver, Qt::QueuedConnection);
}

} // namespace stowlark
