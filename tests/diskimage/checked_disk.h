#pragma once

#include "foundation/path_name.h"

#include <QFile>

#include <cstdint>
#include <span>
#include <vector>

/// Reads disk images to judge them: whatever is not exactly as it should be throws std::runtime_error. Shares
/// no code with the writer, lest both err alike.
namespace imagecheck {

using stowlark::Path;
using Bytes = std::span<const unsigned char>;

/// `where` is the number of what is at fault: a sector, block, node or item.
void require(bool right, const std::string &what, std::uint64_t where = 0);

/// The whole file, as long as `file` lives.
Bytes mapFile(QFile &file);
Bytes part(Bytes bytes, std::uint64_t at, std::uint64_t size);
bool isZero(Bytes bytes);
std::uint32_t crcOf(Bytes bytes, std::uint32_t crc = 0);

/// The big-endian number in `size` bytes, in 4, and whether the big-endian words of 4 bytes from `at` on are
/// these.
std::uint64_t big(Bytes bytes, std::uint64_t at, std::uint64_t size);
std::uint32_t big32(Bytes bytes, std::uint64_t at);
bool holds(Bytes bytes, std::uint64_t at, const std::vector<std::uint32_t> &words);

/// In bytes of the disk.
struct VolumePlace {
    std::uint64_t offset = 0;
    std::uint64_t length = 0;
};

/// Writes the disk in the UDIF file `image` to the new file `disk`, with holes where the image says zero.
VolumePlace unpackDisk(const Path &image, const Path &disk);

} // namespace imagecheck
