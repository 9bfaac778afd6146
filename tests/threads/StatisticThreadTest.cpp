// Quotes that a service answers on threads of its own, while stretches come and go and the dialog does.

#include "host/windows/CWatchPlateWidget.h"
#include "statistics/CRealtimeStatisticDialog.h"
#include "tests/fakehost/FakeHost.h"

#include <QCoreApplication>
#include <QtTest>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

using Records = std::vector<std::shared_ptr<quoter::QuoterBase>>;

Records recordsOf(int count) {
    Records records;
    for (int i = 0; i < count; ++i) {
        auto record = std::make_shared<quoter::QuoterTransaction>();
        record->mTime = i;
        record->mPrice = 10.0;
        records.push_back(record);
    }
    return records;
}

/// Answers a request many times, or until it is told to stop. A bounded number: calls that come without end would
/// leave the user interface no moment of its own.
std::thread answering(const TC::HistoryQuoteCallback &callback, int count, const std::atomic<bool> &stop) {
    return std::thread([callback, count, &stop] {
        for (int answer = 0; answer < 200 && !stop; ++answer) {
            callback(0, 0, recordsOf(count), QString());
        }
    });
}

TEST(StatisticThread, AnswersComeWhileTheDialogTakesStretchesAndGoes) {
    fakehost::FakeHost host;
    host.mStocks.add("SH", "600000");
    for (int round = 0; round < 5; ++round) {
        TC::CRealtimeStatisticDialog dialog(nullptr, false);
        dialog.setStock(QStringLiteral("SH600000"), true);
        std::atomic<bool> stop{false};
        std::vector<std::thread> services;
        for (quint64 stretch = 1; stretch <= 4; ++stretch) {
            dialog.setRange(1710466200 + stretch * 60, 1710473400);
            services.push_back(
                answering(host.mFormulas.mQuoteRequests.back().onQuotes, static_cast<int>(stretch), stop));
            QCoreApplication::processEvents();
        }
        // Whatever earlier requests still answer, the newest one has the last word.
        const auto *plate = dialog.findChild<TC::CWatchPlateWidget *>();
        EXPECT_TRUE(QTest::qWaitFor([&] { return plate->rowCount() == 4; }, 10000));
        for (int turn = 0; turn < 20; ++turn) {
            QCoreApplication::processEvents();
            EXPECT_EQ(plate->rowCount(), 4);
        }
        stop = round % 2 == 0; // in every other round the dialog goes first
        if (stop) {
            for (std::thread &service : services) {
                service.join();
            }
            continue;
        }
        auto *gone = new TC::CRealtimeStatisticDialog(nullptr, false);
        gone->setStock(QStringLiteral("SH600000"), true);
        gone->setRange(1710466200, 1710473400);
        services.push_back(answering(host.mFormulas.mQuoteRequests.back().onQuotes, 1, stop));
        QCoreApplication::processEvents();
        delete gone;
        stop = true;
        for (std::thread &service : services) {
            service.join();
        }
    }
}

} // namespace
