#pragma once

#include "diskimage/b_tree.h"
#include "diskimage/source_tree.h"

namespace stowlark {

/// A stretch of a volume: what HFS+ keeps of a fork, with one extent.
struct Fork {
    std::uint64_t size = 0;  ///< bytes
    std::uint64_t block = 0; ///< the first one
};

void appendFork(BigEndian to, const Fork &fork);

/// The catalog of a volume named `volumeName` that holds `tree`, whose contents begin at the allocation block
/// that `firstContentBlock` has when it is written. Both must outlive it.
BTree makeCatalog(const SourceTree &tree, const std::u16string &volumeName,
                  const std::uint64_t &firstContentBlock);

} // namespace stowlark
