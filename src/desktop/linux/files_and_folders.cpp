#include "desktop/file_dialog.h"
#include "desktop/open_panel.h"

#include <QAbstractItemView>
#include <QFileInfo>
#include <QLineEdit>
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

} // namespace

QCoro::Task<QList<QUrl>> chooseFilesAndFolders(QUrl begin) {
    auto *dialog = new FilesAndFoldersDialog;
    dialog->setWindowTitle(QFileDialog::tr("Add Files and Folders"));
    return decision(dialog, std::move(begin));
}

} // namespace stowlark
