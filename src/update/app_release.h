#pragma once

#include <QMetaType>
#include <QString>

#include <optional>

namespace stowlark {

/// A release that the maker has published.
struct AppRelease {
    Q_GADGET
    Q_PROPERTY(QString version MEMBER version)
    Q_PROPERTY(QString releaseNotes MEMBER releaseNotes)
    Q_PROPERTY(QString downloadURL MEMBER downloadURL)
    Q_PROPERTY(QString releaseDate READ shownReleaseDate)

public:
    QString version = {};
    QString releaseNotes = {};
    QString downloadURL = {};                ///< of the installer; any text, not always a URL
    std::optional<QString> releaseDate = {}; ///< any text, to show

    /// From the feed: one JSON object with the names of the fields as keys; only releaseDate may be missing
    /// or null. Nothing if the bytes are anything else.
    static std::optional<AppRelease> decode(const QByteArray &json);
    QByteArray encode() const;

    /// Empty if there is none.
    QString shownReleaseDate() const { return releaseDate.value_or(QString()); }

    bool operator==(const AppRelease &other) const = default;
};

} // namespace stowlark
