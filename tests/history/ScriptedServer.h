#pragma once

#include "terminal/history/HistoryServer.h"
#include "terminal/market/MarketDate.h"

#include <QMap>
#include <QStringList>

#include <condition_variable>
#include <mutex>

namespace tests {

/// The first minutes of a day of shares, at a price.
inline terminal::MinuteBars minutesOf(int day, int count, double price) {
    terminal::MinuteBars bars;
    for (int i = 0; i < count; ++i) {
        const int minute = i < 120 ? 571 + i : 781 + i - 120;
        bars.push_back({day * 1000LL + minute * 60000LL, price, price + 0.1, price - 0.1, price, price,
                        100.0 + i, price * (100.0 + i)});
    }
    return bars;
}

/// A server of history that says what a test has told it to. Any thread.
class ScriptedServer : public terminal::HistoryServer {
public:
    /// What it has; to be set while nobody asks.
    QMap<QString, QMap<int, terminal::ServedDay>> held;
    QVector<terminal::Instrument> listed;

    void put(const QString &key, int day, const terminal::MinuteBars &bars) {
        std::lock_guard<std::mutex> hold(mLock);
        held[key][day] = {day, static_cast<int>(bars.size()), 0.0, {}, bars};
    }
    /// What every call answers from now on.
    void fail(terminal::HistoryTrouble trouble) {
        std::lock_guard<std::mutex> hold(mLock);
        mTrouble = trouble;
    }
    /// Holds up every call until it is called with false.
    void hold(bool isHeld) {
        std::lock_guard<std::mutex> lock(mLock);
        mIsHeld = isHeld;
        mGo.notify_all();
    }
    QStringList calls() const {
        std::lock_guard<std::mutex> hold(mLock);
        return mCalls;
    }

    terminal::HistoryFailure instruments(QString &stamp, QVector<terminal::Instrument> &instruments) override {
        std::unique_lock<std::mutex> hold(mLock);
        const terminal::HistoryFailure failure = begin("instruments " + stamp, hold);
        if (failure.isNone()) {
            instruments = listed;
            stamp = "1";
        }
        return failure;
    }
    terminal::HistoryFailure days(const QString &key, QVector<terminal::ListedDay> &days) override {
        std::unique_lock<std::mutex> hold(mLock);
        const terminal::HistoryFailure failure = begin("days " + key, hold);
        for (const terminal::ServedDay &day : held.value(key)) {
            days.append({day.day, day.count});
        }
        return failure;
    }
    terminal::HistoryFailure read(const QString &key, const QVector<int> &days,
                                  QVector<terminal::ServedDay> &served) override {
        std::unique_lock<std::mutex> hold(mLock);
        QStringList dates;
        for (const int day : days) {
            dates.append(terminal::dateOf(day).toString("MM-dd"));
        }
        const terminal::HistoryFailure failure = begin("read " + key + ' ' + dates.join(' '), hold);
        for (const terminal::ServedDay &day : held.value(key)) {
            if (failure.isNone() && days.contains(day.day)) {
                served.append(day);
            }
        }
        return failure;
    }
    void interrupt() override { hold(false); }

private:
    terminal::HistoryFailure begin(const QString &call, std::unique_lock<std::mutex> &lock) {
        mCalls.append(call);
        mGo.wait(lock, [this] { return !mIsHeld; });
        return {mTrouble, mTrouble == terminal::HistoryTrouble::None ? QString() : QString("scripted")};
    }

    mutable std::mutex mLock; ///< guards all
    std::condition_variable mGo;
    terminal::HistoryTrouble mTrouble = terminal::HistoryTrouble::None;
    bool mIsHeld = false;
    QStringList mCalls;
};

} // namespace tests
