#include "terminal/feeder/FeedLog.h"
#include "terminal/feeder/FeedOptions.h"
#include "terminal/feeder/FeedPublisher.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace terminal;

namespace {

constexpr int kTapeDay = 1763654400; // 2025-11-21

MinuteBar tapeBar(int minute, double price) {
    return {(kTapeDay + minute * 60) * 1000LL, price, price, price, price, price, 100.0, 100.0 * price};
}

qint64 tapeTime(int minute) {
    return (kTapeDay + minute * 60) * 1000LL;
}

/// Takes what is published; it can be told to fail.
class ScriptedSink : public FeedSink {
public:
    bool send(const QByteArray &subject, const QByteArray &bytes) override { return take(subject, bytes); }
    bool keep(const QByteArray &subject, const QByteArray &bytes) override { return take(subject, bytes); }
    bool confirm() override { return isConfirming; }

    std::vector<std::pair<QByteArray, WireRecord>> taken;
    bool isConfirming = true;
    int room = 1000;

private:
    bool take(const QByteArray &subject, const QByteArray &bytes) {
        if (room-- <= 0) {
            return false;
        }
        taken.emplace_back(subject, decodeWire(bytes));
        return true;
    }
};

std::vector<std::string> subjectsOf(const ScriptedSink &sink) {
    std::vector<std::string> subjects;
    for (const auto &[subject, record] : sink.taken) {
        subjects.push_back(subject.toStdString());
    }
    return subjects;
}

} // namespace

TEST(InstrumentTapeTest, ChangesAreNumberedAndTellWhatTheyReplace) {
    InstrumentTape tape(7);
    tape.beginDay(kTapeDay, {}, 0);
    const std::vector<qint32> spans{0, 1, 2, 0, 0, 1};
    const std::vector<int> minutes{571, 571, 571, 572, 571, 571};
    for (size_t i = 0; i < spans.size(); ++i) {
        const WireBar record = tape.change(tapeBar(minutes[i], 10.0));
        EXPECT_EQ(record.sequence, i + 1);
        EXPECT_EQ(record.span, spans[i]);
        EXPECT_EQ(record.run, 7u);
        EXPECT_EQ(record.day, kTapeDay);
    }
}

TEST(InstrumentTapeTest, AMinuteIsKeptWhenItIsOverAndWhenItIsRevised) {
    InstrumentTape tape(7);
    tape.beginDay(kTapeDay, {}, 0);
    tape.change(tapeBar(571, 10.0));
    tape.change(tapeBar(571, 10.1));
    EXPECT_TRUE(tape.finished(tapeTime(571) - 1).empty());
    tape.change(tapeBar(572, 10.2));
    std::vector<WireBar> kept = tape.finished(tapeTime(571));
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_EQ(kept[0].kind, WireKind::Minute);
    EXPECT_EQ(kept[0].sequence, 2u);
    EXPECT_EQ(kept[0].span, 0); // the change of 09:32 is of a minute that is not over
    EXPECT_EQ(kept[0].bar, tapeBar(571, 10.1));
    EXPECT_TRUE(tape.finished(tapeTime(571)).empty());
    tape.change(tapeBar(571, 10.3));
    kept = tape.finished(tapeTime(572));
    ASSERT_EQ(kept.size(), 2u); // by sequence
    EXPECT_EQ(kept[0].bar, tapeBar(572, 10.2));
    EXPECT_EQ(kept[0].span, 0);
    EXPECT_EQ(kept[1].bar, tapeBar(571, 10.3));
    EXPECT_EQ(kept[1].sequence, 4u);
}

TEST(InstrumentTapeTest, AMinuteTellsUpToWhichChangeTheStreamHasAll) {
    InstrumentTape tape(7);
    tape.beginDay(kTapeDay, {}, 0);
    tape.change(tapeBar(571, 10.0));
    tape.change(tapeBar(572, 10.1)); // runs on
    tape.change(tapeBar(571, 10.2));
    std::vector<WireBar> kept = tape.finished(tapeTime(571));
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_EQ(kept[0].sequence, 3u);
    EXPECT_EQ(kept[0].span, -2); // the second change is not in the stream
    tape.change(tapeBar(572, 10.3));
    tape.change(tapeBar(571, 10.4));
    tape.change(tapeBar(572, 10.5));
    kept = tape.finished(tapeTime(572));
    ASSERT_EQ(kept.size(), 2u);
    EXPECT_EQ(kept[0].sequence, 5u);
    EXPECT_EQ(kept[0].span, -4); // as long as the second one is not there
    EXPECT_EQ(kept[1].sequence, 6u);
    EXPECT_EQ(kept[1].span, 0);
}

