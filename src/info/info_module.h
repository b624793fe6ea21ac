#pragma once

#include <QQmlEngine>

namespace stowlark {

/// Lets an engine import Stowlark.Info, next to the main window. To be called before the engine loads
/// anything, as it remembers which modules it has not found.
void useInfoModule(QQmlEngine &engine);

} // namespace stowlark
