#pragma once

#include "diskimage/bytes.h"
#include "foundation/descriptor.h"
#include "foundation/path_name.h"

namespace stowlark {

/// The disk in a UDIF image, readable at any place. Checksums are not looked at.
class UdifReader {
public:
    /// Throws UnsupportedImage if the file is no UDIF image or is compressed in a way not known here,
    /// ImageError if it is damaged and PlatformError if it cannot be read.
    explicit UdifReader(const Path &image);

    struct Partition {
        std::uint64_t offset; ///< on the disk, bytes
        std::uint64_t size;   ///< bytes
    };
    const std::vector<Partition> &partitions() const { return partitions_; }

    /// Reads all that is asked for. Throws ImageError or PlatformError.
    void read(std::uint64_t offset, std::span<std::uint8_t> to);
    /// How many bytes from `offset` on are zeros that the image does not store.
    std::uint64_t zerosAt(std::uint64_t offset) const;

private:
    /// A stretch of the disk, and where the file has it.
    struct Run {
        std::uint32_t type;
        std::uint64_t begin;  ///< on the disk, bytes
        std::uint64_t end;    ///< on the disk, bytes
        std::uint64_t offset; ///< in the file, bytes
        std::uint64_t length; ///< in the file, bytes
    };

    void addPartition(ByteSpan table);
    void addRun(BigEndianReader &from, const Partition &partition);
    const Run &runAt(std::uint64_t offset) const;
    void decompress(const Run &run);
    void readFile(std::uint64_t offset, std::span<std::uint8_t> to) const;

    Path path_;
    Descriptor file_;
    std::uint64_t fileSize_ = 0;
    std::uint64_t dataOffset_ = 0;
    std::vector<Partition> partitions_;
    std::vector<Run> runs_; ///< by `begin`
    const Run *unpackedRun_ = nullptr;
    Bytes unpacked_; ///< of that run
};

} // namespace stowlark
