#pragma once

#include <QCoro/QCoroTask>

#include <QSslConfiguration>
#include <QUrl>

#include <chrono>
#include <optional>

namespace stowlark {

/// Where the maker publishes the newest release.
QUrl feedAddress();

/// Where the feed is, and how long to wait for it.
struct FeedRequest {
    QUrl url = feedAddress();
    std::chrono::milliseconds timeout = std::chrono::seconds(60); ///< for the next byte
    std::chrono::milliseconds longest = std::chrono::minutes(10); ///< for all of it
    std::optional<QSslConfiguration> tls = {};                    ///< the system's own if not set
};

/// A whole answer of the server, to which a page that reports an error belongs too.
struct FeedAnswer {
    int status = 0; ///< of HTTP
    QByteArray body;
};

/// A longer body, in bytes, is a failure.
constexpr qsizetype feedSizeLimit = 1'000'000;

/// Gets the feed with a GET of HTTPS, following redirects within HTTPS. Sends and keeps no cookies, no
/// credentials and nothing on the disk. Nothing if there is no whole answer from a trusted server. Ends early
/// when `owner` dies.
QCoro::Task<std::optional<FeedAnswer>> fetchFeed(FeedRequest request, const QObject *owner);

} // namespace stowlark