TEST(InstrumentTapeTest, WhatAnEarlierRunHasToldIsNotToldAgain) {
    InstrumentTape tape(8);
    const MinuteBars morning{tapeBar(571, 10.0), tapeBar(572, 10.1), tapeBar(573, 10.2)};
    const std::vector<WireBar> changes = tape.beginDay(kTapeDay, morning, tapeTime(572));
    ASSERT_EQ(changes.size(), 1u);
    EXPECT_EQ(changes[0].sequence, 1u);
    EXPECT_EQ(changes[0].bar, tapeBar(573, 10.2));
    EXPECT_EQ(tape.finished(tapeTime(573)).size(), 1u);
    EXPECT_EQ(tape.bars(), morning);
    const DaySums sums = tape.sums();
    EXPECT_EQ(sums.minutes, 3);
    EXPECT_EQ(sums.volume, 300.0);
    EXPECT_DOUBLE_EQ(sums.amount, 3030.0);
    EXPECT_EQ(sums.price, 10.2);
}

TEST(FeedPublisherTest, ChangesGoOutBeforeTheMinutesAndTheBeat) {
    FeedPublisher publisher(7, 0);
    ScriptedSink sink;
    publisher.onDay("SH600000", kTapeDay, {tapeBar(571, 10.0)});
    publisher.onChange({"SZ000001", kTapeDay, tapeBar(571, 20.0)});
    ASSERT_TRUE(publisher.publish(sink, tapeTime(571), 1.0));
    EXPECT_EQ(subjectsOf(sink), (std::vector<std::string>{"md.tick.SH600000", "md.tick.SZ000001",
                                                          "md.min.SH600000", "md.min.SZ000001", "md.clock"}));
    const auto *beat = std::get_if<WireClock>(&sink.taken.back().second);
    ASSERT_NE(beat, nullptr);
    EXPECT_EQ(beat->market, tapeTime(571));
    EXPECT_EQ(publisher.changes(), 2u);
    EXPECT_EQ(publisher.minutes(), 2u);
}

TEST(FeedPublisherTest, WhatIsNotConfirmedIsSentAgainAsItWas) {
    FeedPublisher publisher(7, 0);
    publisher.onDay("SH600000", kTapeDay, {tapeBar(571, 10.0), tapeBar(572, 10.1)});
    ScriptedSink broken;
    broken.room = 1;
    EXPECT_FALSE(publisher.publish(broken, tapeTime(571), 1.0));
    ScriptedSink deaf;
    deaf.isConfirming = false;
    EXPECT_FALSE(publisher.publish(deaf, tapeTime(571), 1.0));
    EXPECT_EQ(publisher.changes(), 0u);
    ScriptedSink good;
    ASSERT_TRUE(publisher.publish(good, tapeTime(571), 1.0));
    ASSERT_GE(good.taken.size(), 3u);
    for (size_t i = 0; i < 3; ++i) {
        const auto *again = std::get_if<WireBar>(&good.taken[i].second);
        ASSERT_NE(again, nullptr);
        EXPECT_EQ(again->sequence, i == 2 ? 1u : i + 1);
        EXPECT_EQ(again->kind, i == 2 ? WireKind::Minute : WireKind::Change);
    }
    EXPECT_EQ(publisher.changes(), 2u);
    ScriptedSink later;
    ASSERT_TRUE(publisher.publish(later, tapeTime(571), 1.0));
    for (const auto &[subject, record] : later.taken) {
        EXPECT_EQ(subject, "md.clock");
    }
}

