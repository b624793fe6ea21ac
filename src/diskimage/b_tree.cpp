#include "diskimage/b_tree.h"

#include "diskimage/hfs_values.h"
#include "diskimage/image_error.h"

#include <algorithm>
#include <limits>

namespace stowlark {
namespace {

constexpr std::size_t headerRecords =
    256; ///< what a header node has besides its map: descriptor, records, offsets
/// Aligned to four bytes, which leaves two unused before the offsets.
constexpr std::size_t mapNodeOverhead = hfs::nodeDescriptorSize + 6;

/// Sets the first `count` bits of the `capacity` bytes that it appends.
void appendMap(Bytes &node, std::size_t capacity, std::uint64_t count) {
    const std::size_t begin = node.size();
    node.resize(begin + capacity);
    for (std::uint64_t bit = 0; bit < count; ++bit) {
        node[begin + bit / 8] |= static_cast<std::uint8_t>(0x80U >> (bit % 8));
    }
}

} // namespace

/// A node that records are added to until it is full.
class NodeBuilder {
public:
    NodeBuilder(std::size_t nodeSize, hfs::NodeKind kind, std::size_t height)
        : nodeSize_(nodeSize) {
        node_.reserve(nodeSize);
        BigEndian(node_).u64(0).u8(kind).u8(height).u32(0);
    }

    std::uint32_t records() const { return static_cast<std::uint32_t>(offsets_.size()); }
    bool hasRoom(std::size_t recordSize) const {
        return node_.size() + recordSize + 2 * (offsets_.size() + 2) <= nodeSize_;
    }
    /// The caller appends the record to what this gives.
    Bytes &beginRecord() {
        offsets_.push_back(node_.size());
        return node_;
    }
    Bytes finish(std::uint64_t next, std::uint64_t previous) {
        offsets_.push_back(node_.size());
        putU32(node_, 0, next);
        putU32(node_, 4, previous);
        putU16(node_, 10, offsets_.size() - 1);
        node_.resize(nodeSize_);
        for (std::size_t i = 0; i < offsets_.size(); ++i) {
            putU16(node_, nodeSize_ - 2 * (i + 1), offsets_[i]);
        }
        return std::move(node_);
    }

private:
    std::size_t nodeSize_;
    Bytes node_;
    std::vector<std::size_t> offsets_;
};

BTree::BTree(Traits traits, Records records)
    : traits_(traits)
    , records_(std::move(records)) {
    std::vector<FirstKey> level;
    forEachLeaf([&](NodeBuilder &leaf, const Bytes &firstKey) {
        level.push_back({firstKey, ++leaves_});
        leafRecords_ += leaf.records();
    });
    depth_ = leaves_ == 0 ? 0 : 1;
    while (level.size() > 1) {
        ++depth_;
        level = makeIndexLevel(level);
    }
    const std::uint64_t inHeader = (traits_.nodeSize - headerRecords) * 8;
    const std::uint64_t inMapNode = (traits_.nodeSize - mapNodeOverhead) * 8;
    while (nodes() > inHeader + mapNodes_ * inMapNode) {
        ++mapNodes_;
    }
    if (nodes() > std::numeric_limits<std::uint32_t>::max() / 2) {
        throw ImageError(QStringLiteral("A disk image can’t hold that many items."));
    }
}

void BTree::forEachLeaf(const std::function<void(NodeBuilder &, const Bytes &firstKey)> &use) const {
    NodeBuilder leaf(traits_.nodeSize, hfs::leafNode, 1);
    Bytes firstKey;
    records_([&](ByteSpan key, ByteSpan data) {
        if (!leaf.hasRoom(key.size() + data.size())) {
            use(leaf, firstKey);
            leaf = NodeBuilder(traits_.nodeSize, hfs::leafNode, 1);
        }
        if (leaf.records() == 0) {
            firstKey.assign(key.begin(), key.end());
        }
        BigEndian(leaf.beginRecord()).bytes(key).bytes(data);
    });
    if (leaf.records() > 0) {
        use(leaf, firstKey);
    }
}

/// Appends the nodes that point to those of the level below. Returns their own first keys.
std::vector<BTree::FirstKey> BTree::makeIndexLevel(const std::vector<FirstKey> &below) {
    std::vector<FirstKey> keys;
    std::vector<NodeBuilder> built;
    for (const FirstKey &child : below) {
        if (built.empty() || !built.back().hasRoom(child.key.size() + 4)) {
            built.emplace_back(traits_.nodeSize, hfs::indexNode, depth_);
            keys.push_back(
                {child.key, static_cast<std::uint32_t>(leaves_ + indexNodes_.size() + built.size())});
        }
        BigEndian(built.back().beginRecord()).bytes(child.key).u32(child.node);
    }
    for (std::size_t i = 0; i < built.size(); ++i) {
        const std::uint32_t next = i + 1 < built.size() ? keys[i + 1].node : 0;
        indexNodes_.push_back(built[i].finish(next, i > 0 ? keys[i - 1].node : 0));
    }
    return keys;
}

Bytes BTree::headerNode() const {
    const std::size_t mapSize = traits_.nodeSize - headerRecords;
    NodeBuilder node(traits_.nodeSize, hfs::headerNode, 0);
    BigEndian(node.beginRecord())
        .u16(depth_)
        .u32(leaves_ + indexNodes_.size()) // the root is the last one made
        .u32(leafRecords_)
        .u32(leaves_ > 0 ? 1 : 0)
        .u32(leaves_)
        .u16(traits_.nodeSize)
        .u16(traits_.maxKeyLength)
        .u32(nodes())
        .u32(0) // free nodes
        .u16(0)
        .u32(traits_.nodeSize) // clump size
        .u8(0)
        .u8(traits_.keyCompareType)
        .u32(traits_.attributes)
        .zeros(64);
    BigEndian(node.beginRecord()).zeros(128);
    appendMap(node.beginRecord(), mapSize, std::min<std::uint64_t>(nodes(), mapSize * 8));
    return node.finish(mapNodes_ > 0 ? nodes() - mapNodes_ : 0, 0);
}

void BTree::write(const Sink &sink) const {
    sink(headerNode());
    std::uint32_t number = 0;
    forEachLeaf([&](NodeBuilder &leaf, const Bytes &) {
        ++number;
        sink(leaf.finish(number < leaves_ ? number + 1 : 0, number - 1));
    });
    for (const Bytes &node : indexNodes_) {
        sink(node);
    }
    writeMapNodes(sink);
}

void BTree::writeMapNodes(const Sink &sink) const {
    const std::size_t mapSize = traits_.nodeSize - mapNodeOverhead;
    std::uint64_t inUse = nodes() - std::min<std::uint64_t>(nodes(), (traits_.nodeSize - headerRecords) * 8);
    for (std::uint64_t number = nodes() - mapNodes_; number < nodes(); ++number) {
        NodeBuilder node(traits_.nodeSize, hfs::mapNode, 0);
        const std::uint64_t here = std::min<std::uint64_t>(inUse, mapSize * 8);
        appendMap(node.beginRecord(), mapSize, here);
        inUse -= here;
        // The chain of map nodes begins in the header node; they do not link back.
        sink(node.finish(number + 1 < nodes() ? number + 1 : 0, 0));
    }
}

} // namespace stowlark
