#pragma once

namespace stowlark {

/// From now on a signal that asks this program to end is only noted, so that its files can be removed first.
void noteInterruptions();

/// Throws Failure once such a signal has come.
void failIfInterrupted();

} // namespace stowlark
