#include "diskimage/hfs_reader.h"

#include "diskimage/hfs_values.h"

#include <algorithm>
#include <bit>

namespace stowlark {
namespace {

constexpr std::uint64_t largestCatalog = 256 << 20;   ///< bytes; it is read whole
constexpr std::uint8_t compressedByFileSystem = 0x20; ///< among the owner's flags
constexpr std::uint32_t hardLink = 0x686C6E6B;        ///< hlnk
constexpr std::uint32_t folderLink = 0x66647270;      ///< fdrp
constexpr std::size_t pieceSize = 1 << 20;            ///< bytes
constexpr std::uint64_t mostStretches = 1 << 26;      ///< of all files; only files that overlap have more

const std::u16string linkedContentsFolder = std::u16string(4, u'\0') + u"HFS+ Private Data";
const std::u16string linkedFoldersFolder = u".HFS+ Private Directory Data\r";

struct ForkRecord {
    std::uint64_t size;
    std::array<HfsReader::Extent, 8> extents{};

    /// A fork in more than eight extents has the others elsewhere, which is rare.
    explicit ForkRecord(BigEndianReader &from, std::uint32_t volumeBlocks, std::uint64_t blockSize) {
        size = from.u64();
        std::uint64_t blocks = from.skip(4).u32();
        for (HfsReader::Extent &extent : extents) {
            extent.block = from.u32();
            extent.count = from.u32();
            if (extent.block > volumeBlocks || extent.count > volumeBlocks - extent.block) {
                throw ImageError::damaged();
            }
            blocks -= std::min<std::uint64_t>(blocks, extent.count);
        }
        if (blocks > 0) {
            throw UnsupportedImage();
        }
        std::uint64_t room = 0;
        for (const HfsReader::Extent &extent : extents) {
            room += extent.count * blockSize;
        }
        if (size > room) {
            throw ImageError::damaged();
        }
    }
};

} // namespace

HfsReader::HfsReader(UdifReader &image, UdifReader::Partition partition)
    : image_(image)
    , partition_(partition) {
    readCatalog(readHeader());
    resolveLinks();
}

bool HfsReader::isVolume(UdifReader &image, UdifReader::Partition partition) {
    if (partition.size < 2 * hfs::headerOffset) {
        return false;
    }
    Bytes start(4);
    image.read(partition.offset + hfs::headerOffset, start);
    const std::uint32_t signatureAndVersion = BigEndianReader(start).u32();
    return signatureAndVersion == 0x482B0004 || signatureAndVersion == 0x48580005; // H+ 4, HX 5
}

HfsReader::CatalogFork HfsReader::readHeader() {
    Bytes header(hfs::headerSize);
    image_.read(partition_.offset + hfs::headerOffset, header);
    BigEndianReader from(header);
    blockSize_ = from.skip(40).u32();
    totalBlocks_ = from.u32();
    if (!std::has_single_bit(blockSize_) || blockSize_ < 512 || totalBlocks_ > partition_.size / blockSize_) {
        throw ImageError::damaged();
    }
    const ForkRecord catalog(from.skip(64 + 80 + 80), totalBlocks_, blockSize_);
    return {catalog.size, catalog.extents};
}

/// Goes along the leaves, which hold all records. No node is gone to twice, so the records are no more than
/// the catalog has room for.
void HfsReader::readCatalog(const CatalogFork &fork) {
    if (fork.size > largestCatalog) {
        throw UnsupportedImage();
    }
    Bytes catalog(fork.size);
    read(fork.extents, catalog);
    BigEndianReader header(catalog);
    std::uint64_t number = header.skip(hfs::nodeDescriptorSize + 10).u32();
    const std::size_t nodeSize = header.skip(4).u16();
    if (!std::has_single_bit(nodeSize) || nodeSize < 512) {
        throw ImageError::damaged();
    }
    for (std::vector<bool> seen(catalog.size() / nodeSize); number != 0;) {
        if (number >= seen.size() || seen[number]) {
            throw ImageError::damaged();
        }
        seen[number] = true;
        const ByteSpan node = ByteSpan(catalog).subspan(number * nodeSize, nodeSize);
        BigEndianReader descriptor(node);
        number = descriptor.u32();
        if (descriptor.skip(4).u8() != hfs::leafNode) {
            throw ImageError::damaged();
        }
        readLeaf(node, descriptor.skip(1).u16());
    }
}

/// Where the records begin is told from the end of the node on.
void HfsReader::readLeaf(ByteSpan node, std::uint64_t records) {
    if (2 * (records + 1) > node.size()) {
        throw ImageError::damaged();
    }
    const auto offset = [node](std::uint64_t record) {
        return BigEndianReader(node.subspan(node.size() - 2 * (record + 1))).u16();
    };
    for (std::uint64_t i = 0; i < records; ++i) {
        const std::uint16_t begin = offset(i);
        const std::uint16_t end = offset(i + 1);
        if (begin < hfs::nodeDescriptorSize || begin >= end || end > node.size()) {
            throw ImageError::damaged();
        }
        BigEndianReader from(node.subspan(begin, end - begin));
        const std::uint16_t keyLength = from.u16();
        BigEndianReader key(from.take(keyLength));
        const std::uint32_t parent = key.u32();
        std::u16string name = key.utf16(key.u16());
        const std::uint16_t type = from.u16();
        if (type == hfs::folderRecord || type == hfs::fileRecord) {
            addItem(parent, std::move(name), from, type == hfs::folderRecord);
        }
    }
}

void HfsReader::addItem(std::uint32_t parent, std::u16string name, BigEndianReader from, bool isFolder) {
    Item item;
    item.name = std::move(name);
    item.isFolder = isFolder;
    item.id = from.skip(6).u32();
    item.modified = from.skip(4).u32();
    const std::uint8_t ownerFlags = from.skip(21).u8();
    item.mode = from.u16();
    const std::uint32_t special = from.u32();
    const std::uint32_t finderType = from.u32();
    if (!isFolder) {
        const ForkRecord contents(from.skip(36), totalBlocks_, blockSize_);
        item.size = contents.size;
        item.extents = contents.extents;
        if ((ownerFlags & compressedByFileSystem) != 0 || finderType == folderLink) {
            throw UnsupportedImage();
        }
    }
    std::vector<Item> &siblings = items_[parent];
    siblings.push_back(std::move(item));
    if (!isFolder && finderType == hardLink) {
        links_.push_back({parent, siblings.size() - 1, special});
    }
}

/// Puts the contents that hard links stand for in their place, and takes out where those are kept.
void HfsReader::resolveLinks() {
    std::vector<Item> &top = items_[hfs::rootFolder];
    const auto kept = std::ranges::find(top, linkedContentsFolder, &Item::name);
    std::map<std::u16string, const Item *> contents;
    if (kept != top.end()) {
        for (const Item &item : items_[kept->id]) {
            contents[item.name] = &item;
        }
    }
    for (const HardLink &link : links_) {
        const auto target = contents.find(QStringLiteral("iNode%1").arg(link.number).toStdU16String());
        if (target == contents.end()) {
            throw ImageError::damaged();
        }
        Item &item = items_[link.folder][link.index];
        std::u16string name = std::move(item.name);
        item = *target->second;
        item.name = std::move(name);
    }
    std::erase_if(top, [](const Item &item) {
        return item.name == linkedContentsFolder || item.name == linkedFoldersFolder;
    });
}

const std::vector<HfsReader::Item> &HfsReader::children(std::uint32_t folder) const {
    static const std::vector<Item> none;
    const auto found = items_.find(folder);
    return found == items_.end() ? none : found->second;
}

/// Calls `use` for each stretch of a file: where it is on the disk and in the file, its length, and whether
/// it is stored.
template <typename Use>
void HfsReader::forEachStretch(const Item &file, Use use) const {
    std::uint64_t offset = 0;
    for (const Extent &extent : file.extents) {
        std::uint64_t at = diskOffset(extent);
        std::uint64_t left = std::min(extent.count * blockSize_, file.size - offset);
        while (left > 0) {
            const std::uint64_t zeros = std::min(image_.zerosAt(at), left);
            const std::uint64_t count = zeros > 0 ? zeros : std::min<std::uint64_t>(left, pieceSize);
            use(at, offset, count, zeros == 0);
            at += count;
            offset += count;
            left -= count;
        }
    }
}

void HfsReader::readContents(const Item &file, const Data &data) {
    Bytes piece(std::min<std::uint64_t>(file.size, pieceSize));
    forEachStretch(file, [&](std::uint64_t at, std::uint64_t offset, std::uint64_t count, bool isStored) {
        if (isStored) {
            image_.read(at, std::span(piece).first(count));
            data(offset, ByteSpan(piece).first(count));
        }
    });
}

std::uint64_t HfsReader::storedBytes() const {
    std::uint64_t total = 0;
    std::uint64_t stretches = 0;
    const auto add = [&](std::uint64_t, std::uint64_t, std::uint64_t count, bool isStored) {
        if (++stretches > mostStretches) {
            throw ImageError::damaged();
        }
        total += isStored ? count : 0;
    };
    for (const auto &[folder, items] : items_) {
        for (const Item &item : items) {
            forEachStretch(item, add);
        }
    }
    return total;
}

void HfsReader::read(const std::array<Extent, 8> &extents, std::span<std::uint8_t> to) {
    for (const Extent &extent : extents) {
        const std::size_t count = std::min<std::uint64_t>(extent.count * blockSize_, to.size());
        image_.read(diskOffset(extent), to.first(count));
        to = to.subspan(count);
    }
}

std::uint64_t HfsReader::diskOffset(const Extent &extent) const {
    return partition_.offset + extent.block * blockSize_;
}

} // namespace stowlark
