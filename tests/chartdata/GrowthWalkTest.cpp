// A chart that grows minute by minute looks as one that is drawn anew, whatever its lines are, and asks for no more of the
// screen than has changed.

#include "tests/chartdata/ChartDataFixture.h"

#include "host/drawing/DrawStyles.h"
#include "host/toolkit/CUiResource.h"

#include <QFile>
#include <QTemporaryDir>

#include <cmath>
#include <limits>
#include <random>

namespace tests {
namespace {

const QRect kGrowingPane(0, 0, 300, 200);

const std::vector<qint32> kStyles = {0,  1,  2,  4,  5,  6,  8,  10, 12, 13, 14, 15, 16,
                                     17, 18, 19, 26, 27, 28, 31, 36, 37, 40, 41, 42, 42};

class GrowthWalk : public ChartData, public ::testing::WithParamInterface<int> {
protected:
    using Data = boost::shared_ptr<TC::CRealtimeData>;

    /// Feeds two charts with the same: one that is left alone, and one that is drawn anew before it is looked at.
    void begin(const std::vector<qint32> &styles, double ratio, bool filled, TC::EIndexDisplayType type) {
        mStyles = styles;
        mRatio = ratio;
        mFormulas = type == TC::EIndexDisplayType::Main
                        ? QStringList{QStringLiteral("REALTIME"), QStringLiteral("REALTIMEVOL")}
                        : QStringList{QStringLiteral("MACD")};
        mGrown = make(type, mFormulas);
        mFresh = make(type, mFormulas);
        for (const Data &data : {mGrown, mFresh}) {
            data->setFillGaps(filled);
            data->request(corvane::ERunMode::Ordinary);
            data->setPixelRatio(ratio);
        }
        mMinutes = 3;
        for (const TC::CFormulaKey &key : keys()) {
            tellHistory(key);
        }
        countPoints();
        for (const Data &data : {mGrown, mFresh}) {
            data->setChartRect(kGrowingPane);
            data->adoptMaxMin(ranges(), true);
            data->setDrawEnabled(true);
        }
        mScreen = blank();
        show();
    }
    std::vector<TC::CFormulaKey> keys() const {
        std::vector<TC::CFormulaKey> found;
        for (const QString &formula : mFormulas) {
            found.emplace_back(QStringLiteral("SH600000"), formula);
        }
        if (mFormulas.size() > 1) {
            for (const auto &overlay : mUi->getAllAddStockList()) {
                found.emplace_back(TC::getDetailQsKey(overlay), QStringLiteral("REALTIME"));
            }
        }
        return found;
    }
    TC::IndexBaseData::MaxMinMap ranges() const {
        TC::IndexBaseData::MaxMinMap found;
        for (const TC::CFormulaKey &key : keys()) {
            const bool volume = key.mFormula == QLatin1String("REALTIMEVOL");
            found.insert(key, volume ? TC::CDrawStyle::Range(500.0, 0.0) : TC::CDrawStyle::Range(11.0, 9.0));
        }
        return found;
    }
    std::vector<double> values(const TC::CFormulaKey &key) {
        std::uniform_int_distribution<int> chance(0, 19);
        if (key.mFormula == QLatin1String("REALTIMEVOL")) {
            return {std::uniform_real_distribution<>(0.0, 480.0)(mRandom)};
        }
        std::vector<double> found;
        for (std::size_t line = 0; line < mStyles.size(); ++line) {
            const bool gap = chance(mRandom) == 0;
            found.push_back(gap ? std::numeric_limits<double>::quiet_NaN()
                                : std::uniform_real_distribution<>(9.1, 10.9)(mRandom));
        }
        return found;
    }
    void tellHistory(const TC::CFormulaKey &key) {
        const std::vector<qint32> styles =
            key.mFormula == QLatin1String("REALTIMEVOL") ? std::vector<qint32>{TC::eColorStickStyle} : mStyles;
        std::vector<std::vector<double>> lines(styles.size());
        for (int i = 0; i < mMinutes; ++i) {
            const std::vector<double> at = values(key);
            for (std::size_t line = 0; line < lines.size(); ++line) {
                lines[line].push_back(at[line]);
            }
        }
        const auto result = makeResult(minuteTimes(kDay, 570, mMinutes), lines);
        for (const Data &data : {mGrown, mFresh}) {
            data->onHistoryCallback(makeMeta(static_cast<int>(styles.size()), styles), result,
                                    data->getReqID(key), 1, QString(), true);
        }
    }
    void tell(const TC::CFormulaKey &key, int minute) {
        const auto point = makePoint(minuteTime(kDay, 570 + minute), values(key));
        for (const Data &data : {mGrown, mFresh}) {
            data->onRealtimeCallback(0, data->getReqID(key), point);
        }
        countPoints();
        if (mGrown->isRangeOutgrown()) { // the pane answers so
            for (const Data &data : {mGrown, mFresh}) {
                data->adoptMaxMin(data->getMaxMinMap(), false);
            }
        }
    }
    /// The main chart has as many points as a formula pane.
    void countPoints() {
        if (mFormulas.size() == 1) {
            mUi->mDataCount = static_cast<int>(series(*mGrown, keys().front()).mTimes.size());
        }
    }
    QImage blank() const {
        QImage image(kGrowingPane.size() * mRatio, QImage::Format_RGB32);
        image.setDevicePixelRatio(mRatio);
        image.fill(Qt::magenta);
        return image;
    }
    /// What a window does after an event: the changed part of the pane and no more.
    QRect show() {
        mTakesColumns = !mTakesColumns;
        const QRegion changed = mTakesColumns ? QRegion(mGrown->takeDirtyRect()) : mGrown->takeDirtyRegion();
        if (!changed.isEmpty()) {
            QPainter painter(&mScreen);
            mGrown->paintTo(&painter, kGrowingPane, changed);
        }
        return changed.boundingRect();
    }
    QImage drawnAnew() {
        mFresh->setChartRect(kGrowingPane);
        QImage image = blank();
        QPainter painter(&image);
        mFresh->paintTo(&painter, kGrowingPane);
        return image;
    }
    /// One event of a market: mostly a point of the newest minute or a new minute, now and then an older one.
    QString step() {
        const auto all = keys();
        const TC::CFormulaKey key = all[std::uniform_int_distribution<std::size_t>(0, all.size() - 1)(mRandom)];
        const int what = std::uniform_int_distribution<int>(0, 9)(mRandom);
        if (what == 0) {
            tell(key, std::uniform_int_distribution<int>(0, mMinutes - 1)(mRandom));
            return QStringLiteral("an older minute");
        }
        if (what <= 4) {
            tell(key, mMinutes - 1);
            return QStringLiteral("a tick");
        }
        mMinutes = std::min(mMinutes + (what == 9 ? 3 : 1), 119); // some minutes have no trade
        tell(key, mMinutes - 1);
        return QStringLiteral("a new minute");
    }
    /// Whether the screen shows what a drawing anew does.
    ::testing::AssertionResult looksNew() {
        const QImage anew = drawnAnew();
        for (int x = 0; x < anew.width(); ++x) {
            for (int y = 0; y < anew.height(); ++y) {
                if (anew.pixel(x, y) != mScreen.pixel(x, y)) {
                    return ::testing::AssertionFailure()
                           << "device pixel " << x << ", " << y << std::hex << ": " << mScreen.pixel(x, y)
                           << " for " << anew.pixel(x, y);
                }
            }
        }
        return ::testing::AssertionSuccess();
    }
    qint32 styleOfSeed() const { return kStyles[std::size_t(GetParam()) % kStyles.size()]; }
    void beginMainChart() {
        mHost.mConfig.mRecord.mShowGradient = GetParam() % 2;
        if (GetParam() % 3 == 0) {
            mUi->addStock(QStringLiteral("SH600001"), QString(), true);
            mUi->addStock(QStringLiteral("SZ000001"), QString(), false);
        }
        const auto any = [this] {
            return kStyles[std::uniform_int_distribution<std::size_t>(0, kStyles.size() - 1)(mRandom)];
        };
        const double ratios[] = {1.0, 2.0, 1.5};
        begin({GetParam() % 2 ? 0 : any(), any(), any()}, ratios[GetParam() % 3], GetParam() % 7 == 0,
              TC::EIndexDisplayType::Main);
    }
    void beginFormulaPane() {
        begin({styleOfSeed(), 0, styleOfSeed()}, GetParam() % 2 ? 2.0 : 1.0, false, TC::EIndexDisplayType::Sub);
    }
    void walk(int steps) {
        for (int i = 0; i < steps; ++i) {
            const QString what = step();
            show();
            ASSERT_TRUE(looksNew()) << "step " << i << ", " << what.toStdString();
        }
    }

