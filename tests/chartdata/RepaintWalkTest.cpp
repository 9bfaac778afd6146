// Whatever parts of a pane are painted, one after the other, they show what the whole shows: above all where a row and a
// column cross under what is translucent.

#include "tests/chartdata/LinkageFixture.h"

#include "chartdata/LinkageScope.h"
#include "host/toolkit/Events.h"

#include <algorithm>
#include <cmath>
#include <random>

using namespace TC;

namespace tests {
namespace {

class RepaintWalk : public LinkageFixture {
protected:
    const QRect kPane{QPoint(0, 0), kSize};

    RepaintWalk() {
        mHost.mConfig.mRecord.mShowGradient = 1; // translucent beneath the price
        mUiParam->mDataCount = 121;
        std::vector<double> prices;
        for (int i = 0; i < 121; ++i) {
            prices.push_back(10.0 + 0.4 * std::sin(i * 0.3));
        }
        mData->setTradeDate(kDay);
        const CFormulaKey price = putPrice(prices);
        mData->setChartRect(kPane);
        mData->adoptMaxMin({{price, {11.0, 9.0}}}, true);
        show({0, 1, 2, 3});
        for (int i = 0; i < 40; ++i) {
            const std::string time = QTime(9, 30).addSecs(i * 180).toString("hh:mm:ss").toStdString();
            addOrder(std::to_string(i), i % 2 ? kBuy : kSell, 9.6 + 0.02 * i, time);
            addDeal(std::to_string(i), i % 2 ? kSell : kBuy, 10.4 - 0.02 * i, time);
        }
        addTask(1, true, 10.1, QTime(11, 29), 1, 4); // over the tail
        mHost.mLinkage.mAmounts = {{600, {100.0, 50.0}}, {690, {300.0, 150.0}}};
        mData->setDrawEnabled(true);
    }
    QImage whole() const {
        QImage image(kSize, QImage::Format_RGB32);
        QPainter painter(&image);
        mData->paintTo(&painter, kPane);
        return image;
    }
    void paint(QImage &image, const QRegion &part) const {
        QPainter painter(&image);
        mData->paintTo(&painter, kPane, part);
    }
    static QString firstDifference(const QImage &a, const QImage &b) {
        for (int y = 0; y < a.height(); ++y) {
            for (int x = 0; x < a.width(); ++x) {
                if (a.pixel(x, y) != b.pixel(x, y)) {
                    return QStringLiteral("column %1, row %2").arg(x).arg(y);
                }
            }
        }
        return QString();
    }
};

TEST_F(RepaintWalk, CrossingRowAndColumnShowTheWhole) {
    const QImage expected = whole();
    mUiParam->mLinkageFlags = eNoLinkage;
    ASSERT_NE(expected, whole()) << "marks are drawn";
    mUiParam->mLinkageFlags = eSelectedDataView;
    std::mt19937 random(11);
    std::uniform_int_distribution<int> column(0, kSize.width() - 1);
    std::uniform_int_distribution<int> row(0, kSize.height() - 1);
    QImage image = expected;
    for (int step = 0; step < 300; ++step) {
        QRegion part =
            QRegion(0, row(random), kSize.width(), 1) + QRegion(column(random), 0, 1, kSize.height());
        if (step % 3 == 0) {
            part += QRect(column(random), row(random), 60, 18); // a label
        }
        if (step % 5 == 0) {
            part += QRect(230, 0, 20, kSize.height()); // the tail
        }
        paint(image, part);
        ASSERT_EQ(firstDifference(image, expected), QString()) << "step " << step;
    }
}

TEST_F(RepaintWalk, NothingOutsideAPartIsTouched) {
    const QImage expected = whole();
    QImage image = expected;
    image.fill(Qt::magenta);
    const QRegion part = QRegion(0, 40, kSize.width(), 1) + QRegion(239, 0, 1, kSize.height());
    paint(image, part);
    for (int y = 0; y < kSize.height(); ++y) {
        for (int x = 0; x < kSize.width(); ++x) {
            const QRgb there = part.contains(QPoint(x, y)) ? expected.pixel(x, y) : QColor(Qt::magenta).rgb();
            ASSERT_EQ(image.pixel(x, y), there) << x << ' ' << y;
        }
    }
}

TEST_F(RepaintWalk, NewMinuteUnderTradesIsDrawnOverItsColumnsAlone) {
    mData->addFormula(QStringLiteral("REALTIME"));
    mData->request(corvane::ERunMode::Ordinary);
    const CFormulaKey price(kStock, QStringLiteral("REALTIME"));
    mData->redraw();
    const QImage before = whole();
    mData->mData[price].result.mValues[0][10] = 10.9; // untold: seen where all is drawn anew
    const auto tell = [&](int minute) {
        mData->onRealtimeCallback(0, mData->getReqID(price), makePoint(minuteTime(kDay, 570 + minute), {10.0}));
    };
    const QRect early(0, 0, 60, kSize.height());
    tell(121);
    tell(122);
    EXPECT_EQ(whole().copy(early), before.copy(early));
    mData->redraw();
    EXPECT_NE(whole().copy(early), before.copy(early));
}

// A replay tells its moment while it is drawn and painted, and whoever hears of it may have the pane drawn anew.

/// Draws the pane anew at every moment that it hears of.
class Redrawing : public GZ::CEventDeliverer {
public:
    bool handleEvent(int event, int first, int, QString, void *data) override {
        if (event == eRegionBoundMoved && first == eReplayTime) {
            ++mTold;
            mDepth += 1;
            mDeepest = std::max(mDeepest, mDepth);
            mTime = *static_cast<QTime *>(data);
            if (mData && mDepth < 4) {
                mData->setChartRect(mPane);
                mData->drawChart(mPane);
            }
            mDepth -= 1;
        }
        return true;
    }
    boost::shared_ptr<CRealtimeData> mData;
    QRect mPane;
    QTime mTime;
    int mTold = 0;
    int mDepth = 0;
    int mDeepest = 0;
};

TEST_F(RepaintWalk, MomentOfAReplayIsToldOnceThoughItHasThePaneDrawnAnew) {
    Redrawing view;
    const auto data = boost::make_shared<ChartProbe>(mUiParam, EIndexDisplayType::Main, &view);
    data->setTradeDate(kDay);
    data->mData = mData->mData;
    data->adoptMaxMin({{{kStock, QStringLiteral("REALTIME")}, {11.0, 9.0}}}, true);
    data->setChartRect(kPane);
    data->setDrawEnabled(true);
    const auto seen = [&](const QRegion *part) {
        QImage image(kSize, QImage::Format_RGB32);
        image.fill(Qt::magenta);
        QPainter painter(&image);
        if (part) {
            data->paintTo(&painter, kPane, *part);
        } else {
            data->paintTo(&painter, kPane);
        }
        return image;
    };
    const QImage expected = seen(nullptr);
    data->setReplayMode(true);
    view.mData = data;
    view.mPane = kPane;
    data->redraw();
    EXPECT_EQ(view.mTold, 1);
    EXPECT_EQ(view.mDeepest, 1);
    EXPECT_EQ(view.mTime, QDateTime::fromSecsSinceEpoch(kDay + 690 * 60).time());
    EXPECT_EQ(seen(nullptr), expected);
    EXPECT_EQ(view.mTold, 2) << "the tail";
    const QRegion all(kPane);
    EXPECT_EQ(seen(&all), expected);
    EXPECT_EQ(view.mDeepest, 1);
    view.mData.reset();
}

TEST_F(RepaintWalk, WhatAMomentChangesIsInThePaintingThatToldIt) {
    Redrawing view;
    const auto data = boost::make_shared<ChartProbe>(mUiParam, EIndexDisplayType::Main, &view);
    data->setTradeDate(kDay);
    data->mData = mData->mData;
    data->adoptMaxMin({{{kStock, QStringLiteral("REALTIME")}, {11.0, 9.0}}}, true);
    data->setChartRect(kPane);
    data->setDrawEnabled(true);
    data->setReplayMode(true);
    data->mData[{kStock, QStringLiteral("REALTIME")}].result.mValues[0][60] = 10.9; // no result tells of it
    view.mData = data;
    view.mPane = kPane;
    const auto seen = [&] {
        QImage image(kSize, QImage::Format_RGB32);
        QPainter painter(&image);
        data->paintTo(&painter, kPane);
        return image;
    };
    const QImage first = seen();
    EXPECT_EQ(first, seen());
    view.mData.reset();
}

} // namespace
} // namespace tests
