#include "diskimage/udif_writer.h"

#include "diskimage/checksum.h"
#include "diskimage/udif_values.h"

#include <QByteArray>

#include <algorithm>

#include <zlib.h>

namespace stowlark {
namespace {

constexpr std::uint32_t crc32Checksum = 2;

void appendChecksum(BigEndian to, std::uint32_t crc) {
    to.u32(crc32Checksum).u32(32).u32(crc).zeros(124);
}

std::uint32_t combined(std::uint32_t first, std::uint32_t second, std::size_t secondSize) {
    return static_cast<std::uint32_t>(::crc32_combine(first, second, static_cast<z_off_t>(secondSize)));
}

} // namespace

UdifWriter::UdifWriter(NewFile &file, Compression compression, std::array<std::uint8_t, 16> uuid)
    : file_(file)
    , uuid_(uuid)
    , compressedRun_(compression.method == Compression::Method::bzip2 ? udif::bzip2 : udif::zlib)
    , compressor_(compression, [this](const Chunk &chunk) { store(chunk); }) {}

void UdifWriter::beginPartition(const std::string &name) {
    std::uint64_t first = 0;
    if (!partitions_.empty()) {
        first = partitions_.back().firstSector + partitions_.back().sectors;
    }
    partitions_.push_back({.name = name, .firstSector = first});
}

std::span<std::uint8_t> UdifWriter::room() {
    Chunk &chunk = compressor_.current();
    return std::span(chunk.plain).subspan(chunk.size);
}

void UdifWriter::advance(std::size_t filled) {
    Chunk &chunk = compressor_.current();
    chunk.size += filled;
    if (chunk.size == Chunk::maxSize) {
        compressor_.submit();
    }
}

void UdifWriter::endPartition() {
    if (compressor_.current().size > 0) {
        compressor_.submit();
    }
    compressor_.drain();
}

void UdifWriter::addFreePartition(const std::string &name, std::uint64_t sectors) {
    beginPartition(name);
    partitions_.back().sectors = sectors;
    partitions_.back().runs.push_back({udif::ignored, 0, sectors, dataLength_, 0});
}

/// Appends a chunk to the file and to the last partition; zeros, however many, are one run.
void UdifWriter::store(const Chunk &chunk) {
    Partition &partition = partitions_.back();
    const ByteSpan bytes = chunk.stored();
    const std::uint64_t sectors = chunk.size / udif::sectorSize;
    const bool isZero = chunk.form == Chunk::Form::zeros;
    if (isZero && !partition.runs.empty() && partition.runs.back().type == udif::zeroFill) {
        partition.runs.back().sectors += sectors;
    } else {
        const std::uint32_t type = isZero                             ? udif::zeroFill
                                   : chunk.form == Chunk::Form::plain ? udif::raw
                                                                      : compressedRun_;
        partition.runs.push_back({type, partition.sectors, sectors, dataLength_, bytes.size()});
    }
    file_.write(bytes);
    partition.sectors += sectors;
    partition.checksum = combined(partition.checksum, chunk.checksum, chunk.size);
    dataChecksum_ = combined(dataChecksum_, chunk.storedChecksum, bytes.size());
    dataLength_ += bytes.size();
}

Bytes UdifWriter::table(const Partition &partition, std::size_t index) {
    Bytes table;
    table.reserve(204 + 40 * (partition.runs.size() + 1));
    BigEndian to(table);
    to.ascii("mish").u32(1).u64(partition.firstSector).u64(partition.sectors).u64(0);
    to.u32(Chunk::maxSize / udif::sectorSize + 8).u32(index).zeros(24);
    appendChecksum(to, partition.checksum);
    to.u32(partition.runs.size() + 1);
    for (const Run &run : partition.runs) {
        to.u32(run.type).u32(0).u64(run.sector).u64(run.sectors).u64(run.offset).u64(run.length);
    }
    to.u32(udif::terminator).u32(0).u64(partition.sectors).zeros(24);
    return table;
}

void UdifWriter::finish() {
    const std::uint64_t propertyListOffset = dataLength_;
    writePropertyList();
    file_.write(trailer(propertyListOffset));
}

void UdifWriter::writeText(std::string_view text) {
    file_.write({reinterpret_cast<const std::uint8_t *>(text.data()), text.size()}); // NOLINT: bytes
}

void UdifWriter::writePropertyList() {
    writeText(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
        "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
        "<plist version=\"1.0\">\n<dict>\n<key>resource-fork</key>\n<dict>\n<key>blkx</key>\n<array>\n");
    for (std::size_t i = 0; i < partitions_.size(); ++i) {
        const Partition &partition = partitions_[i];
        writeResource(std::to_string(static_cast<int>(i) - 1), partition.name, table(partition, i), true);
    }
    writeText("</array>\n<key>plst</key>\n<array>\n");
    Bytes none(1032);
    none[517] = none[519] = 1;
    writeResource("0", {}, none, false);
    writeText("</array>\n</dict>\n</dict>\n</plist>\n");
}

void UdifWriter::writeResource(const std::string &id, const std::string &name, ByteSpan data,
                               bool hasCoreName) {
    writeText("<dict>\n<key>Attributes</key>\n<string>0x0050</string>\n");
    if (hasCoreName) {
        writeText("<key>CFName</key>\n<string>" + name + "</string>\n");
    }
    writeText("<key>Data</key>\n<data>\n");
    constexpr std::size_t line = 57; // bytes: 76 characters
    for (; !data.empty(); data = data.subspan(std::min(line, data.size()))) {
        const ByteSpan now = data.first(std::min(line, data.size()));
        const auto bytes =
            QByteArray::fromRawData(reinterpret_cast<const char *>(now.data()), // NOLINT: bytes
                                    static_cast<qsizetype>(now.size()));
        writeText(bytes.toBase64().toStdString() + '\n');
    }
    writeText("</data>\n<key>ID</key>\n<string>" + id + "</string>\n<key>Name</key>\n<string>" + name +
              "</string>\n</dict>\n");
}

Bytes UdifWriter::trailer(std::uint64_t propertyListOffset) const {
    Bytes checksums;
    for (const Partition &partition : partitions_) {
        BigEndian(checksums).u32(partition.checksum);
    }
    const Partition &last = partitions_.back();
    Bytes trailer;
    BigEndian to(trailer);
    to.ascii("koly").u32(4).u32(512).u32(1);
    to.u64(0).u64(0).u64(dataLength_).u64(0).u64(0).u32(1).u32(1).bytes(uuid_);
    appendChecksum(to, dataChecksum_);
    to.u64(propertyListOffset).u64(file_.size() - propertyListOffset).zeros(120);
    appendChecksum(to, crc32Of(checksums));
    to.u32(1).u64(last.firstSector + last.sectors).zeros(12);
    return trailer;
}

} // namespace stowlark
