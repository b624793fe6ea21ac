#pragma once

#include <QByteArray>
#include <QtEndian>

/// Writes RAR archives of version 5 whose files are stored as they are.
namespace stowlark::rar {

inline quint32 crcOf(const QByteArray &bytes) {
    quint32 crc = ~0U;
    for (const char byte : bytes) {
        crc ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xEDB88320U : 0);
        }
    }
    return ~crc;
}

inline QByteArray littleEndian(quint32 number) {
    QByteArray bytes(4, 0);
    qToLittleEndian(number, bytes.data());
    return bytes;
}

/// Seven bits in each byte, the lowest first; the eighth says that more follow.
inline QByteArray number(qsizetype value) {
    QByteArray bytes;
    for (; value > 127; value >>= 7) {
        bytes += static_cast<char>(value | 128);
    }
    return bytes + static_cast<char>(value);
}

inline QByteArray block(const QByteArray &header) {
    const QByteArray checked = number(header.size()) + header;
    return littleEndian(crcOf(checked)) + checked;
}

/// What an entry tells besides: where it leads, or how it is encrypted.
inline QByteArray record(int type, const QByteArray &contents) {
    const QByteArray typed = number(type) + contents;
    return number(typed.size()) + typed;
}

/// `kind`: 1 for a symbolic link, 4 for a hard link.
inline QByteArray linkRecord(int kind, const QByteArray &target) {
    return record(5, number(kind) + number(0) + number(target.size()) + target);
}

/// `mode`: as of stat. `records`: none or more.
inline QByteArray entry(const QByteArray &name, unsigned mode, const QByteArray &contents = {},
                        const QByteArray &records = {}) {
    constexpr int fileHeader = 2;
    constexpr int ofUnix = 1;
    const bool isFolder = (mode & 0170000) == 0040000;
    QByteArray header = number(fileHeader) + number(records.isEmpty() ? 2 : 3);
    header += records.isEmpty() ? QByteArray() : number(records.size());
    header += number(contents.size()) + number(isFolder ? 1 : 4) + number(contents.size()) + number(mode);
    header += isFolder ? QByteArray() : littleEndian(crcOf(contents));
    header += number(0) + number(ofUnix) + number(name.size()) + name + records;
    return block(header) + contents;
}

inline QByteArray archiveOf(const QByteArray &entries) {
    return QByteArray("Rar!\x1a\x07\x01\x00", 8) + block(number(1) + number(0) + number(0)) + entries +
           block(number(5) + number(0) + number(0));
}

} // namespace stowlark::rar
