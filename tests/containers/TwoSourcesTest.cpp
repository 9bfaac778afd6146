// Two views of one instrument, each of a source of its own. The program itself has no services: whatever a view would ask
// past its context ends the test.

#include "tests/containers/TwoSources.h"

#include "chartview/CCrossLineWidget.h"
#include "host/drawing/CIndexTitleWidget.h"
#include "host/services/DefaultServices.h"
#include "host/toolkit/CStandardTable.h"
#include "host/toolkit/CUiResource.h"
#include "linkage/CRealtimeLinkageSettingDialog.h"
#include "statistics/CRealtimeStatisticDialog.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTest>

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

using namespace TC;

namespace tests {
namespace {

class TwoSources : public testing::Test {
protected:
    TwoSources() {
        GZ::CUiResource::instance().setTheme(QStringLiteral("dark"));
        for (Source *source : {&mEast, &mWest}) {
            source->makeView(&mWindow);
            source->mView->resize(900, 500);
        }
        mWest.mView->move(900, 0);
        mWindow.resize(1800, 500);
        mWindow.show();
    }
    ~TwoSources() override {
        mEast.mView.reset();
        mWest.mView.reset();
    }
    static QString title(const Source &of) {
        return of.mView->getRealTimeWidget()->findChild<CIndexTitleWidget *>()->text();
    }
    static double close(const Source &of) { return of.mView->getUiParam()->getLastClose(); }

