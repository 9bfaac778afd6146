#include "chartdata/SparePixels.h"

#include <utility>

namespace TC {
namespace {

constexpr std::size_t kHead = 64; ///< bytes in front of the pixels, which hold their number
constexpr std::size_t kStep = 1 << 20; ///< of large pieces: one serves while a window is being resized
constexpr std::size_t kMostWaste = 2; ///< times as large as what is asked for

} // namespace

void *SparePixels::take(std::size_t bytes) {
    Piece piece;
    {
        std::lock_guard<std::mutex> hold(mLock);
        if (mPiece && mBytes >= bytes && mBytes / kMostWaste <= bytes) {
            piece = std::move(mPiece);
            mBytes = 0;
        }
    }
    if (!piece) {
        const std::size_t room = bytes < kStep ? bytes : (bytes + kStep - 1) / kStep * kStep;
        piece.reset(std::malloc(kHead + room));
        if (!piece) {
            return nullptr;
        }
        *static_cast<std::size_t *>(piece.get()) = room;
    }
    return static_cast<char *>(piece.release()) + kHead;
}

void SparePixels::giveBack(void *pixels) {
    if (!pixels) {
        return;
    }
    Piece piece(static_cast<char *>(pixels) - kHead);
    const std::size_t bytes = *static_cast<const std::size_t *>(piece.get());
    if (bytes <= kLargest) {
        std::lock_guard<std::mutex> hold(mLock);
        std::swap(mPiece, piece);
        mBytes = bytes;
    }
}

std::size_t SparePixels::kept() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mBytes;
}

} // namespace TC
