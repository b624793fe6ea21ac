#include "window/content_view.h"

#include "foundation/file_url.h"
#include "foundation/site.h"
#include "window/file_display.h"
#include "window/long_text.h"
#include "window/output_name.h"
#include "window/uri_list.h"

#include <algorithm>
#include <utility>

namespace stowlark {
namespace {

template <typename Enumeration>
QStringList labels() {
    const auto &all = RawValues<Enumeration>::labels;
    return {all.begin(), all.end()};
}

QString fileExtension(ArchiveFormat format) {
    switch (format) {
    case ArchiveFormat::zip:
        return QStringLiteral("zip");
    case ArchiveFormat::tarGz:
        return QStringLiteral("tar.gz");
    case ArchiveFormat::sevenZ:
        return QStringLiteral("7z");
    case ArchiveFormat::rar:
        return QStringLiteral("rar");
    case ArchiveFormat::dmg:
        return QStringLiteral("dmg");
    }
    return {};
}

} // namespace

ContentView::ContentView(Desktop desktop, Tools tools, AppState &appState, UpdateChecker &updater,
                         QObject *parent)
    : QObject(parent)
    , desktop_(std::move(desktop))
    , mgr_(std::move(tools))
    , appState_(appState)
    , updater_(updater) {
    connect(&files_, &FileListModel::changed, this, &ContentView::createDisabledChanged);
    connect(this, &ContentView::archiveNameChanged, this, &ContentView::createDisabledChanged);
    connect(&mgr_, &ArchiveManager::lastOutputURLChanged, this, &ContentView::hasOutputChanged);
    connect(&mgr_, &ArchiveManager::statusMessageChanged, this, &ContentView::takeStatus);
    connect(&updater_, &UpdateChecker::availableChanged, this, &ContentView::takeRelease);
    connect(&appState_, &AppState::incomingFileChanged, this, &ContentView::takeIncomingFile);
    takeIncomingFile();
}

/// Nothing is extracted until the user says so.
void ContentView::takeIncomingFile() {
    const QUrl file = appState_.incomingFile();
    if (!file.isEmpty()) {
        setMode(AppMode::extract);
        setArchiveFile(file);
        appState_.setIncomingFile({});
    }
}

QString ContentView::siteName() {
    return stowlark::siteName();
}

QString ContentView::siteLabel() {
    return QStringLiteral("by ") + siteName();
}

QStringList ContentView::modes() {
    return labels<AppMode>();
}

QStringList ContentView::formats() {
    return labels<ArchiveFormat>();
}

QStringList ContentView::levels() {
    return labels<CompressionLevel>();
}

void ContentView::setMode(AppMode mode) {
    if (mode != mode_) {
        mode_ = mode;
        Q_EMIT modeChanged();
        mgr_.clearStatus();
    }
}

void ContentView::setFormat(ArchiveFormat format) {
    if (format != format_) {
        format_ = format;
        Q_EMIT formatChanged();
    }
}

void ContentView::setLevel(CompressionLevel level) {
    if (level != level_) {
        level_ = level;
        Q_EMIT levelChanged();
    }
}

void ContentView::setModeIndex(int index) {
    setMode(static_cast<AppMode>(std::clamp<int>(index, 0, static_cast<int>(modes().size()) - 1)));
}

void ContentView::setFormatIndex(int index) {
    setFormat(static_cast<ArchiveFormat>(std::clamp<int>(index, 0, static_cast<int>(formats().size()) - 1)));
}

void ContentView::setLevelIndex(int index) {
    setLevel(static_cast<CompressionLevel>(std::clamp<int>(index, 0, static_cast<int>(levels().size()) - 1)));
}

void ContentView::setArchiveName(const QString &name) {
    if (name != archiveName_) {
        archiveName_ = name;
        Q_EMIT archiveNameChanged();
    }
}

void ContentView::setOutputDir(const QUrl &folder) {
    outputDir_ = folder;
    Q_EMIT outputDirChanged();
}

void ContentView::setExtractDir(const QUrl &folder) {
    extractDir_ = folder;
    Q_EMIT extractDirChanged();
}

QString ContentView::releaseHeadline() const {
    const QString notes = updater_.release().releaseNotes;
    const auto isEnd = [](QChar c) { return c == u'\n' || c == u'\r'; };
    const auto end = std::find_if(notes.begin(), notes.end(), isEnd);
    return notes.left(end - notes.begin()).left(500);
}

QUrl ContentView::outputURL() const {
    return fileUrl(path(outputDir_) / outputName(archiveName_, fileExtension(format_)).toStdString());
}

QString ContentView::extensionLabel() const {
    return u'.' + fileExtension(format_);
}

QString ContentView::toolWarning() const {
    return mgr_.toolWarning(format_).value_or(QString());
}

bool ContentView::createDisabled() const {
    return files_.count() == 0 || files_.isAdding() || isBlank(archiveName_);
}

void ContentView::takeRelease() {
    if (!updater_.hasRelease() && showReleaseNotes_) {
        showReleaseNotes_ = false;
        Q_EMIT showReleaseNotesChanged();
    }
    Q_EMIT releaseChanged();
}

void ContentView::takeStatus() {
    statusLines_ = linesOfLongText(mgr_.statusMessage());
    Q_EMIT statusChanged();
}

void ContentView::setArchiveFile(const QUrl &url) {
    archiveFile_ = url;
    Q_EMIT archiveFileChanged();
    setExtractDir(fileUrl(parentFolder(path(url))));
    mgr_.clearStatus();
}

void ContentView::dropFiles(const QByteArray &uriList) {
    files_.add(uriList);
}

void ContentView::dropArchives(const QByteArray &uriList) {
    if (const auto archive = lastFile(uriList)) {
        setArchiveFile(*archive);
    }
}

template <typename Chosen, typename Take>
void ContentView::choose(const std::function<QCoro::Task<Chosen>()> &panel, Take take) {
    if (std::exchange(isChoosing_, true)) {
        return;
    }
    QCoro::connect(panel(), this, [this, take](const Chosen &chosen) {
        isChoosing_ = false;
        take(chosen);
    });
}

void ContentView::browseFiles() {
    choose(desktop_.chooseFilesAndFolders, [this](const QList<QUrl> &urls) { dropFiles(uriList(urls)); });
}

void ContentView::browseArchive() {
    choose(desktop_.chooseArchive, [this](const std::optional<QUrl> &url) {
        if (url) {
            setArchiveFile(*url);
        }
    });
}

void ContentView::chooseSaveDir() {
    choose(desktop_.chooseFolder, [this](const std::optional<QUrl> &url) {
        if (url) {
            setOutputDir(*url);
        }
    });
}

void ContentView::chooseExtractDir() {
    choose(desktop_.chooseFolder, [this](const std::optional<QUrl> &url) {
        if (url) {
            setExtractDir(*url);
        }
    });
}

void ContentView::removeFile(const QUrl &url) {
    files_.remove(url);
}

void ContentView::removeFileAt(int row) {
    if (row >= 0 && row < files_.count()) {
        removeFile(QUrl(files_.urls()[static_cast<std::size_t>(row)]));
    }
}

void ContentView::clearFiles() {
    files_.clear();
}

void ContentView::removeArchive() {
    archiveFile_.clear();
    Q_EMIT archiveFileChanged();
    mgr_.clearStatus();
}

void ContentView::create() {
    if (!createDisabled() && !mgr_.isCreating()) {
        mgr_.createArchive(files_.urls(), format_, level_, outputURL());
    }
}

void ContentView::extract() {
    if (!extractDisabled() && !mgr_.isCreating()) {
        mgr_.extractArchive(archiveFile_, extractDir_);
    }
}

void ContentView::showInFinder() {
    if (hasOutput()) {
        desktop_.reveal(mgr_.lastOutputURL());
    }
}

void ContentView::copyStatus() const {
    desktop_.copyText(mgr_.statusMessage());
}

QString ContentView::outputDirText() const {
    return displayText(path(outputDir_).native());
}

QString ContentView::extractDirText() const {
    return displayText(path(extractDir_).native());
}

QString ContentView::archiveFileName() const {
    return displayText(lastPathComponent(path(archiveFile_)));
}

QString ContentView::archiveFileFolder() const {
    return displayText(parentFolder(path(archiveFile_)).native());
}

QString ContentView::archiveFileSize() const {
    return fileSize(fileAttributes(path(archiveFile_))).value_or(QString());
}

QString ContentView::archiveFileIcon() const {
    return archiveIcon(path(archiveFile_));
}

void ContentView::openSite() const {
    desktop_.openURL(siteURL());
}

} // namespace stowlark
