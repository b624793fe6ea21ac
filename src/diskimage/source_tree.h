#pragma once

#include "diskimage/hfs_values.h"
#include "diskimage/item_journal.h"
#include "foundation/path_name.h"

namespace stowlark {

constexpr std::uint64_t allocationBlock = 4096; ///< bytes

constexpr std::uint64_t blocksFor(std::uint64_t bytes) {
    return (bytes + allocationBlock - 1) / allocationBlock;
}

/// All that a folder holds, in the order of the volume's catalog: folder by folder, those nearer to the root
/// first, and sorted by stored name within each. IDs are given in that order.
class SourceTree {
public:
    /// Looks at everything, reading no contents. Throws PlatformError or ImageError, naming the item that
    /// cannot be stored: what is neither file, folder nor link, or two names that are stored alike.
    explicit SourceTree(const Path &folder);

    const ItemJournal &items() const { return journal_; }
    /// The folder itself.
    const VolumeItem &root() const { return root_; }
    std::uint32_t files() const { return files_; }     ///< links included
    std::uint32_t folders() const { return folders_; } ///< without the root
    std::uint32_t nextID() const { return nextID_; }
    std::uint64_t contentBlocks() const { return contentBlocks_; }

    /// Opens a file of the tree for reading; -1, and errno tells why, if that fails.
    Descriptor open(const VolumeItem &item) const;
    /// The target of a link of the tree; empty if it cannot be read.
    std::string linkTarget(const VolumeItem &item) const;
    Path fullPath(const VolumeItem &item) const { return folder_ / item.path; }

private:
    void addChildren(VolumeItem &parent);
    VolumeItem makeItem(int folder, const VolumeItem &parent, std::u16string name,
                        const std::string &fileName);

    Path folder_;
    Descriptor opened_;
    ItemJournal journal_;
    VolumeItem root_;
    std::uint32_t files_ = 0;
    std::uint32_t folders_ = 0;
    std::uint32_t nextID_ = hfs::firstUserID;
    std::uint64_t contentBlocks_ = 0;
};

} // namespace stowlark
