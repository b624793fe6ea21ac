#include "diskimage/checked_disk.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <stdexcept>

#include <bzlib.h>
#include <zlib.h>

namespace imagecheck {

void require(bool right, const std::string &what, std::uint64_t where) {
    if (!right) {
        throw std::runtime_error("wrong: " + what + " (" + std::to_string(where) + ')');
    }
}

Bytes mapFile(QFile &file) {
    const uchar *memory = file.open(QIODevice::ReadOnly) ? file.map(0, file.size()) : nullptr;
    require(memory != nullptr, "file that cannot be read");
    return {memory, static_cast<std::size_t>(file.size())};
}

Bytes part(Bytes bytes, std::uint64_t at, std::uint64_t size) {
    require(at <= bytes.size() && size <= bytes.size() - at, "place past the end", at);
    return bytes.subspan(at, size);
}

bool isZero(Bytes bytes) {
    return std::ranges::all_of(bytes, [](unsigned char byte) { return byte == 0; });
}

std::uint32_t crcOf(Bytes bytes, std::uint32_t crc) {
    return static_cast<std::uint32_t>(crc32_z(crc, bytes.data(), bytes.size()));
}

std::uint64_t big(Bytes bytes, std::uint64_t at, std::uint64_t size) {
    std::uint64_t value = 0;
    for (const unsigned char byte : part(bytes, at, size)) {
        value = value << 8U | byte;
    }
    return value;
}

std::uint32_t big32(Bytes bytes, std::uint64_t at) {
    return static_cast<std::uint32_t>(big(bytes, at, 4));
}

bool holds(Bytes bytes, std::uint64_t at, const std::vector<std::uint32_t> &words) {
    return std::ranges::all_of(words,
                               [&](std::uint32_t word) { return big32(bytes, (at += 4) - 4) == word; });
}

namespace {

constexpr std::uint64_t sectorSize = 512;
constexpr std::uint64_t chunkSectors = 2048;
constexpr std::array blockNames{"Protective Master Boot Record (MBR : 0)",
                                "GPT Header (Primary GPT Header : 1)",
                                "GPT Partition Data (Primary GPT Table : 2)",
                                " (Apple_Free : 3)",
                                "disk image (Apple_HFSX : 4)",
                                "GPT Partition Data (Backup GPT Table : 5)",
                                "GPT Header (Backup GPT Header : 6)"};

/// The kind of a checksum, its bits, and a field of 128 bytes.
bool holdsChecksum(Bytes bytes, std::uint64_t at, std::uint32_t crc) {
    return holds(bytes, at, {2, 32, crc}) && isZero(part(bytes, at + 12, 124));
}

/// The data of all entries, in order.
std::vector<QByteArray> readPropertyList(Bytes bytes) {
    const QByteArray list(reinterpret_cast<const char *>(bytes.data()), static_cast<qsizetype>(bytes.size()));
    std::vector<QByteArray> result;
    QByteArray rest; // without line breaks, indentation and data
    for (const QByteArray &line : list.split('\n')) {
        rest += line.trimmed();
    }
    for (qsizetype at = 0; (at = rest.indexOf("<data>", at) + 6) > 5;) {
        const QByteArray text = rest.mid(at, rest.indexOf('<', at) - at);
        const auto data = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
        require(bool(data), "base64", result.size());
        result.push_back(*data);
        rest.remove(at, text.size());
    }
    QByteArray right =
        R"(<?xml version="1.0" encoding="UTF-8"?><!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" )"
        R"("http://www.apple.com/DTDs/PropertyList-1.0.dtd"><plist version="1.0"><dict>)"
        "<key>resource-fork</key><dict><key>blkx</key><array>";
    const QByteArray start = "<dict><key>Attributes</key><string>0x0050</string>";
    for (int id = -1; const QByteArray name : blockNames) {
        right += start + "<key>CFName</key><string>" + name +
                 "</string><key>Data</key><data></data><key>ID</key>" + "<string>" +
                 QByteArray::number(id++) + "</string><key>Name</key><string>" + name + "</string></dict>";
    }
    right += "</array><key>plst</key><array>" + start +
             "<key>Data</key><data></data><key>ID</key><string>0</string>" +
             "<key>Name</key><string></string></dict></array></dict></dict></plist>";
    require(rest == right, "property list: " + rest.toStdString());
    require(result.back() == QByteArray(517, 0) + QByteArray("\1\0\1", 3) + QByteArray(512, 0), "plst");
    result.pop_back();
    return result;
}

class Unpacker {
public:
    Unpacker(Bytes fork, const Path &disk)
        : fork_(fork)
        , disk_(disk, std::ios::binary) {}

