#pragma once

#include "measure.h"

#include "foundation/child_process.h"

/// What rows are put together from. Each throws Failure if it cannot be done.
namespace stowlark {

/// Runs a tool to its end.
Action bareTool(Command command);
/// Removes a folder.
Action removal(const Path &folder);
Action fileRemoval(const Path &file);

} // namespace stowlark
