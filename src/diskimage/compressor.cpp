#include "diskimage/compressor.h"

#include "diskimage/checksum.h"

#include <algorithm>
#include <cstring>
#include <system_error>

#include <bzlib.h>
#include <zlib.h>

namespace stowlark {
namespace {

/// What the buffers and the library's working memory may come to in all.
constexpr std::size_t memoryBudget = 64 << 20;

std::size_t workersFor(Compression::Method method) {
    const std::size_t working = method == Compression::Method::bzip2 ? 7'600'000 : 270'000;
    const std::size_t each = working + 2 * Chunk::maxSize;
    return std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, memoryBudget / each);
}

bool isZero(ByteSpan bytes) {
    return bytes.front() == 0 && std::memcmp(bytes.data(), bytes.data() + 1, bytes.size() - 1) == 0;
}

/// The number of bytes that it wrote; 0 where they would be no fewer than those of `plain`.
std::size_t compress(Compression compression, ByteSpan plain, Bytes &packed) {
    if (compression.method == Compression::Method::bzip2) {
        auto size = static_cast<unsigned>(plain.size() - 1);
        // The library takes a pointer to what it only reads.
        auto *from = const_cast<char *>(reinterpret_cast<const char *>(plain.data())); // NOLINT
        auto *to = reinterpret_cast<char *>(packed.data());                            // NOLINT
        const int result =
            ::BZ2_bzBuffToBuffCompress(to, &size, from, static_cast<unsigned>(plain.size()), 9, 0, 0);
        return result == BZ_OK ? size : 0;
    }
    uLongf size = plain.size() - 1;
    return ::compress2(packed.data(), &size, plain.data(), plain.size(), compression.level) == Z_OK ? size
                                                                                                    : 0;
}

void process(Compression compression, Chunk &chunk) {
    const ByteSpan plain = ByteSpan(chunk.plain).first(chunk.size);
    if (isZero(plain)) {
        static const std::uint32_t zeroChunk = crc32Of(Bytes(Chunk::maxSize));
        chunk.form = Chunk::Form::zeros;
        chunk.checksum = chunk.size == Chunk::maxSize ? zeroChunk : crc32Of(plain);
    } else {
        chunk.packedSize = compress(compression, plain, chunk.packed);
        chunk.form = chunk.packedSize > 0 ? Chunk::Form::compressed : Chunk::Form::plain;
        chunk.checksum = crc32Of(plain);
    }
    chunk.storedChecksum = crc32Of(chunk.stored());
}

} // namespace

ByteSpan Chunk::stored() const {
    switch (form) {
    case Form::zeros:
        break;
    case Form::plain:
        return ByteSpan(plain).first(size);
    case Form::compressed:
        return ByteSpan(packed).first(packedSize);
    }
    return {};
}

Compressor::Compressor(Compression compression, std::function<void(const Chunk &)> store)
    : compression_(compression)
    , store_(std::move(store))
    , slots_(workersFor(compression.method) + 2) {
    for (Slot &slot : slots_) {
        slot.chunk.plain.resize(Chunk::maxSize);
        slot.chunk.packed.resize(Chunk::maxSize);
    }
    for (std::size_t i = 0; i + 2 < slots_.size(); ++i) {
        try {
            workers_.emplace_back([this] { compressChunks(); });
        } catch (const std::system_error &) {
            if (workers_.empty()) {
                throw;
            }
            break; // the system has no more threads to give: fewer do
        }
    }
}

Compressor::~Compressor() {
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
    }
    submittedOrStopped_.notify_all();
    for (std::thread &worker : workers_) {
        worker.join();
    }
}

void Compressor::submit() {
    {
        const std::lock_guard lock(mutex_);
        ++submitted_;
    }
    submittedOrStopped_.notify_one();
    if (submitted_ - stored_ == slots_.size()) {
        storeOldest();
    }
    current().size = 0;
}

void Compressor::drain() {
    while (stored_ < submitted_) {
        storeOldest();
    }
    current().size = 0;
}

void Compressor::storeOldest() {
    Slot &oldest = slot(stored_);
    {
        std::unique_lock lock(mutex_);
        finished_.wait(lock, [&] { return oldest.done || failure_; });
        if (failure_) {
            std::rethrow_exception(failure_);
        }
    }
    store_(oldest.chunk);
    oldest.done = false;
    ++stored_;
}

void Compressor::compressChunks() {
    std::unique_lock lock(mutex_);
    while (true) {
        submittedOrStopped_.wait(lock, [this] { return stopped_ || taken_ < submitted_; });
        if (stopped_) {
            return;
        }
        Slot &mine = slot(taken_++);
        lock.unlock();
        std::exception_ptr failure;
        try {
            process(compression_, mine.chunk);
        } catch (...) {
            failure = std::current_exception();
        }
        lock.lock();
        mine.done = true;
        failure_ = failure ? failure : failure_;
        finished_.notify_one();
    }
}

} // namespace stowlark
