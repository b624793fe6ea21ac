#pragma once

#include <QCoro/QCoroTask>

#include <QFileDialog>
#include <QList>
#include <QUrl>

namespace stowlark {

/// Shows the dialog, which it then deletes, over the window until the user has decided. Nothing if that was
/// to cancel.
QCoro::Task<QList<QUrl>> decision(QFileDialog *dialog);

} // namespace stowlark
