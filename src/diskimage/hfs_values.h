#pragma once

#include <QString>

#include <cstdint>
#include <string>

namespace stowlark {

/// What the format of HFS+ volumes fixes.
namespace hfs {

constexpr std::size_t headerOffset = 1024;     ///< of the volume header, bytes
constexpr std::size_t headerSize = 512;        ///< bytes
constexpr std::size_t nodeDescriptorSize = 14; ///< bytes
constexpr std::uint32_t rootFolder = 2;        ///< its ID
constexpr std::uint32_t firstUserID = 16;
enum NodeKind : std::uint8_t { leafNode = 0xFF, indexNode = 0, headerNode = 1, mapNode = 2 };
enum RecordType : std::uint16_t { folderRecord = 1, fileRecord = 2, folderThread = 3, fileThread = 4 };

} // namespace hfs

/// A file's name as a volume stores it: decomposed as of Unicode 3.2, with ":" and "/" exchanged. Throws
/// ImageError if it is no UTF-8 or longer than 255 units.
std::u16string hfsName(const std::string &name);

/// The opposite of how a volume decomposes names.
QString composed(const QString &name);

/// The file name for one that a volume stores, composed. Throws ImageError if no file can be called that.
std::string fileName(std::u16string_view hfsName);

/// Seconds since 1904, from those since 1970; dates that a volume cannot hold become its first or last.
std::uint32_t hfsDate(std::int64_t unixSeconds);

/// The opposite.
std::int64_t unixSeconds(std::uint32_t hfsDate);

} // namespace stowlark
