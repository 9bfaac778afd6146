// Whatever order history and stream come in: series stay sorted, ranges only widen, and the screen is what a
// drawing from scratch would be, though only what changed is repainted.

#include "tests/chartdata/ProbeFixture.h"

#include <algorithm>
#include <random>

using namespace tests;
using namespace TC;

namespace {

const QSize kPane(180, 120);
constexpr int kMinutes = 40;

/// What can happen in one walk.
struct Walk {
    unsigned seed;
    double ratio;
    bool subPane;
    bool fillGaps;
    bool overlay;
};

void PrintTo(const Walk &walk, std::ostream *out) {
    *out << "seed " << walk.seed << " ratio " << walk.ratio << (walk.subPane ? " sub pane" : "")
         << (walk.fillGaps ? " filled gaps" : "") << (walk.overlay ? " overlay" : "");
}

class SeriesWalk : public ProbeFixture, public ::testing::WithParamInterface<Walk> {
protected:
    int below(int limit) { return int(mRandom() % unsigned(limit)); }
    double price() { return 10.0 + (below(2001) - 1000) * (below(15) == 0 ? 0.0008 : 0.0003); }
    boost::shared_ptr<ChartProbe> start();
    void keepUp(ChartProbe &data);
    void happen();
    void history(const CFormulaKey &key);
    void point(const CFormulaKey &key);
    QString idOf(ChartProbe &data, const CFormulaKey &key) { return data.getReqID(key); }
    std::vector<double> values(const CFormulaKey &key, int index);
    void repaint(QImage &screen, ChartProbe &data, const QRect &part);
    void expectInvariants();

