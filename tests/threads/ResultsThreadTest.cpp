// A formula service with several threads of its own, against panes that paint, request and go meanwhile.

#include "tests/chartdata/ChartDataFixture.h"

#include <QCoreApplication>
#include <QImage>
#include <QPainter>

#include <atomic>
#include <memory>
#include <random>
#include <thread>

namespace tests {
namespace {

constexpr int kResultThreads = 3;
constexpr int kResultRounds = 120; ///< of the user-interface thread
constexpr int kDeliveries = 400; ///< of all threads, at least
constexpr int kResultPoints = 60; ///< minutes that the service knows
const QRect kRect(0, 0, 120, 80);

class ResultsThread : public ChartData {
protected:
    /// What a graph does about its data: joins ranges on 3151, repaints on 3029.
    struct Pane : public GZ::CEventDeliverer {
        Pane(ResultsThread &test, TC::EIndexDisplayType type, const QStringList &formulas)
            : mUi(boost::make_shared<TC::CRealtimeUiParam>(*test.mUi)),
              mData(boost::make_shared<TC::CRealtimeData>(mUi, type, this)) {
            for (const QString &formula : formulas) {
                mData->addFormula(formula);
            }
            mData->setTradeDate(kDay);
            mData->setChartRect(kRect);
            mData->setDrawEnabled(true);
            mData->request(corvane::ERunMode::Ordinary);
        }
        ~Pane() override { mData->unrequest(); }
        bool handleEvent(int event, int, int, QString, void *) override {
            ++mEvents;
            if (event == 3151) {
                mData->adoptMaxMin(mData->getMaxMinMap(), false);
            }
            return true;
        }
        void paint(QPainter &painter) {
            mData->takeDirtyRect();
            mData->paintTo(&painter, kRect);
            mData->valueAtIndex(3);
            mData->getResultText();
        }
        boost::shared_ptr<TC::CRealtimeUiParam> mUi; ///< a view model of its own: it has no lock
        boost::shared_ptr<TC::CRealtimeData> mData;
        int mEvents = 0;
    };

    std::unique_ptr<Pane> makePane(int kind) {
        if (kind % 3 == 2) {
            return std::make_unique<Pane>(*this, TC::EIndexDisplayType::Sub, QStringList{"MACD"});
        }
        return std::make_unique<Pane>(*this, TC::EIndexDisplayType::Main,
                                      QStringList{"REALTIME", "REALTIMEVOL"});
    }

    /// One thread of the service: answers whatever is requested, histories and points mixed, until told.
    void serve(unsigned seed) {
        std::mt19937 random(seed);
        while (!mStop) {
            const QList<fakehost::LiveRequest> live = mHost.mFormulas.mLive.all();
            if (live.isEmpty()) {
                std::this_thread::yield();
                continue;
            }
            const fakehost::LiveRequest &request = live[static_cast<int>(random() % unsigned(live.size()))];
            const int minute = 570 + static_cast<int>(random() % kResultPoints);
            const double price = 9.0 + double(random() % 200) / 100.0;
            if (random() % 8 == 0) {
                const std::size_t count = random() % kResultPoints + 1;
                request.onHistory(makeMeta(2),
                                  makeResult(minuteTimes(kDay, 570, int(count)),
                                             std::vector<double>(count, price),
                                             std::vector<double>(count, price)),
                                  request.id(), 1, QString(), random() % 2 == 0);
            } else {
                request.onRealtime(0, request.id(), makePoint(minuteTime(kDay, minute), {price, price}));
            }
            ++mDelivered;
        }
    }

    static void expectSound(const TC::CRealtimeData &data) {
        for (const auto &entry : data.getData()) {
            const std::vector<se::TimePosition> &times = entry.result.mTimes;
            EXPECT_LE(times.size(), std::size_t(kResultPoints));
            for (const auto &line : entry.result.mValues) {
                EXPECT_EQ(line.size(), times.size());
            }
        }
    }

