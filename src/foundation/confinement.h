#pragma once

#include "foundation/path_name.h"

#include <vector>

namespace stowlark {

/// Whether the system can see to what follows.
bool canConfineThreads();

/// From now on this thread, and the children that it starts, can make, write, move and remove files only
/// below these folders, and nobody can take that back; modes, owners and times of others they still can
/// change. Where the system cannot see to that, nothing changes.
void confineThread(const std::vector<Path> &folders);

} // namespace stowlark
