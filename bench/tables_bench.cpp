// What the tables of the user's trades cost while a hand waits: dialogs that are open, by the number of rows. Offscreen.
#include "host/records/CTaskDetail.h"
#include "linkage/CRealtimeLinkageSettingDialog.h"
#include "linkage/CRealtimeOrderDialog.h"
#include "linkage/CRealtimeTaskTableDialog.h"
#include "tests/fakehost/FakeHost.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QCoreApplication>
#include <QScrollBar>
#include <QTableWidget>

#include <boost/make_shared.hpp>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace {

using Tasks = QList<boost::shared_ptr<kvservice::CTaskDetail>>;

void settle() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

/// Running tasks of SH600000, numbered from `first` on.
Tasks makeTasks(int first, int count) {
    Tasks tasks;
    for (int id = first; id < first + count; ++id) {
        auto item = boost::make_shared<kvservice::CTaskItem>();
        item->mAccount = boost::make_shared<kvservice::CAccountInfo>();
        item->mAccount->mAccountId = "80010001";
        item->mMarket = "SH";
        item->mCode = "600000";
        item->mQuantity = 1000 + id;
        auto task = boost::make_shared<kvservice::CTaskDetail>();
        task->mTaskId = id;
        task->mStatus = kvservice::eTaskRunning;
        task->mStartTime = 1710469800;
        task->mEndTime = 1710473400;
        task->mCommand = boost::make_shared<kvservice::CCommandDetail>();
        task->mItems = {item};
        tasks.append(task);
    }
    return tasks;
}

/// An open dialog of tasks.
struct TaskWindow {
    TaskWindow() {
        detail = host.mStocks.add("SH", "600000");
        dialog.show();
        settle();
    }
    void fill(const Tasks &tasks) {
        dialog.setTaskData(tasks, detail);
        settle();
    }
    bool shows(int rows) const { return dialog.findChild<QTableWidget *>()->rowCount() == rows; }

    fakehost::FakeHost host;
    TC::CInstrumentDetailPtr detail;
    TC::CRealtimeTaskTableDialog dialog;
};

/// Tasks that are there already, told anew.
void refillTasks(benchmark::State &state) {
    const int rows = static_cast<int>(state.range(0));
    TaskWindow window;
    const Tasks tasks = makeTasks(0, rows);
    window.fill(tasks);
    for (auto _ : state) {
        window.fill(tasks);
    }
    if (!window.shows(rows)) {
        state.SkipWithError("not every task has a row");
    }
}
BENCHMARK(refillTasks)->Arg(200)->Arg(1000)->Arg(2000)->ArgName("rows")->Unit(benchmark::kMillisecond);

/// The progress of every one of them has changed.
void refillChangedTasks(benchmark::State &state) {
    const int rows = static_cast<int>(state.range(0));
    TaskWindow window;
    const Tasks tasks = makeTasks(0, rows);
    int finished = 0;
    for (auto _ : state) {
        ++finished;
        for (const auto &task : tasks) {
            window.host.mLinkage.mFinished[task->mTaskId] = finished;
        }
        window.fill(tasks);
    }
}
BENCHMARK(refillChangedTasks)->Arg(200)->Arg(1000)->Arg(2000)->ArgName("rows")->Unit(benchmark::kMillisecond);

/// Tasks that were not there, and one that comes to as many.
void newTasks(benchmark::State &state) {
    const int rows = static_cast<int>(state.range(0));
    const Tasks tasks = makeTasks(0, rows);
    for (auto _ : state) {
        state.PauseTiming();
        auto window = std::make_unique<TaskWindow>();
        state.ResumeTiming();
        window->fill(tasks);
        state.PauseTiming();
        window.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(newTasks)->Arg(200)->Arg(1000)->Arg(2000)->ArgName("rows")->Unit(benchmark::kMillisecond);

/// A step of the scroll bar in a full table.
void scrollTasks(benchmark::State &state) {
    const int rows = static_cast<int>(state.range(0));
    TaskWindow window;
    window.fill(makeTasks(0, rows));
    auto *bar = window.dialog.findChild<QTableWidget *>()->verticalScrollBar();
    int at = 0;
    for (auto _ : state) {
        bar->setValue(++at % (rows / 2));
        settle();
    }
}
BENCHMARK(scrollTasks)->Arg(200)->Arg(1000)->Arg(2000)->ArgName("rows")->Unit(benchmark::kMillisecond);

/// An open dialog of settings over a service of many instruments.
struct SettingsWindow {
    explicit SettingsWindow(int count) : stocks(count) {
        for (int i = 0; i < count; ++i) {
            host.mStocks.add("SH", std::to_string(600000 + i));
        }
        dialog.show();
        dialog.slotTimeout();
        settle();
    }
    void comeAll() {
        for (int i = 0; i < stocks; ++i) {
            host.mLinkage.mStocks.insert("SH" + std::to_string(600000 + i));
        }
    }
    void poll() {
        host.mLinkage.sigStocksChanged();
        dialog.slotTimeout();
        settle();
    }

    int stocks;
    fakehost::FakeHost host;
    TC::CRealtimeLinkageSettingDialog dialog{nullptr};
};

/// A poll that finds instruments that were not there.
void newInstruments(benchmark::State &state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto window = std::make_unique<SettingsWindow>(static_cast<int>(state.range(0)));
        window->comeAll();
        state.ResumeTiming();
        window->poll();
        state.PauseTiming();
        window.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(newInstruments)->Arg(500)->Arg(1000)->Arg(2000)->ArgName("rows")->Unit(benchmark::kMillisecond);

/// A poll that finds those that are there.
void knownInstruments(benchmark::State &state) {
    SettingsWindow window(static_cast<int>(state.range(0)));
    window.comeAll();
    window.poll();
    for (auto _ : state) {
        window.poll();
    }
}
BENCHMARK(knownInstruments)->Arg(500)->Arg(1000)->Arg(2000)->ArgName("rows")->Unit(benchmark::kMillisecond);

/// A dialog of orders opened for a mark of many.
void fillOrders(benchmark::State &state) {
    fakehost::FakeHost host;
    host.mStocks.add("SH", "600000");
    TC::CRealtimeOrderDialog dialog;
    QList<boost::shared_ptr<kvservice::COrderDetail>> orders;
    for (int i = 0; i < state.range(0); ++i) {
        auto order = boost::make_shared<kvservice::COrderDetail>();
        order->mOrderKey = std::to_string(i);
        order->mStockKey = "SH600000";
        order->mPrice = 10.0 + i % 100 / 100.0;
        order->mVolume = 100;
        order->mTime = "093105";
        orders.append(order);
    }
    dialog.show();
    settle();
    for (auto _ : state) {
        dialog.setData(orders);
        settle();
    }
}
BENCHMARK(fillOrders)->Arg(500)->Arg(1000)->Arg(2000)->ArgName("rows")->Unit(benchmark::kMillisecond);

} // namespace