    /// Returns the sector after the block.
    std::uint64_t unpack(Bytes block, std::uint32_t index) {
        const std::uint64_t first = sectors_;
        const std::uint64_t runs = big32(block, 200);
        require(holds(block, 0, {0x6d697368, 1}) && holds(block, 24, {0, 0, chunkSectors + 8, index}), "mish",
                index);
        require(isZero(part(block, 40, 24)) && runs > 1 && block.size() == 204 + 40 * runs, "mish", index);
        std::uint32_t crc = 0;
        for (Bytes left = block.subspan(204); left.size() > 40; left = left.subspan(40)) {
            require(big(left, 8, 8) == sectors_ - first && big(left, 16, 8) > 0, "sectors of a run",
                    sectors_);
            crc = unpackRun(left, crc);
        }
        const Bytes end = block.last(40);
        require(big32(end, 0) == 0xffffffff && big(end, 8, 8) == sectors_ - first, "end of a block", index);
        require(isZero(part(end, 16, 8)) && isZero(part(end, 32, 8)), "end of a block", index);
        require(big(block, 8, 8) == first && big(block, 16, 8) == sectors_ - first, "sectors of a block",
                index);
        require(holdsChecksum(block, 64, crc), "checksum of a block", index);
        for (const std::uint32_t shift : {24U, 16U, 8U, 0U}) {
            checksums_.push_back(static_cast<unsigned char>(crc >> shift));
        }
        return sectors_;
    }

    /// Returns the checksum of the checksums of all blocks.
    std::uint32_t finish() {
        std::ranges::sort(pieces_);
        std::uint64_t end = 0;
        for (const auto &[offset, length] : pieces_) {
            require(offset == end, "gap or overlap in the data fork", offset);
            end += length;
        }
        disk_.close();
        require(end == fork_.size() && disk_.good(), "end of the data fork", end);
        return crcOf(checksums_);
    }

private:
    std::uint32_t unpackRun(Bytes run, std::uint32_t crc) {
        const std::uint32_t type = big32(run, 0);
        const std::uint64_t count = big(run, 16, 8);
        const Bytes packed = part(fork_, big(run, 24, 8), big(run, 32, 8));
        const std::uint64_t start = sectors_;
        sectors_ += count;
        if (type == 0 || type == 2) {
            require(packed.empty() && count <= UINT32_MAX, "empty run", start);
            for (std::uint64_t i = 0; type == 0 && i < count; ++i) {
                crc = crcOf(std::array<unsigned char, sectorSize>{}, crc);
            }
            return crc;
        }
        require(count <= chunkSectors && !packed.empty(), "size of a chunk", start);
        pieces_.emplace_back(big(run, 24, 8), packed.size());
        const Bytes data = type == 1 ? packed : unpackChunk(type, packed);
        require(data.size() == count * sectorSize, "unpacked size of a chunk", start);
        disk_.seekp(static_cast<std::streamoff>(start * sectorSize));
        disk_.write(reinterpret_cast<const char *>(data.data()), static_cast<std::streamsize>(data.size()));
        return crcOf(data, crc);
    }

    Bytes unpackChunk(std::uint32_t type, Bytes packed) {
        uLong used = packed.size();
        uLong size = buffer_.size();
        if (type == 0x80000005) {
            require(::uncompress2(buffer_.data(), &size, packed.data(), &used) == Z_OK, "zlib data",
                    sectors_);
        } else {
            bz_stream stream{};
            require(type == 0x80000006 && ::BZ2_bzDecompressInit(&stream, 0, 0) == BZ_OK, "type of a run",
                    type);
            stream.next_in = const_cast<char *>(reinterpret_cast<const char *>(packed.data()));
            stream.avail_in = static_cast<unsigned>(used);
            stream.next_out = reinterpret_cast<char *>(buffer_.data());
            stream.avail_out = static_cast<unsigned>(size);
            const int outcome = ::BZ2_bzDecompress(&stream);
            ::BZ2_bzDecompressEnd(&stream);
            require(outcome == BZ_STREAM_END, "bzip2 data", sectors_);
            used -= stream.avail_in;
            size -= stream.avail_out;
        }
        require(used == packed.size(), "bytes after a compressed chunk", sectors_);
        return Bytes(buffer_).first(size);
    }