TEST(FeedLogTest, AFeedGoesOnWhereItsLogEnds) {
    QTemporaryDir folder;
    const QString path = folder.filePath("feed.log");
    {
        FeedLog log;
        ASSERT_EQ(log.open(path).toStdString(), "");
        EXPECT_FALSE(log.place());
        EXPECT_TRUE(log.writePlace({7, 1000}, 3, 1));
        EXPECT_TRUE(log.writePlace({7, 2000}, 5, 2));
        EXPECT_TRUE(log.writeSums(7, "SH600000", {kTapeDay, 2, 300.0, 3030.5, 10.2}));
    }
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    EXPECT_EQ(file.readAll().toStdString(),
              "at 7 1000 3 1\nat 7 2000 5 2\nsum 7 1763654400 SH600000 2 300 3030.5 10.199999999999999\n");
    file.write("at 7 30"); // cut off
    file.close();
    FeedLog again;
    ASSERT_EQ(again.open(path).toStdString(), "");
    ASSERT_TRUE(again.place());
    EXPECT_EQ(again.place()->run, 7u);
    EXPECT_EQ(again.place()->market, 2000);
    EXPECT_TRUE(again.writePlace({8, 4000}, 1, 0));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    EXPECT_TRUE(text.endsWith("\nat 7 30\nat 8 4000 1 0\n")) << text.toStdString();
    EXPECT_EQ(lastPlace(text)->market, 4000);
}

TEST(FeedLogTest, OtherLinesAreNoPlaces) {
    EXPECT_FALSE(lastPlace(""));
    EXPECT_FALSE(lastPlace("at 1 2 3\nat x 2 3 4\nat 1 -5 3 4\nsum 1 2 3 4\n"));
}

TEST(FeedLogTest, AFolderThatIsNotThereIsTold) {
    FeedLog log;
    EXPECT_THAT(log.open("/nowhere/at/all.log").toStdString(), ::testing::HasSubstr("/nowhere/at/all.log"));
}

TEST(FeedOptionsTest, OptionsAreRead) {
    const auto parsed = parseFeedOptions({"--server", "nats://market:4223", "--pace=60", "--recorded",
                                          "2025-11-21", "--start", "10:30", "--store=/a b", "--log", "l"});
    const auto *options = std::get_if<FeedOptions>(&parsed);
    ASSERT_NE(options, nullptr);
    EXPECT_EQ(options->server, "nats://market:4223");
    EXPECT_EQ(options->pace, 60.0);
    EXPECT_EQ(options->recorded, QDate(2025, 11, 21));
    EXPECT_EQ(options->start, QTime(10, 30));
    EXPECT_EQ(options->store, "/a b");
    EXPECT_EQ(options->log, "l");
}

TEST(FeedOptionsTest, TheCopiesOfTheStreamAreANumber) {
    EXPECT_EQ(std::get<FeedOptions>(parseFeedOptions({"--copies", "3"})).copies, 3);
    EXPECT_EQ(std::get<FeedOptions>(parseFeedOptions({})).copies, 1);
    for (const char *copies : {"0", "6", "three", ""}) {
        EXPECT_TRUE(std::holds_alternative<QString>(parseFeedOptions({"--copies", copies}))) << copies;
    }
}

TEST(FeedOptionsTest, WhatIsWrongIsToldWithoutASecret) {
    const std::vector<std::pair<QStringList, std::string>> wrong{
        {{"--pace", "0"}, "--pace: no number"},
        {{"password=hush"}, "password: unknown option"},
        {{"--password=hush"}, "--password: unknown option"},
        {{"--pace"}, "--pace: the value is missing"},
        {{"--recorded", "2025-02-30"}, "--recorded: no date"},
        {{"--start", "25:00"}, "--start: no time"},
        {{"--sever", "x"}, "--sever: unknown option"},
        {{"--server", "http://x"}, "--server: not of the form"},
        {{"--server", "nats://me:hush@x"}, "--server: credentials do not go with the address"},
    };
    for (const auto &[arguments, text] : wrong) {
        const auto parsed = parseFeedOptions(arguments);
        const auto *line = std::get_if<QString>(&parsed);
        ASSERT_NE(line, nullptr) << text;
        EXPECT_THAT(line->toStdString(), ::testing::StartsWith(text));
        EXPECT_FALSE(line->contains("hush"));
    }
    const auto help = parseFeedOptions({"--help"});
    EXPECT_TRUE(std::get<FeedOptions>(help).help);
    EXPECT_TRUE(std::get<FeedOptions>(parseFeedOptions({"-h", "word"})).help);
}
