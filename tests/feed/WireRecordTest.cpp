#include "terminal/feed/WireRecord.h"
#include "terminal/feed/WireSubject.h"

#include <gtest/gtest.h>

#include <limits>

using namespace terminal;

namespace {

// Made by another program from docs/wire.md: struct.pack('<...') and zlib.crc32.
const QByteArray kBody =
    QByteArrayLiteral("3b5208a49a010000070000000000000002000000003b1f69bc6912a49a010000e06312a49a01000000000000"
                      "00002540000000000080254000"
                      "00000000802440000000000000254000000000000025400000000000c0924000000000009cc840");
const QByteArray kChange = QByteArrayLiteral("54530101508d62d7") + kBody;
const QByteArray kMinute = QByteArrayLiteral("54530102501b4e9f") + kBody;
const QByteArray kClock = QByteArrayLiteral(
    "54530103433f06d03b5208a49a0100002a00000000000000bc6912a49a010000585012a49a0100000000000000004e40");

WireBar sample() {
    WireBar record;
    record.run = 1763688600123;
    record.sequence = 7;
    record.span = 2;
    record.day = 1763654400; // 2025-11-21
    record.published = 1763689261500;
    record.bar = {1763689260000, 10.5, 10.75, 10.25, 10.5, 10.5, 1200.0, 12600.0};
    return record;
}

WireFault faultOf(const QByteArray &bytes) {
    const WireRecord record = decodeWire(bytes);
    EXPECT_TRUE(std::holds_alternative<WireFault>(record));
    const WireFault *fault = std::get_if<WireFault>(&record);
    return fault ? *fault : WireFault{};
}

} // namespace

TEST(WireRecordTest, AChangeHasTheBytesOfTheLayout) {
    EXPECT_EQ(encodeWire(sample()).toHex().toStdString(), kChange.toStdString());
}

TEST(WireRecordTest, AMinuteDiffersInItsKindAndChecksum) {
    WireBar record = sample();
    record.kind = WireKind::Minute;
    EXPECT_EQ(encodeWire(record).toHex().toStdString(), kMinute.toStdString());
}

TEST(WireRecordTest, ABeatHasTheBytesOfTheLayout) {
    EXPECT_EQ(
        encodeWire(WireClock{1763688600123, 42, 1763689261500, 1763689255000, 60.0}).toHex().toStdString(),
        kClock.toStdString());
}

TEST(WireRecordTest, BytesAreReadBack) {
    const WireRecord bar = decodeWire(QByteArray::fromHex(kMinute));
    ASSERT_TRUE(std::holds_alternative<WireBar>(bar));
    const WireBar &read = std::get<WireBar>(bar);
    EXPECT_EQ(read.kind, WireKind::Minute);
    EXPECT_EQ(read.run, 1763688600123u);
    EXPECT_EQ(read.sequence, 7u);
    EXPECT_EQ(read.span, 2);
    EXPECT_EQ(read.day, 1763654400);
    EXPECT_EQ(read.published, 1763689261500);
    EXPECT_EQ(read.bar, sample().bar);
    const WireRecord clock = decodeWire(QByteArray::fromHex(kClock));
    ASSERT_TRUE(std::holds_alternative<WireClock>(clock));
    EXPECT_EQ(std::get<WireClock>(clock).beat, 42u);
    EXPECT_EQ(std::get<WireClock>(clock).market, 1763689255000);
    EXPECT_EQ(std::get<WireClock>(clock).pace, 60.0);
}

TEST(WireRecordTest, EveryShorterRecordIsRefusedAsShort) {
    for (const QByteArray &whole : {QByteArray::fromHex(kChange), QByteArray::fromHex(kClock)}) {
        for (int size = 0; size < whole.size(); ++size) {
            EXPECT_EQ(faultOf(whole.left(size)), WireFault::Short) << size;
        }
    }
}

TEST(WireRecordTest, ALongerRecordIsGarbage) {
    EXPECT_EQ(faultOf(QByteArray::fromHex(kChange) + '\0'), WireFault::Garbage);
}

TEST(WireRecordTest, ANewerVersionIsTold) {
    QByteArray newer = QByteArray::fromHex(kChange);
    newer[2] = 2;
    EXPECT_EQ(faultOf(newer), WireFault::NewerVersion);
    EXPECT_EQ(faultOf(newer.left(20)), WireFault::NewerVersion);
    newer[2] = '\xff';
    EXPECT_EQ(faultOf(newer + "and more"), WireFault::NewerVersion);
}

TEST(WireRecordTest, AnyOtherByteIsGarbage) {
    for (const QByteArray &whole : {QByteArray::fromHex(kChange), QByteArray::fromHex(kClock)}) {
        for (int i = 0; i < whole.size(); ++i) {
            if (i == 2) {
                continue; // the version
            }
            QByteArray changed = whole;
            changed[i] = static_cast<char>(changed[i] ^ 0x10);
            EXPECT_EQ(faultOf(changed), WireFault::Garbage) << i;
        }
    }
    QByteArray older = QByteArray::fromHex(kChange);
    older[2] = 0;
    EXPECT_EQ(faultOf(older), WireFault::Garbage);
}

