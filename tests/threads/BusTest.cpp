#include "host/toolkit/CBaseWidget.h"
#include "host/toolkit/CEventDeliverer.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace {

using GZ::CEventDeliverer;

/// Keeps the numbers that it hears; user-interface thread.
class Receiver : public GZ::CBaseWidget {
public:
    using GZ::CBaseWidget::CBaseWidget;
    bool handleEvent(int event, int first, int second, QString text, void *data) override {
        EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
        mEvents.push_back(event);
        mFirsts.push_back(first);
        mSecond = second;
        mText = text;
        mData = data;
        if (mThen) {
            mThen();
        }
        return true;
    }
    std::vector<int> mEvents;
    std::vector<int> mFirsts;
    int mSecond = 0;
    QString mText;
    void *mData = nullptr;
    std::function<void()> mThen;
};

/// A participant that is destroyed on any thread.
class Sender : public CEventDeliverer {
public:
    using CEventDeliverer::CEventDeliverer;
    ~Sender() override { retire(); }
};

void onAnotherThread(const std::function<void()> &work) {
    std::thread(work).join();
}

/// Runs the event loop until a condition holds; fails when it does not in time.
void runUntil(const std::function<bool()> &done) {
    QTimer wakeUp;
    wakeUp.start(1);
    QTimer tooLate;
    tooLate.setSingleShot(true);
    tooLate.start(30000);
    while (!done() && tooLate.isActive()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    ASSERT_TRUE(done());
}

/// Handles what is queued by now.
void runQueued() {
    bool last = false;
    QTimer::singleShot(0, [&] { last = true; });
    runUntil([&] { return last; });
}

TEST(Bus, AnEventOfAnotherThreadIsQueuedWithAllArguments) {
    Receiver receiver;
    Sender sender(&receiver);
    int payload = 0;
    bool consumed = true;
    onAnotherThread([&] { consumed = sender.deliverEvent(3151, 4, 5, QStringLiteral("文"), &payload); });
    EXPECT_FALSE(consumed);
    EXPECT_TRUE(receiver.mEvents.empty());
    runQueued();
    EXPECT_EQ(receiver.mEvents, std::vector<int>{3151});
    EXPECT_EQ(receiver.mFirsts, std::vector<int>{4});
    EXPECT_EQ(receiver.mSecond, 5);
    EXPECT_EQ(receiver.mText, QStringLiteral("文"));
    EXPECT_EQ(receiver.mData, &payload);
}

TEST(Bus, OnTheUserInterfaceThreadItIsSynchronous) {
    Receiver receiver;
    Sender sender(&receiver);
    EXPECT_TRUE(sender.deliverEvent(1, 0, 0, QString(), nullptr));
    EXPECT_EQ(receiver.mEvents.size(), 1u);
}

TEST(Bus, AQueuedEventWhoseSenderHasGoneIsDropped) {
    Receiver receiver;
    auto sender = std::make_unique<Sender>(&receiver);
    onAnotherThread([&] {
        sender->deliverEvent(1, 0, 0, QString(), sender.get());
        sender.reset();
    });
    runQueued();
    EXPECT_TRUE(receiver.mEvents.empty());
}

TEST(Bus, AQueuedEventWhoseReceiverHasGoneIsDropped) {
    auto receiver = std::make_unique<Receiver>();
    Sender sender(receiver.get());
    onAnotherThread([&] { sender.deliverEvent(1, 0, 0, QString(), nullptr); });
    receiver.reset();
    runQueued(); // a call of the receiver would be reported by the sanitizers
    Receiver other;
    Sender living(&other);
    onAnotherThread([&] { living.deliverEvent(2, 0, 0, QString(), nullptr); });
    runQueued();
    EXPECT_EQ(other.mEvents, std::vector<int>{2});
}

TEST(Bus, TheReceiverOfAWidgetIsItsAncestorWhenTheEventIsDue) {
    Receiver first;
    Receiver second;
    GZ::CBaseWidget sender(&first);
    onAnotherThread([&] { sender.deliverEvent(1, 0, 0, QString(), nullptr); });
    sender.setParent(&second);
    runQueued();
    EXPECT_TRUE(first.mEvents.empty());
    EXPECT_EQ(second.mEvents.size(), 1u);
    sender.setParent(nullptr);
}

TEST(Bus, EventsOfAThreadKeepTheirOrder) {
    Receiver receiver;
    Sender sender(&receiver);
    onAnotherThread([&] {
        for (int i = 0; i < 1000; ++i) {
            sender.deliverEvent(1, i, 0, QString(), nullptr);
        }
    });
    runUntil([&] { return receiver.mFirsts.size() == 1000; });
    for (int i = 0; i < 1000; ++i) {
        EXPECT_EQ(receiver.mFirsts[i], i);
    }
}

TEST(Bus, OneChainOfManyThreadsLosesNothingAndKeepsEachOrder) {
    constexpr int kThreads = 4;
    constexpr int kEvents = 500;
    Receiver receiver;
    std::vector<std::unique_ptr<Sender>> senders;
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        senders.push_back(std::make_unique<Sender>(&receiver));
        threads.emplace_back([t, sender = senders.back().get()] {
            for (int i = 0; i < kEvents; ++i) {
                sender->deliverEvent(t, i, 0, QString::number(i), nullptr);
            }
        });
    }
    runUntil([&] { return receiver.mEvents.size() == kThreads * kEvents; });
    for (std::thread &thread : threads) {
        thread.join();
    }
    std::vector<int> next(kThreads, 0);
    for (std::size_t i = 0; i < receiver.mEvents.size(); ++i) {
        EXPECT_EQ(receiver.mFirsts[i], next[receiver.mEvents[i]]++);
    }
}