    std::atomic<int> mDelivered{0};
    std::atomic<bool> mStop{false};
};

TEST_F(ResultsThread, ServiceThreadsDeliverWhilePanesPaintRequestAndGo) {
    mUi->addStock("SH600001", QString(), true);
    std::vector<std::unique_ptr<Pane>> panes;
    for (int i = 0; i < 4; ++i) {
        panes.push_back(makePane(i));
    }
    std::vector<std::thread> service;
    for (unsigned i = 0; i < kResultThreads; ++i) {
        service.emplace_back([this, i] { serve(i); });
    }
    QImage image(kRect.size(), QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    int handled = 0;
    int round = 0;
    while (round < kResultRounds || mDelivered < kDeliveries) {
        for (const auto &pane : panes) {
            pane->paint(painter);
        }
        const std::size_t at = static_cast<std::size_t>(round) % panes.size();
        switch (++round % 4) {
        case 0:
            handled += panes[at]->mEvents;
            panes[at].reset(); // its data may outlive it on a service thread
            panes[at] = makePane(round);
            break;
        case 1:
            panes[at]->mData->unrequest();
            panes[at]->mData->clearData();
            panes[at]->mData->request(corvane::ERunMode::Ordinary);
            break;
        case 2:
            panes[at]->mData->removeFormula("REALTIMEVOL", true);
            break;
        default:
            panes[at]->mData->removeOverlayData();
        }
        QCoreApplication::processEvents();
    }
    mStop = true;
    for (std::thread &thread : service) {
        thread.join();
    }
    QCoreApplication::processEvents();
    std::vector<boost::weak_ptr<TC::CRealtimeData>> watch;
    for (const auto &pane : panes) {
        handled += pane->mEvents;
        expectSound(*pane->mData);
        watch.push_back(pane->mData);
    }
    EXPECT_GT(handled, 0);
    panes.clear();
    mHost.mFormulas.mLive.clear();
    for (const auto &data : watch) {
        EXPECT_TRUE(data.expired());
    }
}

TEST_F(ResultsThread, PointsOfSeveralThreadsAllArrive) {
    Pane pane(*this, TC::EIndexDisplayType::Main, {"REALTIME", "REALTIMEVOL"});
    for (const auto &request : mHost.mFormulas.mLive.all()) {
        request.onHistory(makeMeta(2),
                          makeResult(minuteTimes(kDay, 570, kResultPoints),
                                     std::vector<double>(kResultPoints, 10.0),
                                     std::vector<double>(kResultPoints, 10.0)),
                          request.id(), 1, QString(), true);
    }
    // Each thread overwrites minutes of its own.
    std::vector<std::thread> service;
    for (int first = 0; first < kResultThreads; ++first) {
        service.emplace_back([this, first] {
            for (int minute = first; minute < kResultPoints; minute += kResultThreads) {
                for (const auto &request : mHost.mFormulas.mLive.all()) {
                    request.onRealtime(0, request.id(),
                                       makePoint(minuteTime(kDay, 570 + minute), {10.0 + minute, 10.0}));
                }
            }
        });
    }
    for (std::thread &thread : service) {
        thread.join();
    }
    QCoreApplication::processEvents();
    ASSERT_EQ(pane.mData->getData().size(), 2);
    for (const auto &entry : pane.mData->getData()) {
        for (int minute = 0; minute < kResultPoints; ++minute) {
            ASSERT_EQ(entry.result.mValues[0][std::size_t(minute)], 10.0 + minute);
        }
    }
    EXPECT_GT(pane.mEvents, 0);
    expectSound(*pane.mData);
}

TEST_F(ResultsThread, TradesMayChangeOnTheirThreadWhilePanesGo) {
    mHost.mLinkage.mEnabled = true;
    mUi->mLinkageFlags = 4;
    mUi->mLinkageShow[0] = true;
    mUi->mLinkageStocks = {"SH600000"};
    std::atomic<bool> stop{false};
    std::atomic<int> told{0};
    std::thread trades([&] {
        while (!stop) {
            mHost.mLinkage.sigLinkageChanged({"SH600000"});
            ++told;
        }
    });
    QImage image(kRect.size(), QImage::Format_RGB32);
    for (int i = 0; i < 60 || told < 20; ++i) {
        const auto pane = makePane(0);
        for (const std::string key : {"SH600000", "SZ000001"}) {
            pane->mUi->mLinkageStocks = {key}; // what the user chooses, while trades come
            QPainter painter(&image);
            pane->paint(painter);
        }
        QCoreApplication::processEvents();
    }
    stop = true;
    trades.join();
    EXPECT_EQ(mHost.mLinkage.sigLinkageChanged.num_slots(), 0u);
}

} // namespace
} // namespace tests
