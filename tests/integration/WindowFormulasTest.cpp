#include "chartdata/CRealtimeData.h"
#include "containers/CRealtimeMainWidget.h"
#include "containers/CRealtimeWidget.h"
#include "host/windows/CModifyModelParamDialog.h"
#include "host/windows/CSmartKeyboardDialog.h"
#include "terminal/app/FormulaPanel.h"
#include "tests/integration/TerminalFixture.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

using namespace terminal;
using tests::TerminalFixture;

namespace {

/// The tree of formulas in the window, and where its formulas go.
class WindowFormulasTest : public TerminalFixture {
protected:
    void SetUp() override {
        TerminalFixture::SetUp();
        mWindow->setFormulaPanes(0);
        ASSERT_TRUE(mWindow->showInstrument("SH600000", QDate(2026, 11, 19)));
        mWindow->setFormulasShown(true);
        ASSERT_TRUE(waitUntilComplete());
    }

    QTreeWidgetItem *itemOf(const QString &formula) {
        for (QTreeWidgetItemIterator i(mWindow->formulas()->tree()); *i; ++i) {
            if ((*i)->childCount() == 0 && (*i)->text(0) == formula) {
                return *i;
            }
        }
        return nullptr;
    }
    /// A double click of the mouse on a formula of the tree.
    void doubleClick(const QString &formula) {
        QTreeWidget *tree = mWindow->formulas()->tree();
        QTreeWidgetItem *item = itemOf(formula);
        ASSERT_TRUE(item) << qPrintable(formula);
        tree->scrollToItem(item); // opens its folder
        const QPoint at = tree->visualItemRect(item).center();
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, at);
    }
    QList<QString> formulasOnMain() { return view().main()->getRealTimeWidget()->getIndexes(); }
};

} // namespace

TEST_F(WindowFormulasTest, ADoubleClickShowsAFormulaInAPaneOfItsOwn) {
    doubleClick("MACD");
    ASSERT_EQ(view().formulaPanes(), 1);
    const TC::CRealtimeWidget *pane = view().main()->getSubIndexWidgets().first();
    EXPECT_EQ(pane->getIndexes(), QList<QString>{"MACD"});
    ASSERT_TRUE(waitUntilComplete());
    EXPECT_TRUE(pane->hasData());
    doubleClick("KDJ");
    EXPECT_EQ(view().formulaPanes(), 1) << "the selected pane takes it";
    EXPECT_EQ(pane->getIndexes(), QList<QString>{"KDJ"});
}

TEST_F(WindowFormulasTest, AnAttachedFormulaJoinsTheMainChartAndGoesWithTheSecondDoubleClick) {
    const QList<QString> before = formulasOnMain();
    doubleClick("MA");
    EXPECT_TRUE(formulasOnMain().contains("MA"));
    EXPECT_TRUE(formulasOnMain().contains("REALTIME"));
    ASSERT_TRUE(waitUntilComplete());
    EXPECT_TRUE(view().data()->getData().contains(TC::CFormulaKey("SH600000", "MA")));
    doubleClick("MA");
    EXPECT_EQ(formulasOnMain(), before);
    EXPECT_EQ(view().formulaPanes(), 0);
}

TEST_F(WindowFormulasTest, AReplacingFormulaTakesThePlaceOfTheChartAndTheOrdinaryOneComesBack) {
    doubleClick("分时K线");
    EXPECT_EQ(formulasOnMain(), QList<QString>{"分时K线"});
    ASSERT_TRUE(waitUntilComplete());
    QTest::mouseClick(mWindow->formulas()->findChild<QPushButton *>("restore"), Qt::LeftButton);
    EXPECT_EQ(formulasOnMain(), (QList<QString>{"REALTIME", "REALTIMEVOL"}));
}

TEST_F(WindowFormulasTest, TheBoxNarrowsTheTree) {
    QTest::keyClicks(mWindow->formulas()->filter(), "mac");
    EXPECT_FALSE(itemOf("MACD")->isHidden());
    EXPECT_TRUE(itemOf("MACD")->parent()->isExpanded());
    EXPECT_TRUE(itemOf("KDJ")->isHidden());
    EXPECT_TRUE(itemOf("KDJ")->parent()->isHidden()) << "a folder with nothing left goes too";
    mWindow->formulas()->filter()->clear();
    EXPECT_FALSE(itemOf("KDJ")->isHidden());
    EXPECT_FALSE(itemOf("KDJ")->parent()->isHidden());
}

TEST_F(WindowFormulasTest, TheSmartKeyboardPicksAFormula) {
    QTest::keyClicks(mWindow.get(), "m");
    auto *edit = TC::CSmartKeyboardDialog::instance()->findChild<QLineEdit *>();
    QTest::keyClicks(edit, "acd");
    QTest::keyClick(edit, Qt::Key_Return);
    ASSERT_EQ(view().formulaPanes(), 1);
    EXPECT_EQ(view().main()->getSubIndexWidgets().first()->getIndexes(), QList<QString>{"MACD"});
    EXPECT_EQ(view().instrument(), "SH600000");
}

TEST_F(WindowFormulasTest, ChangedParametersDrawTheFormulaAnew) {
    doubleClick("MACD");
    ASSERT_TRUE(waitUntilComplete());
    const TC::CRealtimeWidget *pane = view().main()->getSubIndexWidgets().first();
    const auto data = pane->getGraphWidgets().first()->getData();
    const TC::CFormulaKey key("SH600000", "MACD");
    const std::vector<double> before = data->getData().value(key).result.mValues[0];
    ASSERT_FALSE(before.empty());
    emit mWindow->formulas()->parametersAsked("MACD");
    auto *dialog = mWindow->findChild<TC::CModifyModelParamDialog *>();
    ASSERT_TRUE(dialog && dialog->isVisible());
    auto *table = dialog->findChild<QTableWidget *>();
    int value = -1;
    for (int column = 0; column < table->columnCount(); ++column) {
        if (table->item(0, column) && (table->item(0, column)->flags() & Qt::ItemIsEditable)) {
            value = column;
            break;
        }
    }
    ASSERT_GE(value, 0);
    table->item(0, value)->setText("5");
    dialog->accept();
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            const auto series = data->getData().constFind(key);
            return series != data->getData().constEnd() && !series->result.mValues.empty() &&
                   series->result.mValues[0] != before;
        },
        10000));
}

TEST_F(WindowFormulasTest, AFormulaPaneFollowsTheInstrument) {
    doubleClick("MACD");
    ASSERT_TRUE(mWindow->showInstrument("SH600519", QDate(2026, 11, 19)));
    ASSERT_TRUE(waitUntilComplete());
    const auto data = view().main()->getSubIndexWidgets().first()->getGraphWidgets().first()->getData();
    EXPECT_TRUE(data->getData().contains(TC::CFormulaKey("SH600519", "MACD")));
    EXPECT_FALSE(data->getData().contains(TC::CFormulaKey("SH600000", "MACD")));
}

TEST_F(WindowFormulasTest, ThePanelIsShownAndHiddenByItsKey) {
    EXPECT_TRUE(mWindow->formulas()->isVisible());
    QTest::keyClick(mWindow.get(), Qt::Key_I, Qt::ControlModifier);
    EXPECT_FALSE(mWindow->formulas()->isVisible());
    QTest::keyClick(mWindow.get(), Qt::Key_I, Qt::ControlModifier);
    EXPECT_TRUE(mWindow->formulas()->isVisible());
}
