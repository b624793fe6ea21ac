#pragma once

#include "archive/archive_manager.h"
#include "desktop/desktop.h"
#include "window/app_mode.h"
#include "window/app_state.h"
#include "window/file_list_model.h"
#include "window/shared_update_checker.h"

#include <QObject>
#include <QStringList>
#include <QUrl>
#include <QtQml/qqml.h>

namespace stowlark {

/// All state and operations of the window; the QML only draws it. Formats, levels and modes are given to QML
/// as numbers into the lists of their labels, folders and files as text.
class ContentView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(stowlark::ArchiveManager *mgr READ mgr CONSTANT)
    Q_PROPERTY(stowlark::FileListModel *files READ files CONSTANT)
    Q_PROPERTY(QString siteName READ siteName CONSTANT)
    Q_PROPERTY(QString siteLabel READ siteLabel CONSTANT)
    Q_PROPERTY(QStringList modes READ modes CONSTANT)
    Q_PROPERTY(QStringList formats READ formats CONSTANT)
    Q_PROPERTY(QStringList levels READ levels CONSTANT)

    Q_PROPERTY(stowlark::UpdateChecker *updater READ updater CONSTANT)
    Q_PROPERTY(QString releaseHeadline READ releaseHeadline NOTIFY releaseChanged)
    Q_PROPERTY(
        bool showReleaseNotes READ showReleaseNotes WRITE setShowReleaseNotes NOTIFY showReleaseNotesChanged)
    Q_PROPERTY(int mode READ modeIndex WRITE setModeIndex NOTIFY modeChanged)
    Q_PROPERTY(int format READ formatIndex WRITE setFormatIndex NOTIFY formatChanged)
    Q_PROPERTY(int level READ levelIndex WRITE setLevelIndex NOTIFY levelChanged)
    Q_PROPERTY(QString archiveName READ archiveName WRITE setArchiveName NOTIFY archiveNameChanged)
    Q_PROPERTY(QString outputDir READ outputDirText NOTIFY outputDirChanged)
    Q_PROPERTY(bool isDragOver MEMBER isDragOver_ NOTIFY isDragOverChanged)
    Q_PROPERTY(bool hasArchive READ hasArchive NOTIFY archiveFileChanged)
    Q_PROPERTY(QString archiveFileName READ archiveFileName NOTIFY archiveFileChanged)
    Q_PROPERTY(QString archiveFileFolder READ archiveFileFolder NOTIFY archiveFileChanged)
    Q_PROPERTY(QString archiveFileSize READ archiveFileSize NOTIFY archiveFileSizeChanged)
    Q_PROPERTY(QString archiveIcon READ archiveFileIcon NOTIFY archiveFileChanged)
    Q_PROPERTY(QString extractDir READ extractDirText NOTIFY extractDirChanged)
    Q_PROPERTY(bool isExtractDragOver MEMBER isExtractDragOver_ NOTIFY isExtractDragOverChanged)

    Q_PROPERTY(QString extensionLabel READ extensionLabel NOTIFY formatChanged)
    Q_PROPERTY(QString toolWarning READ toolWarning NOTIFY toolWarningChanged)
    Q_PROPERTY(bool createDisabled READ createDisabled NOTIFY createDisabledChanged)
    Q_PROPERTY(bool extractDisabled READ extractDisabled NOTIFY archiveFileChanged)
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusChanged)
    Q_PROPERTY(QString statusSummary READ statusSummary NOTIFY statusChanged)
    Q_PROPERTY(QStringList statusLines READ statusLines NOTIFY statusChanged)
    Q_PROPERTY(bool hasOutput READ hasOutput NOTIFY hasOutputChanged)