    Bytes fork_;
    std::ofstream disk_;
    std::uint64_t sectors_ = 0;
    std::vector<unsigned char> checksums_;
    std::vector<std::pair<std::uint64_t, std::uint64_t>> pieces_;
    /// One byte more than a chunk may have, so that a chunk too long is seen.
    std::vector<unsigned char> buffer_ = std::vector<unsigned char>(chunkSectors * sectorSize + 1);
};

bool holdsLittle(Bytes bytes, std::uint64_t at, std::uint64_t size, std::uint64_t value) {
    const Bytes field = part(bytes, at, size);
    return big(std::vector(field.rbegin(), field.rend()), 0, size) == value;
}

void checkHeader(Bytes disk, std::uint64_t own, std::uint64_t other, std::uint64_t table) {
    const Bytes header = part(disk, own * sectorSize, sectorSize);
    const std::uint32_t entries = crcOf(part(disk, table * sectorSize, 32 * sectorSize));
    const std::uint32_t crc =
        crcOf(header.subspan(20, 72), crcOf(std::array<unsigned char, 4>{}, crcOf(header.first(16))));
    require(holds(header, 0, {0x45464920, 0x50415254, 0x100, 0x5c000000}) &&
                holdsLittle(header, 16, 4, crc) && isZero(header.subspan(20, 4)) &&
                holdsLittle(header, 24, 8, own) && holdsLittle(header, 32, 8, other) &&
                holdsLittle(header, 40, 8, 34) && holdsLittle(header, 48, 8, disk.size() / sectorSize - 34) &&
                !isZero(header.subspan(56, 16)) && holdsLittle(header, 72, 8, table) &&
                holds(header, 80, {0x80000000, 0x80000000}) && holdsLittle(header, 88, 4, entries) &&
                isZero(header.subspan(92)),
            "GPT header", own);
}

VolumePlace checkPartitions(Bytes disk) {
    const std::uint64_t last = disk.size() / sectorSize - 1;
    require(isZero(disk.first(447)) && disk[450] == 0xee && holdsLittle(disk, 454, 4, 1) &&
                holdsLittle(disk, 458, 4, std::min<std::uint64_t>(last, UINT32_MAX)) &&
                isZero(disk.subspan(462, 48)) && big(disk, 510, 2) == 0x55aa,
            "MBR");
    checkHeader(disk, 1, last, 2);
    checkHeader(disk, last, 1, last - 32);
    const Bytes table = disk.subspan(2 * sectorSize, 32 * sectorSize);
    require(std::ranges::equal(table, part(disk, (last - 32) * sectorSize, table.size())) &&
                std::ranges::equal(disk.subspan(sectorSize + 56, 16), disk.last(sectorSize).subspan(56, 16)),
            "backup of the GPT");
    require(holds(table, 0, {0x00534648, 0x0000aa11, 0xaa110030, 0x6543ecac}) &&
                !isZero(table.subspan(16, 16)) && holdsLittle(table, 32, 8, 40) &&
                holdsLittle(table, 40, 8, last - 33) && isZero(table.subspan(48, 8)) &&
                isZero(table.subspan(128)),
            "partition");
    return {40 * sectorSize, (last - 72) * sectorSize};
}

} // namespace

VolumePlace unpackDisk(const Path &image, const Path &disk) {
    QFile file(image);
    const Bytes bytes = mapFile(file);
    const Bytes koly = part(bytes, bytes.size() - sectorSize, sectorSize);
    const Bytes fork = part(bytes, 0, big(koly, 32, 8));
    const Bytes list = part(bytes, fork.size(), bytes.size() - sectorSize - fork.size());
    require(holds(koly, 0, {0x6b6f6c79, 4, 512, 1, 0, 0, 0, 0}) && isZero(koly.subspan(40, 16)) &&
                holds(koly, 56, {1, 1}) && holdsChecksum(koly, 80, crcOf(fork)) &&
                big(koly, 216, 8) == fork.size() && big(koly, 224, 8) == list.size() &&
                isZero(koly.subspan(232, 120)) && big32(koly, 488) == 1 && isZero(koly.subspan(500)),
            "koly");
    Unpacker unpacker(fork, disk);
    std::vector<std::uint64_t> ends;
    for (const QByteArray &block : readPropertyList(list)) {
        const Bytes mish(reinterpret_cast<const unsigned char *>(block.data()),
                         static_cast<std::size_t>(block.size()));
        ends.push_back(unpacker.unpack(mish, static_cast<std::uint32_t>(ends.size())));
    }
    require(ends == std::vector<std::uint64_t>{1, 2, 34, 40, ends[4], ends[4] + 32, ends[4] + 33},
            "size of a block");
    require(holdsChecksum(koly, 352, unpacker.finish()), "master checksum");
    require(big(koly, 492, 8) == ends[6], "number of sectors", ends[6]);
    std::filesystem::resize_file(disk, ends[6] * sectorSize);
    QFile unpacked(disk);
    return checkPartitions(mapFile(unpacked));
}

} // namespace imagecheck