TEST(Bus, SendersThatGoAtAnyMomentOnTheirThreadsAreSafe) {
    Receiver receiver;
    std::atomic<bool> wrong{false};
    std::atomic<int> running{3};
    receiver.mThen = [&] {
        // The sender is named by the payload and lives while its event is handled.
        if (*static_cast<std::atomic<int> *>(receiver.mData) != 42) {
            wrong = true;
        }
    };
    /// Clears its mark when it goes.
    class Marked : public CEventDeliverer {
    public:
        using CEventDeliverer::CEventDeliverer;
        ~Marked() override {
            retire();
            mMark = 0;
        }
        std::atomic<int> mMark{42};
    };
    std::vector<std::thread> threads;
    for (int t = 0; t < 3; ++t) {
        threads.emplace_back([&] {
            for (int i = 0; i < 300; ++i) {
                Marked sender(&receiver);
                sender.deliverEvent(1, 0, 0, QString(), &sender.mMark);
                if (i % 3 == 0) {
                    std::this_thread::yield();
                }
            }
            --running;
        });
    }
    runUntil([&] { return running == 0; });
    for (std::thread &thread : threads) {
        thread.join();
    }
    runQueued();
    EXPECT_FALSE(wrong);
}

TEST(Bus, RetiringWaitsForTheEventThatIsBeingHandled) {
    Receiver receiver;
    auto sender = std::make_unique<Sender>(&receiver);
    onAnotherThread([&] { sender->deliverEvent(1, 0, 0, QString(), nullptr); });
    std::atomic<bool> gone{false};
    bool goneWhileHandled = true;
    std::thread destroyer;
    receiver.mThen = [&] {
        std::promise<void> begins;
        destroyer = std::thread([&] {
            begins.set_value();
            sender.reset();
            gone = true;
        });
        begins.get_future().wait();
        for (int i = 0; i < 1000 && !gone; ++i) {
            std::this_thread::yield();
        }
        goneWhileHandled = gone;
    };
    runUntil([&] { return destroyer.joinable(); });
    destroyer.join();
    EXPECT_FALSE(goneWhileHandled);
    EXPECT_TRUE(gone);
}

TEST(Bus, AHandlerMayDestroyTheSenderOfAQueuedEvent) {
    Receiver receiver;
    auto sender = std::make_unique<Sender>(&receiver);
    receiver.mThen = [&] { sender.reset(); };
    onAnotherThread([&] {
        sender->deliverEvent(1, 0, 0, QString(), nullptr);
        sender->deliverEvent(2, 0, 0, QString(), nullptr);
    });
    runQueued();
    EXPECT_EQ(receiver.mEvents, std::vector<int>{1});
}

TEST(Bus, AHandlerMayDestroyTheReceiverOfAQueuedEvent) {
    auto receiver = std::make_unique<Receiver>();
    Sender sender(receiver.get());
    int handled = 0;
    receiver->mThen = [&] {
        ++handled;
        receiver.reset();
    };
    onAnotherThread([&] {
        sender.deliverEvent(1, 0, 0, QString(), nullptr);
        sender.deliverEvent(2, 0, 0, QString(), nullptr);
    });
    runQueued();
    EXPECT_EQ(handled, 1);
}

TEST(Bus, ALockThatTheSenderHoldsDoesNotStopIt) {
    Receiver receiver;
    Sender sender(&receiver);
    std::mutex lock;
    receiver.mThen = [&] { std::lock_guard<std::mutex> hold(lock); };
    std::thread service([&] {
        for (int i = 0; i < 300; ++i) {
            std::lock_guard<std::mutex> hold(lock);
            sender.deliverEvent(1, i, 0, QString(), nullptr);
        }
    });
    runUntil([&] { return receiver.mEvents.size() == 300; });
    service.join();
}

TEST(Bus, AnEventLoopInsideAHandlerGoesOnWithTheNextEvents) {
    Receiver receiver;
    Sender sender(&receiver);
    std::vector<int> ended;
    receiver.mThen = [&] {
        const int event = receiver.mEvents.back();
        if (event == 1) {
            runUntil([&] { return receiver.mEvents.size() == 3; });
        }
        ended.push_back(event);
    };
    onAnotherThread([&] {
        for (int event = 1; event <= 3; ++event) {
            sender.deliverEvent(event, 0, 0, QString(), nullptr);
        }
    });
    runUntil([&] { return ended.size() == 3; });
    EXPECT_EQ(receiver.mEvents, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(ended, (std::vector<int>{2, 3, 1}));
}

/// Hears of an event that has the priority of a repaint.
class Repaint : public QObject {
public:
    explicit Repaint(std::function<void()> then) : mThen(std::move(then)) {}
    bool event(QEvent *) override {
        mThen();
        return true;
    }

private:
    std::function<void()> mThen;
};

TEST(Bus, WhatComesWhileEventsAreHandledWaitsBehindTheRepaints) {
    Receiver receiver;
    Sender sender(&receiver);
    std::vector<int> order;
    Repaint repaint([&] { order.push_back(0); });
    const auto deliver = [&](int event) {
        onAnotherThread([&] { sender.deliverEvent(event, 0, 0, QString(), nullptr); });
    };
    receiver.mThen = [&] {
        order.push_back(receiver.mEvents.back());
        if (receiver.mEvents.back() == 1) {
            QCoreApplication::postEvent(&repaint, new QEvent(QEvent::User), Qt::LowEventPriority);
            deliver(3);
        }
    };
    deliver(1);
    deliver(2);
    runUntil([&] { return order.size() == 4; });
    EXPECT_EQ(order, (std::vector<int>{1, 2, 0, 3}));
}

} // namespace
