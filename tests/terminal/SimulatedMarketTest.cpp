#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketFill.h"
#include "terminal/market/MarketWriter.h"
#include "terminal/market/SimulatedDay.h"
#include "tests/terminal/Samples.h"
#include "tests/terminal/StoreFixture.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <set>

using namespace terminal;
using tests::kFriday;

namespace {

const SimulatedInstrument &simulated(const char *key) {
    for (const SimulatedInstrument &candidate : simulatedInstruments()) {
        if (candidate.instrument.key() == QLatin1String(key)) {
            return candidate;
        }
    }
    ADD_FAILURE() << key;
    return simulatedInstruments().front();
}

MinuteBars dayOfKey(const char *key, const QDate &day, quint64 seed = kMarketSeed) {
    const SimulatedInstrument &instrument = simulated(key);
    const MarketCalendar calendar = MarketCalendar::ofMarket(instrument.instrument.market);
    return simulateDay(instrument, {day, calendar.eveningBefore(day), instrument.basePrice, seed});
}

const qint64 kNow = timeOf(kFriday, 565);

class MarketFillTest : public StoreFixture {
protected:
    qint64 row(const char *key) { return mStore.catalogue()->find(QString::fromLatin1(key))->id; }
};

} // namespace

TEST(SimulatedMarket, HasEveryKindOfInstrument) {
    EXPECT_GE(simulatedInstruments().size(), 30);
    std::set<int> types;
    std::set<QString> markets;
    std::set<int> kinds;
    std::set<int> positions;
    std::set<QString> keys;
    for (const SimulatedInstrument &each : simulatedInstruments()) {
        types.insert(each.instrument.types.begin(), each.instrument.types.end());
        markets.insert(each.instrument.market);
        kinds.insert(static_cast<int>(each.instrument.kind));
        positions.insert(each.instrument.sessions.count());
        keys.insert(each.instrument.key());
    }
    EXPECT_EQ(keys.size(), static_cast<size_t>(simulatedInstruments().size()));
    for (int type : {126, 100017, 277, 10006, 10019, 135, 100013}) {
        EXPECT_EQ(types.count(type), 1u) << type;
    }
    for (const char *market :
         {"SH", "SZ", "CFFEX", "SHFE", "CZCE", "DCE", "HK", "HGT", "SGT", "YSWP", "BKZS"}) {
        EXPECT_EQ(markets.count(QString::fromLatin1(market)), 1u) << market;
    }
    EXPECT_EQ(kinds, (std::set<int>{0, 1, 2, 3, 4, 5}));
    for (int count : {556, 271, 226, 341, 976, 267, 241, 346}) {
        EXPECT_EQ(positions.count(count), 1u) << count;
    }
}

TEST(SimulatedMarket, TheSameInputGivesTheSameDay) {
    EXPECT_EQ(dayOfKey("SH600000", kFriday), dayOfKey("SH600000", kFriday));
    EXPECT_NE(dayOfKey("SH600000", kFriday), dayOfKey("SH600000", kFriday, 7));
    EXPECT_NE(dayOfKey("SH600000", kFriday).back().price,
              dayOfKey("SH600000", kFriday.addDays(-1)).back().price);
}

TEST(SimulatedMarket, PricesAreOnTheTickAndWithinTheLimits) {
    for (const SimulatedInstrument &each : simulatedInstruments()) {
        const QPair<double, double> limits = priceLimits(each, each.basePrice);
        for (const MinuteBar &bar : dayOfKey(qPrintable(each.instrument.key()), kFriday)) {
            for (double price : {bar.open, bar.high, bar.low, bar.price}) {
                const double steps = price / each.instrument.priceTick;
                ASSERT_NEAR(steps, std::round(steps), 1e-5) << each.instrument.key().toStdString();
                ASSERT_GT(price, 0.0);
                if (each.limit > 0.0) {
                    ASSERT_LE(price, limits.first + 1e-9) << each.instrument.key().toStdString();
                    ASSERT_GE(price, limits.second - 1e-9) << each.instrument.key().toStdString();
                }
            }
        }
    }
}

