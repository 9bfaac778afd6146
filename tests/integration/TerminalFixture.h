#pragma once

#include "chartdata/CRealtimeData.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "terminal/app/ChartView.h"
#include "terminal/app/TerminalServices.h"
#include "terminal/app/TerminalWindow.h"
#include "terminal/market/MarketDate.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace tests {

/// The terminal's real services over a store of their own, filled once for all tests, with the exchange at a standstill
/// at 10:30 of Friday, 2026-11-20.
class TerminalFixture : public ::testing::Test {
protected:
    static constexpr int kDayNumber = 20;
    const QDate mToday{2026, 11, kDayNumber};
    const qint64 mNow = terminal::timeOf(mToday, 630);

    static void SetUpTestSuite() {
        static QTemporaryDir folder;
        filledStore() = folder.path() + "/filled.db";
        if (QFile::exists(filledStore())) {
            return;
        }
        terminal::CMarketStore store;
        ASSERT_EQ(store.open(filledStore()), QString());
        ASSERT_EQ(terminal::fillStore(store, terminal::timeOf(QDate(2026, 11, kDayNumber), 630)), QString());
    }

    void SetUp() override {
        const QString store = mFolder.path() + "/market.db";
        ASSERT_TRUE(QFile::copy(filledStore(), store));
        terminal::TerminalSettings settings;
        settings.store = store;
        settings.config = mFolder.path() + "/config.json";
        settings.formulas = mFolder.path() + "/formulas";
        settings.scripts = mFolder.path() + "/scripts";
        settings.start = mNow;
        QString error;
        mServices = terminal::TerminalServices::open(settings, error);
        ASSERT_TRUE(mServices) << qPrintable(error);
        mServices->clock().pause();
        mWindow = std::make_unique<terminal::TerminalWindow>(*mServices);
        mWindow->resize(1200, 760);
        mWindow->show();
    }
    void TearDown() override {
        mWindow.reset();
        mServices.reset();
    }

    terminal::ChartView &view() { return *mWindow->view(); }
    bool waitUntilComplete() {
        return QTest::qWaitFor([&] { return view().isComplete(); }, 10000);
    }
    QImage graphImage() { return view().graph()->grab().toImage(); }

    QTemporaryDir mFolder;
    std::unique_ptr<terminal::TerminalServices> mServices;
    std::unique_ptr<terminal::TerminalWindow> mWindow;

private:
    static QString &filledStore() {
        static QString path;
        return path;
    }
};

} // namespace tests
