#include "terminal/feed/WireRecord.h"

#include "terminal/market/MarketLimits.h"

#include <QtEndian>

#include <array>
#include <cmath>
#include <cstring>
#include <limits>

namespace terminal {
namespace {

constexpr char kMagic[] = {'T', 'S'};
constexpr int kHead = 8; ///< bytes: magic, version, kind, checksum
constexpr int kChecksumAt = 4;
constexpr int kBarSize = 104;
constexpr int kClockSize = 48;
constexpr quint8 kClockKind = 3;
constexpr quint64 kLastSequence = quint64(1) << 62;
constexpr qint64 kLastTime = 253402300799999; ///< the end of the year 9999
constexpr qint64 kMinute = 60 * 1000; ///< milliseconds
constexpr qint64 kLongestDay =
    20LL * 86400 * 1000; ///< from the first evening of a trading day to its last minute

constexpr int kChecksumStep = 8; ///< bytes that the checksum takes in one step
static_assert(kHead == kChecksumStep && kBarSize % kChecksumStep == 0 && kClockSize % kChecksumStep == 0);

using ChecksumTables = std::array<std::array<quint32, 256>, kChecksumStep>;

/// What a byte does to the checksum, by the number of bytes behind it in one step.
constexpr ChecksumTables checksumTables() {
    ChecksumTables tables{};
    for (quint32 i = 0; i < 256; ++i) {
        quint32 rest = i;
        for (int bit = 0; bit < 8; ++bit) {
            rest = rest & 1u ? rest >> 1 ^ 0xEDB88320u : rest >> 1;
        }
        tables[0][i] = rest;
    }
    for (size_t behind = 1; behind < kChecksumStep; ++behind) {
        for (quint32 i = 0; i < 256; ++i) {
            const quint32 before = tables[behind - 1][i];
            tables[behind][i] = tables[0][before & 0xFFu] ^ before >> 8;
        }
    }
    return tables;
}

quint32 checksumStep(quint32 sum, const char *bytes) {
    static constexpr ChecksumTables kTables = checksumTables();
    const quint32 first = qFromLittleEndian<quint32>(bytes) ^ sum;
    const quint32 second = qFromLittleEndian<quint32>(bytes + 4);
    return kTables[7][first & 0xFFu] ^ kTables[6][first >> 8 & 0xFFu] ^ kTables[5][first >> 16 & 0xFFu] ^
           kTables[4][first >> 24] ^ kTables[3][second & 0xFFu] ^ kTables[2][second >> 8 & 0xFFu] ^
           kTables[1][second >> 16 & 0xFFu] ^ kTables[0][second >> 24];
}

/// CRC-32 of the bytes of a record, with those of the checksum itself taken as 0.
quint32 checksumOf(const QByteArray &bytes) {
    char head[kHead] = {};
    std::memcpy(head, bytes.constData(), kChecksumAt);
    quint32 sum = checksumStep(0xFFFFFFFFu, head);
    for (int at = kHead; at < bytes.size(); at += kChecksumStep) {
        sum = checksumStep(sum, bytes.constData() + at);
    }
    return sum ^ 0xFFFFFFFFu;
}

/// Puts numbers behind each other, the lowest byte first.
class WireWriter {
public:
    explicit WireWriter(quint8 kind, int size) {
        mBytes.reserve(size);
        mBytes.append(kMagic, sizeof kMagic);
        put(static_cast<quint8>(kWireVersion));
        put(kind);
        put(quint32(0));
    }
    template <class Number> void put(Number value) {
        char bytes[sizeof(Number)];
        qToLittleEndian(value, bytes);
        mBytes.append(bytes, sizeof bytes);
    }
    void put(double value) {
        quint64 bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        put(bits);
    }
    QByteArray finish() {
        qToLittleEndian(checksumOf(mBytes), mBytes.data() + kChecksumAt);
        return mBytes;
    }

private:
    QByteArray mBytes;
};

/// Takes them off again; the caller has seen to it that they are there.
class WireReader {
public:
    explicit WireReader(const QByteArray &bytes) : mAt(bytes.constData() + kHead) {}

