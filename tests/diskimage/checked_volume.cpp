#include "diskimage/checked_volume.h"

#include <algorithm>

#include <sys/stat.h>

namespace imagecheck {
namespace {

constexpr std::uint64_t blockSize = 4096;

struct Key {
    std::uint32_t parent = 0;
    std::u16string name;
    auto operator<=>(const Key &) const = default;
};

/// The data of a record in an index is the number of a node.
struct Record {
    Key key;
    Bytes data;
};

Key readKey(Bytes bytes) {
    Key key{big32(bytes, 0), {}};
    for (std::uint64_t left = big(bytes, 4, 2), at = 6; left > 0; --left, at += 2) {
        key.name += static_cast<char16_t>(big(bytes, at, 2));
    }
    require(key.name.size() <= 255 && bytes.size() == 6 + 2 * key.name.size(), "length of a key", key.parent);
    return key;
}

/// Returns how many bits are clear.
std::uint64_t checkBits(Bytes bits, const std::vector<bool> &used, const std::string &what) {
    require(bits.size() * 8 >= used.size(), "size of the " + what);
    for (std::size_t i = 0; i < bits.size() * 8; ++i) {
        require((bits[i / 8] >> (7 - i % 8) & 1) == (i < used.size() && used[i] ? 1 : 0), what, i);
    }
    return static_cast<std::uint64_t>(std::count(used.begin(), used.end(), false));
}

class Tree {
public:
    Tree(Bytes file, std::uint32_t nodeSize, std::uint32_t maxKey, std::uint32_t compare,
         std::uint32_t attributes)
        : file_(file)
        , nodeSize_(nodeSize)
        , used_(file.size() / nodeSize) {
        const auto nodes = static_cast<std::uint32_t>(used_.size());
        require(nodes * nodeSize_ == file.size() && holds(file, 32, {nodeSize << 16U | maxKey, nodes}) &&
                    big(file, 44, 2) == 0 && big32(file, 46) > 0 && big32(file, 46) % nodeSize == 0 &&
                    big(file, 50, 2) == compare && big32(file, 52) == attributes &&
                    isZero(part(file, 56, 192)),
                "header of a tree", nodeSize);
    }

    std::vector<Record> leaves() {
        const std::uint64_t depth = big(file_, 14, 2);
        std::vector<Record> level(1);
        level.front().data = part(file_, 16, 4); // the root's number
        std::uint32_t first = 0;
        std::uint32_t last = 0;
        for (std::uint64_t height = depth; height > 0; --height) {
            std::vector<Record> below;
            for (std::size_t i = 0; i < level.size(); ++i) {
                const std::uint32_t back = i > 0 ? last : 0;
                last = big32(level[i].data, 0);
                first = i > 0 ? first : last;
                const std::size_t start = below.size();
                for (const Bytes bytes : records(last, height == 1 ? 0xff : 0, height, back,
                                                 i + 1 < level.size() ? big32(level[i + 1].data, 0) : 0)) {
                    const std::uint64_t length = big(bytes, 0, 2);
                    below.push_back({readKey(part(bytes, 2, length)), bytes.subspan(2 + length)});
                    require(below.size() < 2 || below.end()[-2].key < below.back().key, "key order", last);
                    require(height == 1 || below.back().data.size() == 4, "index record", last);
                }
                require(height == depth || below[start].key == level[i].key, "key of an index", last);
            }
            level = std::move(below);
        }
        if (depth == 0) {
            require(big32(level[0].data, 0) == 0, "root of an empty tree");
            level.clear();
        }
        require(holds(file_, 20, {static_cast<std::uint32_t>(level.size()), first, last}),
                "leaves of a tree");
        checkMap();
        return level;
    }

private:
    void checkMap() {
        std::vector<unsigned char> bits;
        std::uint32_t node = 0;
        do {
            const std::uint32_t next = big32(file_, node * nodeSize_);
            const std::vector<Bytes> parts = records(node, node == 0 ? 1 : 2, 0, 0, next);
            require(parts.size() == (node == 0 ? 3 : 1), "records of a map", node);
            require(node > 0 || (parts[0].size() == 106 && parts[1].size() == 128 &&
                                 parts[2].size() == nodeSize_ - 256),
                    "records of a header", node);
            bits.insert(bits.end(), parts.back().begin(), parts.back().end());
            node = next;
        } while (node != 0);
        require(checkBits(bits, used_, "map of a tree") == big32(file_, 40), "number of free nodes");
    }