TEST(SimulatedMarket, BarsAreSoundAndOnPositionsOfTheirDay) {
    for (const SimulatedInstrument &each : simulatedInstruments()) {
        const std::string key = each.instrument.key().toStdString();
        const MarketCalendar calendar = MarketCalendar::ofMarket(each.instrument.market);
        const std::vector<qint64> positions =
            each.instrument.sessions.times(kFriday, calendar.eveningBefore(kFriday));
        const std::set<qint64> allowed(positions.begin(), positions.end());
        const MinuteBars day = dayOfKey(key.c_str(), kFriday);
        ASSERT_GT(day.size(), positions.size() / 2) << key;
        ASSERT_EQ(day.front().time, positions.front()) << key;
        double volume = 0.0;
        double turnover = 0.0;
        for (size_t i = 0; i < day.size(); ++i) {
            const MinuteBar &bar = day[i];
            ASSERT_EQ(allowed.count(bar.time), 1u) << key;
            ASSERT_TRUE(i == 0 || bar.time > day[i - 1].time) << key;
            ASSERT_LE(bar.low, std::min(bar.open, bar.price)) << key;
            ASSERT_GE(bar.high, std::max(bar.open, bar.price)) << key;
            ASSERT_EQ(std::fmod(bar.volume, each.volumeStep), 0.0) << key;
            volume += bar.volume;
            turnover += bar.amount / each.multiplier;
            if (volume > 0.0) {
                ASSERT_NEAR(bar.average, turnover / volume, bar.average * 1e-9) << key;
            }
        }
        ASSERT_GT(volume, 0.0) << key;
    }
}

TEST(SimulatedMarket, VolumeIsHighAtBothEndsOfTheDay) {
    double ends = 0.0;
    double middle = 0.0;
    for (int back = 0; back < 20; ++back) {
        const MinuteBars day = dayOfKey("SH600000", kFriday.addDays(-back));
        for (const MinuteBar &bar : day) {
            const int minute = minuteAt(bar.time);
            ends += (minute > 570 && minute <= 590) || (minute > 875 && minute <= 897) ? bar.volume : 0.0;
            middle += minute > 650 && minute <= 690 ? bar.volume : 0.0;
        }
    }
    EXPECT_GT(ends, middle * 1.6); // about as many minutes of each
}

TEST(SimulatedMarket, TheLastMinutesOfAShareAreACallAuction) {
    const MinuteBars day = dayOfKey("SH600000", kFriday);
    const auto at = [&day](int minute) {
        return *std::find_if(day.begin(), day.end(),
                             [&](const MinuteBar &b) { return minuteAt(b.time) == minute; });
    };
    EXPECT_EQ(at(898).volume, 0.0);
    EXPECT_EQ(at(899).volume, 0.0);
    EXPECT_EQ(at(899).price, at(897).price);
    EXPECT_GT(at(900).volume, 0.0);
}

TEST(SimulatedMarket, AfterTheCloseAShareTradesAtItsClosingPrice) {
    for (const char *key : {"SZ300750", "SH688001"}) {
        double close = 0.0;
        int after = 0;
        for (const MinuteBar &bar : dayOfKey(key, kFriday)) {
            close = minuteAt(bar.time) == 900 ? bar.price : close;
            if (minuteAt(bar.time) > 900) {
                ASSERT_GE(minuteAt(bar.time), 906);
                ASSERT_EQ(bar.price, close);
                ++after;
            }
        }
        EXPECT_EQ(after, 25) << key;
    }
}

TEST(SimulatedMarket, SomeDaysHaveHaltsAndSomeEndAtTheLimit) {
    const SimulatedInstrument &share = simulated("SH600000");
    const QPair<double, double> limits = priceLimits(share, share.basePrice);
    int halts = 0;
    int limitDays = 0;
    int gaps = 0;
    constexpr int kDays = 400;
    for (int i = 0; i < kDays; ++i) {
        const MinuteBars day = dayOfKey("SH600000", kFriday.addDays(-i));
        halts += day.size() == 231u ? 1 : 0; // ten minutes less than 241
        limitDays += day.back().price == limits.first || day.back().price == limits.second ? 1 : 0;
        gaps += day.front().price != share.basePrice ? 1 : 0;
    }
    EXPECT_GT(halts, 0);
    EXPECT_LT(halts, kDays / 8);
    EXPECT_GT(limitDays, 0);
    EXPECT_LT(limitDays, kDays / 8);
    EXPECT_GT(gaps, kDays / 2);
}

