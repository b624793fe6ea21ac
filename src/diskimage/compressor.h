#pragma once

#include "diskimage/bytes.h"

#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace stowlark {

struct Compression {
    enum class Method { zlib, bzip2 } method = Method::zlib;
    int level = 6; ///< of zlib; bzip2 always uses its largest blocks
};

/// A piece of a disk on its way into an image.
struct Chunk {
    static constexpr std::size_t maxSize = 1 << 20; ///< bytes
    enum class Form { zeros, plain, compressed };

    Bytes plain; ///< the piece, of `size` bytes; its buffer is larger
    std::size_t size = 0;
    Bytes packed; ///< compressed, of `packedSize` bytes, if the form is that
    std::size_t packedSize = 0;
    Form form = Form::plain;
    std::uint32_t checksum = 0;       ///< CRC-32 of the piece
    std::uint32_t storedChecksum = 0; ///< CRC-32 of what is stored of it

    /// What is stored of it: nothing for zeros, and the piece itself where compression does not shrink it.
    ByteSpan stored() const;
};

/// Compresses chunks on as many cores as a fixed amount of memory allows, and gives them back in their order.
class Compressor {
public:
    /// `store` is called on the thread that submits, for each chunk, while its buffers are as said above.
    Compressor(Compression compression, std::function<void(const Chunk &)> store);
    ~Compressor();
    Compressor(const Compressor &) = delete;
    Compressor &operator=(const Compressor &) = delete;

    /// The chunk to fill next, of `size` 0 at first.
    Chunk &current() { return slot(submitted_).chunk; }
    /// Hands the current chunk over. Throws what `store` throws.
    void submit();
    /// Returns when all chunks have been stored.
    void drain();

private:
    struct Slot {
        Chunk chunk;
        bool done = false;
    };
    Slot &slot(std::size_t number) { return slots_[number % slots_.size()]; }
    void compressChunks();
    void storeOldest();

    Compression compression_;
    std::function<void(const Chunk &)> store_;
    std::vector<Slot> slots_;
    std::mutex mutex_;
    std::condition_variable submittedOrStopped_;
    std::condition_variable finished_;
    std::size_t submitted_ = 0;
    std::size_t taken_ = 0;
    std::size_t stored_ = 0;
    bool stopped_ = false;
    std::exception_ptr failure_;
    std::vector<std::thread> workers_;
};

} // namespace stowlark
