// A service that sends anything: short and missing vectors, unsorted and doubled times, numbers that are none.

#include "tests/chartdata/ChartDataFixture.h"

#include "tests/support/Numbers.h"

#include <QImage>
#include <QPainter>

#include <limits>
#include <random>

namespace tests {
namespace {

class HostileResults : public ChartData {
protected:
    std::size_t random(std::size_t below) { return mRandom() % below; }
    template <class T, class Make> std::vector<T> list(std::size_t longest, Make make) {
        std::vector<T> made(random(longest + 1));
        for (T &element : made) {
            element = make();
        }
        return made;
    }
    double number() {
        const double odd[] = {kNaN, kInfinity, -kInfinity, TC::kUnsetValue, -TC::kUnsetValue,
                              0.0,  -1.0,      1e-300};
        return random(3) == 0 ? odd[random(8)] : 10.0 + static_cast<double>(random(100)) / 50.0;
    }
    se::TimePosition time() {
        const qint64 odd[] = {0,
                              -1,
                              std::numeric_limits<qint64>::max(),
                              std::numeric_limits<qint64>::min(),
                              (kDay - 86400) * 1000LL,
                              (kDay + 86400) * 1000LL};
        if (random(12) == 0) {
            return {odd[random(6)], static_cast<qint64>(random(3))};
        }
        return minuteTime(kDay, 560 + static_cast<int>(random(40)), static_cast<qint64>(random(2)));
    }
    std::string word() { return std::string(random(4), 'x'); }
    TC::FormulaMetaPtr meta() {
        if (random(8) == 0) {
            return nullptr;
        }
        const auto any = [this] { return static_cast<qint32>(random(60)) - 5; };
        auto made = std::make_shared<se::RPCFormulaMetaResult>();
        made->mLineCount = random(20) == 0 ? -3 : static_cast<qint32>(random(5));
        made->mLineNames = list<std::string>(4, [this] { return word(); });
        made->mLineStyles = list<qint32>(4, any);
        made->mLineColors = list<qint32>(4, any);
        made->mLineFlags = list<qint32>(4, any);
        made->mLineAxis = list<qint32>(4, any);
        return made;
    }
    TC::FormulaResultPtr result() {
        if (random(8) == 0) {
            return nullptr;
        }
        const auto any = [this] { return static_cast<qint32>(random(3)); };
        const auto numbers = [this] { return list<double>(30, [this] { return number(); }); };
        auto made = std::make_shared<se::RPCFormulaResult>();
        made->mTimes = list<se::TimePosition>(30, [this] { return time(); });
        if (random(2) == 0) {
            std::sort(made->mTimes.begin(), made->mTimes.end());
        }
        made->mValid = list<qint32>(30, any);
        made->mPointTags = list<qint32>(30, any);
        made->mValues = list<std::vector<double>>(4, numbers);
        made->mExtra1 = list<std::vector<qint32>>(4, [&] { return list<qint32>(30, any); });
        made->mTexts = list<std::vector<std::string>>(
            4, [this] { return list<std::string>(30, [this] { return word(); }); });
        made->mExtra2 = list<std::vector<double>>(4, numbers);
        made->mShared1 = numbers();
        return made;
    }
    TC::FormulaInstantPtr instant() {
        if (random(10) == 0) {
            return nullptr;
        }
        auto made = std::make_shared<se::RPCFormulaInstantResult>();
        made->mTime = time();
        made->mValues = list<double>(5, [this] { return number(); });
        made->mExtra1 = list<qint32>(5, [this] { return static_cast<qint32>(random(9)) - 1; });
        made->mTexts = list<std::string>(5, [this] { return word(); });
        made->mExtra2 = list<double>(5, [this] { return number(); });
        return made;
    }
    void anyStep(TC::CRealtimeData &data) {
        const QVector<QString> ids = data.reqIds();
        const QString id = ids.isEmpty() || random(10) == 0
                               ? QStringLiteral("old")
                               : ids[static_cast<int>(random(std::size_t(ids.size())))];
        switch (random(12)) {
        case 0:
            data.minitermFormulaDataCallback(meta(), result(), QString(), "REALTIME", 1);
            break;
        case 1:
            data.onHistoryCallback(meta(), result(), id, 1, QString(), random(2) == 0);
            break;
        case 2:
            data.alignOverlay(key("SH600001"), static_cast<int>(random(50)) - 5);
            break;
        case 3:
            data.setFillGaps(random(2) == 0);
            break;
        case 4:
            data.adoptMaxMin(data.getMaxMinMap(), random(2) == 0);
            break;
        case 5:
            data.getResultText();
            break;
        case 6:
            data.paintTo(&mPainter, QRect(0, 0, 60, 40));
            break;
        default:
            data.onRealtimeCallback(0, id, instant());
        }
    }

