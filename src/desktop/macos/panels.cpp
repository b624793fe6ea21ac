#include "desktop/alert.h"
#include "desktop/open_panel.h"

#include "desktop/macos/appkit_panels.h"

#include <QCoro/QCoroFuture>

#include <QFileInfo>
#include <QPromise>

#include <memory>
#include <utility>

// A promise belongs to AppKit until the user has decided. What waits for it goes on in a later turn of the
// event loop.
namespace stowlark {
namespace {

using Chosen = QPromise<QList<QUrl>>;

void takeChosen(void *context, const char *lines) {
    const std::unique_ptr<Chosen> promise(static_cast<Chosen *>(context));
    QList<QUrl> urls;
    for (const QByteArray &url : QByteArray(lines).split('\n')) {
        if (!url.isEmpty()) {
            urls += QUrl::fromEncoded(url, QUrl::StrictMode);
        }
    }
    promise->addResult(urls);
    promise->finish();
}

QCoro::Task<QList<QUrl>> decision(appkit::OpenPanel options, QUrl begin) {
    const QByteArray folder = begin.toEncoded();
    if (QFileInfo(begin.toLocalFile()).isDir()) {
        options.folder = folder.constData();
    }
    auto promise = std::make_unique<Chosen>();
    promise->start();
    const QFuture<QList<QUrl>> chosen = promise->future();
    appkit::showOpenPanel(options, &takeChosen, promise.release());
    co_return co_await chosen;
}

QCoro::Task<std::optional<QUrl>> oneDecision(appkit::OpenPanel options, QUrl begin) {
    const QList<QUrl> chosen = co_await decision(options, std::move(begin));
    co_return chosen.isEmpty() ? std::nullopt : std::optional(chosen.first());
}

} // namespace

QCoro::Task<QList<QUrl>> chooseFilesAndFolders(QUrl begin) {
    const appkit::OpenPanel options{.choosesFiles = true,
                                    .choosesFolders = true,
                                    .choosesSeveral = true,
                                    .message = "Add Files and Folders",
                                    .prompt = "Add"};
    return decision(options, std::move(begin));
}

QCoro::Task<std::optional<QUrl>> chooseArchive(QUrl begin) {
    const appkit::OpenPanel options{
        .choosesFiles = true, .choosesArchives = true, .message = "Choose an Archive", .prompt = "Choose"};
    return oneDecision(options, std::move(begin));
}

QCoro::Task<std::optional<QUrl>> chooseFolder(QUrl begin) {
    const appkit::OpenPanel options{.choosesFolders = true, .message = "Choose a Folder", .prompt = "Choose"};
    return oneDecision(options, std::move(begin));
}

QCoro::Task<> showAlert(QString title, QString message, AlertStyle style) {
    using Dismissed = QPromise<void>;
    auto promise = std::make_unique<Dismissed>();
    promise->start();
    const QFuture<void> dismissed = promise->future();
    const auto done = [](void *context) {
        const std::unique_ptr<Dismissed> owned(static_cast<Dismissed *>(context));
        owned->finish();
    };
    appkit::showAlert(title.toUtf8().constData(), message.toUtf8().constData(), static_cast<int>(style), done,
                      promise.release());
    co_await dismissed;
}

} // namespace stowlark