    std::vector<Bytes> records(std::uint32_t number, std::uint32_t kind, std::uint64_t height,
                               std::uint32_t back, std::uint32_t next) {
        require(number < used_.size() && !used_[number], "node reached twice", number);
        used_[number] = true;
        const Bytes node = file_.subspan(number * nodeSize_, nodeSize_);
        const std::uint64_t count = big(node, 10, 2);
        require(holds(node, 0, {next, back}) && big(node, 8, 2) == (kind << 8U | height), "node links",
                number);
        require(count > 0 && 2 * (count + 1) + 14 <= nodeSize_ && big(node, 12, 2) == 0, "node", number);
        std::vector<Bytes> result;
        std::uint64_t begin = big(node, nodeSize_ - 2, 2);
        require(begin == 14, "first record of a node", number);
        while (result.size() < count) {
            const std::uint64_t end = big(node, nodeSize_ - 2 * (result.size() + 2), 2);
            require(begin < end && end % 2 == 0 && end <= nodeSize_ - 2 * (count + 1), "record", number);
            result.push_back(node.subspan(begin, end - begin));
            begin = end;
        }
        require(isZero(node.subspan(begin, nodeSize_ - 2 * (count + 1) - begin)), "free bytes", number);
        return result;
    }

    Bytes file_;
    std::uint64_t nodeSize_;
    std::vector<bool> used_;
};

class VolumeReader {
public:
    explicit VolumeReader(Bytes bytes)
        : bytes_(bytes)
        , header_(part(bytes, 1024, 512))
        , used_(bytes.size() / blockSize) {}

    Volume read() {
        const auto blocks = static_cast<std::uint32_t>(used_.size());
        require(std::ranges::equal(header_, part(bytes_, bytes_.size() - 1024, 512)), "alternate header");
        require(holds(header_, 0, {0x48580005, 0x100, 0x31302e30, 0}), "signature or version of the volume");
        require(holds(header_, 40, {blockSize, blocks}) && blocks * blockSize == bytes_.size(), "blocks",
                blocks);
        require(big32(header_, 52) < blocks && holds(header_, 72, {0, 1}), "next block or encodings");
        require(isZero(part(header_, 80, 24)) && isZero(part(header_, 352, 160)),
                "unused parts of the header");
        require(isZero(bytes_.first(1024)) && isZero(part(bytes_, 1536, blockSize - 1536)), "first block");
        require(isZero(bytes_.last(blockSize).first(blockSize - 1024)) && isZero(bytes_.last(512)),
                "last block");
        claim(0, 1);
        claim(blocks - 1, 1);
        const Bytes bitmap = claimFork(part(header_, 112, 80));
        require(Tree(claimFork(part(header_, 192, 80)), 4096, 10, 0, 2).leaves().empty(), "extents tree");
        catalog_ = Tree(claimFork(part(header_, 272, 80)), 8192, 516, 0xbc, 6).leaves();
        sortCatalog();
        addFolder(2, "");
        require(volume_.items.size() + 1 == items_.size(), "items out of reach", items_.size());
        require(holds(header_, 32, {files_, folders_}), "numbers of files and folders", volume_.items.size());
        require(big32(header_, 64) == std::max(16U, items_.rbegin()->first + 1), "next id",
                items_.rbegin()->first);
        require(checkBits(bitmap, used_, "bitmap") == big32(header_, 48), "number of free blocks");
        return volume_;
    }

private:
    void claim(std::uint64_t start, std::uint64_t count) {
        require(start <= used_.size() && count <= used_.size() - start, "extent past the end", start);
        for (std::uint64_t block = start; block < start + count; ++block) {
            require(!used_[block], "block used twice", block);
            used_[block] = true;
        }
    }

    Bytes claimFork(Bytes fork) {
        const std::uint64_t size = big(fork, 0, 8);
        const std::uint32_t count = big32(fork, 12);
        const std::uint32_t start = big32(fork, 16);
        require(size <= bytes_.size() && count == (size + blockSize - 1) / blockSize, "blocks of a fork",
                start);
        require(big32(fork, 20) == count && (count > 0 || start == 0) && isZero(part(fork, 24, 56)),
                "extents", start);
        claim(start, count);
        const Bytes contents = part(bytes_, start * blockSize, count * blockSize);
        require(isZero(contents.subspan(size)), "bytes after the end of a file", start);
        return contents.first(size);
    }

