#pragma once

#include "terminal/formula/FormulaService.h"

#include "tests/terminal/BuiltInFormulas.h"
#include "tests/terminal/Samples.h"
#include "tests/terminal/ScriptedFeed.h"

#include <QCoreApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace tests {

using terminal::FormulaService;
using terminal::MinuteBar;

inline MinuteBar bar(qint64 time, double price, double average, double volume, double open = 0.0) {
    MinuteBar made;
    made.time = time;
    made.open = open;
    made.high = price;
    made.low = price;
    made.price = price;
    made.average = average;
    made.volume = volume;
    return made;
}

/// What a callback brought.
struct Received {
    enum { History, Point } kind = History;
    QString id;
    TC::FormulaMetaPtr meta;
    TC::FormulaResultPtr result;
    TC::FormulaInstantPtr point;
    bool keepRange = false;
};

/// A service over a scripted feed with one instrument, and what it delivers.
class FormulaServiceFixture : public ::testing::Test {
protected:
    FormulaServiceFixture() {
        mFeed.setRunningDay(kToday);
        mFeed.setBars("SH600000", kToday, {bar(kOpen, 10.0, 10.0, 100), bar(kOpen + kMinute, 10.2, 10.1, 300)});
        mFeed.setBars("SH600000", kYesterday, {bar(kOpen - 86400000, 9.0, 9.0, 50)});
    }

    TC::CFormulaParam param(const QString &id, const QString &formula = "REALTIME", int demand = 3,
                            int day = kToday) {
        TC::CFormulaParam made;
        made.mRequestId = id.toStdString();
        made.mMarket = "SH";
        made.mCode = "600000";
        made.mFormulaName = formula;
        made.mDataMode = 1;
        made.mDataDemand = demand;
        made.mStart = {day * 1000LL, 0};
        return made;
    }
    void request(QVector<TC::CFormulaParam> params) {
        mService->requestFormulas(params, onHistory(), onPoint());
    }
    TC::FormulaHistoryCallback onHistory() {
        return [this](const TC::FormulaMetaPtr &meta, const TC::FormulaResultPtr &result, const QString &id,
                      int, const QString &, bool keepRange) {
            EXPECT_EQ(QThread::currentThread(), qApp->thread());
            Received received;
            received.id = id;
            received.meta = meta;
            received.result = result;
            received.keepRange = keepRange;
            mReceived.append(received);
        };
    }
    TC::FormulaRealtimeCallback onPoint() {
        return [this](int, const QString &id, const TC::FormulaInstantPtr &point) {
            EXPECT_EQ(QThread::currentThread(), qApp->thread());
            Received received;
            received.kind = Received::Point;
            received.id = id;
            received.point = point;
            mReceived.append(received);
        };
    }
    bool waitForResults(int count) {
        return QTest::qWaitFor([&] { return mReceived.size() >= count; }, 10000);
    }

    ScriptedFeed mFeed;
    QList<Received> mReceived;
    std::unique_ptr<FormulaService> mService =
        std::make_unique<FormulaService>(mFeed, makeBuiltInFormula, [](const TC::CFormulaParam &request) {
            return static_cast<int>(request.mStart.first / 1000);
        });
};

} // namespace tests