TEST(SimulatedMarket, AnIlliquidInstrumentHasMinutesWithoutATrade) {
    const size_t bars = dayOfKey("SZ127045", kFriday).size();
    EXPECT_LT(bars, 235u);
    EXPECT_GT(bars, 150u);
}

TEST(SimulatedMarket, APriceOfNothingGivesNoDay) {
    EXPECT_TRUE(simulateDay(simulated("SH600000"), {kFriday, QDate(), 0.0, 1}).empty());
    EXPECT_TRUE(simulateDay(simulated("SH600000"), {kFriday, QDate(), std::nan(""), 1}).empty());
}

TEST(SimulatedMarket, RoundsToTheTickWithoutNoise) {
    EXPECT_EQ(roundToTick(9.8349999, 0.01), 9.83);
    EXPECT_EQ(roundToTick(782.451, 0.02), 782.46);
    EXPECT_EQ(roundToTick(3284.4, 1.0), 3284.0);
    EXPECT_EQ(roundToTick(6239.2, 2.0), 6240.0);
    EXPECT_EQ(roundToTick(108.6171, 0.005), 108.615);
}

TEST_F(MarketFillTest, ANewStoreIsFilledQuicklyAndStaysSmall) {
    openStore();
    QElapsedTimer timer;
    timer.start();
    int calls = 0;
    ASSERT_EQ(fillStore(mStore, kNow,
                        [&calls](int done, int total) {
                            ++calls;
                            return done <= total;
                        })
                  .toStdString(),
              "");
    const qint64 spent = timer.elapsed();
    std::printf("filled the store in %lld ms, %lld bytes\n", static_cast<long long>(spent),
                static_cast<long long>(QFile(storePath()).size()));
    EXPECT_EQ(calls, simulatedInstruments().size() + 1);
    EXPECT_LT(QFile(storePath()).size(), 100000000);
    for (const Instrument &instrument : mStore.catalogue()->instruments) {
        EXPECT_GE(mStore.days(instrument.id).size(), 25) << instrument.key().toStdString();
    }
    EXPECT_EQ(mStore.days(row("SH600000")).last(), dayOf(kFriday));
}

TEST_F(MarketFillTest, EveryDayStartsFromTheCloseBefore) {
    openFilledStore(kNow);
    const SimulatedInstrument &share = simulated("SH600000");
    double close = share.basePrice;
    for (int day : mStore.days(row("SH600000"))) {
        EXPECT_EQ(mStore.bars(row("SH600000"), day),
                  simulateDay(share, {dateOf(day), QDate(), close, kMarketSeed}));
        close = mStore.summary(row("SH600000"), day)->close;
    }
}

TEST_F(MarketFillTest, TheNextTimeOnlyTheDaysSinceAreAdded) {
    openFilledStore(timeOf(QDate(2026, 11, 17), 565));
    const QVector<int> before = mStore.days(row("SH600000"));
    const MinuteBars first = mStore.bars(row("SH600000"), before.last());
    ASSERT_TRUE(fillStore(mStore, kNow).isEmpty());
    const QVector<int> after = mStore.days(row("SH600000"));
    EXPECT_EQ(after.mid(0, before.size()), before);
    EXPECT_EQ(after.size(), before.size() + 3);
    EXPECT_EQ(mStore.bars(row("SH600000"), before.last()), first);
    ASSERT_TRUE(fillStore(mStore, kNow).isEmpty());
    EXPECT_EQ(mStore.days(row("SH600000")), after);
}

