#include "terminal/threads/SmallHeaps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <condition_variable>
#include <cstdlib>
#include <malloc.h>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

/// Heaps of the C library; 0 where a sanitizer has heaps of its own.
int heaps() {
    char *text = nullptr;
    size_t size = 0;
    FILE *file = open_memstream(&text, &size);
    if (!file || malloc_info(0, file) != 0) {
        size = 0;
    }
    std::fclose(file);
    const std::string told(text, size);
    std::free(text);
    int count = 0;
    for (size_t at = told.find("<heap "); at != std::string::npos; at = told.find("<heap ", at + 1)) {
        ++count;
    }
    return count;
}

} // namespace

TEST(SmallHeaps, ManyThreadsHaveTwoHeaps) {
    constexpr int kThreads = 24;
    constexpr size_t kPiece = 5000; // too large for a thread's own store of free pieces
    terminal::keepHeapsSmall();
    const int before = heaps();
    if (before == 0) {
        GTEST_SKIP() << "the C library's heaps are not in use";
    }
    std::mutex lock;
    std::condition_variable signal;
    int ready = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] {
            void *volatile piece = std::malloc(kPiece);
            std::unique_lock<std::mutex> hold(lock);
            ++ready;
            signal.notify_all();
            signal.wait(hold, [&] { return ready == kThreads; }); // all of them live at once
            hold.unlock();
            std::free(piece);
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_LE(heaps(), std::max(before, 2));
}

TEST(SmallHeaps, ALargeBlockStandsOutsideAlsoWhenALargerOneWasFreed) {
    constexpr size_t kLarge = 300 * 1024;
    terminal::keepHeapsSmall();
    const size_t none = mallinfo2().hblks;
    void *volatile larger = std::malloc(8 * kLarge);
    const bool isSeen = mallinfo2().hblks > none;
    std::free(larger);
    if (!isSeen) {
        GTEST_SKIP() << "the C library's heaps are not in use";
    }
    // The first blocks may have room in what other tests have left of a heap.
    std::vector<void *> blocks;
    for (int i = 0; i < 64; ++i) {
        blocks.push_back(std::malloc(kLarge));
    }
    const size_t before = mallinfo2().hblks;
    void *volatile large = std::malloc(kLarge);
    EXPECT_EQ(mallinfo2().hblks, before + 1);
    std::free(large);
    EXPECT_EQ(mallinfo2().hblks, before);
    for (void *block : blocks) {
        std::free(block);
    }
}
