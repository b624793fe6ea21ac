#include "update/update_checker.h"

#include "update/is_newer.h"

#include <QPointer>
#include <QScopeGuard>

namespace stowlark {

UpdateChecker::UpdateChecker(UpdateSettings settings, QObject *parent)
    : QObject(parent)
    , settings_(std::move(settings)) {
    if (!feedURL().isValid() || feedURL().scheme() != u"https") {
        qFatal("%s is no address of a feed", qPrintable(feedURL().toString()));
    }
}

void UpdateChecker::setAvailable(const std::optional<AppRelease> &release) {
    available_ = release;
    Q_EMIT availableChanged();
}

void UpdateChecker::setIsChecking(bool checking) {
    isChecking_ = checking;
    Q_EMIT isCheckingChanged();
}

QCoro::Task<> UpdateChecker::check(Asked asked) {
    if (isChecking_) {
        co_return;
    }
    const QPointer<UpdateChecker> self(this);
    const auto end = qScopeGuard([self] {
        if (self) {
            self->setIsChecking(false);
        }
    });
    setIsChecking(true);
    const QCoro::Task<std::optional<FeedAnswer>> fetch = fetchFeed(settings_.feed, this);
    const std::optional<FeedAnswer> answer = co_await fetch;
    if (!self) {
        co_return;
    }
    std::optional<AppRelease> release;
    if (answer && (asked == Asked::no || answer->status == 200)) {
        release = AppRelease::decode(answer->body);
    }
    if (release && isNewer(release->version, currentVersion())) {
        setAvailable(release);
        co_return;
    }
    if (asked == Asked::no) {
        co_return;
    }
    const auto showAlert = settings_.showAlert; // outlives this object
    const QString title =
        release ? QStringLiteral("Stowlark is up to date") : QStringLiteral("Could Not Check for Updates");
    const QString message =
        release ? QStringLiteral("Version %1 is the latest version.").arg(currentVersion())
                : QStringLiteral("Unable to reach the update server. Please check your internet "
                                 "connection and try again later.");
    const QCoro::Task<> alert =
        showAlert(title, message, release ? AlertStyle::informational : AlertStyle::warning);
    co_await alert;
}

void UpdateChecker::openDownload() const {
    if (!available_) {
        return;
    }
    const QUrl url(available_->downloadURL, QUrl::StrictMode);
    if (url.isValid() && (url.scheme() == u"https" || url.scheme() == u"http")) { // for a browser alone
        settings_.openURL(url);
    }
}

} // namespace stowlark
