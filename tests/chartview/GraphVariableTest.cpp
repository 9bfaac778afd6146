// The window of a formula's values and hidden variables at the cross line.

#include "tests/chartview/GraphFixture.h"

#include "host/windows/CViewVariableDialog.h"

using namespace TC;

namespace {

class GraphVariable : public tests::GraphFixture {
protected:
    /// A MACD pane of two lines with the values of 09:30 to 09:32.
    void makeMacd() {
        makeGraph(EIndexDisplayType::Sub, {"MACD"});
        mGraph->request(corvane::ERunMode::Ordinary);
        mRequest = mHost.mFormulas.mLive.find(QStringLiteral("MACD.lua"), QStringLiteral("600000"));
        ASSERT_TRUE(mRequest.onHistory);
        mRequest.onHistory(tests::makeMeta(2, {}, {"DIFF", "DEA"}),
                           tests::makeResult(tests::minuteTimes(tests::kDay, 570, 3), {0.1, 0.25, 0.2},
                                             std::vector<double>{0.3, 0.35, 0.4}),
                           mRequest.id(), 1, QString(), false);
    }
    CViewVariableDialog *dialog() { return mGraph->findChild<CViewVariableDialog *>(); }
    QString shown() { return dialog() && dialog()->isVisible() ? dialog()->text() : QString(); }

    fakehost::LiveRequest mRequest;
};

TEST_F(GraphVariable, TellsHeadTimeValuesAndHiddenVariables) {
    makeMacd();
    const CFormulaDetailPtr record = mHost.mCatalogue.getFormula(QStringLiteral("MACD"));
    record->mParamValues = {12.0, 26.0, 0.5};
    record->mStrParamValues = {QStringLiteral("close")};
    mHost.mFormulas.mHideVar = QStringLiteral("X=3");
    mUi->mCrossIndex = 1;
    mGraph->viewVariable();
    // Index 1 of a Shanghai day is 09:31.
    EXPECT_EQ(shown(), QStringLiteral("MACD(12,26,0.5,close) 时间:2024/03/15 09:31 DIFF:0.25 DEA:0.35 X=3"));
}

TEST_F(GraphVariable, AsksForTheHiddenVariablesOfTheRequestAtTheIndex) {
    makeMacd();
    mUi->mCrossIndex = 2;
    mGraph->viewVariable();
    EXPECT_EQ(mHost.mLog.of(QStringLiteral("CFormulaManager::lookHideVar %1 2").arg(mRequest.id())).size(), 1);
}

TEST_F(GraphVariable, ParametersAreSixDigitsThenTexts) {
    CFormulaDetail record;
    EXPECT_EQ(formulaParamText(record), QString());
    record.mParamValues = {12.0, 1234567.0, 0.123456789};
    EXPECT_EQ(formulaParamText(record), QStringLiteral("(12,1.23457e+06,0.123457)"));
    record.mStrParamValues = {QStringLiteral("a"), QStringLiteral("b")};
    EXPECT_EQ(formulaParamText(record), QStringLiteral("(12,1.23457e+06,0.123457,a,b)"));
    record.mParamValues.clear();
    EXPECT_EQ(formulaParamText(record), QStringLiteral("(a,b)"));
}

TEST_F(GraphVariable, FormulaWithoutParametersHasNone) {
    makeMacd();
    mUi->mCrossIndex = 0;
    mGraph->viewVariable();
    EXPECT_EQ(shown(), QStringLiteral("MACD 时间:2024/03/15 09:30 DIFF:0.10 DEA:0.30 "));
}

TEST_F(GraphVariable, WithoutASeriesNothingIsShown) {
    makeGraph(EIndexDisplayType::Sub, {"MACD"});
    mUi->mCrossIndex = 0;
    mGraph->viewVariable();
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_EQ(mHost.mLog.of(QStringLiteral("CFormulaManager::lookHideVar")).size(), 0);
}

TEST_F(GraphVariable, WithoutAFormulaNothingIsShown) {
    makeMacd();
    // The series of an overlay stays when the formula goes; that of the formula does not.
    mData->removeAllFormulas();
    mGraph->viewVariable();
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(GraphVariable, OneDialogServesEveryCall) {
    makeMacd();
    mUi->mCrossIndex = 0;
    mGraph->viewVariable();
    CViewVariableDialog *first = dialog();
    mUi->mCrossIndex = 2;
    mGraph->viewVariable();
    EXPECT_EQ(mGraph->findChildren<CViewVariableDialog *>().size(), 1);
    EXPECT_EQ(dialog(), first);
    EXPECT_TRUE(shown().contains(QStringLiteral("09:32 DIFF:0.20 DEA:0.40")));
}

TEST_F(GraphVariable, TellsTheFirstSeriesOfThePane) {
    makeMainGraph();
    fillMain({10.0, 10.2});
    mUi->mCrossIndex = 1;
    mGraph->viewVariable();
    EXPECT_EQ(shown(), QStringLiteral("REALTIME 时间:2024/03/15 09:31 L0:10.20 "));
}

} // namespace
