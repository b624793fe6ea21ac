#include "diskimage/volume.h"

#include "diskimage/hfs_values.h"
#include "diskimage/image_error.h"
#include "foundation/errors.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>

#include <sys/stat.h>
#include <unistd.h>

namespace stowlark {
namespace {

using Action = PlatformError::Action;

/// For what has more than eight extents, which nothing here has.
BTree emptyExtentsTree() {
    return BTree({.nodeSize = allocationBlock, .maxKeyLength = 10, .keyCompareType = 0, .attributes = 2},
                 [](const BTree::Record &) {});
}

constexpr std::size_t headerOffset = hfs::headerOffset; ///< from either end
constexpr std::size_t headerSize = hfs::headerSize;

[[noreturn]] void failAsChanged(const Path &file) {
    throw PlatformError(Action::read, file, QStringLiteral("it changed meanwhile"));
}

/// Where, from `at` on, a file no longer is a hole.
off_t beginOfData(int file, off_t at, off_t size) {
    const off_t data = ::lseek(file, at, SEEK_DATA);
    return data >= 0 ? std::min(data, size) : errno == ENXIO ? size : at;
}

void copyBytes(Volume::Sink &sink, const Path &path, int file, off_t at, off_t end) {
    while (at < end) {
        const std::span<std::uint8_t> room = sink.room();
        const auto now = std::min<std::uint64_t>(room.size(), static_cast<std::uint64_t>(end - at));
        const ssize_t count = ::pread(file, room.data(), now, at);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            throw PlatformError(Action::read, path, errno);
        }
        if (count == 0) {
            failAsChanged(path);
        }
        sink.advance(static_cast<std::size_t>(count));
        at += count;
    }
}

} // namespace

void Volume::Sink::write(ByteSpan bytes) {
    while (!bytes.empty()) {
        const std::span<std::uint8_t> target = room();
        const std::size_t count = std::min(target.size(), bytes.size());
        std::memcpy(target.data(), bytes.data(), count);
        advance(count);
        bytes = bytes.subspan(count);
    }
}

void Volume::Sink::writeZeros(std::uint64_t count) {
    while (count > 0) {
        const std::span<std::uint8_t> target = room();
        const std::size_t now = std::min<std::uint64_t>(target.size(), count);
        std::memset(target.data(), 0, now);
        advance(now);
        count -= now;
    }
}

Volume::Volume(const SourceTree &tree, std::u16string name, std::array<std::uint8_t, 8> uuid)
    : tree_(tree)
    , name_(std::move(name))
    , uuid_(uuid)
    , extents_(emptyExtentsTree())
    , catalog_(makeCatalog(tree_, name_, firstContentBlock_)) {
    layOut();
}

/// Header, allocation bitmap, extents tree, catalog, contents, alternate header.
void Volume::layOut() {
    const std::uint64_t catalogBytes = catalog_.bytes();
    std::uint64_t bitmapBlocks = 0;
    do {
        ++bitmapBlocks;
        totalBlocks_ = 1 + bitmapBlocks + 1 + blocksFor(catalogBytes) + tree_.contentBlocks() + 1;
    } while (blocksFor((totalBlocks_ + 7) / 8) > bitmapBlocks);
    if (totalBlocks_ > std::numeric_limits<std::uint32_t>::max()) {
        throw ImageError(QStringLiteral("A disk image can’t hold that much."));
    }
    bitmapFork_ = {bitmapBlocks * allocationBlock, 1};
    extentsFork_ = {allocationBlock, bitmapFork_.block + bitmapBlocks};
    catalogFork_ = {catalogBytes, extentsFork_.block + 1};
    firstContentBlock_ = catalogFork_.block + blocksFor(catalogBytes);
}

Bytes Volume::header() const {
    const std::uint32_t date = hfsDate(tree_.root().numbers.modified);
    Bytes header;
    BigEndian to(header);
    to.ascii("HX").u16(5).u32(0x100).ascii("10.0").u32(0); // unmounted cleanly, no journal
    to.u32(date).u32(date).u32(0).u32(date);               // created, changed, backed up, checked
    to.u32(tree_.files()).u32(tree_.folders()).u32(allocationBlock).u32(totalBlocks_);
    to.u32(0).u32(0);                     // free blocks, where to look for them
    to.u32(65536).u32(65536);             // clump sizes
    to.u32(tree_.nextID()).u32(1).u64(1); // next ID, times written, encodings: Roman
    to.zeros(24).bytes(uuid_);
    for (const Fork &fork : {bitmapFork_, extentsFork_, catalogFork_, Fork{}, Fork{}}) {
        appendFork(to, fork);
    }
    return header;
}

void Volume::write(Sink &sink) const {
    const Bytes volumeHeader = header();
    sink.writeZeros(headerOffset);
    sink.write(volumeHeader);
    sink.writeZeros(allocationBlock - headerOffset - headerSize);
    writeBitmap(sink);
    const auto node = [&sink](ByteSpan bytes) { sink.write(bytes); };
    extents_.write(node);
    catalog_.write(node);
    writeContents(sink);
    sink.writeZeros(allocationBlock - headerOffset);
    sink.write(volumeHeader);
    sink.writeZeros(headerOffset - headerSize);
}

/// Every block is in use.
void Volume::writeBitmap(Sink &sink) const {
    const Bytes ones(allocationBlock, 0xFF);
    std::uint64_t left = totalBlocks_ / 8;
    for (; left > 0; left -= std::min(left, allocationBlock)) {
        sink.write(ByteSpan(ones).first(std::min(left, allocationBlock)));
    }
    std::uint64_t written = totalBlocks_ / 8;
    if (const std::uint64_t odd = totalBlocks_ % 8; odd > 0) {
        const auto last = static_cast<std::uint8_t>(0xFF00U >> odd);
        sink.write(ByteSpan(&last, 1));
        ++written;
    }
    sink.writeZeros(bitmapFork_.size - written);
}

void Volume::writeContents(Sink &sink) const {
    ItemJournal::Cursor cursor(tree_.items());
    for (VolumeItem item; cursor.next(item);) {
        if (item.numbers.size > 0) {
            S_ISLNK(item.numbers.mode) ? writeLink(sink, item) : writeFile(sink, item);
            sink.writeZeros(blocksFor(item.numbers.size) * allocationBlock - item.numbers.size);
        }
    }
}

void Volume::writeFile(Sink &sink, const VolumeItem &item) const {
    const Path path = tree_.fullPath(item);
    const Descriptor file = tree_.open(item);
    if (!file) {
        throw PlatformError(Action::open, path, errno);
    }
    struct stat info {};
    if (::fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode) ||
        static_cast<std::uint64_t>(info.st_size) != item.numbers.size) {
        failAsChanged(path);
    }
    const auto size = static_cast<off_t>(item.numbers.size);
    for (off_t at = 0; at < size;) {
        const off_t data = beginOfData(file.get(), at, size);
        const off_t hole = data < size ? ::lseek(file.get(), data, SEEK_HOLE) : size;
        sink.writeZeros(static_cast<std::uint64_t>(data - at));
        at = hole > data ? std::min(hole, size) : size;
        copyBytes(sink, path, file.get(), data, at);
    }
}

void Volume::writeLink(Sink &sink, const VolumeItem &item) const {
    const std::string target = tree_.linkTarget(item);
    if (target.size() != item.numbers.size) {
        failAsChanged(tree_.fullPath(item));
    }
    sink.write(Bytes(target.begin(), target.end()));
}

} // namespace stowlark
