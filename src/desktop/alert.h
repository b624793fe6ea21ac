#pragma once

#include "update/alert_style.h"

#include <QCoro/QCoroTask>

#include <QString>

namespace stowlark {

/// An alert of the desktop's own look, over the window, with the one button "OK"; done when it has been
/// dismissed. One source per system.
QCoro::Task<> showAlert(QString title, QString message, AlertStyle style);

} // namespace stowlark
