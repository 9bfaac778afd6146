#include "terminal/threads/DeliveryQueue.h"

#include <QCoreApplication>
#include <QTest>
#include <QThread>

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <vector>

using terminal::DeliveryQueue;

namespace {

/// Keeps the thread busy for some milliseconds.
void work(int milliseconds) {
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < milliseconds) {
    }
}

} // namespace

TEST(DeliveryQueue, RunsTasksInTheOrderOfPostingOnTheUserInterfaceThread) {
    DeliveryQueue queue;
    std::vector<int> order;
    std::thread([&] {
        for (int i = 0; i < 100; ++i) {
            queue.post([&order, i] {
                EXPECT_EQ(QThread::currentThread(), qApp->thread());
                order.push_back(i);
            });
        }
    }).join();
    EXPECT_TRUE(order.empty());
    ASSERT_TRUE(QTest::qWaitFor([&] { return order.size() == 100; }, 5000));
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(order[static_cast<size_t>(i)], i);
    }
}

TEST(DeliveryQueue, InputComesBetweenTheSlicesOfAFlood) {
    DeliveryQueue queue(2);
    int done = 0;
    int doneAtInput = -1;
    for (int i = 0; i < 50; ++i) {
        queue.post([&done] {
            work(2);
            ++done;
        });
    }
    QTimer input;
    input.setInterval(0);
    QObject::connect(&input, &QTimer::timeout, [&] {
        if (doneAtInput < 0) {
            doneAtInput = done;
        }
    });
    input.start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return done == 50; }, 10000));
    EXPECT_GE(doneAtInput, 0);
    EXPECT_LE(doneAtInput, 3) << "one slice of 2 ms, or two, before the event loop turned";
}

TEST(DeliveryQueue, ATaskMayPostAndQueueItselfAgain) {
    DeliveryQueue queue;
    int runs = 0;
    std::function<void()> again = [&] {
        if (++runs < 10) {
            queue.post(again);
        }
    };
    queue.post(again);
    ASSERT_TRUE(QTest::qWaitFor([&] { return runs == 10; }, 5000));
    EXPECT_EQ(queue.pending(), 0);
}

TEST(DeliveryQueue, WhatWaitsGoesUncalledWithTheQueue) {
    bool called = false;
    auto held = std::make_shared<int>(1);
    {
        DeliveryQueue queue;
        queue.post([&called, held] { called = true; });
        EXPECT_EQ(held.use_count(), 2);
    }
    QCoreApplication::processEvents();
    EXPECT_FALSE(called);
    EXPECT_EQ(held.use_count(), 1);
}