    std::mt19937 mRandom{20261121};
    QImage mImage{60, 40, QImage::Format_ARGB32_Premultiplied};
    QPainter mPainter{&mImage};
};

TEST_F(HostileResults, AnySequenceIsSurvivedWithoutSeriesGrowingBeyondWhatWasSent) {
    mUi->addStock("SH600001", QString(), true);
    mUi->addStock("SZ000001", QString(), false);
    for (int chart = 0; chart < 30; ++chart) {
        auto data = chart % 3 == 2 ? makeSub({"REALTIME", "MACD"}) : makeMain({"REALTIME", "REALTIMEVOL"});
        data->request(corvane::ERunMode::Ordinary);
        data->setChartRect(QRect(0, 0, 60, 40));
        data->setDrawEnabled(true);
        for (int step = 0; step < 150; ++step) {
            anyStep(*data);
            for (const auto &entry : data->getData()) {
                ASSERT_LE(entry.result.mTimes.size(), 600u);
            }
        }
        data->unrequest();
    }
}

TEST_F(HostileResults, PointsNeverShortenOrSortASeries) {
    auto data = requested();
    for (int chart = 0; chart < 40; ++chart) {
        history(*data, key("SH600000"), result());
        for (int step = 0; step < 60; ++step) {
            const std::vector<se::TimePosition> before = series(*data, key("SH600000")).mTimes;
            point(*data, key("SH600000"), instant());
            const std::vector<se::TimePosition> after = series(*data, key("SH600000")).mTimes;
            ASSERT_GE(after.size(), before.size());
            ASSERT_LE(after.size(), before.size() + 1);
            ASSERT_TRUE(std::equal(before.begin(), before.end(), after.begin()));
        }
    }
}

TEST_F(HostileResults, OverlayLongerThanTheMainSeriesWithFewerLinesIsAligned) {
    mUi->addStock("SH600001", QString(), true);
    auto data = requested();
    history(*data, key("SH600000"),
            makeResult(minuteTimes(kDay, 570, 3), {10, 11, 12}, std::vector<double>{1}));
    auto overlay = makeResult(minuteTimes(kDay, 569, 9), {1, 2});
    overlay->mValid.clear();
    data->applyHistory(nullptr, overlay, data->getReqID(key("SH600001")), 1, QString(), true);
    const se::RPCFormulaResult &aligned = series(*data, key("SH600001"));
    EXPECT_EQ(aligned.mValues, (std::vector<std::vector<double>>{{2, 0, 0}, {0, 0, 0}}));
    EXPECT_EQ(aligned.mValid, (std::vector<qint32>{1, 1, 1}));
}

TEST_F(HostileResults, NumbersThatAreNoneAreStoredAsTheyCome) {
    auto data = requested();
    history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 2), {10, kInfinity}));
    point(*data, key("SH600000"), makePoint(minuteTime(kDay, 572), {kNaN, kNaN}));
    EXPECT_EQ(series(*data, key("SH600000")).mValues[0][1], kInfinity);
    EXPECT_TRUE(std::isnan(series(*data, key("SH600000")).mValues[0][2]));
    EXPECT_EQ(mEvents.all().back().text, "nan");
}

} // namespace
} // namespace tests