TEST(WireRecordTest, NumbersThatNoBarHasAreGarbage) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    for (const double number : {nan, infinite, -infinite}) {
        for (double MinuteBar::*member :
             {&MinuteBar::open, &MinuteBar::high, &MinuteBar::low, &MinuteBar::price, &MinuteBar::average,
              &MinuteBar::volume, &MinuteBar::amount}) {
            WireBar record = sample();
            record.bar.*member = number;
            EXPECT_EQ(faultOf(encodeWire(record)), WireFault::Garbage);
        }
    }
    WireBar record = sample();
    record.bar.price = 0.0;
    EXPECT_EQ(faultOf(encodeWire(record)), WireFault::Garbage);
    record = sample();
    record.bar.low = 11.0;
    EXPECT_EQ(faultOf(encodeWire(record)), WireFault::Garbage);
    for (double MinuteBar::*member : {&MinuteBar::open, &MinuteBar::high, &MinuteBar::low, &MinuteBar::price,
                                      &MinuteBar::average, &MinuteBar::volume, &MinuteBar::amount}) {
        record = sample();
        record.bar.*member = -1.0;
        EXPECT_EQ(faultOf(encodeWire(record)), WireFault::Garbage);
    }
    record = sample();
    record.bar.high = 1e9;
    EXPECT_TRUE(std::holds_alternative<WireBar>(decodeWire(encodeWire(record))));
    record.bar.high = 1.000001e9;
    EXPECT_EQ(faultOf(encodeWire(record)), WireFault::Garbage);
}

TEST(WireRecordTest, PlacesThatNoRecordHasAreGarbage) {
    WireBar record = sample();
    record.sequence = 0;
    EXPECT_EQ(faultOf(encodeWire(record)), WireFault::Garbage);
    record.sequence = std::numeric_limits<quint64>::max();
    EXPECT_EQ(faultOf(encodeWire(record)), WireFault::Garbage);
    record = sample();
    record.span = 7; // before the first
    EXPECT_EQ(faultOf(encodeWire(record)), WireFault::Garbage);
    record.span = -1;
    EXPECT_EQ(faultOf(encodeWire(record)), WireFault::Garbage);
    record.kind = WireKind::Minute;
    EXPECT_TRUE(std::holds_alternative<WireBar>(decodeWire(encodeWire(record))));
    record.span = -8;
    EXPECT_EQ(faultOf(encodeWire(record)), WireFault::Garbage);
    record = sample();
    record.day = 0;
    EXPECT_EQ(faultOf(encodeWire(record)), WireFault::Garbage);
    record.day = -86400;
    EXPECT_EQ(faultOf(encodeWire(record)), WireFault::Garbage);
    record = sample();
    record.bar.time += 21LL * 86400 * 1000;
    EXPECT_EQ(faultOf(encodeWire(record)), WireFault::Garbage);
    record = sample();
    record.bar.time += 1000; // no end of a minute
    EXPECT_EQ(faultOf(encodeWire(record)), WireFault::Garbage);
    record = sample();
    record.published = -1;
    EXPECT_EQ(faultOf(encodeWire(record)), WireFault::Garbage);
    WireClock clock{1, 1, 0, 0, -1.0};
    EXPECT_EQ(faultOf(encodeWire(clock)), WireFault::Garbage);
    clock = {1, 0, 0, 0, 1.0};
    EXPECT_EQ(faultOf(encodeWire(clock)), WireFault::Garbage);
}

TEST(WireSubjectTest, AnInstrumentIsOneWord) {
    EXPECT_EQ(changeSubject("SH600000").toStdString(), "md.tick.SH600000");
    EXPECT_EQ(minuteSubject("SH600000").toStdString(), "md.min.SH600000");
    EXPECT_EQ(changeSubject("US BRK.B*>=").toStdString(), "md.tick.US=20BRK=2EB=2A=3E=3D");
    EXPECT_EQ(changeSubject(QString::fromUtf8("HK中")).toStdString(), "md.tick.HK=E4=B8=AD");
}

TEST(WireSubjectTest, TheInstrumentIsReadBack) {
    for (const char *key : {"SH600000", "US BRK.B*>=", "HK中", "a-b_c"}) {
        EXPECT_EQ(keyOfSubject(changeSubject(QString::fromUtf8(key))).toStdString(), key);
        EXPECT_EQ(keyOfSubject(minuteSubject(QString::fromUtf8(key))).toStdString(), key);
    }
    for (const char *subject :
         {"md.clock", "md.tick.", "md.tick.a.b", "md.tick.=2", "md.tick.=4a", "md.tick.=41", "x"}) {
        EXPECT_EQ(keyOfSubject(subject).toStdString(), "") << subject;
    }
}
