#include "diskimage/catalog.h"

#include "diskimage/hfs_values.h"

#include <sys/stat.h>

namespace stowlark {
namespace {

constexpr BTree::Traits catalogTraits{.nodeSize = 8192,
                                      .maxKeyLength = 516,
                                      .keyCompareType = 0xBC, // by the units' numbers: case matters
                                      .attributes = 6};       // long keys, also in index nodes

constexpr std::uint16_t hasThread = 0x02;
constexpr std::uint16_t hasFolderCount = 0x10;

Bytes catalogKey(std::uint32_t parent, const std::u16string &name) {
    Bytes key;
    BigEndian(key).u16(6 + 2 * name.size()).u32(parent).u16(name.size()).utf16(name);
    return key;
}

Bytes threadData(const VolumeItem &item) {
    Bytes data;
    BigEndian(data)
        .u16(S_ISDIR(item.numbers.mode) ? hfs::folderThread : hfs::fileThread)
        .u16(0)
        .u32(item.numbers.parent)
        .u16(item.name.size())
        .utf16(item.name);
    return data;
}

/// What the records of files and folders have in common, from the ID on.
void appendMetadata(BigEndian to, const VolumeItem::Numbers &numbers) {
    const std::uint32_t date = hfsDate(numbers.modified);
    to.u32(numbers.id)
        .u32(date) // created
        .u32(date) // contents changed
        .u32(date) // attributes changed
        .u32(date) // read
        .u32(0)    // backed up: never
        .u32(numbers.owner)
        .u32(numbers.group)
        .u16(0) // flags of administrator and owner
        .u16(numbers.mode)
        .u32(S_ISDIR(numbers.mode) ? 0 : 1); // links
}

Bytes folderData(const VolumeItem::Numbers &numbers) {
    Bytes data;
    BigEndian(data).u16(hfs::folderRecord).u16(hasFolderCount).u32(numbers.children);
    appendMetadata(BigEndian(data), numbers);
    BigEndian(data).zeros(32).u32(0).u32(numbers.folders);
    return data;
}

Bytes fileData(const VolumeItem::Numbers &numbers, std::uint64_t firstContentBlock) {
    Bytes data;
    BigEndian(data).u16(hfs::fileRecord).u16(hasThread).u32(0);
    appendMetadata(BigEndian(data), numbers);
    BigEndian(data)
        .ascii(S_ISLNK(numbers.mode) ? std::string_view("slnkrhap") : std::string_view("\0\0\0\0\0\0\0\0", 8))
        .zeros(24)
        .u64(0); // text encoding, reserved
    appendFork(BigEndian(data), {numbers.size, firstContentBlock + numbers.block});
    appendFork(BigEndian(data), {});
    return data;
}

} // namespace

void appendFork(BigEndian to, const Fork &fork) {
    const std::uint64_t blocks = blocksFor(fork.size);
    to.u64(fork.size).u32(0).u32(blocks).u32(blocks > 0 ? fork.block : 0).u32(blocks).zeros(56);
}

/// The keys ascend by ID first: an item's thread, then what the item holds if it is a folder. Both kinds of
/// records come from the same list of items, with two cursors.
BTree makeCatalog(const SourceTree &tree, const std::u16string &volumeName,
                  const std::uint64_t &firstContentBlock) {
    return BTree(catalogTraits, [&](const BTree::Record &emit) {
        VolumeItem folder = tree.root();
        folder.name = volumeName;
        emit(catalogKey(folder.numbers.parent, folder.name), folderData(folder.numbers));
        ItemJournal::Cursor threads(tree.items());
        ItemJournal::Cursor children(tree.items());
        VolumeItem child;
        bool hasChild = children.next(child);
        do {
            emit(catalogKey(folder.numbers.id, {}), threadData(folder));
            while (hasChild && child.numbers.parent == folder.numbers.id) {
                emit(catalogKey(child.numbers.parent, child.name),
                     S_ISDIR(child.numbers.mode) ? folderData(child.numbers)
                                                 : fileData(child.numbers, firstContentBlock));
                hasChild = children.next(child);
            }
        } while (threads.next(folder));
    });
}

} // namespace stowlark
