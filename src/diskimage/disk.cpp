#include "diskimage/disk.h"

#include "diskimage/checksum.h"
#include "diskimage/udif_values.h"

#include <algorithm>
#include <limits>

namespace stowlark {
namespace {

using udif::sectorSize;
constexpr std::uint64_t entryCount = 128;
constexpr std::uint64_t entrySize = 128; ///< bytes
constexpr std::uint64_t tableSectors = entryCount * entrySize / sectorSize;
constexpr std::uint64_t firstUsableSector = 2 + tableSectors;
constexpr std::uint64_t volumeSector = 40; ///< the first multiple of 4096 bytes behind the table

using Uuid = std::array<std::uint8_t, 16>;

/// 48465300-0000-11AA-AA11-00306543ECAC, in a partition table's order of bytes.
constexpr Uuid hfsPartition{0x00, 0x53, 0x46, 0x48, 0,    0,    0xAA, 0x11,
                            0xAA, 0x11, 0,    0x30, 0x65, 0x43, 0xEC, 0xAC};

/// Partition tables have the least significant byte first.
class LittleEndian {
public:
    explicit LittleEndian(Bytes &bytes)
        : bytes_(bytes) {}
    LittleEndian &u32(std::uint64_t value) { return number(value, 4); }
    LittleEndian &u64(std::uint64_t value) { return number(value, 8); }

private:
    LittleEndian &number(std::uint64_t value, int size) {
        for (int i = 0; i < size; ++i) {
            bytes_.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        }
        return *this;
    }
    Bytes &bytes_;
};

/// One partition of an old kind over the whole disk, so that old tools leave it alone.
Bytes protectiveMasterBootRecord(std::uint64_t diskSectors) {
    Bytes sector(446);
    BigEndian(sector).u32(0x00FFFFFF).u32(0xEEFFFFFF); // its type is EE; no cylinders, heads, sectors
    LittleEndian(sector).u32(1).u32(
        std::min<std::uint64_t>(diskSectors - 1, std::numeric_limits<std::uint32_t>::max()));
    BigEndian(sector).zeros(48).u16(0x55AA);
    return sector;
}

Bytes partitionTable(std::uint64_t volumeSectors, const Uuid &partition) {
    Bytes table;
    BigEndian(table).bytes(hfsPartition).bytes(partition);
    LittleEndian(table).u64(volumeSector).u64(volumeSector + volumeSectors - 1).u64(0);
    for (const char unit : std::string_view("disk image")) {
        table.push_back(static_cast<std::uint8_t>(unit));
        table.push_back(0);
    }
    table.resize(tableSectors * sectorSize);
    return table;
}

/// A header at sector `own`, whose twin is at the sector `other`.
Bytes tableHeader(std::uint64_t own, std::uint64_t other, std::uint64_t tableSector, ByteSpan table,
                  const Uuid &disk) {
    constexpr std::size_t size = 92;
    constexpr std::size_t checksumOffset = 16;
    const std::uint64_t lastUsable = std::max(own, other) - tableSectors - 1;
    Bytes header;
    BigEndian(header).ascii("EFI PART");
    LittleEndian(header).u32(0x00010000).u32(size).u32(0).u32(0);
    LittleEndian(header).u64(own).u64(other).u64(firstUsableSector).u64(lastUsable);
    BigEndian(header).bytes(disk);
    LittleEndian(header).u64(tableSector).u32(entryCount).u32(entrySize).u32(crc32Of(table));
    Bytes checksum;
    LittleEndian(checksum).u32(crc32Of(header));
    std::ranges::copy(checksum, header.begin() + checksumOffset);
    header.resize(sectorSize);
    return header;
}

} // namespace

void writeDisk(UdifWriter &image, const Volume &volume, const std::array<Uuid, 2> &uuids) {
    const std::uint64_t volumeSectors = volume.bytes() / sectorSize;
    const std::uint64_t backupTable = volumeSector + volumeSectors;
    const std::uint64_t last = backupTable + tableSectors;
    const Bytes table = partitionTable(volumeSectors, uuids[1]);
    const auto add = [&image](const std::string &name, ByteSpan bytes) {
        image.beginPartition(name);
        image.write(bytes);
        image.endPartition();
    };
    add("Protective Master Boot Record (MBR : 0)", protectiveMasterBootRecord(last + 1));
    add("GPT Header (Primary GPT Header : 1)", tableHeader(1, last, 2, table, uuids[0]));
    add("GPT Partition Data (Primary GPT Table : 2)", table);
    image.addFreePartition(" (Apple_Free : 3)", volumeSector - firstUsableSector);
    image.beginPartition("disk image (Apple_HFSX : 4)");
    volume.write(image);
    image.endPartition();
    add("GPT Partition Data (Backup GPT Table : 5)", table);
    add("GPT Header (Backup GPT Header : 6)", tableHeader(last, 1, backupTable, table, uuids[0]));
}

} // namespace stowlark
