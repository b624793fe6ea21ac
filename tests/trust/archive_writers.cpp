#include "trust/archive_writers.h"

#include "archive/tools.h"
#include "diskimage/checked_disk.h"
#include "diskimage/udif_writer.h"
#include "foundation/child_process.h"
#include "support/rar_writer.h"
#include "support/test_folder.h"

#include <fstream>
#include <map>
#include <numeric>

#include <zlib.h>

namespace stowlark {
namespace {

using Packed = std::optional<QByteArray>;

QByteArray little(quint64 value, int size) {
    QByteArray bytes;
    for (int i = 0; i < size; ++i) {
        bytes += static_cast<char>(value >> (8 * i));
    }
    return bytes;
}

quint32 crcOf(const QByteArray &bytes, quint32 crc = 0) {
    return static_cast<quint32>(::crc32(crc, reinterpret_cast<const Bytef *>(bytes.data()), // NOLINT
                                        static_cast<uInt>(bytes.size())));
}

/// One raw stream of Deflate, and the checksum of what is in it.
struct Deflated {
    QByteArray bytes;
    quint32 crc = 0;
};

/// `text` once and again, `count` times.
Deflated deflated(QByteArray text, qsizetype count = 1) {
    Deflated result;
    z_stream stream{};
    ::deflateInit2(&stream, 9, Z_DEFLATED, -MAX_WBITS, 9, Z_DEFAULT_STRATEGY);
    QByteArray room(1 << 16, 0);
    for (; count > 0; --count) {
        result.crc = crcOf(text, result.crc);
        stream.next_in = reinterpret_cast<Bytef *>(text.data()); // NOLINT: bytes
        stream.avail_in = static_cast<uInt>(text.size());
        do {
            stream.next_out = reinterpret_cast<Bytef *>(room.data()); // NOLINT: bytes
            stream.avail_out = static_cast<uInt>(room.size());
            ::deflate(&stream, count == 1 ? Z_FINISH : Z_NO_FLUSH);
            result.bytes += room.left(room.size() - stream.avail_out);
        } while (stream.avail_out == 0);
    }
    ::deflateEnd(&stream);
    return result;
}

constexpr qsizetype zerosAtOnce = 1 << 20;

Deflated deflatedZeros(qsizetype size) {
    return deflated(QByteArray(zerosAtOnce, 0), size / zerosAtOnce);
}

bool isKind(const Item &item, unsigned kind) {
    return (item.mode & S_IFMT) == kind;
}

QByteArray same(const QByteArray &packed) {
    return packed;
}

Packed none() {
    return {};
}

// ---- ZIP

struct ZipEntry {
    QByteArray name;
    unsigned mode;
    QByteArray data;
    quint32 crc;
    quint32 size;
    quint16 method = 0; ///< 8: Deflate
    quint16 flags = 0;  ///< 1: encrypted
};

QByteArray zipFields(const ZipEntry &e) {
    return little(e.flags, 2) + little(e.method, 2) + little(0x58210000, 4) + little(e.crc, 4) +
           little(static_cast<quint64>(e.data.size()), 4) + little(e.size, 4) +
           little(static_cast<quint64>(e.name.size()), 2) + little(0, 2);
}

QByteArray zipLocal(const ZipEntry &e) {
    return "PK\3\4" + little(20, 2) + zipFields(e) + e.name + e.data;
}

QByteArray zipCentral(const ZipEntry &e, qsizetype offset) {
    return "PK\1\2" + little(0x0314, 2) + little(20, 2) + zipFields(e) + little(0, 6) +
           little(quint64(e.mode) << 16, 4) + little(static_cast<quint64>(offset), 4) + e.name;
}

/// The archive ends with `count` entries in `central`.
QByteArray zipOf(const QByteArray &local, const QByteArray &central, std::size_t count) {
    count = std::min<std::size_t>(count, 0xFFFF); // more are found all the same
    return local + central + "PK\5\6" + little(0, 4) + little(count, 2) + little(count, 2) +
           little(static_cast<quint64>(central.size()), 4) + little(static_cast<quint64>(local.size()), 4) +
           little(0, 2);
}

QByteArray zipWithOne(const ZipEntry &e) {
    return zipOf(zipLocal(e), zipCentral(e, 0), 1);
}

ZipEntry stored(const QByteArray &name, const QByteArray &contents, unsigned mode = S_IFREG | 0644U) {
    return {name, mode, contents, crcOf(contents), static_cast<quint32>(contents.size())};
}

Packed packZip(const Items &items) {
    QByteArray local;
    QByteArray central;
    for (const Item &item : items) {
        if (item.isHardLink) {
            return {};
        }
        const ZipEntry e =
            stored(isKind(item, S_IFDIR) ? item.name + '/' : item.name, item.contents, item.mode);
        central += zipCentral(e, local.size());
        local += zipLocal(e);
    }
    return zipOf(local, central, items.size());
}

Packed encryptedZip() {
    ZipEntry e = stored("secret", someText(500));
    e.flags = 1;
    return zipWithOne(e);
}

Packed zipBomb(qsizetype zeros) {
    const Deflated d = deflatedZeros(zeros);
    return zipWithOne({"zeros", S_IFREG | 0644U, d.bytes, d.crc, static_cast<quint32>(zeros), 8});
}

// ---- TAR

QByteArray tarHeader(const QByteArray &name, char type, unsigned mode, const QByteArray &target,
                     qsizetype size) {
    QByteArray header(512, 0);
    const auto put = [&header](qsizetype at, const QByteArray &text) {
        header.replace(at, text.size(), text);
    };
    const auto octal = [&put](qsizetype at, qsizetype value, int digits) {
        put(at, QByteArray::number(value, 8).rightJustified(digits, '0'));
    };
    put(0, name.left(100));
    octal(100, mode & 07777, 7);
    octal(108, 0, 7);
    octal(116, 0, 7);
    octal(124, size, 11);
    octal(136, 1'500'000'000, 11);
    put(148, "        ");
    put(156, type + target.left(100));
    put(257, QByteArray("ustar  \0", 8));
    octal(329, 1, 7); // the null device, or a memory disk
    octal(337, 3, 7);
    octal(148,
          std::accumulate(header.begin(), header.end(), 0,
                          [](int sum, char byte) { return sum + static_cast<quint8>(byte); }),
          6);
    return header;
}

QByteArray tarEntry(const QByteArray &name, char type, unsigned mode, const QByteArray &target,
                    const QByteArray &contents) {
    const QByteArray padding((512 - contents.size() % 512) % 512, 0);
    return tarHeader(name, type, mode, target, contents.size()) + contents + padding;
}

char tarType(const Item &item) {
    static const std::map<unsigned, char> types{{S_IFREG, '0'}, {S_IFLNK, '2'}, {S_IFCHR, '3'},
                                                {S_IFBLK, '4'}, {S_IFDIR, '5'}, {S_IFIFO, '6'}};
    return item.isHardLink ? '1' : types.at(item.mode & S_IFMT);
}

Packed packTar(const Items &items) {
    QByteArray bytes;
    const auto longText = [&bytes](char type, const QByteArray &text) {
        bytes += text.size() > 100 ? tarEntry("././@LongLink", type, 0, {}, text + '\0') : QByteArray();
    };
    for (const Item &item : items) {
        const bool isLink = item.isHardLink || isKind(item, S_IFLNK);
        longText('L', item.name);
        longText('K', isLink ? item.contents : QByteArray());
        bytes += tarEntry(item.name, tarType(item), item.mode, isLink ? item.contents : QByteArray(),
                          isLink ? QByteArray() : item.contents);
    }
    return bytes + QByteArray(1024, 0);
}

QByteArray gzipOf(const Deflated &d, qsizetype size) {
    return QByteArray("\x1f\x8b\x08\0\0\0\0\0\0\3", 10) + d.bytes + little(d.crc, 4) +
           little(static_cast<quint64>(size), 4);
}

QByteArray gzip(const QByteArray &packed) {
    return gzipOf(deflated(packed), packed.size());
}

Packed tarBomb(qsizetype zeros) {
    return gzip(tarHeader("zeros", '0', 0644, {}, zeros)) + gzipOf(deflatedZeros(zeros), zeros) +
           gzip(QByteArray(1024, 0));
}

// ---- 7-Zip

QByteArray sevenNumber(quint64 value) {
    return value < 0x80 ? QByteArray(1, static_cast<char>(value)) : '\xff' + little(value, 8);
}

/// A property of the files; the first bit of each byte is the highest.
QByteArray sevenProperty(char id, const QByteArray &value) {
    return id + sevenNumber(static_cast<quint64>(value.size())) + value;
}

QByteArray sevenBits(const std::vector<bool> &bits) {
    QByteArray bytes((static_cast<qsizetype>(bits.size()) + 7) / 8, 0);
    for (std::size_t i = 0; i < bits.size(); ++i) {
        const auto at = static_cast<qsizetype>(i / 8);
        bytes[at] = static_cast<char>(bytes[at] | (bits[i] ? 0x80 >> (i % 8) : 0));
    }
    return bytes;
}

/// What is no UTF-8 becomes what is no UTF-16.
QByteArray sevenName(const QByteArray &name) {
    const QString text = QString::fromUtf8(name).replace(QChar::ReplacementCharacter, QChar(0xDCFF));
    QByteArray bytes;
    for (const QChar unit : text + QChar()) {
        bytes += little(unit.unicode(), 2);
    }
    return bytes;
}

QByteArray sealSevenZip(const QByteArray &packed) {
    QByteArray bytes = packed;
    const auto header = bytes.mid(32 + qFromLittleEndian<qint64>(bytes.data() + 12),
                                  qFromLittleEndian<qint64>(bytes.data() + 20));
    bytes.replace(28, 4, little(crcOf(header), 4));
    return bytes.replace(8, 4, little(crcOf(bytes.mid(12, 20)), 4));
}

/// `data`: the contents of all files, one after the other, as `coder` packed them.
QByteArray sevenZipOf(const Items &items, const QByteArray &data, const QByteArray &coder,
                      const std::vector<std::pair<quint64, quint32>> &sizesAndChecksums) {
    std::vector<bool> isEmpty;
    std::vector<bool> isEmptyFile;
    QByteArray names(1, 0);
    QByteArray modes("\1\0", 2);
    std::size_t contents = 0;
    quint64 total = 0;
    QByteArray sizes;
    QByteArray checksums;
    for (const Item &item : items) {
        isEmpty.push_back(item.contents.isEmpty());
        names += sevenName(item.name);
        modes += little(0x8000U | quint64(item.mode) << 16 | (isKind(item, S_IFDIR) ? 0x10U : 0U), 4);
        if (isEmpty.back()) {
            isEmptyFile.push_back(!isKind(item, S_IFDIR));
            continue;
        }
        const auto [size, crc] = sizesAndChecksums.at(contents++);
        total += size;
        sizes += contents < sizesAndChecksums.size() ? sevenNumber(size) : QByteArray();
        checksums += little(crc, 4);
    }
    QByteArray header("\1");
    if (contents > 0) {
        header += QByteArray("\4\6\0\1\x09", 5) + sevenNumber(static_cast<quint64>(data.size())) + '\0';
        header += QByteArray("\7\x0b\1\0\1", 5) + coder + '\x0c' + sevenNumber(total) + '\0';
        header += QByteArray("\x08\x0d", 2) + sevenNumber(contents);
        header += (sizes.isEmpty() ? sizes : '\x09' + sizes) + QByteArray("\x0a\1", 2) + checksums;
        header += QByteArray("\0\0", 2);
    }
    header += '\5' + sevenNumber(items.size()) + sevenProperty(0x0e, sevenBits(isEmpty)) +
              sevenProperty(0x0f, sevenBits(isEmptyFile)) + sevenProperty(0x11, names) +
              sevenProperty(0x15, modes) + QByteArray("\0\0", 2);
    return QByteArray("7z\xbc\xaf\x27\x1c\0\4", 8) + little(0, 4) +
           little(static_cast<quint64>(data.size()), 8) + little(static_cast<quint64>(header.size()), 8) +
           little(0, 4) + data + header;
}

const QByteArray copyCoder("\1\0", 2);

Packed packSevenZip(const Items &items) {
    QByteArray data;
    std::vector<std::pair<quint64, quint32>> sums;
    for (const Item &item : items) {
        if (item.isHardLink) {
            return {};
        }
        if (!item.contents.isEmpty()) {
            data += item.contents;
            sums.emplace_back(item.contents.size(), crcOf(item.contents));
        }
    }
    return sevenZipOf(items, data, copyCoder, sums);
}

Packed encryptedSevenZip() {
    const QByteArray aes("\x24\x06\xf1\x07\x01\x02\x13\x00", 8);
    return sealSevenZip(sevenZipOf({{"secret", "x"}}, someText(512), aes, {{500, 1}}));
}

Packed sevenZipBomb(qsizetype zeros) {
    const Deflated d = deflatedZeros(zeros);
    return sealSevenZip(sevenZipOf({{"zeros", "x"}}, d.bytes, "\3\4\1\x08", {{zeros, d.crc}}));
}

// ---- RAR

Packed packRar(const Items &items) {
    QByteArray entries;
    for (const Item &item : items) {
        const bool isLink = item.isHardLink || isKind(item, S_IFLNK);
        entries += isLink ? rar::entry(item.name, item.mode, {},
                                       rar::linkRecord(item.isHardLink ? 4 : 1, item.contents))
                          : rar::entry(item.name, item.mode, item.contents);
    }
    return rar::archiveOf(entries);
}

Packed encryptedRar() {
    const QByteArray how = rar::number(0) + rar::number(0) + '\x0f' + someText(32);
    return rar::archiveOf(rar::entry("secret", S_IFREG | 0644U, someText(512), rar::record(1, how)));
}

Packed noBomb(qsizetype /*zeros*/) {
    return {};
}

// ---- DMG

/// The tree as it can be made on a disk, and what its volume's bytes have to become.
class SourceFolder {
public:
    explicit SourceFolder(const Items &items) {
        std::filesystem::create_directory(top());
        for (const Item &item : items) {
            make(item, place(item.name));
        }
    }

    QByteArray volume() const {
        const Path image = folder_.path() / "source.dmg";
        const Path disk = folder_.path() / "disk";
        runChildQuietly({.tool = Tools().hdiutil,
                         .arguments = {"create", "-volname", "Volume", "-srcfolder", top().native(), "-ov",
                                       "-format", "UDZO", image.native()}});
        const imagecheck::VolumePlace at = imagecheck::unpackDisk(image, disk);
        QByteArray bytes =
            readFile(disk).mid(static_cast<qsizetype>(at.offset), static_cast<qsizetype>(at.length));
        for (const auto &[standIn, name] : names_) {
            bytes.replace(standIn, name);
        }
        return bytes;
    }
    Path top() const { return folder_.path() / "source"; }

private:
    /// Names that no disk takes, or that are taken, have others of the same length instead. A slash is a
    /// colon on the disk and a slash again in the volume.
    Path place(const QByteArray &name) {
        Path path = top();
        QByteArrayList parts = name.startsWith('/') ? QByteArrayList{name} : name.split('/');
        parts.removeAll("");
        for (qsizetype i = 0; i < parts.size(); ++i) {
            const Path next = path / QByteArray(parts[i]).replace('/', ':').toStdString();
            const auto kind = std::filesystem::symlink_status(next).type();
            const bool isTaken = kind != std::filesystem::file_type::not_found &&
                                 kind != std::filesystem::file_type::directory;
            path = parts[i] == "." || parts[i] == ".." || isTaken ? path / standIn(parts[i]) : next;
            if (i + 1 < parts.size()) {
                std::filesystem::create_directory(path);
            }
        }
        return path;
    }

    std::string standIn(const QByteArray &name) {
        const QString other(name.size(), QChar(0xE000 + static_cast<int>(name.size())));
        names_[inVolume(other)] = inVolume(QString::fromUtf8(name));
        return other.toStdString();
    }

    static QByteArray inVolume(const QString &name) {
        QByteArray bytes = QByteArray(1, 0) + static_cast<char>(name.size());
        for (const QChar unit : name) {
            bytes += static_cast<char>(unit.row());
            bytes += static_cast<char>(unit.cell());
        }
        return bytes;
    }

    void make(const Item &item, const Path &path) {
        if (isKind(item, S_IFDIR)) {
            std::filesystem::create_directory(path);
        } else if (isKind(item, S_IFLNK)) {
            std::filesystem::create_symlink(item.contents.toStdString(), path);
            return;
        } else {
            std::ofstream(path, std::ios::binary) << item.contents.toStdString();
        }
        const bool isOrdinary = (item.mode & ~0777U) == S_IFREG || isKind(item, S_IFDIR);
        const unsigned mode = isOrdinary ? item.mode & 0777U : 0751U; // of which there is no other
        std::filesystem::permissions(path, std::filesystem::perms(mode));
        if (!isOrdinary) {
            names_[QByteArray("\x81\xe9\0\0", 4)] = QByteArray() + static_cast<char>(item.mode >> 8) +
                                                    static_cast<char>(item.mode) + QByteArray(2, 0);
        }
    }

    TestFolder folder_;
    std::map<QByteArray, QByteArray> names_;
};

Packed packVolume(const Items &items) {
    if (std::ranges::any_of(items, &Item::isHardLink)) {
        return {};
    }
    try {
        return SourceFolder(items).volume();
    } catch (const std::exception &) {
        return {}; // a name that no disk and no volume can hold
    }
}

QByteArray sealDiskImage(const QByteArray &volume) {
    const TestFolder folder;
    NewFile file(folder.path() / "sealed");
    UdifWriter image(file, {}, {});
    image.beginPartition("Volume");
    image.write({reinterpret_cast<const std::uint8_t *>(volume.data()), // NOLINT: bytes
                 static_cast<std::size_t>(volume.size())});
    image.endPartition();
    image.finish();
    file.commit(NewFile::Existing::keep);
    return readFile(folder.path() / "sealed");
}

Packed encryptedDiskImage() {
    return "encrcdsa" + QByteArray("\0\0\0\2\0\0\0\x10", 8) + someText(100'000);
}

Packed diskImageBomb(qsizetype zeros) {
    const TestFolder folder;
    folder.write("source/zeros", {});
    std::filesystem::resize_file(folder.path() / "source/zeros", static_cast<std::uintmax_t>(zeros));
    const Path image = folder.path() / "bomb.dmg";
    runChildQuietly({.tool = Tools().hdiutil,
                     .arguments = {"create", "-volname", "V", "-srcfolder",
                                   (folder.path() / "source").native(), "-format", "UDZO", image.native()}});
    return readFile(image);
}

} // namespace

const Writer zipWriter{"zip", {"zip"}, packZip, same, encryptedZip, zipBomb};
const Writer tarWriter{"tar.gz", {"tar.gz", "tgz", "gz"}, packTar, gzip, none, tarBomb};
const Writer sevenZipWriter{"7z", {"7z"}, packSevenZip, sealSevenZip, encryptedSevenZip, sevenZipBomb};
const Writer rarWriter{"rar", {"rar"}, packRar, same, encryptedRar, noBomb};
const Writer diskImageWriter{"dmg", {"dmg"}, packVolume, sealDiskImage, encryptedDiskImage, diskImageBomb};
const Writer rawDiskImageWriter{"dmg by 7z", {"dmg"}, packVolume, same, none, noBomb};

std::vector<QByteArray> overlappingZips() {
    const ZipEntry whole = stored("one", someText(5000));
    QByteArray central;
    for (int i = 0; i < 1000; ++i) {
        central += zipCentral(stored("n" + QByteArray::number(i), whole.data), 0);
    }
    const ZipEntry outer = stored("outer", zipLocal(whole) + someText(100));
    const QByteArray nested =
        zipCentral(outer, 0) + zipCentral(whole, zipLocal(outer).size() - 100 - zipLocal(whole).size());
    const ZipEntry evil = stored("../../watched/sentinel/victim", "evil");
    return {zipOf(zipLocal(whole), central, 1000), zipOf(zipLocal(outer), nested, 2),
            zipOf(zipLocal(evil), zipCentral(stored("good", "evil"), 0), 1),
            zipOf(zipLocal(stored("good", "evil")), zipCentral(evil, 0), 1)};
}

} // namespace stowlark
