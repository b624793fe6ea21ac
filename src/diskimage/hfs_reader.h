#pragma once

#include "diskimage/udif_reader.h"

#include <array>
#include <functional>
#include <map>

namespace stowlark {

/// The items of an HFS+ volume, and their contents. Resource forks and extended attributes are left out.
class HfsReader {
public:
    /// A stretch of the volume, in allocation blocks.
    struct Extent {
        std::uint32_t block;
        std::uint32_t count;
    };
    struct Item {
        std::uint32_t id = 0;
        std::u16string name;        ///< as stored
        std::uint16_t mode = 0;     ///< st_mode; 0 where none was stored
        std::uint32_t modified = 0; ///< seconds since 1904
        bool isFolder = false;
        std::uint64_t size = 0; ///< of a file's or link's contents, bytes
        std::array<Extent, 8> extents{};
    };

    /// `image` must outlive it. Throws UnsupportedImage if the partition is no HFS+ volume or holds what is
    /// not known here, as files that the file system compressed; ImageError; PlatformError.
    HfsReader(UdifReader &image, UdifReader::Partition partition);

    /// Whether the partition holds an HFS+ volume.
    static bool isVolume(UdifReader &image, UdifReader::Partition partition);

    /// What a folder holds, in the order of the catalog; what the file system keeps for itself is left out.
    /// Of a hard link, what it stands for, under the link's name.
    const std::vector<Item> &children(std::uint32_t folder) const;

    /// What the contents of all files come to, without those zeros that the image does not store. Throws
    /// ImageError for an image that would never end.
    std::uint64_t storedBytes() const;

    /// Calls `data` for the contents, front to back; what it leaves out are zeros.
    using Data = std::function<void(std::uint64_t offset, ByteSpan bytes)>;
    void readContents(const Item &file, const Data &data);

private:
    struct HardLink {
        std::uint32_t folder; ///< that holds it
        std::size_t index;    ///< among what that holds
        std::uint32_t number; ///< of its contents
    };

    struct CatalogFork {
        std::uint64_t size; ///< bytes
        std::array<Extent, 8> extents;
    };

    CatalogFork readHeader();
    void readCatalog(const CatalogFork &fork);
    void readLeaf(ByteSpan node, std::uint64_t records);
    void resolveLinks();
    void addItem(std::uint32_t parent, std::u16string name, BigEndianReader from, bool isFolder);
    void read(const std::array<Extent, 8> &extents, std::span<std::uint8_t> to);
    template <typename Use>
    void forEachStretch(const Item &file, Use use) const;
    std::uint64_t diskOffset(const Extent &extent) const;

    UdifReader &image_;
    UdifReader::Partition partition_;
    std::uint64_t blockSize_ = 0; ///< bytes
    std::uint32_t totalBlocks_ = 0;
    std::map<std::uint32_t, std::vector<Item>> items_; ///< by the folder that holds them
    std::vector<HardLink> links_;
};

} // namespace stowlark
