#include "tests/chartdata/PartsFixture.h"

#include "host/toolkit/CUiResource.h"

#include <QImage>
#include <QPainter>

#include <thread>

using namespace TC;

namespace tests {
namespace {

class Picture : public PartsFixture {
protected:
    Picture() {
        mView.mShowVolume = false;
        store(kMain, {10.0, 10.5, 9.6, 10.1});
        mRanges.adopt({{kMain, {11.0, 9.0}}}, true);
        mPicture.setRect(kPane);
        mPicture.make(false);
    }
    ~Picture() override { GZ::CUiResource::instance().setTheme(QStringLiteral("dark")); }
    void change(std::size_t index) {
        mShown[kMain].result.mValues[0][index] += 0.1;
        mPicture.notePoint({&*mShown.constFind(kMain), index});
        mPicture.noteDamage(ePointChanged);
    }
    QImage seen() {
        QImage image(kPane.size(), QImage::Format_RGB32);
        QPainter painter(&image);
        mPicture.paint(painter, kPane, nullptr);
        return image;
    }

    const CFormulaKey kMain = key("SH600000");
    int mTold = 0;
    ChartPicture mPicture{mScene, mView, [this] { return ++mTold > 0; }};
};

TEST_F(Picture, CoversItsOwnSizeOnceItIsMade) {
    EXPECT_TRUE(mPicture.covers(kPane.size()));
    EXPECT_FALSE(mPicture.covers(QSize(301, 200)));
    mPicture.setRect(QRect(0, 0, 20000, 20000)); // too large to keep
    mPicture.make(false);
    EXPECT_FALSE(mPicture.covers(QSize(20000, 20000)));
}

TEST_F(Picture, RatioIsTakenOnceAndWhereItIsOne) {
    EXPECT_TRUE(mPicture.setRatio(2.0));
    EXPECT_FALSE(mPicture.setRatio(2.0));
    EXPECT_FALSE(mPicture.setRatio(0.0));
    EXPECT_FALSE(mPicture.setRatio(std::nan("")));
    EXPECT_EQ(mPicture.ratio(), 2.0);
}

TEST_F(Picture, NewestPointMovesWithoutMakingItStale) {
    mPicture.draw(kPane);
    EXPECT_FALSE(mPicture.isStale());
    change(3);
    EXPECT_FALSE(mPicture.isStale());
    change(2); // the end of the picture
    EXPECT_TRUE(mPicture.isStale());
    mPicture.draw(kPane);
    EXPECT_FALSE(mPicture.isStale());
}

TEST_F(Picture, AnotherThemeMakesItStale) {
    mPicture.draw(kPane);
    GZ::CUiResource::instance().setTheme(QStringLiteral("light"));
    EXPECT_TRUE(mPicture.isStale());
    seen(); // shows it as it is
    EXPECT_TRUE(mPicture.isStale());
    mPicture.draw(kPane);
    EXPECT_FALSE(mPicture.isStale());
}

TEST_F(Picture, DamageIsTheTailWhenOnlyTheTailHasMoved) {
    mPicture.draw(kPane);
    EXPECT_EQ(mPicture.takeDirtyRect(), kPane);
    EXPECT_TRUE(mPicture.takeDirtyRect().isNull());
    change(3);
    const QRect tail = mPicture.takeDirtyRect();
    EXPECT_FALSE(tail.isNull());
    EXPECT_LT(tail.width(), 10) << "two points of 240 on 300 pixels";
    change(0);
    EXPECT_EQ(mPicture.takeDirtyRect(), kPane);
}

TEST_F(Picture, TellsBeforeSeriesAreDrawn) {
    mPicture.draw(kPane);
    EXPECT_EQ(mTold, 1);
    seen();
    EXPECT_EQ(mTold, 2) << "the tail";
    mShown.clear();
    mPicture.draw(kPane);
    EXPECT_EQ(mTold, 2) << "nothing to draw";
}

TEST_F(Picture, PaintingDrawsNothingOfItAnew) {
    mPicture.draw(kPane);
    const QImage drawn = seen();
    mShown[kMain].result.mValues[0][1] = 9.2; // of which nobody tells
    EXPECT_EQ(seen(), drawn);
    mPicture.draw(kPane);
    EXPECT_NE(seen(), drawn);
}

TEST_F(Picture, DrawingIsCarriedOutWhenItIsPaintedOrBeforeItsSeriesChanges) {
    mPicture.draw(kPane);
    const QImage first = seen();
    const auto drawnAndChanged = [this](const CFormulaKey &told) {
        mShown[kMain].result.mValues[0][1] = 10.5;
        mPicture.draw(kPane);
        mPicture.settle(told);
        mShown[kMain].result.mValues[0][1] = 9.2;
        return seen();
    };
    EXPECT_EQ(drawnAndChanged(kMain), first);
    EXPECT_NE(drawnAndChanged(key("SH600000", "REALTIMEVOL")), first) << "that is not in it";
}

TEST_F(Picture, DrawingIsCarriedOutAtOnceOnAnotherThread) {
    mPicture.draw(kPane);
    const QImage drawn = seen();
    std::thread([this] { mPicture.draw(kPane); }).join();
    mShown[kMain].result.mValues[0][1] = 9.2; // of which nobody tells
    EXPECT_EQ(seen(), drawn);
}

TEST_F(Picture, SeriesThatHasGoneUntoldIsLeftOut) {
    mShown.clear();
    mPicture.draw(kPane);
    const QImage bare = seen();
    store(kMain, {10.0, 10.5, 9.6, 10.1});
    mPicture.draw(kPane);
    mShown.clear();
    EXPECT_EQ(seen(), bare);
}

TEST_F(Picture, WithoutSeriesItIsDrawnAnewWhenItLooksDifferent) {
    const auto drawn = [this] {
        mPicture.draw(kPane);
        return seen();
    };
    const QImage full = drawn();
    mShown.clear();
    const QImage bare = drawn();
    EXPECT_NE(bare, full);
    EXPECT_EQ(drawn(), bare);
    GZ::CUiResource::instance().setTheme(QStringLiteral("light"));
    const QImage light = drawn();
    EXPECT_NE(light, bare);
    EXPECT_FALSE(mPicture.isStale());
    GZ::CUiResource::instance().setTheme(QStringLiteral("dark"));
    EXPECT_EQ(drawn(), bare);
    mPicture.make(false);
    EXPECT_EQ(drawn(), bare) << "into a new picture";
    store(kMain, {10.0, 10.5, 9.6, 10.1});
    mRanges.adopt({{kMain, {11.0, 9.0}}}, true);
    EXPECT_EQ(drawn(), full);
}

TEST_F(Picture, DamageOfATickIsRowsOfItsColumns) {
    mPicture.draw(kPane);
    EXPECT_EQ(mPicture.takeDirtyRegion(), QRegion(kPane));
    EXPECT_TRUE(mPicture.takeDirtyRegion().isEmpty());
    change(3);
    // The chart takes rows 3 to 197, and 10.2 of 11.0 to 9.0 lies on row 3 + 0.4 * 194 = 80.6: a row to spare above it, and
    // the gradient beneath.
    const QRect tail = mPicture.takeDirtyRegion().boundingRect();
    EXPECT_EQ(tail.top(), 79);
    EXPECT_EQ(tail.bottom(), 197);
    EXPECT_LT(tail.width(), 10);
    EXPECT_TRUE(mPicture.takeDirtyRegion().isEmpty());
    change(0);
    EXPECT_EQ(mPicture.takeDirtyRegion(), QRegion(kPane));
}

TEST_F(Picture, DamageOfATickIsThatOfItsSeriesAlone) {
    const CFormulaKey volume = key("SH600000", "REALTIMEVOL");
    mView.mShowVolume = true;
    store(volume, {100.0, 200.0, 300.0, 400.0}, 10);
    mRanges.adopt({{volume, {500.0, 0.0}}}, true);
    mPicture.draw(kPane);
    mPicture.takeDirtyRegion();
    change(3);
    // Of 200 rows the volume has those from 133 on.
    const QRect price = mPicture.takeDirtyRegion().boundingRect();
    EXPECT_FALSE(price.isEmpty());
    EXPECT_LT(price.bottom(), 133);
    mShown[volume].result.mValues[0][3] = 450.0;
    mPicture.notePoint({&*mShown.constFind(volume), 3});
    mPicture.noteDamage(ePointChanged);
    // Its rows are 136 to 197, and 450 of 500 lies on row 136 + 0.1 * 61 = 142.1, with one to spare above it.
    const QRect stick = mPicture.takeDirtyRegion().boundingRect();
    EXPECT_EQ(stick.top(), 141);
    EXPECT_EQ(stick.bottom(), 197);
    change(3);
    mShown[volume].result.mValues[0][3] = 420.0;
    mPicture.notePoint({&*mShown.constFind(volume), 3});
    mPicture.noteDamage(ePointChanged);
    // The price has rows 3 to 130, and 10.3 of 11.0 to 9.0 lies on row 3 + 0.35 * 127 = 47.5.
    const QRect both = mPicture.takeDirtyRegion().boundingRect();
    EXPECT_EQ(both.top(), 46);
    EXPECT_EQ(both.bottom(), 197);
}

TEST_F(Picture, WhatAnEarlierPaintingShowedOfTheTailIsDamagedToo) {
    mPicture.draw(kPane);
    mPicture.takeDirtyRegion();
    mShown[kMain].result.mValues[0][3] = 10.9;
    const QRegion all(kPane);
    QImage screen(kPane.size(), QImage::Format_RGB32);
    {
        QPainter painter(&screen);
        mPicture.paint(painter, kPane, &all); // a window that is uncovered before it has heard of the point
    }
    change(3);
    mShown[kMain].result.mValues[0][3] = 9.5;
    const QRegion damage = mPicture.takeDirtyRegion();
    {
        QPainter painter(&screen);
        mPicture.paint(painter, kPane, &damage);
    }
    EXPECT_EQ(screen, seen());
}

TEST_F(Picture, PartsShowWhatTheWholeShows) {
    mPicture.draw(kPane);
    const QImage whole = seen();
    QImage image(kPane.size(), QImage::Format_RGB32);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    const QRegion part = QRegion(0, 90, 300, 20) + QRegion(3, 0, 2, 200);
    mPicture.paint(painter, kPane, &part);
    painter.end();
    for (int y = 0; y < kPane.height(); ++y) {
        for (int x = 0; x < kPane.width(); ++x) {
            const QRgb expected = part.contains(QPoint(x, y)) ? whole.pixel(x, y) : QColor(Qt::magenta).rgb();
            ASSERT_EQ(image.pixel(x, y), expected) << x << ' ' << y;
        }
    }
}

} // namespace
} // namespace tests
