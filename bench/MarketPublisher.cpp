#include "bench/MarketPublisher.h"

#include "bench/BenchTerminal.h"
#include "terminal/feed/WireSubject.h"

#include <chrono>
#include <cmath>
#include <thread>

using namespace terminal;

namespace {

constexpr quint64 kRun = 7;
constexpr quint64 kStride = 1597; ///< between one instrument and the next: the shown ones do not come together
constexpr double kSlice = 0.02; ///< seconds, after which the next burst is looked for
constexpr double kBeatInterval = 0.25; ///< seconds
constexpr qint64 kMinute = 60000;
constexpr int kOpen = 570; ///< minute of the day
constexpr int kNoon = 690;
constexpr int kAfternoon = 780;

double now() {
    return secondsOf(CLOCK_MONOTONIC);
}

/// Some cents around a base.
double wholeCents(double base, quint64 sequence) {
    return std::round(100.0 * base * (1.0 + 0.002 * std::sin(0.05 * static_cast<double>(sequence)))) / 100.0;
}

double priceOf(double base, quint64 sequence) {
    return wholeCents(base, sequence) + static_cast<double>(sequence) * 1e-9;
}

MinuteBar barOf(qint64 minute, double base, double price, quint64 sequence) {
    return {
        minute, base, base * 1.01, base * 0.99, price, base * 0.5, static_cast<double>(sequence % 1000) * 100.0,
        1000.0};
}

} // namespace

MarketTimes *MarketTimes::map(QFile &file, int views) {
    const qint64 size =
        qint64(sizeof(MarketTimes)) + qint64(views) * qint64(kMostChanges) * qint64(sizeof(double));
    if (!file.open(QIODevice::ReadWrite) || !file.resize(size)) {
        return nullptr;
    }
    return reinterpret_cast<MarketTimes *>(file.map(0, size));
}

qint64 publishedMarketStart() {
    return timeOf(QDate(2026, 11, 20), 840);
}

QString publishedKey(int number) {
    return QStringLiteral("SH%1").arg(680000 + number);
}

quint64 publishedSequence(double price) {
    const double cents = 100.0 * price;
    return static_cast<quint64>(std::llround((cents - std::floor(cents + 1e-8)) * 1e7));
}

MarketPublisher::MarketPublisher(NatsSink &sink, MarketTimes &times, const QStringList &shown)
    : mSink(sink), mTimes(times), mBegun(now()) {
    for (const QString &word : shown) {
        add(word.section('=', 0, 0), word.section('=', 1).toDouble());
        addMorning(mItems.back());
    }
    mShown = static_cast<int>(mItems.size());
    while (mItems.size() < kInstruments) {
        add(publishedKey(static_cast<int>(mItems.size())), 10.0);
    }
    mKept = market() / kMinute;
}

void MarketPublisher::add(const QString &key, double base) {
    mItems.push_back({key, std::make_unique<InstrumentTape>(kRun), base, 0});
    mItems.back().tape->beginDay(dayOf(dateAt(publishedMarketStart())), {}, 0);
}

/// The minutes before the start, which nobody hears and which the stream has.
void MarketPublisher::addMorning(Item &item) {
    const QDate date = dateAt(publishedMarketStart());
    for (int minute = kOpen + 1; timeOf(date, minute) <= publishedMarketStart(); ++minute) {
        if (minute <= kNoon || minute > kAfternoon) {
            const auto number = static_cast<quint64>(minute);
            item.tape->change(barOf(timeOf(date, minute), item.base, wholeCents(item.base, number), number));
        }
    }
    for (const WireBar &record : item.tape->finished(publishedMarketStart())) {
        mSink.keep(minuteSubject(item.key), encodeWire(record));
    }
}

qint64 MarketPublisher::market() const {
    return publishedMarketStart() + static_cast<qint64>(1000.0 * (now() - mBegun));
}

void MarketPublisher::change(int number) {
    Item &item = mItems[static_cast<size_t>(number)];
    const double price = priceOf(item.base, ++item.sequence);
    const qint64 minute = (market() / kMinute + 1) * kMinute;
    const WireBar record = item.tape->change(barOf(minute, item.base, price, item.sequence));
    if (number < mShown && item.sequence < MarketTimes::kMostChanges) {
        (&mTimes.at[0])[static_cast<quint64>(number) * MarketTimes::kMostChanges + item.sequence] = now();
    }
    mSink.send(changeSubject(item.key), encodeWire(record));
}

/// Changes for a time, at a rate, of the first `count` instruments in turn.
void MarketPublisher::publish(double seconds, double rate, int count) {
    const double begun = now();
    qint64 sent = 0;
    for (double time = 0.0; time < seconds; time = now() - begun) {
        for (; static_cast<double>(sent) < time * rate; ++sent) {
            change(static_cast<int>(mNext++ * kStride % static_cast<quint64>(count)));
        }
        beat();
        std::this_thread::sleep_for(std::chrono::microseconds(500));
    }
}

/// Once a minute the one that is over goes into the stream.
void MarketPublisher::keepFinished() {
    const qint64 minute = market() / kMinute;
    if (minute <= mKept) {
        return;
    }
    mKept = minute;
    for (Item &item : mItems) {
        for (const WireBar &record : item.tape->finished(minute * kMinute)) {
            if (!mSink.keep(minuteSubject(item.key), encodeWire(record))) {
                std::fprintf(stderr, "%s: a minute could not be kept\n", qPrintable(item.key));
            }
        }
    }
}

void MarketPublisher::beat() {
    if (now() - mLastBeat > kBeatInterval) {
        mLastBeat = now();
        mSink.send(clockSubject(), encodeWire(WireClock{kRun, ++mBeat, 1, market(), 1.0}));
    }
}

void MarketPublisher::run(double burstRate) {
    mSink.confirm();
    mTimes.done = 0;
    while (!mTimes.isOver) {
        keepFinished();
        const int bursts = mTimes.asked;
        if (bursts == mTimes.done) {
            publish(kSlice, kRate, kInstruments);
        } else {
            publish(1.0, burstRate, bursts % 2 == 0 ? mShown : kInstruments);
            mTimes.done = bursts;
        }
    }
}

int publishMarket(const QStringList &arguments) {
    FeedAddress address;
    LineFailure failure;
    readAddress(arguments[0], address);
    const std::unique_ptr<NatsSink> sink = NatsSink::open(address, failure);
    QFile file(arguments[1]);
    const QStringList shown = arguments.mid(3);
    MarketTimes *times = MarketTimes::map(file, static_cast<int>(shown.size()));
    if (!sink || !times) {
        std::fprintf(stderr, "no server or no file: %s\n", qPrintable(failure.reason));
        return 1;
    }
    MarketPublisher(*sink, *times, shown).run(arguments[2].toDouble());
    return sink->confirm() ? 0 : 1;
}
