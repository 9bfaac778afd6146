#pragma once

#include "terminal/feeder/InstrumentTape.h"
#include "terminal/feeder/NatsSink.h"

#include <QFile>
#include <QStringList>

#include <atomic>
#include <memory>
#include <vector>

/// What the process that publishes and the one that shows have in common, in memory that both have mapped.
struct MarketTimes {
    static constexpr quint64 kMostChanges = 200000; ///< of one instrument

    std::atomic<int> asked; ///< bursts that are wanted so far
    std::atomic<int> done; ///< and that are over; -1 until the market runs
    std::atomic<bool> isOver;
    std::atomic<double>
        at[1]; ///< when a change was published: by view and sequence, seconds of the steady clock

    static MarketTimes *map(QFile &file, int views);
};

/// When the market begins, milliseconds since the epoch: most of its day is there by then.
qint64 publishedMarketStart();
/// Key of an instrument of the market that is not shown anywhere.
QString publishedKey(int number);
/// What of a price tells which change of its instrument it is: its sequence, far behind the point.
quint64 publishedSequence(double price);

/// A full market as a feed publishes it: 5 000 instruments, each of which changes once in 3 s, its minutes that are over in the
/// stream, and bursts. The first instruments are the shown ones, which have the day so far in the stream.
class MarketPublisher {
public:
    static constexpr int kInstruments = 5000;
    static constexpr double kRate = kInstruments / 3.0; ///< changes a second

    /// `shown` are keys with their base prices, as "SH600000=10.2".
    MarketPublisher(terminal::NatsSink &sink, MarketTimes &times, const QStringList &shown);
    /// Runs the market until it is over. Each burst takes a second; every second one is of the shown instruments alone.
    void run(double burstRate);

private:
    struct Item {
        QString key;
        std::unique_ptr<terminal::InstrumentTape> tape;
        double base;
        quint64 sequence;
    };

    void add(const QString &key, double base);
    void addMorning(Item &item);
    void change(int number);
    void publish(double seconds, double rate, int count);
    void keepFinished();
    void beat();
    qint64 market() const;

    terminal::NatsSink &mSink;
    MarketTimes &mTimes;
    const double mBegun;
    std::vector<Item> mItems;
    int mShown = 0;
    quint64 mNext = 0;
    quint64 mBeat = 0;
    double mLastBeat = 0.0;
    qint64 mKept = 0; ///< market minute up to which minutes are in the stream
};

/// The program of the process that publishes: URL, file of the times, changes a second of a burst, and the shown ones. Answers its exit
/// status.
int publishMarket(const QStringList &arguments);
