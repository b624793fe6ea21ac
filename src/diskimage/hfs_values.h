#pragma once

#include <QString>

#include <cstdint>
#include <string>

namespace stowlark {

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
