#pragma once

#include <QVariantMap>

/// What comes along with the calls of org.freedesktop.Application: the token by which the desktop knows that
/// the user asked for the window, and lets it come to the front.
namespace stowlark {

/// The token that this program was started with; empty for none.
QVariantMap platformData();

/// Keeps the token for the next time that a window is activated.
void takePlatformData(const QVariantMap &data);

void forgetActivationToken();

} // namespace stowlark