    QWidget mWindow;
    Source mEast{"east", 10.0};
    Source mWest{"west", 20.0};
};

TEST_F(TwoSources, TheProgramItselfHasNone) {
    EXPECT_EQ(missingServices().size(), 20u);
    EXPECT_TRUE(missingServices(mEast.mContext).empty());
}

TEST_F(TwoSources, EachViewKnowsTheInstrumentAsItsSourceDoes) {
    EXPECT_DOUBLE_EQ(close(mEast), 10.0);
    EXPECT_DOUBLE_EQ(close(mWest), 20.0);
    EXPECT_TRUE(title(mEast).contains("east")) << title(mEast).toStdString();
    EXPECT_TRUE(title(mWest).contains("west")) << title(mWest).toStdString();
    mWest.mHost.mStocks.mDetails.clear();
    EXPECT_FALSE(mWest.mView->trySetStock("SH600000"));
    EXPECT_TRUE(mEast.mView->trySetStock("SH600000"));
}

TEST_F(TwoSources, EachViewIsAnsweredByItsOwnSource) {
    mEast.answer("REALTIME", 3, 11.0);
    mWest.answer("REALTIME", 4, 21.0);
    EXPECT_EQ(mEast.prices(), std::vector<double>(3, 11.0));
    EXPECT_EQ(mWest.prices(), std::vector<double>(4, 21.0));
    mEast.stream("REALTIME", 573, 12.0);
    EXPECT_EQ(mEast.prices(), (std::vector<double>{11.0, 11.0, 11.0, 12.0}));
    EXPECT_EQ(mWest.prices(), std::vector<double>(4, 21.0));
    EXPECT_EQ(mEast.mView->getUiParam()->dataCount(), 4);
    EXPECT_EQ(mWest.mView->getUiParam()->dataCount(), 4);
    const auto range = [](const Source &of) {
        const auto graph = of.mView->getRealTimeWidget()->getGraphWidgets().first();
        const auto ranges = graph->getData()->getMaxMinMap();
        return ranges.value({QStringLiteral("SH600000"), QStringLiteral("REALTIME")});
    };
    EXPECT_NEAR(range(mEast).first + range(mEast).second, 20.0, 1e-9) << "around its own close";
    EXPECT_NEAR(range(mWest).first + range(mWest).second, 40.0, 1e-9);
}

TEST_F(TwoSources, WhatAViewWithdrawsIsWithdrawnAtItsOwnSource) {
    const int asked = mWest.mHost.mFormulas.mLive.all().size();
    EXPECT_GT(asked, 0);
    mEast.mView->unrequest();
    EXPECT_TRUE(mEast.mHost.mFormulas.mLive.all().isEmpty());
    mEast.mView.reset();
    EXPECT_EQ(mWest.mHost.mFormulas.mLive.all().size(), asked);
}

TEST_F(TwoSources, EachViewHasTheMinuteOfItsOwnClock) {
    mEast.mHost.mClock.mNow = QDateTime(QDate(2024, 3, 15), QTime(10, 0));
    mWest.mHost.mClock.mNow = QDateTime(QDate(2024, 6, 3), QTime(14, 0));
    EXPECT_EQ(mEast.mView->getUiParam()->getDateTimeByIndex(0).date(), QDate(2024, 3, 15));
    EXPECT_EQ(mWest.mView->getUiParam()->getDateTimeByIndex(0).date(), QDate(2024, 6, 3));
}

TEST_F(TwoSources, ChangedTradesAreHeardOfTheirOwnSource) {
    for (Source *source : {&mEast, &mWest}) {
        source->mHost.mLinkage.mEnabled = true;
        source->answer("REALTIME", 3, close(*source));
        source->mHost.mLog.clear();
    }
    EXPECT_FALSE(mEast.mHost.mLinkage.sigLinkageChanged.empty());
    EXPECT_FALSE(mWest.mHost.mLinkage.sigLinkageChanged.empty());
    mEast.mView.reset();
    EXPECT_TRUE(mEast.mHost.mLinkage.sigLinkageChanged.empty());
    EXPECT_FALSE(mWest.mHost.mLinkage.sigLinkageChanged.empty());
}

TEST_F(TwoSources, DialogsAskTheSourceOfTheirView) {
    auto account = boost::make_shared<kvservice::CAccountInfo>();
    account->mAccountId = "w1";
    mWest.mHost.mLinkage.mAccounts = {account};
    const auto accounts = [](const Source &of) {
        of.mView->showLinkageSetting();
        auto *dialog = of.mView->findChild<CRealtimeLinkageSettingDialog *>();
        dialog->slotTimeout();
        for (const GZ::CStandardTable *table : dialog->findChildren<GZ::CStandardTable *>()) {
            if (table->getID() == 0) {
                return table->rowCount();
            }
        }
        return -1;
    };
    EXPECT_EQ(accounts(mEast), 0);
    EXPECT_EQ(accounts(mWest), 1);
}

TEST_F(TwoSources, AWidgetHandsItsContextOnToViewsMadeBelowIt) {
    QWidget west;
    mWest.mContext.giveTo(&west);
    QWidget page(&west);
    CRealtimeMainWidget view(&page, EIndexViewType::Ordinary);
    EXPECT_EQ(&view.getUiParam()->services(), &mWest.mContext);
    view.setStock("SH600000", false);
    EXPECT_DOUBLE_EQ(view.getUiParam()->getLastClose(), 20.0);
}

TEST_F(TwoSources, AViewThatMovesToAnotherWindowKeepsItsContext) {
    QWidget west;
    mWest.mContext.giveTo(&west);
    mEast.mView->setParent(&west);
    mEast.mView->setStock("SH600000", false);
    mEast.mView->request(false);
    EXPECT_DOUBLE_EQ(close(mEast), 10.0);
    EXPECT_FALSE(mEast.mHost.mFormulas.mLive.all().isEmpty());
    mEast.mView.reset();
}

/// Everything that a user does with a view, with no services but those of the context.
TEST_F(TwoSources, NothingIsAskedOfTheProgram) {
    CRealtimeMainWidget &view = *mEast.mView;
    mEast.mHost.mLinkage.mEnabled = true;
    mEast.mHost.mStocks.add("SZ", "000001");
    mEast.answer("REALTIME", 60, 10.1);
    mEast.answer("REALTIMEVOL", 60, 500.0);
    mEast.answer("MACD", 60, 0.5);
    takeTurns();
    view.scaleView(false);
    view.addSuperposedStock(mEast.mHost.mStocks.getInstrumentDetail("SZ000001"));
    view.request(false);
    takeTurns();
    view.showCrossline(true);
    view.moveCursor(true);
    takeTurns();
    view.handleDoubleClickedFormula("MA");
    view.handleDoubleClickedFormula("KDJ");
    view.handleApplyFormula("MACD", EFormulaLanguage::Native, corvane::ERunMode::Ordinary);
    view.statisticSelectRegion(5, QStringLiteral("20,%1,%2").arg(kDay + 575 * 60).arg(kDay + 590 * 60));
    EXPECT_NE(view.findChild<CRealtimeStatisticDialog *>(), nullptr);
    view.showLinkageSetting();
    view.showLinkageDataFromKey();
    view.viewVariable();
    view.themeChanged();
    const QString saved = view.param();
    view.setParam(saved);
    view.setGetTradeDateFunc([] { return kDay; });
    view.setStock("SH600000", true);
    view.request(false);
    view.beReplay(true);
    view.downloadData();
    takeTurns();
    view.delAllAddStock();
    view.clear(true);
    takeTurns();
    EXPECT_EQ(missingServices().size(), 20u);
    EXPECT_FALSE(saved.isEmpty());
}

} // namespace
} // namespace tests
