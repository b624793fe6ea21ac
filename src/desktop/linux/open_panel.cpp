#include "desktop/open_panel.h"

#include "desktop/linux/over_window.h"

#include <QCoro/QCoroSignal>

#include <QAbstractItemView>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QPointer>
#include <QRegularExpression>

#include <utility>

namespace stowlark {
namespace {

/// Takes files and folders alike; Qt's own takes the one kind or the other. Opening a folder with a double
/// click or the Return key in the list still goes into it.
class FilesAndFoldersDialog final : public QFileDialog {
public:
    FilesAndFoldersDialog() {
        setOption(QFileDialog::DontUseNativeDialog);
        setFileMode(QFileDialog::Directory);
        setOption(QFileDialog::ShowDirsOnly, false);
        setLabelText(QFileDialog::Accept, tr("Add"));
        setLabelText(QFileDialog::FileName, tr("Names:"));
        for (const char *pointless : {"fileTypeLabel", "fileTypeCombo"}) {
            findChild<QWidget *>(QLatin1String(pointless))->hide();
        }
        for (auto *view :
             findChildren<QAbstractItemView *>(QRegularExpression(QStringLiteral("^(list|tree)View$")))) {
            view->setSelectionMode(QAbstractItemView::ExtendedSelection);
        }
    }

    void accept() override {
        if (findChild<QLineEdit *>()->text().isEmpty()) {
            return; // nothing chosen: Qt would take the folder that is shown
        }
        for (const QString &file : selectedFiles()) {
            if (!QFileInfo::exists(file)) {
                QFileDialog::accept(); // says so
                return;
            }
        }
        done(QDialog::Accepted);
    }
};

/// Shows the dialog, which it then deletes, over the window until the user has decided. Nothing if the user
/// cancels.
QCoro::Task<QList<QUrl>> decision(QFileDialog *dialog, QUrl begin) {
    const QPointer<QFileDialog> alive(dialog);
    const QString folder = begin.toLocalFile();
    dialog->setDirectory(QFileInfo(folder).isDir() ? folder : QDir::homePath());
    showOverWindow(*dialog);
    const int result = co_await qCoro(dialog, &QDialog::finished);
    QList<QUrl> chosen;
    if (alive && result == QDialog::Accepted) {
        chosen = dialog->selectedUrls();
    }
    if (alive) {
        dialog->deleteLater();
    }
    co_return chosen;
}

QCoro::Task<std::optional<QUrl>> oneDecision(QFileDialog *dialog, QUrl begin) {
    const QList<QUrl> chosen = co_await decision(dialog, std::move(begin));
    co_return chosen.isEmpty() ? std::nullopt : std::optional(chosen.first());
}

} // namespace

QCoro::Task<QList<QUrl>> chooseFilesAndFolders(QUrl begin) {
    auto *dialog = new FilesAndFoldersDialog;
    dialog->setWindowTitle(QFileDialog::tr("Add Files and Folders"));
    return decision(dialog, std::move(begin));
}

QCoro::Task<std::optional<QUrl>> chooseArchive(QUrl begin) {
    auto *dialog = new QFileDialog;
    dialog->setWindowTitle(QFileDialog::tr("Choose an Archive"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilters({QFileDialog::tr("Archives (*.zip *.tar.gz *.tgz *.gz *.tar *.7z *.rar *.dmg)"),
                            QFileDialog::tr("All files (*)")});
    return oneDecision(dialog, std::move(begin));
}

QCoro::Task<std::optional<QUrl>> chooseFolder(QUrl begin) {
    auto *dialog = new QFileDialog;
    dialog->setWindowTitle(QFileDialog::tr("Choose a Folder"));
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    return oneDecision(dialog, std::move(begin));
}

} // namespace stowlark
