// Trade services that tell changes of tasks on threads of their own, against task dialogs that fill, scroll, close and
// go meanwhile.

#include "host/toolkit/COddEvenRowTable.h"
#include "linkage/CRealtimeTaskTableDialog.h"
#include "tests/chartdata/ChartDataFixture.h"
#include "tests/linkage/TradeRecords.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <atomic>
#include <limits>
#include <memory>
#include <thread>

namespace tests {
namespace {

constexpr int kTellingThreads = 3;
constexpr int kDialogRounds = 40; ///< dialogs that come and go
constexpr int kChanges = 300; ///< told by all threads, at least
constexpr int kFills = 60; ///< each call fills the table
constexpr int kEndless = std::numeric_limits<int>::max();
constexpr qint64 kPatience = 60000; ///< milliseconds

class TaskDialogThread : public ChartData {
protected:
    TaskDialogThread() {
        mUi->mLinkageFlags = 4;
        mUi->mLinkageAccounts = {"A"};
        for (int id = 1; id <= 5; ++id) {
            mHost.mLinkage.mTasks["SH600000"]["A"][std::to_string(id)] = makeTask(id);
        }
        mHost.mLog.setRecording(false);
    }
    ~TaskDialogThread() override { stop(); }

    /// `tell` on several threads, at most that often on each, until stop().
    template <class Tell> void start(Tell tell, int times) {
        for (int i = 0; i < kTellingThreads; ++i) {
            mThreads.emplace_back([this, tell, times] {
                for (int n = 0; n < times && !mStop; ++n) {
                    tell();
                    ++mTold;
                }
            });
        }
    }
    void stop() {
        mStop = true;
        for (std::thread &thread : mThreads) {
            thread.join();
        }
        mThreads.clear();
    }
    std::unique_ptr<TC::CRealtimeTaskTableDialog> openDialog() {
        auto dialog = std::make_unique<TC::CRealtimeTaskTableDialog>();
        dialog->setUiParam(mUi);
        dialog->show();
        return dialog;
    }
    static int rowsOf(const TC::CRealtimeTaskTableDialog &dialog) {
        return dialog.findChild<GZ::COddEvenRowTable *>()->rowCount();
    }

    std::atomic<bool> mStop{false};
    std::atomic<int> mTold{0};
    std::vector<std::thread> mThreads;
};

TEST_F(TaskDialogThread, DialogsComeAndGoWhileTasksChange) {
    start([this] { mHost.mLinkage.sigTaskChanged({"SH600000", "SZ000001"}); }, kEndless);
    int filled = 0;
    QElapsedTimer waited;
    waited.start();
    for (int round = 0;
         (round < kDialogRounds || mTold < kChanges || filled == 0) && waited.elapsed() < kPatience; ++round) {
        const auto dialog = openDialog();
        for (int turn = 0; turn < round % 4; ++turn) { // some go before they hear of anything
            QCoreApplication::processEvents();
        }
        filled += rowsOf(*dialog) == 5;
        if (round % 3 == 0) { // the view parameters are this thread's
            mUi->setStock(round % 2 ? QStringLiteral("SH600000") : QStringLiteral("SH600001"), false);
            mUi->mLinkageAccounts.insert("B" + std::to_string(round));
        }
        if (round % 4 == 0) {
            dialog->hide();
            QCoreApplication::processEvents();
        }
        if (round % 5 == 0) {
            dialog->setUiParam(nullptr);
        }
    }
    stop();
    EXPECT_GE(mTold, kChanges);
    EXPECT_GT(filled, 0);
    EXPECT_EQ(mHost.mLinkage.sigTaskChanged.num_slots(), 0u);
}

TEST_F(TaskDialogThread, HandlerRunsOnSeveralThreadsWhileTheDialogShowsAndHides) {
    const auto dialog = openDialog();
    start([&dialog] { dialog->onUpdateTask({"SH600000"}); }, kFills / kTellingThreads);
    QElapsedTimer waited;
    waited.start();
    for (int round = 0; (round < kDialogRounds || mTold < kFills) && waited.elapsed() < kPatience; ++round) {
        dialog->setVisible(round % 2 == 0);
        dialog->setUiParam(round % 8 == 7 ? nullptr : mUi);
        QCoreApplication::processEvents();
    }
    stop();
    dialog->setUiParam(mUi);
    dialog->show();
    dialog->onUpdateTask({"SH600000"});
    EXPECT_EQ(rowsOf(*dialog), 5);
    EXPECT_EQ(mTold, kFills);
}

} // namespace
} // namespace tests
