#pragma once

#include "foundation/bundle_version.h"
#include "update/alert_style.h"
#include "update/app_release.h"
#include "update/feed.h"

#include <QObject>

#include <functional>

namespace stowlark {

/// What the update checker works with.
struct UpdateSettings {
    /// Shows an alert with the one button "OK"; done when the person has dismissed it. Must not throw.
    std::function<QCoro::Task<>(QString title, QString message, AlertStyle style)> showAlert;
    /// Opens an address in the person's browser, or not.
    std::function<void(const QUrl &)> openURL;
    /// An HTTPS address; anything else ends the program.
    FeedRequest feed = {};
    /// The running program's.
    std::optional<QString> version = bundleVersion();
};

/// Finds out whether the maker has published a newer release than the running program, and offers it. Lives
/// on the main thread. The signals come after every write, also of the same value.
class UpdateChecker : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool hasRelease READ hasRelease NOTIFY availableChanged)
    Q_PROPERTY(stowlark::AppRelease release READ release NOTIFY availableChanged)
    Q_PROPERTY(bool isChecking READ isChecking NOTIFY isCheckingChanged)
    Q_PROPERTY(QString currentVersion READ currentVersion CONSTANT)
    Q_PROPERTY(QUrl feedURL READ feedURL CONSTANT)

public:
    explicit UpdateChecker(UpdateSettings settings, QObject *parent = nullptr);

    /// The newest release found that is newer than the running program. No check takes it away.
    const std::optional<AppRelease> &available() const { return available_; }
    void setAvailable(const std::optional<AppRelease> &release);
    /// The same for QML: whether there is one, and it, with empty fields if there is none; and to take it
    /// away.
    bool hasRelease() const { return available_.has_value(); }
    AppRelease release() const { return available_.value_or(AppRelease()); }
    Q_INVOKABLE void clearAvailable() { setAvailable(std::nullopt); }

    /// A check of either kind is under way, until its alert is dismissed. A second one then does nothing.
    bool isChecking() const { return isChecking_; }

    /// "1.0" if the program knows none.
    QString currentVersion() const { return settings_.version.value_or(QStringLiteral("1.0")); }
    QUrl feedURL() const { return settings_.feed.url; }

    /// The check that nobody asked for: shows nothing, and reads the feed whatever the status of HTTP. Never
    /// fails.
    QCoro::Task<> checkForUpdates() { return check(Asked::no); }

    /// The check that the person asked for: ends in a newer release or an alert; only the status 200 will do.
    /// Never fails.
    QCoro::Task<> checkManually() { return check(Asked::yes); }

    /// Opens the address of the available release, if that is a URL.
    Q_INVOKABLE void openDownload() const;

Q_SIGNALS:
    void availableChanged();
    void isCheckingChanged();

private:
    enum class Asked { no, yes };
    QCoro::Task<> check(Asked asked);
    void setIsChecking(bool checking);

    UpdateSettings settings_;
    std::optional<AppRelease> available_;
    bool isChecking_ = false;
};

} // namespace stowlark
