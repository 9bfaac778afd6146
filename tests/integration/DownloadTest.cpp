// History that the store lacks, from the window.

#include "containers/CRealtimeMainWidget.h"
#include "containers/CRealtimeWidget.h"
#include "host/windows/CViewVariableDialog.h"
#include "terminal/market/MarketWriter.h"
#include "tests/integration/TerminalFixture.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>

using namespace terminal;

namespace {

/// Every text of the status line, however short it stands: the line puts it into its tool tip as well.
class StatusTexts : public QObject {
public:
    explicit StatusTexts(const QWidget &window) : mStatus(window.findChild<QLabel *>("status")) {
        mStatus->installEventFilter(this);
    }
    bool eventFilter(QObject *, QEvent *event) override {
        if (event->type() == QEvent::ToolTipChange) {
            mTexts.append(mStatus->text());
        }
        return false;
    }

    QStringList mTexts;

private:
    QLabel *mStatus;
};

class DownloadTest : public tests::TerminalFixture {
protected:
    QPushButton *button() { return mWindow->findChild<QPushButton *>("download"); }
    bool waitForEnd() {
        return QTest::qWaitFor([this] { return mServices->formulas().downloadsUnderWay() == 0; }, 60000);
    }
};

} // namespace

TEST_F(DownloadTest, TheButtonBringsTwentyEarlierDaysWithProgressAndTheDayBoxOffersThem) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    const QVector<QDate> before = mServices->daysOf("SH600000");
    QTest::mouseClick(button(), Qt::LeftButton);
    EXPECT_EQ(button()->text(), "停止下载");
    const StatusTexts told(*mWindow);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(mWindow->status(), "SH600000 下载完成，新增 20 个交易日");
    for (int day = 1; day <= 20; ++day) {
        EXPECT_TRUE(told.mTexts.contains(QString("下载 SH600000：%1/21").arg(day))) << day;
    }
    EXPECT_EQ(button()->text(), "下载数据");
    const QVector<QDate> after = mServices->daysOf("SH600000");
    EXPECT_EQ(after.size(), before.size() + 20);
    EXPECT_LT(after.last(), before.last());
    EXPECT_EQ(mWindow->days()->count(), after.size());
    ASSERT_TRUE(mWindow->showInstrument("SH600000", after.last()));
    ASSERT_TRUE(waitUntilComplete());
    EXPECT_EQ(view().pointCount(), 241);
}

TEST_F(DownloadTest, ASecondPressStopsItAndWhatHasComeStays) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    const int before = mServices->daysOf("SH600000").size();
    {
        const MarketWriter another(mServices->store()); // has the store to itself: the download waits
        QTest::keyClick(mWindow.get(), Qt::Key_D, Qt::ControlModifier);
        QTest::keyClick(mWindow.get(), Qt::Key_D, Qt::ControlModifier);
    }
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(button()->text(), "下载数据");
    EXPECT_LE(mServices->daysOf("SH600000").size(), before + 1);
    EXPECT_TRUE(mWindow->status().startsWith("SH600000 的下载没有完成")) << qPrintable(mWindow->status());
}

TEST_F(DownloadTest, AUserDefinedIndexHasNothingOfItsOwnToDownload) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    const QString index = mServices->store().catalogue()->indexes.firstKey();
    ASSERT_TRUE(mWindow->showInstrument(index));
    QTest::mouseClick(button(), Qt::LeftButton);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(button()->text(), "下载数据");
    EXPECT_TRUE(mWindow->status().contains("成分")) << qPrintable(mWindow->status());
}

TEST_F(DownloadTest, TheWindowMayGoInTheMiddleOfOne) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    QTest::mouseClick(button(), Qt::LeftButton);
    mWindow.reset();
    EXPECT_TRUE(waitForEnd());
}

TEST_F(DownloadTest, ControlHShowsTheHiddenVariablesOfTheSelectedPane) {
    TC::CFormulaOperateManager &catalogue = TC::CSingletonT<TC::CFormulaOperateManager>::instance();
    QString name;
    ASSERT_TRUE(catalogue
                    .saveFormula(name, "formula { name = \"OWN\", lines = {{\"SHOWN\"}, {\"SECRET\", axis = "
                                       "\"HIDDEN\"}} }\nfunction run() return CLOSE, BARPOS * 2 end\n")
                    .isGood());
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    TC::CRealtimeWidget *pane = view().main()->getSubIndexWidgets().value(0);
    ASSERT_TRUE(pane);
    view().main()->highlightWidget(pane->getId());
    view().main()->handleDoubleClickedFormula("OWN");
    ASSERT_TRUE(waitUntilComplete());
    QTest::keyClick(mWindow.get(), Qt::Key_H, Qt::ControlModifier);
    auto *dialog = mWindow->findChild<TC::CViewVariableDialog *>();
    ASSERT_TRUE(dialog);
    EXPECT_TRUE(dialog->isVisible());
    // 10:30 is the 61st minute of the day, counted from the opening auction.
    EXPECT_TRUE(dialog->text().contains("时间:2026/11/20 10:30")) << qPrintable(dialog->text());
    EXPECT_TRUE(dialog->text().endsWith("SECRET:122")) << qPrintable(dialog->text());
    view().moveCursor(true);
    QTest::keyClick(mWindow.get(), Qt::Key_H, Qt::ControlModifier);
    EXPECT_TRUE(dialog->text().endsWith("SECRET:120")) << qPrintable(dialog->text());
}
