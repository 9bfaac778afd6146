#include "terminal/app/MessagePanel.h"
#include "tests/integration/TerminalFixture.h"

#include <QTreeWidget>

using namespace terminal;

namespace {

class ScriptModelMessages : public tests::TerminalFixture {
protected:
    /// Asks for a model of the test's folder over the running day.
    void requestModel(const QByteArray &text) {
        QFile file(mFolder.path() + "/BROKEN.py");
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        TC::CFormulaParam param;
        param.mRequestId = "model";
        param.mMarket = "SH";
        param.mCode = "600000";
        param.mDataMode = 1;
        param.mDataDemand = 3;
        param.mLanguage = 1;
        param.mFormulaName = mFolder.path() + "\\BROKEN.py";
        param.mStart = {dayOf(mToday) * 1000LL, 0};
        param.mEnd = {timeOf(mToday, 900), 0};
        QVector<TC::CFormulaParam> params{param};
        mServices->formulas().requestFormulas(params, TC::FormulaHistoryCallback(),
                                              TC::FormulaRealtimeCallback());
    }
};

} // namespace

TEST_F(ScriptModelMessages, AModelThatFailsIsToldInThePanelAndTheChartGoesOn) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    ASSERT_TRUE(waitUntilComplete());
    const int points = view().pointCount();
    requestModel("import json, sys\ntold = json.loads(sys.stdin.readline())\n"
                 "raise ValueError(told['instrument'])\n");
    MessagePanel &panel = *mWindow->messages();
    ASSERT_TRUE(QTest::qWaitFor([&] { return panel.isVisible(); }, 20000));
    EXPECT_EQ(panel.rows()->topLevelItem(0)->text(1), "BROKEN");
    EXPECT_EQ(panel.rows()->topLevelItem(0)->text(2), "3");
    EXPECT_EQ(panel.rows()->topLevelItem(0)->text(3), "ValueError: SH600000");
    EXPECT_TRUE(mWindow->isActiveWindow() && !panel.rows()->hasFocus()) << "it takes no focus";
    mServices->clock().setTime(mNow + 5 * 60000);
    EXPECT_TRUE(QTest::qWaitFor([&] { return view().pointCount() > points; }, 10000));
}