    template <class Number> void take(Number &value) {
        value = qFromLittleEndian<Number>(mAt);
        mAt += sizeof(Number);
    }
    void take(double &value) {
        quint64 bits = 0;
        take(bits);
        std::memcpy(&value, &bits, sizeof value);
    }

private:
    const char *mAt;
};

bool isTime(qint64 time) {
    return time >= 0 && time <= kLastTime;
}

bool isSound(const MinuteBar &bar) {
    for (const double price : {bar.open, bar.high, bar.low, bar.price, bar.average}) {
        if (!(price >= 0.0 && price <= kLargestPrice)) {
            return false;
        }
    }
    for (const double number : {bar.volume, bar.amount}) {
        if (!(number >= 0.0 && std::isfinite(number))) {
            return false;
        }
    }
    return bar.price != 0.0 && bar.low <= bar.high && bar.time % kMinute == 0;
}

bool isSound(const WireBar &record) {
    if (record.sequence == 0 || record.sequence > kLastSequence) {
        return false;
    }
    const MinuteBar &bar = record.bar;
    const qint64 midnight = record.day * 1000LL;
    const qint64 told = static_cast<qint64>(record.sequence) + record.span;
    const bool isPlaced = record.kind == WireKind::Change
                              ? record.span >= 0 && static_cast<quint64>(record.span) < record.sequence
                              : told >= 0;
    return isPlaced && record.day > 0 && isTime(record.published) && bar.time > midnight - kLongestDay &&
           bar.time <= midnight + kLongestDay && isSound(bar);
}

WireRecord readBar(const QByteArray &bytes, WireKind kind) {
    WireBar record;
    record.kind = kind;
    quint32 day = 0;
    WireReader reader(bytes);
    reader.take(record.run);
    reader.take(record.sequence);
    reader.take(record.span);
    reader.take(day);
    reader.take(record.published);
    reader.take(record.bar.time);
    for (double *number : {&record.bar.open, &record.bar.high, &record.bar.low, &record.bar.price,
                           &record.bar.average, &record.bar.volume, &record.bar.amount}) {
        reader.take(*number);
    }
    if (day > static_cast<quint32>(std::numeric_limits<int>::max())) {
        return WireFault::Garbage;
    }
    record.day = static_cast<int>(day);
    return isSound(record) ? WireRecord(record) : WireFault::Garbage;
}

WireRecord readClock(const QByteArray &bytes) {
    WireClock clock;
    WireReader reader(bytes);
    reader.take(clock.run);
    reader.take(clock.beat);
    reader.take(clock.published);
    reader.take(clock.market);
    reader.take(clock.pace);
    const bool isSound = clock.beat > 0 && isTime(clock.published) && isTime(clock.market) &&
                         std::isfinite(clock.pace) && clock.pace >= 0.0;
    return isSound ? WireRecord(clock) : WireFault::Garbage;
}

} // namespace

QByteArray encodeWire(const WireBar &record) {
    WireWriter writer(static_cast<quint8>(record.kind), kBarSize);
    writer.put(record.run);
    writer.put(record.sequence);
    writer.put(record.span);
    writer.put(static_cast<quint32>(record.day));
    writer.put(record.published);
    writer.put(record.bar.time);
    for (const double number : {record.bar.open, record.bar.high, record.bar.low, record.bar.price,
                                record.bar.average, record.bar.volume, record.bar.amount}) {
        writer.put(number);
    }
    return writer.finish();
}

QByteArray encodeWire(const WireClock &clock) {
    WireWriter writer(kClockKind, kClockSize);
    writer.put(clock.run);
    writer.put(clock.beat);
    writer.put(clock.published);
    writer.put(clock.market);
    writer.put(clock.pace);
    return writer.finish();
}

WireRecord decodeWire(const QByteArray &bytes) {
    if (bytes.size() < kHead) {
        return WireFault::Short;
    }
    if (std::memcmp(bytes.constData(), kMagic, sizeof kMagic) != 0) {
        return WireFault::Garbage;
    }
    const auto version = static_cast<quint8>(bytes[2]);
    const auto kind = static_cast<quint8>(bytes[3]);
    if (version != kWireVersion) {
        return version > kWireVersion ? WireFault::NewerVersion : WireFault::Garbage;
    }
    if (kind < static_cast<quint8>(WireKind::Change) || kind > kClockKind) {
        return WireFault::Garbage;
    }
    const int size = kind == kClockKind ? kClockSize : kBarSize;
    if (bytes.size() != size) {
        return bytes.size() < size ? WireFault::Short : WireFault::Garbage;
    }
    if (qFromLittleEndian<quint32>(bytes.constData() + kChecksumAt) != checksumOf(bytes)) {
        return WireFault::Garbage;
    }
    return kind == kClockKind ? readClock(bytes) : readBar(bytes, static_cast<WireKind>(kind));
}

} // namespace terminal