    /// Finds the items and checks that each has its thread.
    void sortCatalog() {
        std::map<std::uint32_t, const Record *> threads;
        for (const Record &record : catalog_) {
            const std::uint64_t type = big(record.data, 0, 2);
            require(type >= 1 && type <= 4, "type of a record", record.key.parent);
            const std::uint32_t id = type > 2 ? record.key.parent : big32(record.data, 8);
            require(type > 2 || id == 2 || id >= 16, "reserved id", id);
            require(record.key.name.empty() == (type > 2), "name of a record", id);
            require((type > 2 ? threads : items_).emplace(id, &record).second, "id used twice", id);
            if (type <= 2) {
                children_[record.key.parent].push_back(&record);
            }
        }
        require(threads.size() == items_.size(), "number of threads", threads.size());
        for (const auto &[id, record] : items_) {
            require(threads.contains(id), "no thread", id);
            const Bytes thread = threads[id]->data;
            require(big(thread, 0, 2) == big(record->data, 0, 2) + 2 && big(thread, 2, 2) == 0, "thread", id);
            require(readKey(thread.subspan(4)) == record->key, "name in a thread", id);
        }
        require(children_[1].size() == 1 && big32(children_[1][0]->data, 8) == 2, "root folder");
        volume_.name = shownName(*children_[1][0]);
    }

    static std::string shownName(const Record &record) {
        std::string name = Path(record.key.name).native();
        require(name.find(':') == std::string::npos && name.find('\0') == std::string::npos, "name " + name);
        std::replace(name.begin(), name.end(), '/', ':');
        return name;
    }

    void addFolder(std::uint32_t id, const std::string &prefix) {
        const Bytes folder = items_.at(id)->data;
        const std::vector<const Record *> &children = children_[id];
        std::uint32_t folders = 0;
        readItem(folder, S_IFDIR);
        for (const Record *child : children) {
            const std::string path = prefix + shownName(*child);
            const Bytes data = child->data;
            if (big(data, 0, 2) == 1) {
                ++folders;
                volume_.items[path] = readItem(data, S_IFDIR);
                addFolder(big32(data, 8), path + '/');
            } else {
                ++files_;
                volume_.items[path] = readFile(data);
            }
        }
        folders_ += folders;
        require(folder.size() == 88 && big(folder, 2, 2) == 0x10, "folder record", id);
        require(big32(folder, 4) == children.size() && big32(folder, 84) == folders, "items of a folder", id);
    }

    VolumeItem readFile(Bytes data) {
        const std::uint32_t id = big32(data, 8);
        const bool link = big32(data, 48) != 0;
        require(data.size() == 248 && holds(data, 0, {0x20002, 0}) && big32(data, 84) == 0, "file record",
                id);
        require(big32(data, 96) == 0 && isZero(part(data, 168, 80)), "clump or resource fork", id);
        const Bytes contents = claimFork(part(data, 88, 80));
        VolumeItem item = readItem(data, link ? S_IFLNK : S_IFREG);
        item.size = contents.size();
        item.contents =
            link ? std::string(contents.begin(), contents.end()) : std::to_string(crcOf(contents));
        require(!link || (!item.contents.empty() && item.contents.find('\0') == std::string::npos), "link",
                id);
        return item;
    }

    /// What the records of folders and files have in common.
    static VolumeItem readItem(Bytes data, std::uint32_t type) {
        const std::uint32_t id = big32(data, 8);
        const auto mode = static_cast<std::uint32_t>(big(data, 42, 2));
        const bool link = type == S_IFLNK;
        require((mode & S_IFMT) == type && big(data, 40, 2) == 0 && big32(data, 44) <= 1, "mode of an item",
                id);
        require(holds(data, 48, {link ? 0x736c6e6b : 0U, link ? 0x72686170 : 0U}), "type of an item", id);
        require(isZero(part(data, 56, 28)), "unused part of a record", id);
        return {link              ? 'l'
                : type == S_IFDIR ? 'd'
                                  : 'f',
                mode,
                big32(data, 32),
                big32(data, 36),
                std::int64_t{big32(data, 16)} - 2082844800,
                0,
                ""};
    }

    Bytes bytes_;
    Bytes header_;
    std::vector<bool> used_; ///< by block
    std::vector<Record> catalog_;
    std::map<std::uint32_t, const Record *> items_; ///< by id, the root among them
    std::map<std::uint32_t, std::vector<const Record *>> children_;
    std::uint32_t files_ = 0;
    std::uint32_t folders_ = 0;
    Volume volume_;
};

} // namespace

Volume readVolume(const Path &disk, VolumePlace place) {
    QFile file(disk);
    return VolumeReader(part(mapFile(file), place.offset, place.length)).read();
}

} // namespace imagecheck
