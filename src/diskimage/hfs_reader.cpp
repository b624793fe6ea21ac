#include "diskimage/hfs_reader.h"

#include <algorithm>
#include <bit>

#include <sys/stat.h>

namespace stowlark {
namespace {

constexpr std::uint64_t largestCatalog = std::uint64_t(1) << 31; ///< bytes
constexpr std::uint64_t headerOffset = 1024;                     ///< bytes
constexpr std::size_t descriptorSize = 14;
constexpr std::uint8_t leafNode = 0xFF;
constexpr std::uint8_t compressedByFileSystem = 0x20; ///< among the owner's flags
constexpr std::uint32_t hardLink = 0x686C6E6B;        ///< hlnk
constexpr std::uint32_t folderLink = 0x66647270;      ///< fdrp
constexpr std::size_t pieceSize = 1 << 20;            ///< bytes

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
    readHeader();
    readCatalog();
    resolveLinks();
}

bool HfsReader::isVolume(UdifReader &image, UdifReader::Partition partition) {
    if (partition.size < 2 * headerOffset) {
        return false;
    }
    Bytes start(4);
    image.read(partition.offset + headerOffset, start);
    const std::uint32_t signatureAndVersion = BigEndianReader(start).u32();
    return signatureAndVersion == 0x482B0004 || signatureAndVersion == 0x48580005; // H+ 4, HX 5
}

void HfsReader::readHeader() {
    Bytes header(512);
    image_.read(partition_.offset + headerOffset, header);
    BigEndianReader from(header);
    blockSize_ = from.skip(40).u32();
    totalBlocks_ = from.u32();
    if (!std::has_single_bit(blockSize_) || blockSize_ < 512 || totalBlocks_ > partition_.size / blockSize_) {
        throw ImageError::damaged();
    }
    const ForkRecord catalog(from.skip(64 + 80 + 80), totalBlocks_, blockSize_);
    catalog_ = catalog.extents;
    catalogSize_ = catalog.size;
}

/// Goes along the leaves, which hold all records.
void HfsReader::readCatalog() {
    Bytes start(descriptorSize + 106);
    read(catalog_, 0, start);
    BigEndianReader from(start);
    std::uint64_t number = from.skip(descriptorSize + 10).u32();
    const std::size_t nodeSize = from.skip(4).u16();
    if (!std::has_single_bit(nodeSize) || nodeSize < 512 || catalogSize_ > largestCatalog) {
        throw ImageError::damaged();
    }
    Bytes node(nodeSize);
    std::uint64_t left = catalogSize_ / nodeSize;
    for (; number != 0; --left) {
        if (left == 0) {
            throw ImageError::damaged(); // it goes round
        }
        read(catalog_, number * nodeSize, node);
        BigEndianReader descriptor(node);
        number = descriptor.u32();
        if (descriptor.skip(4).u8() != leafNode) {
            throw ImageError::damaged();
        }
        readLeaf(node, descriptor.skip(1).u16());
    }
}

void HfsReader::readLeaf(ByteSpan node, std::uint64_t records) {
    if (2 * records > node.size()) {
        throw ImageError::damaged();
    }
    BigEndianReader offsets(node.last(2 * records));
    for (std::uint64_t i = 0; i < records; ++i) {
        BigEndianReader from(node);
        from.skip(offsets.u16());
        const std::uint16_t keyLength = from.u16();
        BigEndianReader key(from.take(keyLength));
        const std::uint32_t parent = key.u32();
        std::u16string name = key.utf16(key.u16());
        const std::uint16_t type = from.u16();
        if (type == 1 || type == 2) {
            addItem(parent, std::move(name), from, type == 1);
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
    if (isFolder) {
        item.mode = S_IFDIR | (item.mode & 07777);
    } else {
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
    std::vector<Item> &top = items_[rootID];
    const auto kept = std::ranges::find(top, linkedContentsFolder, &Item::name);
    std::map<std::u16string, const Item *> contents;
    if (kept != top.end()) {
        for (const Item &item : items_[kept->id]) {
            contents[item.name] = &item;
        }
    }
    for (const HardLink &link : links_) {
        const auto target = contents.find(QStringLiteral("iNode%1").arg(link.number).toStdU16String());
        if (target != contents.end()) {
            Item &item = items_[link.folder][link.index];
            std::u16string name = std::move(item.name);
            item = *target->second;
            item.name = std::move(name);
        }
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

void HfsReader::readContents(const Item &file, const Data &data) {
    Bytes piece(std::min<std::uint64_t>(file.size, pieceSize));
    std::uint64_t offset = 0;
    for (const Extent &extent : file.extents) {
        std::uint64_t at = diskOffset(extent);
        std::uint64_t left = std::min(extent.count * blockSize_, file.size - offset);
        while (left > 0) {
            std::uint64_t count = std::min(image_.zerosAt(at), left);
            if (count == 0) {
                count = std::min<std::uint64_t>(left, piece.size());
                image_.read(at, std::span(piece).first(count));
                data(offset, ByteSpan(piece).first(count));
            }
            at += count;
            offset += count;
            left -= count;
        }
    }
}

void HfsReader::read(const std::array<Extent, 8> &extents, std::uint64_t offset, std::span<std::uint8_t> to) {
    for (const Extent &extent : extents) {
        const std::uint64_t size = extent.count * blockSize_;
        const std::size_t count = offset < size ? std::min<std::uint64_t>(size - offset, to.size()) : 0;
        image_.read(diskOffset(extent) + offset, to.first(count));
        offset -= count > 0 ? offset : size;
        to = to.subspan(count);
        if (to.empty()) {
            return;
        }
    }
    throw ImageError::damaged();
}

std::uint64_t HfsReader::diskOffset(const Extent &extent) const {
    return partition_.offset + extent.block * blockSize_;
}

} // namespace stowlark
