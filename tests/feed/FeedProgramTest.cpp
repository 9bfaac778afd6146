// timeshare-feed as it is run, and the sources that it publishes.

#include "terminal/feeder/ExchangeSource.h"
#include "terminal/feeder/InstrumentTape.h"
#include "terminal/feeder/RecordedSource.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketWriter.h"
#include "tests/feed/LiveFeedFixture.h"
#include "tests/feed/NatsServer.h"
#include "tests/terminal/StoreFixture.h"

using namespace terminal;
using tests::eventually;

namespace {

constexpr int kRecordedDay = 1763654400; // 2025-11-21
constexpr int kRecordedMinutes = 12;

MinuteBar recordedBar(int minute, double base) {
    const double price = base + minute % 5 * 0.01;
    return {(kRecordedDay + (570 + minute) * 60) * 1000LL,
            price,
            price + 0.02,
            price - 0.02,
            price,
            base,
            100.0 + minute,
            price * (100.0 + minute)};
}

/// Keeps the bars that a source has told.
class Keeper : public FeedSource::Listener {
public:
    void onDay(const QString &key, int day, const MinuteBars &bars) override {
        days[key] = day;
        minutes[key].clear();
        for (const MinuteBar &bar : bars) {
            minutes[key][bar.time] = bar;
        }
    }
    void onChange(const MinuteUpdate &change) override {
        EXPECT_EQ(change.day, days[change.key]);
        minutes[change.key][change.bar.time] = change.bar;
    }
    MinuteBars bars(const QString &key) {
        MinuteBars bars;
        for (const auto &[time, bar] : minutes[key]) {
            bars.push_back(bar);
        }
        return bars;
    }

    std::map<QString, int> days;
    std::map<QString, std::map<qint64, MinuteBar>> minutes;
};

class FeedSourceTest : public StoreFixture {
protected:
    MinuteBars record(const QString &market, const QString &code, double base) {
        Instrument instrument;
        instrument.market = market;
        instrument.code = code;
        instrument.name = code;
        MinuteBars bars;
        for (int minute = 1; minute <= kRecordedMinutes; ++minute) {
            bars.push_back(recordedBar(minute, base));
        }
        MarketWriter writer(mStore);
        const qint64 row = writer.putInstrument(instrument);
        EXPECT_TRUE(writer.putDay(row, kRecordedDay, BarSource::Imported, bars) && writer.commit())
            << writer.error().toStdString();
        return bars;
    }
};

} // namespace

TEST_F(FeedSourceTest, ARecordedDayEndsAsItIsStored) {
    openStore();
    const MinuteBars first = record("SH", "600000", 10.0);
    const MinuteBars second = record("SZ", "000001", 20.0);
    qint64 real = 0;
    SimulatedClock clock(first.front().time - kMinuteLength, 1.0, [&real] { return real; });
    RecordedSource source(mStore, clock, kRecordedDay);
    EXPECT_EQ(source.first(), first.front().time);
    EXPECT_EQ(source.last(), first.back().time);
    Keeper keeper;
    source.advance(keeper);
    EXPECT_EQ(keeper.days, (std::map<QString, int>{{"SH600000", kRecordedDay}, {"SZ000001", kRecordedDay}}));
    for (int step = 0; step < 17 * 60; step += 7) {
        real += 7000;
        source.advance(keeper);
    }
    EXPECT_EQ(keeper.bars("SH600000"), first);
    EXPECT_EQ(keeper.bars("SZ000001"), second);
    EXPECT_TRUE(RecordedSource(mStore, clock, kRecordedDay - 86400).isEmpty());
}

TEST_F(FeedSourceTest, TheExchangeIsToldAsItAnswers) {
    const qint64 auction = timeOf(QDate(2025, 11, 21), 565);
    openFilledStore(auction);
    qint64 real = 0;
    SimulatedClock clock(auction, 60.0, [&real] { return real; });
    ExchangeSource source(mStore, clock);
    Keeper keeper;
    for (int step = 0; step < 6; ++step) { // through the auction and into the first minute
        source.advance(keeper);
        real += 1000;
    }
    source.advance(keeper);
    SimulatedExchange exchange(mStore, clock);
    int compared = 0;
    for (const auto &[key, day] : keeper.days) {
        EXPECT_EQ(keeper.bars(key), exchange.dayBars(key, day)) << key.toStdString();
        compared += keeper.bars(key).empty() ? 0 : 1;
    }
    EXPECT_GT(compared, 20);
}

#ifdef TIMESHARE_WITH_NATS

