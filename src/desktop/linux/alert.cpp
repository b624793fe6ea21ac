#include "desktop/alert.h"

#include "desktop/linux/over_window.h"

#include <QCoro/QCoroSignal>

#include <QMessageBox>
#include <QPointer>

namespace stowlark {

QCoro::Task<> showAlert(QString title, QString message, AlertStyle style) {
    const QPointer<QMessageBox> box = new QMessageBox;
    box->setIcon(style == AlertStyle::warning ? QMessageBox::Warning : QMessageBox::Information);
    box->setWindowTitle(QStringLiteral("Stowlark"));
    box->setTextFormat(Qt::PlainText);
    box->setText(title);
    box->setInformativeText(message);
    box->setStandardButtons(QMessageBox::Ok);
    showOverWindow(*box);
    co_await qCoro(box.data(), &QDialog::finished);
    if (box) {
        box->deleteLater();
    }
}

} // namespace stowlark
