#pragma once

#include "diskimage/image_error.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace stowlark {

using Bytes = std::vector<std::uint8_t>;
using ByteSpan = std::span<const std::uint8_t>;

/// Appends to bytes what formats of disk images are made of: numbers with their most significant byte first.
class BigEndian {
public:
    explicit BigEndian(Bytes &bytes)
        : bytes_(bytes) {}

    BigEndian &u8(std::uint64_t value) { return number(value, 1); }
    BigEndian &u16(std::uint64_t value) { return number(value, 2); }
    BigEndian &u32(std::uint64_t value) { return number(value, 4); }
    BigEndian &u64(std::uint64_t value) { return number(value, 8); }
    BigEndian &zeros(std::size_t count) {
        bytes_.resize(bytes_.size() + count);
        return *this;
    }
    BigEndian &ascii(std::string_view text) { return append(text); }
    BigEndian &utf16(std::u16string_view text) {
        for (const char16_t unit : text) {
            u16(unit);
        }
        return *this;
    }
    BigEndian &bytes(ByteSpan more) { return append(more); }

private:
    template <typename Range>
    BigEndian &append(const Range &more) {
        const std::size_t end = bytes_.size();
        bytes_.resize(end + more.size());
        std::copy(more.begin(), more.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(end));
        return *this;
    }
    BigEndian &number(std::uint64_t value, int size) {
        for (int shift = 8 * (size - 1); shift >= 0; shift -= 8) {
            bytes_.push_back(static_cast<std::uint8_t>(value >> shift));
        }
        return *this;
    }

    Bytes &bytes_;
};

/// Reads such numbers from the front of bytes. Throws ImageError where they end too early.
class BigEndianReader {
public:
    explicit BigEndianReader(ByteSpan bytes)
        : bytes_(bytes) {}

    std::uint8_t u8() { return static_cast<std::uint8_t>(number(1)); }
    std::uint16_t u16() { return static_cast<std::uint16_t>(number(2)); }
    std::uint32_t u32() { return static_cast<std::uint32_t>(number(4)); }
    std::uint64_t u64() { return number(8); }
    ByteSpan take(std::uint64_t count) {
        if (count > bytes_.size()) {
            throw ImageError::damaged();
        }
        const ByteSpan taken = bytes_.first(count);
        bytes_ = bytes_.subspan(count);
        return taken;
    }
    BigEndianReader &skip(std::uint64_t count) {
        take(count);
        return *this;
    }
    std::u16string utf16(std::size_t units) {
        std::u16string text;
        for (BigEndianReader from(take(2 * units)); text.size() < units;) {
            text.push_back(from.u16());
        }
        return text;
    }
    std::size_t left() const { return bytes_.size(); }

private:
    std::uint64_t number(std::size_t size) {
        std::uint64_t value = 0;
        for (const std::uint8_t byte : take(size)) {
            value = value << 8 | byte;
        }
        return value;
    }

    ByteSpan bytes_;
};

/// Writes a number over the bytes at `offset`.
inline void putU16(Bytes &bytes, std::size_t offset, std::size_t value) {
    bytes.at(offset) = static_cast<std::uint8_t>(value >> 8);
    bytes.at(offset + 1) = static_cast<std::uint8_t>(value);
}

inline void putU32(Bytes &bytes, std::size_t offset, std::size_t value) {
    putU16(bytes, offset, value >> 16);
    putU16(bytes, offset + 2, value);
}

} // namespace stowlark
