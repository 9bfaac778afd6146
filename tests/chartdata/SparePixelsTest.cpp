#include "chartdata/SparePixels.h"
#include "chartdata/PanePixmap.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <thread>
#include <vector>

using TC::SparePixels;

namespace {

constexpr std::size_t kMegabyte = 1 << 20;

} // namespace

TEST(SparePixels, WhatWasGivenBackIsTakenAgain) {
    SparePixels spares;
    void *const first = spares.take(3 * kMegabyte);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(first) % alignof(std::max_align_t), 0u);
    std::memset(first, 0xff, 3 * kMegabyte);
    EXPECT_EQ(spares.kept(), 0u);
    spares.giveBack(first);
    EXPECT_EQ(spares.kept(), 3 * kMegabyte);
    void *const second = spares.take(3 * kMegabyte - 100);
    EXPECT_EQ(second, first);
    EXPECT_EQ(spares.kept(), 0u);
    void *const third = spares.take(3 * kMegabyte);
    EXPECT_NE(third, second);
    spares.giveBack(second);
    spares.giveBack(third);
    EXPECT_EQ(spares.kept(), 3 * kMegabyte) << "one piece, not both";
}

TEST(SparePixels, ALargePieceHasRoomForTheNextStepOfAResize) {
    SparePixels spares;
    void *const small = spares.take(2 * kMegabyte + 1);
    spares.giveBack(small);
    EXPECT_EQ(spares.kept(), 3 * kMegabyte);
    void *const larger = spares.take(3 * kMegabyte);
    EXPECT_EQ(larger, small);
    std::memset(larger, 0, 3 * kMegabyte);
    spares.giveBack(larger);
}

TEST(SparePixels, ServesNothingThatItDoesNotFit) {
    SparePixels spares;
    spares.giveBack(spares.take(1000));
    void *const larger = spares.take(1001);
    EXPECT_EQ(spares.kept(), 1000u) << "it is too small, and stays";
    spares.giveBack(larger);
    EXPECT_EQ(spares.kept(), 1001u);
    void *const tiny = spares.take(499);
    EXPECT_EQ(spares.kept(), 1001u) << "more than half of it would lie idle";
    spares.giveBack(tiny);
    EXPECT_EQ(spares.kept(), 499u) << "the last one";
}

TEST(SparePixels, KeepsNothingThatIsUnreasonablyLargeAndTakesNull) {
    SparePixels spares;
    void *const huge = spares.take(SparePixels::kLargest + 1);
    ASSERT_NE(huge, nullptr);
    spares.giveBack(huge);
    EXPECT_EQ(spares.kept(), 0u);
    spares.giveBack(nullptr);
    EXPECT_EQ(spares.kept(), 0u);
}

TEST(SparePixels, AnyThreadTakesAndGivesBack) {
    SparePixels spares;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&spares, i] {
            for (int turn = 0; turn < 200; ++turn) {
                auto *const pixels = static_cast<unsigned char *>(spares.take(4096));
                std::memset(pixels, i, 4096);
                ASSERT_EQ(pixels[4095], i);
                spares.giveBack(pixels);
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(spares.kept(), 4096u);
}

TEST(PaneImage, IsAnOrdinaryImageThatOutlivesOthersOfItsMemory) {
    QImage image = TC::paneImage(QSize(30, 20), 2.0, true);
    EXPECT_EQ(image.size(), QSize(60, 40));
    EXPECT_EQ(image.bytesPerLine(), 240);
    EXPECT_EQ(image.format(), QImage::Format_RGB32);
    image.fill(Qt::red);
    const uchar *const bits = image.constBits();
    QImage copy = image; // shared
    copy.fill(Qt::blue);
    EXPECT_EQ(image.pixelColor(5, 5), QColor(Qt::red));
    EXPECT_EQ(copy.pixelColor(5, 5), QColor(Qt::blue));
    image.setPixelColor(0, 0, Qt::green);
    EXPECT_EQ(image.constBits(), bits) << "alone again, it is drawn in place";
    EXPECT_EQ(TC::paneImage(QSize(30, 20), 1.0, false).format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_TRUE(TC::paneImage(QSize(0, 20), 1.0, true).isNull());
}
