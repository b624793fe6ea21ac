#pragma once

#include <QObject>
#include <QUrl>
#include <QtQml/qqml.h>

namespace stowlark {

/// Through which menus, the desktop and other programs reach the window. Lives on the main thread.
class AppState : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")
    Q_PROPERTY(QUrl incomingFile READ incomingFile WRITE setIncomingFile NOTIFY incomingFileChanged)
    Q_PROPERTY(bool showAbout READ showAbout WRITE setShowAbout NOTIFY showAboutChanged)
    Q_PROPERTY(bool showHelp READ showHelp WRITE setShowHelp NOTIFY showHelpChanged)

public:
    using QObject::QObject;

    /// The program's own.
    static AppState &shared();

    /// A file handed over from outside, until the window takes it; empty for none.
    QUrl incomingFile() const { return incomingFile_; }
    void setIncomingFile(const QUrl &file);
    /// One of the two at a time: to show one takes the other away.
    bool showAbout() const { return showAbout_; }
    void setShowAbout(bool show);
    bool showHelp() const { return showHelp_; }
    void setShowHelp(bool show);

Q_SIGNALS:
    /// After every write, also of the same value.
    void incomingFileChanged();
    void showAboutChanged();
    void showHelpChanged();

private:
    QUrl incomingFile_;
    bool showAbout_ = false;
    bool showHelp_ = false;
};

} // namespace stowlark
