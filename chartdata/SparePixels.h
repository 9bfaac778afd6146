#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <mutex>

namespace TC {

/// Memory for the pixels of pictures. The system takes longer to hand out fresh pages for a picture than it takes to
/// draw half of one, so the memory that was given back last is kept for the next picture of about its size.
///
/// At most one piece is kept, none above kLargest bytes. Any thread.
class SparePixels {
public:
    static constexpr std::size_t kLargest = 64 << 20;

    /// Uninitialised memory of at least so many bytes, aligned for any type; null when there is none.
    void *take(std::size_t bytes);
    /// Takes back what take() has answered; null is harmless.
    void giveBack(void *pixels);
    /// Bytes that are kept, 0 for nothing.
    std::size_t kept() const;

private:
    struct Free {
        void operator()(void *pixels) const { std::free(pixels); }
    };
    using Piece = std::unique_ptr<void, Free>;

    mutable std::mutex mLock; ///< guards what follows
    Piece mPiece; ///< begins with its size
    std::size_t mBytes = 0;
};

} // namespace TC