public:
    explicit ContentView(Desktop desktop = systemDesktop(), Tools tools = {},
                         AppState &appState = AppState::shared(),
                         UpdateChecker &updater = sharedUpdateChecker(), QObject *parent = nullptr);

    ArchiveManager *mgr() { return &mgr_; }
    FileListModel *files() { return &files_; }
    UpdateChecker *updater() { return &updater_; }
    static QString siteName();
    static QString siteLabel();
    static QStringList modes();
    static QStringList formats();
    static QStringList levels();

    AppMode mode() const { return mode_; }
    /// Any change takes the status line away.
    void setMode(AppMode mode);
    ArchiveFormat format() const { return format_; }
    void setFormat(ArchiveFormat format);
    CompressionLevel level() const { return level_; }
    void setLevel(CompressionLevel level);
    QString archiveName() const { return archiveName_; }
    void setArchiveName(const QString &name);
    QUrl outputDir() const { return outputDir_; }
    void setOutputDir(const QUrl &folder);
    /// The archive to extract; empty for none.
    QUrl archiveFile() const { return archiveFile_; }
    QUrl extractDir() const { return extractDir_; }
    void setExtractDir(const QUrl &folder);

    bool showReleaseNotes() const { return showReleaseNotes_; }
    void setShowReleaseNotes(bool show);
    /// The first line of the available release's notes.
    QString releaseHeadline() const;
    /// Where the archive goes: the name as typed ("archive" if blank) with the format's extension, in
    /// `outputDir`.
    QUrl outputURL() const;
    /// "." and the extension that the format gives to files.
    QString extensionLabel() const;
    /// Empty where there is nothing to warn about. Looks the tool up each time.
    QString toolWarning() const;
    /// Nothing to archive, files still being added, or no name.
    bool createDisabled() const;
    bool extractDisabled() const { return archiveFile_.isEmpty(); }
    /// The status message if it is short; empty if it is too long to be laid out at once. Then `statusLines`
    /// are its lines, themselves in pieces of bounded length, of which only those in sight have to be.
    QString statusText() const { return statusLines_.isEmpty() ? mgr_.statusMessage() : QString(); }
    /// What is read aloud of the status message: all of it, or its end.
    QString statusSummary() const { return mgr_.statusMessage().right(1500); }
    const QStringList &statusLines() const { return statusLines_; }
    /// There is something to show in the file manager.
    bool hasOutput() const { return !mgr_.lastOutputURL().isEmpty(); }

    /// Selects the archive to extract, next to which it will be unpacked.
    void setArchiveFile(const QUrl &url);

    /// Both take the type text/uri-list and ignore what is no file of this machine. Of several archives the
    /// last one is selected.
    Q_INVOKABLE void dropFiles(const QByteArray &uriList);
    Q_INVOKABLE void dropArchives(const QByteArray &uriList);

    Q_INVOKABLE void browseFiles();
    Q_INVOKABLE void browseArchive();
    Q_INVOKABLE void chooseSaveDir();
    Q_INVOKABLE void chooseExtractDir();
    Q_INVOKABLE void removeFile(const QUrl &url);
    /// The row of the list; nothing if there is none.
    Q_INVOKABLE void removeFileAt(int row);
    Q_INVOKABLE void clearFiles();
    Q_INVOKABLE void removeArchive();

    /// Both do nothing while disabled or while an operation runs.
    Q_INVOKABLE void create();
    Q_INVOKABLE void extract();
    Q_INVOKABLE void showInFinder();
    /// Puts the status message on the clipboard.
    Q_INVOKABLE void copyStatus() const;
    /// Opens the maker's site in the browser.
    Q_INVOKABLE void openSite() const;

Q_SIGNALS:
    void modeChanged();
    void formatChanged();
    /// It may have changed: another format, the user comes back from installing the tool, or an operation
    /// ended.
    void toolWarningChanged();
    void levelChanged();
    void archiveNameChanged();
    void outputDirChanged();
    void isDragOverChanged();
    void archiveFileChanged();
    void archiveFileSizeChanged();
    void extractDirChanged();
    void isExtractDragOverChanged();
    void releaseChanged();
    void showReleaseNotesChanged();
    void createDisabledChanged();
    void hasOutputChanged();
    void statusChanged();

private:
    void takeIncomingFile();
    void takeRelease();
    void takeStatus();
    /// Opens a file dialog in the folder, unless one is open.
    template <typename Chosen, typename Take>
    void choose(const std::function<QCoro::Task<Chosen>(QUrl)> &panel, const QUrl &begin, Take take);
    int modeIndex() const { return static_cast<int>(mode_); }
    void setModeIndex(int index);
    int formatIndex() const { return static_cast<int>(format_); }
    void setFormatIndex(int index);
    int levelIndex() const { return static_cast<int>(level_); }
    void setLevelIndex(int index);
    QString outputDirText() const;
    QString extractDirText() const;
    bool hasArchive() const { return !archiveFile_.isEmpty(); }
    QString archiveFileName() const;
    QString archiveFileFolder() const;
    const QString &archiveFileSize() const { return archiveFileSize_; }
    QCoro::Task<> readArchiveFileSize();
    QString archiveFileIcon() const;

    Desktop desktop_;
    ArchiveManager mgr_;
    AppState &appState_;
    UpdateChecker &updater_;
    QStringList statusLines_;
    AppMode mode_ = AppMode::compress;
    bool showReleaseNotes_ = false;
    bool isChoosing_ = false; ///< a file dialog is open
    FileListModel files_;
    ArchiveFormat format_ = ArchiveFormat::zip;
    CompressionLevel level_ = CompressionLevel::normal;
    QString archiveName_ = QStringLiteral("archive");
    QUrl outputDir_ = desktopURL();
    bool isDragOver_ = false;
    QUrl archiveFile_;
    QString archiveFileSize_; ///< empty until it is read
    QUrl extractDir_ = desktopURL();
    bool isExtractDragOver_ = false;
};

} // namespace stowlark
