#pragma once

#include "diskimage/catalog.h"

#include <array>

namespace stowlark {

/// A case-sensitive HFS+ volume that holds a tree, exactly as large as that needs.
class Volume {
public:
    /// Takes what the volume shows from its root on and copies nothing yet. `uuid` identifies the volume.
    Volume(const SourceTree &tree, std::u16string name, std::array<std::uint8_t, 8> uuid);
    Volume(const Volume &) = delete;
    Volume &operator=(const Volume &) = delete;

    std::uint64_t bytes() const { return totalBlocks_ * allocationBlock; }

    /// Where a volume is written to, front to back.
    class Sink {
    public:
        virtual ~Sink() = default;
        /// Room for at least one byte, to be filled from its beginning, and how much of it was filled.
        virtual std::span<std::uint8_t> room() = 0;
        virtual void advance(std::size_t filled) = 0;

        void write(ByteSpan bytes);
        void writeZeros(std::uint64_t count);
    };
    /// Throws PlatformError for a file that cannot be read or has changed its size since it was looked at.
    void write(Sink &sink) const;

private:
    void layOut();
    Bytes header() const;
    void writeBitmap(Sink &sink) const;
    void writeContents(Sink &sink) const;
    void writeFile(Sink &sink, const VolumeItem &item) const;
    void writeLink(Sink &sink, const VolumeItem &item) const;

    const SourceTree &tree_;
    std::u16string name_;
    std::array<std::uint8_t, 8> uuid_;
    std::uint64_t firstContentBlock_ = 0;
    BTree extents_;
    BTree catalog_;
    Fork bitmapFork_;
    Fork extentsFork_;
    Fork catalogFork_;
    std::uint64_t totalBlocks_ = 0;
};

} // namespace stowlark