    std::mt19937 mRandom{std::mt19937::result_type(GetParam())};
    std::vector<qint32> mStyles;
    QStringList mFormulas;
    double mRatio = 1.0;
    int mMinutes = 0;
    Data mGrown;
    Data mFresh;
    bool mTakesColumns = false; ///< the next time it takes what has changed row by row
    QImage mScreen;
};

TEST_P(GrowthWalk, MainChartOfAnyLines) {
    beginMainChart();
    walk(60);
}

TEST_P(GrowthWalk, FormulaPaneOfEachStyle) {
    beginFormulaPane();
    walk(60);
}

TEST_P(GrowthWalk, OneLineWithAGradient) {
    mHost.mConfig.mRecord.mShowGradient = 1;
    begin({0}, GetParam() % 2 ? 2.0 : 1.0, false, TC::EIndexDisplayType::Main);
    walk(60);
}

INSTANTIATE_TEST_SUITE_P(Seeds, GrowthWalk, ::testing::Range(0, 40));

/// The same in a theme whose lines let through what is beneath them.
class TranslucentGrowth : public GrowthWalk {
protected:
    TranslucentGrowth() {
        QFile file(mFolder.filePath(QStringLiteral("translucent.json")));
        if (file.open(QIODevice::WriteOnly)) {
            file.write(R"({"name": "translucent", "colors": {
                "ic_clr_index_line_1": "#80ff4040", "ic_clr_index_line_2": "#8040ff40",
                "ic_clr_index_line_3": "#804040ff", "ic_clr_realtime_colorstick": "#80ffff40"}})");
        }
        file.close();
        mIsSet = GZ::CUiResource::instance().setTheme(file.fileName(), &mError);
    }
    ~TranslucentGrowth() override {
        GZ::CUiResource::instance().setTheme(GZ::CUiResource::instance().themes().first());
    }