namespace {

/// The last sums of an instrument in the log of a feed, behind the run.
std::string loggedSums(const QString &path, const QString &key) {
    QFile file(path);
    std::string sums;
    if (file.open(QIODevice::ReadOnly)) {
        for (const QByteArray &line : file.readAll().split('\n')) {
            const QList<QByteArray> words = line.split(' ');
            if (words.size() == 8 && words[0] == "sum" && words[3] == key.toUtf8()) {
                sums = words.mid(4).join(' ').toStdString();
            }
        }
    }
    return sums;
}

std::string sumsText(const MinuteBars &bars) {
    const DaySums sums = sumsOf(kRecordedDay, bars);
    return QStringLiteral("%1 %2 %3 %4")
        .arg(sums.minutes)
        .arg(sums.volume, 0, 'g', 17)
        .arg(sums.amount, 0, 'g', 17)
        .arg(sums.price, 0, 'g', 17)
        .toStdString();
}

class FeedProgramTest : public FeedSourceTest {
protected:
    bool startFeed() {
        return mProgram.start(QStringLiteral(TIMESHARE_BINARY_DIR "/bin/timeshare-feed"),
                              {"--server", mServer.url(), "--store", storePath(), "--recorded", "2025-11-21",
                               "--pace", "600", "--log", pathOf("feed.log")},
                              pathOf("feed.out"));
    }
    QByteArray output() {
        QFile file(pathOf("feed.out"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    tests::NatsServer mServer;
    tests::ServerProcess mProgram;
};

/// A terminal's side, to look at.
struct Desk : tests::LiveFeedFixture {
    using LiveFeedFixture::heard;
    using LiveFeedFixture::isWhole;
    using LiveFeedFixture::listen;
    using LiveFeedFixture::openFeed;
    void TestBody() override {}
    ~Desk() override { mFeed.reset(); }
};

} // namespace

TEST_F(FeedProgramTest, KillsOfTheFeedAndOfTheServerLoseAndDoubleNothing) {
    TIMESHARE_NEEDS_NATS();
    openStore();
    const MinuteBars first = record("SH", "600000", 10.0);
    const MinuteBars second = record("SZ", "000001", 20.0);
    ASSERT_TRUE(mServer.start());
    FeedAddress address;
    ASSERT_EQ(readAddress(mServer.url(), address).toStdString(), "");
    const std::unique_ptr<FeedLine> line = makeNatsLine(address);
    Desk desk;
    desk.openFeed(*line);
    desk.listen("SH600000");
    desk.listen("SZ000001");
    ASSERT_TRUE(startFeed());
    ASSERT_TRUE(eventually([&] { return desk.heard("SH600000").size() >= 3; })) << output().toStdString();
    mProgram.end(SIGKILL);
    ASSERT_TRUE(startFeed());
    ASSERT_TRUE(eventually([&] { return desk.heard("SH600000").size() >= 6; })) << output().toStdString();
    mServer.kill();
    ASSERT_TRUE(mServer.start());
    EXPECT_EQ(mProgram.wait(), 0) << output().toStdString();
    EXPECT_TRUE(eventually(
        [&] { return desk.isWhole() && desk.heard("SH600000") == first && desk.heard("SZ000001") == second; }));
    EXPECT_EQ(loggedSums(pathOf("feed.log"), "SH600000"), sumsText(desk.heard("SH600000")));
    EXPECT_EQ(loggedSums(pathOf("feed.log"), "SZ000001"), sumsText(desk.heard("SZ000001")));
}

TEST_F(FeedProgramTest, ItEndsInOrderWhenItIsTold) {
    TIMESHARE_NEEDS_NATS();
    openStore();
    record("SH", "600000", 10.0);
    ASSERT_TRUE(mServer.start());
    ASSERT_TRUE(startFeed());
    ASSERT_TRUE(eventually([&] {
        QFile log(pathOf("feed.log"));
        return log.open(QIODevice::ReadOnly) && log.readAll().startsWith("at ");
    }));
    EXPECT_EQ(mProgram.end(SIGTERM), 0);
    EXPECT_NE(loggedSums(pathOf("feed.log"), "SH600000"), "");
}

TEST_F(FeedProgramTest, AServerThatIsNotThereIsToldOnceAndWaitedFor) {
    TIMESHARE_NEEDS_NATS();
    openStore();
    record("SH", "600000", 10.0);
    ASSERT_TRUE(mServer.start());
    mServer.kill();
    ASSERT_TRUE(startFeed());
    ASSERT_TRUE(eventually([&] { return output().contains("trying again"); }));
    ASSERT_TRUE(mServer.start());
    ASSERT_TRUE(eventually([&] { return output().contains("publishing to"); })) << output().toStdString();
    EXPECT_EQ(output().count("trying again"), 1);
    EXPECT_EQ(mProgram.end(SIGINT), 0);
}

TEST_F(FeedProgramTest, ADayThatIsNotStoredIsToldAndEndsIt) {
    openStore();
    ASSERT_TRUE(startFeed());
    EXPECT_EQ(mProgram.wait(), 2);
    EXPECT_THAT(output().toStdString(),
                ::testing::HasSubstr("--recorded 2025-11-21: no bars of that day are stored"));
}

#endif
