// A change of volume redraws the volume band alone, and any other change everything: whatever happens, the chart looks
// as one whose pixmaps are new.

#include "tests/chartdata/ProbeFixture.h"

namespace tests {
namespace {

const QRect kSmallPane(0, 0, 240, 160);

class VolumeBand : public ProbeFixture {
protected:
    VolumeBand() : mStrip(mUiParam, mData, TC::CGraphAxisWidget::eLeft) {
        mUiParam->mDayWidth = kSmallPane.width();
        mStrip.resize(50, kSmallPane.height());
        mData->setTradeDate(kDay - 86400); // a past day: every point is in the pixmap
        mData->addFormula(QStringLiteral("REALTIME"));
        mData->setAxisWidget(&mStrip);
        mData->setChartRect(kSmallPane);
        putPrice({9.6, 9.8, 10.4, 10.1});
        putVolume({100.0, 300.0, 200.0, 50.0});
        setRanges(11.0, 9.0, 400.0);
        mData->setDrawEnabled(true);
    }
    void setRanges(double high, double low, double volume) {
        const TC::IndexBaseData::MaxMinMap ranges = {{{kStock, QStringLiteral("REALTIME")}, {high, low}},
                                                     {{kStock, QStringLiteral("REALTIMEVOL")}, {volume, 0.0}}};
        mStrip.setMaxMinMap(ranges);
        mData->adoptMaxMin(ranges, true);
    }
    std::vector<double> &line(const char *formula, std::size_t index = 0) {
        return mData->mData[{kStock, QString::fromLatin1(formula)}].result.mValues[index];
    }
    QImage seen() const {
        QImage image(kSmallPane.size(), QImage::Format_RGB32);
        image.fill(Qt::magenta);
        QPainter painter(&image);
        mData->paintTo(&painter, kSmallPane);
        return image;
    }
    /// Redraws, and compares with what new pixmaps show. `before` has to differ.
    void expectFreshLook(const QImage &before) {
        mData->redraw();
        const QImage now = seen();
        EXPECT_NE(now, before);
        mData->setChartRect(kSmallPane);
        EXPECT_EQ(now, seen());
    }
    TC::CGraphAxisWidget mStrip;
};

TEST_F(VolumeBand, ChangedVolumeIsDrawn) {
    const QImage before = seen();
    line("REALTIMEVOL")[2] = 350.0;
    expectFreshLook(before);
}

TEST_F(VolumeBand, OutgrownVolumeIsDrawnInItsNewRange) {
    const QImage before = seen();
    line("REALTIMEVOL")[2] = 900.0;
    setRanges(11.0, 9.0, 900.0);
    expectFreshLook(before);
}

TEST_F(VolumeBand, ChangedPriceInsideTheRangeIsDrawn) {
    const QImage before = seen();
    line("REALTIME")[1] = 10.9;
    expectFreshLook(before);
}

TEST_F(VolumeBand, FlagAndColourOfAPriceAreDrawn) {
    QImage before = seen();
    auto &price = mData->mData[{kStock, QStringLiteral("REALTIME")}];
    price.result.mValid[3] = 0;
    expectFreshLook(before);
    before = seen();
    price.meta.mLineColors[0] = 0x0000ff;
    expectFreshLook(before);
}

TEST_F(VolumeBand, PriceRangeIsDrawn) {
    const QImage before = seen();
    setRanges(12.0, 9.0, 400.0);
    expectFreshLook(before);
}

TEST_F(VolumeBand, GridFollowsTheTicks) {
    const QImage before = seen();
    mStrip.resize(50, kSmallPane.height() + 90); // more ticks, in other rows
    mStrip.recompute();
    expectFreshLook(before);
}

TEST_F(VolumeBand, GridFollowsTheTimeLines) {
    const QImage before = seen();
    mUiParam->mDayWidth = kSmallPane.width() / 2.0;
    mStrip.recompute();
    expectFreshLook(before);
}

TEST_F(VolumeBand, PriceFillsThePaneWithoutVolume) {
    const QImage before = seen();
    mUiParam->mShowVolume = false;
    expectFreshLook(before);
}

TEST_F(VolumeBand, GradientIsSwitched) {
    const QImage before = seen();
    mHost.mConfig.mRecord.mShowGradient = !mHost.mConfig.mRecord.mShowGradient;
    expectFreshLook(before);
}

TEST_F(VolumeBand, OneMorePriceIsDrawn) {
    const QImage before = seen();
    putPrice({9.6, 9.8, 10.4, 10.1, 9.2, 10.8});
    expectFreshLook(before);
}

TEST_F(VolumeBand, RemovedPriceIsDrawnAway) {
    const QImage before = seen();
    mData->mData.remove({kStock, QStringLiteral("REALTIME")});
    expectFreshLook(before);
}

} // namespace
} // namespace tests