    std::mt19937 mRandom;
    QMap<CFormulaKey, FormulaMetaPtr> mMetas;
    boost::shared_ptr<ChartProbe> mTwin; ///< told the same, and drawn from scratch after every step
    QMap<CFormulaKey, std::size_t> mLengths;
    IndexBaseData::MaxMinMap mWanted;
};

boost::shared_ptr<ChartProbe> SeriesWalk::start() {
    auto data = makeData(GetParam().subPane ? EIndexDisplayType::Sub : EIndexDisplayType::Main);
    for (const char *formula : {"REALTIME", "REALTIMEVOL", "BAND"}) {
        data->addFormula(QLatin1String(formula));
    }
    data->setFillGaps(GetParam().fillGaps);
    data->request(corvane::ERunMode::Ordinary);
    data->setChartRect(QRect(QPoint(0, 0), kPane));
    data->setPixelRatio(GetParam().ratio);
    data->setDrawEnabled(true);
    return data;
}

/// What the pane does when a range has been outgrown.
void SeriesWalk::keepUp(ChartProbe &data) {
    if (data.isRangeOutgrown()) {
        data.adoptMaxMin(data.getMaxMinMap(), false);
    }
}

std::vector<double> SeriesWalk::values(const CFormulaKey &key, int index) {
    std::vector<double> all;
    for (int line = 0; line < mMetas[key]->mLineCount; ++line) {
        all.push_back(key.mFormula == QLatin1String("REALTIMEVOL") ? 100.0 + below(900)
                      : below(40) == 0 && index > 0                ? kUnsetValue
                                                                   : price());
    }
    return all;
}

void SeriesWalk::history(const CFormulaKey &key) {
    const int have = int(std::max(mLengths.value(key), std::size_t(1)));
    const int count = std::max(have, std::min(kMinutes, have + below(4)));
    std::vector<std::vector<double>> lines(std::size_t(mMetas[key]->mLineCount));
    for (int i = 0; i < count; ++i) {
        const std::vector<double> point = values(key, i);
        for (std::size_t line = 0; line < lines.size(); ++line) {
            lines[line].push_back(point[line]);
        }
    }
    // With gaps to fill a minute is left out now and then; otherwise the points follow each other.
    std::vector<se::TimePosition> times;
    for (int i = 0, minute = 570; i < count; ++i) {
        minute += GetParam().fillGaps && below(4) == 0 ? 2 : 1;
        times.push_back(minuteTime(kDay, minute));
    }
    const auto result = makeResult(times, lines);
    const bool keepRange = below(5) != 0;
    if (!keepRange) {
        mWanted.remove(key);
    }
    for (ChartProbe *data : {mData.get(), mTwin.get()}) {
        data->onHistoryCallback(mMetas[key], result, idOf(*data, key), 1, QString(), keepRange);
    }
}

void SeriesWalk::point(const CFormulaKey &key) {
    const auto entry = mData->mData.constFind(key);
    qint64 minute = 571;
    if (entry != mData->mData.constEnd() && !entry->result.mTimes.empty()) {
        const auto &times = entry->result.mTimes;
        const int kind = below(10);
        const se::TimePosition last = times.back();
        minute = (last.first / 1000 - kDay) / 60;
        if (kind < 3 && times.size() < std::size_t(kMinutes)) {
            minute += 1 + (GetParam().fillGaps ? below(3) : 0); // the next minute
        } else if (kind == 9) {
            minute -= below(int(times.size()) + 3); // an older one, stored or not
        }
    }
    const auto value =
        makePoint(minuteTime(kDay, int(minute), below(30) == 0 ? 1 : 0), values(key, int(minute)));
    if (below(4) == 0) {
        value->mTexts.assign(value->mValues.size(), "t" + std::to_string(below(9)));
        value->mExtra1.assign(value->mValues.size(), below(0xffffff));
        value->mExtra2.assign(value->mValues.size(), price());
    }
    for (ChartProbe *data : {mData.get(), mTwin.get()}) {
        data->onRealtimeCallback(0, idOf(*data, key), value);
    }
}

void SeriesWalk::happen() {
    const CFormulaKey key = std::next(mMetas.begin(), below(static_cast<int>(mMetas.size()))).key();
    if (below(8) == 0 || (!mData->mData.contains(key) && below(2))) {
        history(key);
    } else {
        for (int i = below(4); i >= 0; --i) {
            point(key);
        }
    }
    for (ChartProbe *data : {mData.get(), mTwin.get()}) {
        keepUp(*data);
    }
}

void SeriesWalk::repaint(QImage &screen, ChartProbe &data, const QRect &part) {
    if (part.isEmpty()) {
        return;
    }
    QPainter painter(&screen);
    painter.setClipRect(part);
    painter.fillRect(part, Qt::magenta); // what was there is gone
    data.paintTo(&painter, QRect(QPoint(0, 0), kPane));
}

void SeriesWalk::expectInvariants() {
    for (auto entry = mData->mData.constBegin(); entry != mData->mData.constEnd(); ++entry) {
        const auto &times = entry->result.mTimes;
        if (mUiParam->isMainStock(entry.key().mStock)) { // an aligned overlay has no time where it has no point
            ASSERT_TRUE(std::is_sorted(times.begin(), times.end()));
        }
        ASSERT_GE(times.size(), mLengths.value(entry.key()));
        mLengths[entry.key()] = times.size();
        for (const auto &line : entry->result.mValues) {
            ASSERT_EQ(line.size(), times.size());
        }
    }
    for (auto range = mWanted.constBegin(); range != mWanted.constEnd(); ++range) {
        const auto now = mData->mMaxMin.value(range.key());
        // A range narrows on one side only when the other one widens.
        ASSERT_TRUE(now.first >= range->first || now.second <= range->second);
    }
    mWanted = mData->mMaxMin;
}

TEST_P(SeriesWalk, RepaintingWhatChangedShowsWhatADrawingFromScratchShows) {
    const Walk walk = GetParam();
    mRandom.seed(walk.seed);
    mHost.mCatalogue.add(QStringLiteral("BAND"), 1);
    mUiParam->mGetTradeDateFunc = [] { return kDay; };
    if (walk.overlay) {
        overlay("SZ", "000001", 10.2, below(2));
    }
    const qint32 styles[] = {0, 27, 1, 2, 4, 5, 10, 40, 12, 13, 14, 15, 18, 26, 28, 31, 36, 37, 41, 42};
    const auto style = [&] { return styles[below(20)]; };
    mMetas[{kStock, QStringLiteral("REALTIME")}] = makeMeta(2, {0, 0});
    mMetas[{kStock, QStringLiteral("REALTIMEVOL")}] = makeMeta(1, {2});
    mMetas[{kStock, QStringLiteral("BAND")}] = makeMeta(3, {style(), style(), style()});
    mMetas[{kStock, QStringLiteral("BAND")}]->mLineAxis[1] = below(3) ? se::eLineShared : se::eLineOwn;
    if (walk.overlay && !walk.subPane) {
        mMetas[{QStringLiteral("SZ000001"), QStringLiteral("REALTIME")}] = makeMeta(2, {0, 0});
    }
    mData = start();
    mTwin = start();
    QImage screen(kPane * walk.ratio, QImage::Format_RGB32);
    screen.setDevicePixelRatio(walk.ratio);
    QImage scratch = screen;
    for (int step = 0; step < 120; ++step) {
        if (walk.subPane) {
            mUiParam->mDataCount = int(mLengths.value({kStock, QStringLiteral("REALTIME")})) + below(2);
        }
        happen();
        expectInvariants();
        if (HasFatalFailure()) {
            return;
        }
        repaint(screen, *mData, mData->takeDirtyRect());
        mTwin->setChartRect(QRect(QPoint(0, 0), kPane)); // new pixmaps: nothing that was drawn before is left
        repaint(scratch, *mTwin, QRect(QPoint(0, 0), kPane));
        ASSERT_EQ(screen, scratch) << "step " << step;
    }
}

TEST_F(ProbeFixture, ATickAndANewMinuteDirtyOnlyTheColumnsOfTheLastPoints) {
    mData->addFormula(QStringLiteral("REALTIME"));
    mData->request(corvane::ERunMode::Ordinary);
    mData->setChartRect(QRect(0, 0, 482, 300)); // 480 columns for the indices 0 to 240: two each
    mData->setDrawEnabled(true);
    const QString id = mData->getReqID({kStock, QStringLiteral("REALTIME")});
    mData->onHistoryCallback(makeMeta(1), makeResult(minuteTimes(kDay, 571, 3), {10.0, 10.05, 9.95}), id, 1,
                             QString(), true);
    mData->adoptMaxMin(mData->getMaxMinMap(), false);
    EXPECT_EQ(mData->takeDirtyRect(), QRect(0, 0, 482, 300));
    mData->onRealtimeCallback(0, id, makePoint(minuteTime(kDay, 573), {10.01}));
    const QRect tick = mData->takeDirtyRect(); // the price part is (1, 3, 480, 195)
    EXPECT_EQ(tick, QRect(3, 3, 3, 195));
    EXPECT_TRUE(mData->takeDirtyRect().isNull());
    mData->onRealtimeCallback(0, id, makePoint(minuteTime(kDay, 574), {10.02}));
    EXPECT_EQ(mData->takeDirtyRect(),
              QRect(3, 3, 5, 195)); // a new minute: its columns, and those of the two before
    mData->onRealtimeCallback(0, id, makePoint(minuteTime(kDay, 574), {10.03}));
    EXPECT_EQ(mData->takeDirtyRect(), QRect(5, 3, 3, 195));
}

std::vector<Walk> walks() {
    std::vector<Walk> all;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        all.push_back({seed, seed % 2 ? 1.0 : 2.0, seed % 5 == 0, seed % 7 == 0, seed % 3 == 0});
    }
    return all;
}

INSTANTIATE_TEST_SUITE_P(Random, SeriesWalk, ::testing::ValuesIn(walks()));

} // namespace
