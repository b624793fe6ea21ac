#pragma once

namespace stowlark::appkit {

enum class SymbolWeight { regular, black };

/// Draws the system's symbol, in black, over `side` rows of `side` transparent pixels: 32 bits each in the
/// machine's byte order, alpha highest, premultiplied. False if there is no symbol of this name.
bool drawSymbol(const char *name, SymbolWeight weight, int side, unsigned char *pixels);

} // namespace stowlark::appkit
