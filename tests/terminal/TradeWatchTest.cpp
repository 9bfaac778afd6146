#include "terminal/app/TradeWatch.h"

#include "tests/fakehost/FakeLinkageManager.h"

#include <QCoreApplication>
#include <QThread>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <thread>

using terminal::TradeWatch;

namespace {

class TradeWatchTest : public ::testing::Test {
protected:
    TradeWatchTest() : mBefore(TC::CSingletonT<TC::CLinkageManager>::install(&mTrade)) {
        mWatch = std::make_unique<TradeWatch>();
        QObject::connect(mWatch.get(), &TradeWatch::changed, [this](const QSet<QString> &instruments) {
            mTold.append(instruments);
            mThread = QThread::currentThread();
        });
    }
    ~TradeWatchTest() override { TC::CSingletonT<TC::CLinkageManager>::install(mBefore); }

    void onAnotherThread(const std::function<void()> &call) { std::thread(call).join(); }

    fakehost::CallLog mLog;
    fakehost::FakeLinkageManager mTrade{mLog};
    TC::CLinkageManager *mBefore;
    std::unique_ptr<TradeWatch> mWatch;
    QList<QSet<QString>> mTold;
    QThread *mThread = nullptr;
};

} // namespace

TEST_F(TradeWatchTest, WhatComesTogetherIsToldOnceOnTheWatchsThread) {
    onAnotherThread([this] {
        mTrade.sigLinkageChanged({"SH600000", "SZ000001"});
        mTrade.sigTaskChanged({"SH600000"});
        mTrade.sigLinkageChanged({"SH600519"});
    });
    EXPECT_TRUE(mTold.isEmpty());
    QCoreApplication::processEvents();
    EXPECT_EQ(mTold, (QList<QSet<QString>>{{"SH600000", "SZ000001", "SH600519"}}));
    EXPECT_EQ(mThread, QThread::currentThread());
}

TEST_F(TradeWatchTest, WhatComesLaterIsToldByItself) {
    for (const char *instrument : {"SH600000", "SZ000001"}) {
        onAnotherThread([&] { mTrade.sigTaskChanged({instrument}); });
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(mTold, (QList<QSet<QString>>{{"SH600000"}, {"SZ000001"}}));
}

TEST_F(TradeWatchTest, AChangeOfNothingIsNotTold) {
    mTrade.sigLinkageChanged({});
    QCoreApplication::processEvents();
    EXPECT_TRUE(mTold.isEmpty());
}

TEST_F(TradeWatchTest, AWatchThatHasGoneHearsNothing) {
    mTrade.sigLinkageChanged({"SH600000"});
    mWatch.reset();
    EXPECT_EQ(mTrade.sigLinkageChanged.num_slots(), 0U);
    EXPECT_EQ(mTrade.sigTaskChanged.num_slots(), 0U);
    QCoreApplication::processEvents();
    EXPECT_TRUE(mTold.isEmpty());
}
