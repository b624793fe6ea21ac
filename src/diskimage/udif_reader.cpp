#include "diskimage/udif_reader.h"

#include "diskimage/udif_values.h"
#include "foundation/errors.h"

#include <QByteArray>
#include <QXmlStreamReader>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <bzlib.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

namespace stowlark {
namespace {

constexpr std::uint64_t longestPropertyList = 64 << 20; ///< bytes
constexpr std::uint64_t longestChunk = 4 << 20;         ///< bytes, unpacked
constexpr qsizetype mostPartitions = 128;
constexpr int deepestList = 32;
constexpr std::uint64_t mostSectors = std::uint64_t(1) << 50;

bool endsBy(std::uint64_t begin, std::uint64_t length, std::uint64_t end) {
    return begin <= end && length <= end - begin;
}

/// The tables of the partitions: resource-fork, blkx, the Data of each.
QByteArrayList partitionTables(const QByteArray &propertyList) {
    QByteArrayList tables;
    QXmlStreamReader xml(propertyList);
    QString section;
    QString key;
    for (int depth = 0; !xml.atEnd();) {
        const auto token = xml.readNext();
        if (token == QXmlStreamReader::EndElement) {
            --depth;
        } else if (token == QXmlStreamReader::StartElement) {
            const QString name = xml.name().toString();
            const bool hasText = name == u"key" || name == u"string" || name == u"data";
            const QString text = hasText ? xml.readElementText() : QString();
            if (name == u"key" && depth == 3) {
                section = text;
            } else if (name == u"key") {
                key = text;
            } else if (name == u"data" && depth == 5 && section == u"blkx" && key == u"Data") {
                tables += QByteArray::fromBase64(text.toLatin1());
            }
            depth += hasText ? 0 : 1;
        }
        if (depth > deepestList) {
            throw ImageError::damaged();
        }
    }
    if (tables.size() > mostPartitions) {
        throw UnsupportedImage();
    }
    if (xml.hasError()) {
        throw ImageError::damaged();
    }
    return tables;
}

} // namespace

UdifReader::UdifReader(const Path &image)
    : path_(image)
    , file_(::open(image.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)) {
    struct stat info {};
    if (!file_ || ::fstat(file_.get(), &info) != 0) {
        throw PlatformError(PlatformError::Action::open, image, errno);
    }
    fileSize_ = static_cast<std::uint64_t>(info.st_size);
    Bytes trailer(udif::trailerSize);
    if (!S_ISREG(info.st_mode)) {
        throw PlatformError(PlatformError::Action::open, image, QStringLiteral("it isn’t a disk image"));
    }
    if (fileSize_ < trailer.size()) {
        throw UnsupportedImage();
    }
    readFile(fileSize_ - trailer.size(), trailer);
    BigEndianReader from(trailer);
    if (from.u32() != 0x6B6F6C79) { // koly
        throw UnsupportedImage();
    }
    dataOffset_ = from.skip(20).u64();
    const std::uint32_t segments = from.skip(28).u32();
    const std::uint64_t listOffset = from.skip(152).u64();
    const std::uint64_t listSize = from.u64();
    if (segments > 1 || listSize == 0 || listSize > longestPropertyList) {
        throw UnsupportedImage();
    }
    if (!endsBy(listOffset, listSize, fileSize_)) {
        throw ImageError::damaged();
    }
    Bytes list(listSize);
    readFile(listOffset, list);
    const auto text = QByteArray::fromRawData(reinterpret_cast<const char *>(list.data()), // NOLINT: bytes
                                              static_cast<qsizetype>(list.size()));
    for (const QByteArray &table : partitionTables(text)) {
        addPartition({reinterpret_cast<const std::uint8_t *>(table.data()), // NOLINT: bytes
                      static_cast<std::size_t>(table.size())});
    }
    std::ranges::sort(runs_, {}, &Run::begin);
}

void UdifReader::addPartition(ByteSpan table) {
    BigEndianReader from(table);
    if (from.u32() != 0x6D697368) { // mish
        throw ImageError::damaged();
    }
    const std::uint64_t first = from.skip(4).u64();
    const std::uint64_t count = from.u64();
    if (!endsBy(first, count, mostSectors)) {
        throw ImageError::damaged();
    }
    const Partition partition{first * udif::sectorSize, count * udif::sectorSize};
    partitions_.push_back(partition);
    const std::uint32_t runs = from.skip(200 - 24).u32();
    for (std::uint32_t i = 0; i < runs; ++i) {
        addRun(from, partition);
    }
}

void UdifReader::addRun(BigEndianReader &from, const Partition &partition) {
    const std::uint32_t type = from.u32();
    const std::uint64_t sector = from.skip(4).u64();
    const std::uint64_t sectors = from.u64();
    const std::uint64_t offset = from.u64();
    const std::uint64_t length = from.u64();
    const bool hasData = type == udif::raw || type == udif::zlib || type == udif::bzip2;
    if (type == udif::terminator || type == udif::comment || sectors == 0) {
        return;
    }
    if (!hasData && type != udif::zeroFill && type != udif::ignored) {
        throw UnsupportedImage();
    }
    const std::uint64_t bytes = sectors * udif::sectorSize;
    if (!endsBy(sector, sectors, partition.size / udif::sectorSize) ||
        (hasData && (offset > fileSize_ || !endsBy(dataOffset_ + offset, length, fileSize_))) ||
        (type == udif::raw && length < bytes)) {
        throw ImageError::damaged();
    }
    if (hasData && type != udif::raw && (bytes > longestChunk || length > longestChunk)) {
        throw UnsupportedImage();
    }
    const std::uint64_t begin = partition.offset + sector * udif::sectorSize;
    runs_.push_back({type, begin, begin + bytes, dataOffset_ + offset, length});
}

const UdifReader::Run &UdifReader::runAt(std::uint64_t offset) const {
    const auto after = std::ranges::upper_bound(runs_, offset, {}, &Run::begin);
    if (after == runs_.begin() || std::prev(after)->end <= offset) {
        throw ImageError::damaged();
    }
    return *std::prev(after);
}

std::uint64_t UdifReader::zerosAt(std::uint64_t offset) const {
    const Run &run = runAt(offset);
    return run.type == udif::zeroFill || run.type == udif::ignored ? run.end - offset : 0;
}

void UdifReader::read(std::uint64_t offset, std::span<std::uint8_t> to) {
    while (!to.empty()) {
        const Run &run = runAt(offset);
        const std::uint64_t within = offset - run.begin;
        const std::size_t count = std::min<std::uint64_t>(to.size(), run.end - offset);
        if (run.type == udif::zeroFill || run.type == udif::ignored) {
            std::memset(to.data(), 0, count);
        } else if (run.type == udif::raw) {
            readFile(run.offset + within, to.first(count));
        } else {
            decompress(run);
            std::memcpy(to.data(), unpacked_.data() + within, count);
        }
        offset += count;
        to = to.subspan(count);
    }
}

void UdifReader::decompress(const Run &run) {
    if (unpackedRun_ == &run) {
        return;
    }
    unpackedRun_ = nullptr;
    Bytes packed(run.length);
    readFile(run.offset, packed);
    unpacked_.resize(run.end - run.begin);
    bool isWhole = false;
    if (run.type == udif::zlib) {
        uLongf size = unpacked_.size();
        isWhole = ::uncompress(unpacked_.data(), &size, packed.data(), packed.size()) == Z_OK &&
                  size == unpacked_.size();
    } else {
        auto size = static_cast<unsigned>(unpacked_.size());
        isWhole = ::BZ2_bzBuffToBuffDecompress(reinterpret_cast<char *>(unpacked_.data()), &size, // NOLINT
                                               reinterpret_cast<char *>(packed.data()),           // NOLINT
                                               static_cast<unsigned>(packed.size()), 0, 0) == BZ_OK &&
                  size == unpacked_.size();
    }
    if (!isWhole) {
        throw ImageError::damaged();
    }
    unpackedRun_ = &run;
}

void UdifReader::readFile(std::uint64_t offset, std::span<std::uint8_t> to) const {
    while (!to.empty()) {
        const ssize_t count = ::pread(file_.get(), to.data(), to.size(), static_cast<off_t>(offset));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            throw PlatformError(PlatformError::Action::read, path_, errno);
        }
        if (count == 0) {
            throw ImageError::damaged();
        }
        offset += static_cast<std::uint64_t>(count);
        to = to.subspan(static_cast<std::size_t>(count));
    }
}

} // namespace stowlark
