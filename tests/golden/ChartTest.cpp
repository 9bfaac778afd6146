// The picture of a whole chart: grid, price, average, overlays and volume.

#include "tests/chartdata/ProbeFixture.h"
#include "tests/support/Golden.h"

#include <algorithm>

using namespace tests;
using namespace TC;

namespace {

const QSize kPane(600, 360);

/// A day's prices from a fixed walk, with their average and volumes.
struct Day {
    std::vector<double> price;
    std::vector<double> average;
    std::vector<double> volume;
};

Day dayOf(int points, double start, unsigned seed) {
    Day day;
    double price = start;
    double amount = 0.0;
    double total = 0.0;
    for (int i = 0; i < points; ++i) {
        seed = seed * 1664525u + 1013904223u;
        const int step = int(seed >> 16) % 9 - 4;
        price += start * 0.0004 * step;
        const double volume = 200.0 + (seed >> 20) % 800 + (i < 20 ? 1500 - 70 * i : 0);
        amount += price * volume;
        total += volume;
        day.price.push_back(price);
        day.average.push_back(amount / total);
        day.volume.push_back(volume);
    }
    return day;
}

class ChartPicture : public ProbeFixture, public ::testing::WithParamInterface<double> {
protected:
    void TearDown() override { mData->setAxisWidget(nullptr); }
    /// Puts a day in as the history of the main formulas.
    void feed(int points) {
        for (const char *formula : {"REALTIME", "REALTIMEVOL"}) {
            mData->addFormula(QLatin1String(formula));
        }
        mData->request(corvane::ERunMode::Ordinary);
        const Day day = dayOf(points, 10.0, 7);
        const auto times = minuteTimes(kDay, 570, points);
        give(kStock, QStringLiteral("REALTIME"), makeMeta(2), makeResult(times, day.price, day.average));
        give(kStock, QStringLiteral("REALTIMEVOL"), makeMeta(1, {2}), makeResult(times, day.volume));
    }
    void give(const QString &stock, const QString &formula, const FormulaMetaPtr &meta,
              const FormulaResultPtr &result) {
        mData->onHistoryCallback(meta, result, mData->getReqID({stock, formula}), 1, QString(), true);
    }
    /// The pane beside a strip that shows its ranges.
    QImage picture() {
        mUiParam->resize(QRect(0, 0, kPane.width() + 100, kPane.height()));
        CGraphAxisWidget strip(mUiParam, mData, CGraphAxisWidget::eLeft);
        strip.setDisplayType(EIndexDisplayType::Main);
        strip.resize(50, kPane.height());
        strip.setMaxMinMap(mData->getMaxMinMap());
        mData->setAxisWidget(&strip);
        mData->adoptMaxMin(mData->getMaxMinMap(), true);
        mData->setChartRect(QRect(QPoint(0, 0), kPane));
        mData->setDrawEnabled(true);
        const QImage image = rendered(kPane, GetParam(), Qt::magenta, [this](QPainter &painter) {
            mData->paintTo(&painter, QRect(QPoint(0, 0), kPane));
        });
        mData->setAxisWidget(nullptr);
        return image;
    }
};

} // namespace

TEST_P(ChartPicture, ALiveDayHalfWay) {
    feed(130);
    EXPECT_TRUE(matchesGolden(picture(), goldenName(QStringLiteral("chart-live-half-day"), GetParam())));
}

TEST_P(ChartPicture, AWholePastDay) {
    mData->setTradeDate(kDay - 86400);
    feed(241);
    EXPECT_TRUE(matchesGolden(picture(), goldenName(QStringLiteral("chart-past-day"), GetParam())));
}

TEST_P(ChartPicture, APastDayWithoutVolume) {
    mUiParam->mShowVolume = false;
    mData->setTradeDate(kDay - 86400);
    feed(241);
    EXPECT_TRUE(matchesGolden(picture(), goldenName(QStringLiteral("chart-without-volume"), GetParam())));
}

TEST_P(ChartPicture, ALiveDayWithAnOverlay) {
    overlay("SZ", "000001", 20.0, true);
    feed(130);
    const Day day = dayOf(130, 20.0, 99);
    give(QStringLiteral("SZ000001"), QStringLiteral("REALTIME"), makeMeta(2),
         makeResult(minuteTimes(kDay, 570, 130), day.price, day.average));
    EXPECT_TRUE(matchesGolden(picture(), goldenName(QStringLiteral("chart-overlay"), GetParam())));
}

INSTANTIATE_TEST_SUITE_P(Ratios, ChartPicture, ::testing::Values(1.0, 2.0));