    QTemporaryDir mFolder;
    QString mError;
    bool mIsSet = false;
};

TEST_P(TranslucentGrowth, MainChartOfAnyLines) {
    ASSERT_TRUE(mIsSet) << mError.toStdString();
    beginMainChart();
    walk(60);
}

TEST_P(TranslucentGrowth, FormulaPaneOfEachStyle) {
    ASSERT_TRUE(mIsSet) << mError.toStdString();
    beginFormulaPane();
    walk(60);
}

TEST_P(TranslucentGrowth, OneLineOfEachStyle) {
    ASSERT_TRUE(mIsSet) << mError.toStdString();
    begin({styleOfSeed()}, GetParam() % 2 ? 2.0 : 1.0, false, TC::EIndexDisplayType::Sub);
    walk(60);
}

INSTANTIATE_TEST_SUITE_P(Seeds, TranslucentGrowth, ::testing::Range(0, 40));

class Growth : public GrowthWalk {};
INSTANTIATE_TEST_SUITE_P(One, Growth, ::testing::Values(1));

TEST_P(Growth, NewMinuteAsksForItsColumnsAlone) {
    begin({0, 27}, 1.0, false, TC::EIndexDisplayType::Main);
    for (int minute = 3; minute < 100; ++minute) {
        tell({QStringLiteral("SH600000"), QStringLiteral("REALTIME")}, minute);
        const QRect changed = show();
        EXPECT_FALSE(changed.isEmpty());
        EXPECT_LE(changed.width(), 8) << "of 300 columns for 241 minutes, at minute " << minute;
        ASSERT_TRUE(looksNew()) << minute;
    }
}

TEST_P(Growth, LineThatIsAloneInItsBandStaysOnTheScreen) {
    for (const unsigned char gradient : {0, 1}) { // of the price
        mHost.mConfig.mRecord.mShowGradient = gradient;
        begin({0, 0}, 1.0, false, TC::EIndexDisplayType::Main);
        for (int minute = 3; minute < 60; ++minute) {
            // Of 200 rows the volume has those from 133 on, where a new price changes nothing.
            tell({QStringLiteral("SH600000"), QStringLiteral("REALTIME")}, minute);
            mTakesColumns = true; // then rows are next
            const QRect price = show();
            EXPECT_LT(price.bottom(), 133) << minute;
            ASSERT_TRUE(looksNew()) << minute;
            tell({QStringLiteral("SH600000"), QStringLiteral("REALTIMEVOL")}, minute);
            mTakesColumns = true;
            EXPECT_GE(show().top(), 133) << minute;
            ASSERT_TRUE(looksNew()) << minute;
        }
    }
}

TEST_P(Growth, RangeThatIsOutgrownAsksForAll) {
    begin({0, 27}, 1.0, false, TC::EIndexDisplayType::Main);
    const auto high = makePoint(minuteTime(kDay, 573), {11.8, 10.0});
    const TC::CFormulaKey key(QStringLiteral("SH600000"), QStringLiteral("REALTIME"));
    for (const Data &data : {mGrown, mFresh}) {
        data->onRealtimeCallback(0, data->getReqID(key), high);
        data->adoptMaxMin({{key, {12.0, 8.0}}}, true);
    }
    EXPECT_EQ(show(), kGrowingPane);
    EXPECT_TRUE(looksNew());
}

} // namespace
} // namespace tests
