#include "update/feed.h"

#include "foundation/site.h"

#include <QCoro/QCoroSignal>

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

#include <memory>

namespace stowlark {
namespace {

QNetworkRequest httpRequest(const FeedRequest &feed) {
    QNetworkRequest request(feed.url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false); // one way through, the tested one
    request.setTransferTimeout(static_cast<int>(feed.timeout.count()));
    if (feed.tls) {
        request.setSslConfiguration(*feed.tls);
    }
    return request;
}

/// Qt reports the status of an error page as an error of the transfer, with codes above those of the network.
bool isWhole(QNetworkReply::NetworkError error, int status) {
    return error == QNetworkReply::NoError || (status >= 400 && error > QNetworkReply::UnknownNetworkError &&
                                               error != QNetworkReply::ProtocolFailure);
}

} // namespace

QUrl feedAddress() {
    return siteURL().resolved(QUrl(QStringLiteral("/stowlark/version.json")));
}

QCoro::Task<std::optional<FeedAnswer>> fetchFeed(FeedRequest request, const QObject *owner) {
    // A manager for each request: it takes along what it knows of the server.
    const std::unique_ptr<QNetworkAccessManager, QScopedPointerDeleteLater> network(
        new QNetworkAccessManager);
    QNetworkReply *reply = network->get(httpRequest(request));
    FeedAnswer answer;
    const auto readOn = [reply, &answer] {
        if (!reply->isOpen()) { // aborted
            return;
        }
        answer.body += reply->read(feedSizeLimit + 1 - answer.body.size());
        if (answer.body.size() > feedSizeLimit) {
            reply->abort();
        }
    };
    QObject::connect(reply, &QNetworkReply::readyRead, reply, readOn);
    bool sent = false; // and then again: Qt repeats what a closed connection left without an answer
    QObject::connect(reply, &QNetworkReply::requestSent, reply, [&sent] { sent = true; });
    QObject::connect(reply, &QNetworkReply::redirected, reply, [&sent] { sent = false; });
    QObject::connect(reply, &QNetworkReply::encrypted, reply, [reply, &sent] {
        if (sent) {
            reply->abort();
        }
    });
    QObject::connect(owner, &QObject::destroyed, reply, &QNetworkReply::abort);
    QTimer::singleShot(request.longest, reply, &QNetworkReply::abort);
    co_await qCoro(reply, &QNetworkReply::finished);
    readOn();
    answer.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (answer.body.size() > feedSizeLimit || !isWhole(reply->error(), answer.status)) {
        co_return std::nullopt;
    }
    co_return answer;
}

} // namespace stowlark