TEST_F(MarketFillTest, AStoppedFillLeavesAnEmptyStore) {
    openStore();
    const QString trouble = fillStore(mStore, kNow, [](int done, int) { return done < 3; });
    EXPECT_EQ(trouble, storePath() + QStringLiteral(": filling the store was stopped"));
    ASSERT_EQ(mStore.reload().toStdString(), "");
    EXPECT_TRUE(mStore.catalogue()->instruments.isEmpty());
}

TEST_F(MarketFillTest, AnImportedDayIsLeftAsItIs) {
    openFilledStore(timeOf(QDate(2026, 11, 17), 565));
    const MinuteBars own{{timeOf(QDate(2026, 11, 18), 600), 5, 5, 5, 5, 5, 5, 5}};
    {
        MarketWriter writer(mStore);
        writer.putDay(row("SH600000"), dayOf(QDate(2026, 11, 18)), BarSource::Imported, own);
        ASSERT_TRUE(writer.commit());
    }
    ASSERT_TRUE(fillStore(mStore, kNow).isEmpty());
    EXPECT_EQ(mStore.bars(row("SH600000"), dayOf(QDate(2026, 11, 18))), own);
}

TEST_F(MarketFillTest, DaysOpenWithGapsAgainstTheCloseBefore) {
    openFilledStore(kNow);
    int days = 0;
    int gaps = 0;
    double before = 0.0;
    for (const int day : mStore.days(row("SZ300750"))) {
        const DaySummary summary = *mStore.summary(row("SZ300750"), day);
        if (before > 0.0) {
            ++days;
            gaps += std::abs(summary.open / before - 1.0) > 0.002 ? 1 : 0;
            EXPECT_LT(std::abs(summary.open / before - 1.0), 0.2) << "within the limits";
        }
        before = summary.close;
    }
    EXPECT_GE(days, 25);
    EXPECT_GT(gaps, days / 3);
}

TEST_F(MarketFillTest, SectorsOfThreeLevelsHaveIndexesAndMembersOfTheStore) {
    openFilledStore(kNow);
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    std::set<int> levels;
    for (const Sector &sector : catalogue->sectors) {
        EXPECT_FALSE(sector.members.isEmpty()) << sector.name.toStdString();
        for (const QString &member : sector.members) {
            EXPECT_TRUE(catalogue->find(member)) << member.toStdString();
        }
        if (!sector.indexKey.isEmpty()) {
            levels.insert(sector.level);
            ASSERT_TRUE(catalogue->find(sector.indexKey)) << sector.indexKey.toStdString();
            EXPECT_EQ(catalogue->find(sector.indexKey)->kind, InstrumentKind::SectorIndex);
            EXPECT_FALSE(mStore.days(catalogue->find(sector.indexKey)->id).isEmpty());
        }
    }
    EXPECT_EQ(levels, (std::set<int>{1, 2, 3}));
}

TEST_F(MarketFillTest, PortfoliosHoldSharesAndFuturesOfBothDirections) {
    openFilledStore(kNow);
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    int shares = 0;
    int longFutures = 0;
    int shortFutures = 0;
    for (const Portfolio &portfolio : catalogue->portfolios) {
        for (const PortfolioPosition &position : portfolio.positions) {
            const Instrument *instrument = catalogue->find(position.key);
            ASSERT_TRUE(instrument) << position.key.toStdString();
            const bool future = instrument->kind == InstrumentKind::Future;
            shares += future ? 0 : 1;
            longFutures += future && position.quantity > 0.0 ? 1 : 0;
            shortFutures += future && position.quantity < 0.0 ? 1 : 0;
        }
    }
    EXPECT_GT(shares, 0);
    EXPECT_GT(longFutures, 0);
    EXPECT_GT(shortFutures, 0);
}

TEST_F(MarketFillTest, AFutureWithANightHasFridaysEveningInMondaysDay) {
    openFilledStore(kNow);
    const MinuteBars monday = mStore.bars(row("SHFEAU2612"), dayOf(QDate(2026, 11, 16)));
    ASSERT_FALSE(monday.empty());
    EXPECT_EQ(dateAt(monday.front().time), QDate(2026, 11, 13));
    EXPECT_EQ(dateAt(monday.back().time), QDate(2026, 11, 16));
}
