#pragma once

namespace stowlark {

/// Makes the QML module Stowlark.Info known. To be called before an engine loads anything, as that remembers
/// which modules it has not found.
void registerInfoModule();

} // namespace stowlark
