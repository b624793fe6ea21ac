#pragma once

#include "diskimage/bytes.h"

#include <functional>

namespace stowlark {

/// A B-tree as HFS+ stores it, made from records that come sorted, twice: once to learn its size, once to
/// write it. Nodes are in the order header, leaves, index levels from the leaves up, further map nodes. Keys
/// begin with their length.
class BTree {
public:
    struct Traits {
        std::size_t nodeSize; ///< bytes
        std::size_t maxKeyLength;
        std::uint8_t keyCompareType;
        std::uint32_t attributes;
    };
    using Record = std::function<void(ByteSpan key, ByteSpan data)>;
    /// Calls its argument for each record. Must give the same records every time.
    using Records = std::function<void(const Record &)>;
    using Sink = std::function<void(ByteSpan node)>;

    BTree(Traits traits, Records records);

    std::uint64_t nodes() const { return 1 + leaves_ + indexNodes_.size() + mapNodes_; }
    std::uint64_t bytes() const { return nodes() * traits_.nodeSize; }
    void write(const Sink &sink) const;

private:
    struct FirstKey {
        Bytes key;
        std::uint32_t node;
    };

    void forEachLeaf(const std::function<void(class NodeBuilder &, const Bytes &firstKey)> &use) const;
    std::vector<FirstKey> makeIndexLevel(const std::vector<FirstKey> &below);
    Bytes headerNode() const;
    void writeMapNodes(const Sink &sink) const;

    Traits traits_;
    Records records_;
    std::uint32_t leafRecords_ = 0;
    std::uint32_t leaves_ = 0;
    std::uint16_t depth_ = 0;
    std::vector<Bytes> indexNodes_;
    std::uint64_t mapNodes_ = 0;
};

} // namespace stowlark
