#pragma once

#include <QObject>
#include <QStringList>
#include <QUrl>

#include <functional>

namespace stowlark {

/// Brings the window to the front and hands a file over to it.
using HandOver = std::function<void(const QUrl &file)>;

/// Answers "Extract with Stowlark" of the file managers' context menus.
class ServiceHandler : public QObject {
    Q_OBJECT

public:
    explicit ServiceHandler(const HandOver &handOver);

    /// Hands the first file among the URLs over, after it has returned. Whether the file exists and is an
    /// archive shows when the user extracts it. Does nothing if there is no file.
    void extractFiles(const QStringList &urls);

Q_SIGNALS:
    void fileAsked(const QUrl &file);
};

} // namespace stowlark
