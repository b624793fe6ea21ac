#pragma once

#include <QByteArray>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iostream>

/// Ends the run, with the input kept, where a property does not hold.
#define REQUIRE(condition)                                                                                   \
    do {                                                                                                     \
        if (!(condition)) {                                                                                  \
            std::cerr << __FILE__ << ':' << __LINE__ << ": not so: " #condition << std::endl;                \
            std::abort();                                                                                    \
        }                                                                                                    \
    } while (false)

namespace stowlark {

/// What a run is given, taken from its front.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t *data, std::size_t size)
        : rest_(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)) {} // NOLINT: bytes

    QByteArray rest() const { return rest_; }
    std::uint8_t byte() { return static_cast<std::uint8_t>(take(1).front()); }
    /// Up to the next NUL, which is dropped.
    QByteArray text() {
        const qsizetype end = rest_.indexOf('\0');
        QByteArray taken = rest_.left(end);
        rest_ = end < 0 ? QByteArray() : rest_.mid(end + 1);
        return taken;
    }
    std::int64_t number() {
        std::uint64_t value = 0;
        for (const char c : take(8)) {
            value = value << 8 | static_cast<std::uint8_t>(c);
        }
        return static_cast<std::int64_t>(value);
    }

private:
    QByteArray take(qsizetype count) {
        QByteArray taken = rest_.left(count).leftJustified(count, '\0');
        rest_ = rest_.mid(count);
        return taken;
    }

    QByteArray rest_;
};

} // namespace stowlark
