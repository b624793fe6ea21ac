#pragma once

#include "diskimage/compressor.h"
#include "diskimage/new_file.h"
#include "diskimage/volume.h"

#include <string>

namespace stowlark {

/// Writes a disk, front to back and partition by partition, as a compressed UDIF image.
class UdifWriter final : public Volume::Sink {
public:
    /// `file` is empty and outlives it. `uuid` identifies the image.
    UdifWriter(NewFile &file, Compression compression, std::array<std::uint8_t, 16> uuid);

    /// A partition begins where the one before it ended; what is written until its end is in it.
    void beginPartition(const std::string &name);
    std::span<std::uint8_t> room() override;
    void advance(std::size_t filled) override;
    void endPartition();
    /// A partition that nothing uses.
    void addFreePartition(const std::string &name, std::uint64_t sectors);

    /// Writes what follows the data of an image. Nothing may be written afterwards.
    void finish();

private:
    /// Some sectors, counted from the partition's first, and where the file has them.
    struct Run {
        std::uint32_t type;
        std::uint64_t sector;
        std::uint64_t sectors;
        std::uint64_t offset; ///< in the file, bytes
        std::uint64_t length; ///< in the file, bytes
    };
    struct Partition {
        std::string name;
        std::uint64_t firstSector = 0;
        std::uint64_t sectors = 0;
        std::uint32_t checksum = 0;
        std::vector<Run> runs{};
    };

    void store(const Chunk &chunk);
    static Bytes table(const Partition &partition, std::size_t index);
    void writePropertyList();
    void writeResource(const std::string &id, const std::string &name, ByteSpan data, bool hasCoreName);
    Bytes trailer(std::uint64_t propertyListOffset) const;
    void writeText(std::string_view text);

    NewFile &file_;
    std::array<std::uint8_t, 16> uuid_;
    std::uint32_t compressedRun_;    ///< the type of runs that are compressed
    std::uint32_t dataChecksum_ = 0; ///< CRC-32 of all that is stored
    std::uint64_t dataLength_ = 0;
    std::vector<Partition> partitions_;
    Compressor compressor_; ///< last: its threads end before the rest
};

} // namespace stowlark
