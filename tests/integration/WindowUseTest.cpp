// The window in a trader's hands: keys typed into its fields, its smallest size, and the buttons of its panes.

#include "chartview/CRealtimeGraphWidget.h"
#include "containers/CRealtimeMainWidget.h"
#include "containers/CRealtimeWidget.h"
#include "host/drawing/CIndexTitleWidget.h"
#include "host/toolkit/CPushButton.h"
#include "host/toolkit/CUiResource.h"
#include "host/windows/CModifyModelParamDialog.h"
#include "linkage/CRealtimeLinkageSettingDialog.h"
#include "terminal/app/FormulaPanel.h"
#include "terminal/app/WindowSize.h"
#include "tests/integration/TerminalFixture.h"
#include "tests/support/Contrast.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <QTreeWidget>

using namespace terminal;
using tests::TerminalFixture;

namespace {

class WindowUse : public TerminalFixture {
protected:
    void SetUp() override {
        TerminalFixture::SetUp();
        ASSERT_TRUE(mWindow->showInstrument("SH600000", QDate(2026, 11, 19)));
        mWindow->setFormulasShown(true);
        ASSERT_TRUE(waitUntilComplete());
        mWindow->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(mWindow.get()));
    }

    QLineEdit *filter() { return mWindow->formulas()->filter(); }
    QString selected() {
        const QTreeWidgetItem *item = mWindow->formulas()->tree()->currentItem();
        return item ? item->text(0) : QString();
    }
    QPushButton *control(const char *name) { return mWindow->findChild<QPushButton *>(QLatin1String(name)); }
    QToolButton *more() { return mWindow->findChild<QToolButton *>("more"); }
    /// The menu of what is folded away.
    QMenu *folded() {
        QMenu *menu = more()->menu();
        emit menu->aboutToShow();
        return menu;
    }
    static QAction *entry(const QMenu *menu, const QString &text) {
        for (QAction *action : menu->actions()) {
            if (action->text() == text) {
                return action;
            }
        }
        return nullptr;
    }
    void clickSettings(TC::CRealtimeWidget *pane) {
        for (GZ::CPushButton *button : pane->findChildren<GZ::CPushButton *>()) {
            if (button->id() == TC::CIndexTitleWidget::eSettings) {
                QTest::mouseClick(button, Qt::LeftButton);
            }
        }
    }
};

} // namespace

TEST_F(WindowUse, TheSearchOfFormulasKeepsItsArrowKeysAndEnter) {
    filter()->setFocus();
    QTest::keyClicks(filter(), "mac");
    EXPECT_EQ(selected(), "MACD") << "the first that is found";
    const int panes = view().formulaPanes();
    QTest::keyClick(filter(), Qt::Key_Return);
    ASSERT_EQ(view().formulaPanes(), panes);
    EXPECT_EQ(view().main()->getSubIndexWidgets().last()->getIndexes(), QList<QString>{"MACD"});
    filter()->setFocus();
    filter()->clear();
    EXPECT_EQ(selected(), QString());
    QTest::keyClicks(filter(), "m");
    const QString first = selected();
    QTest::keyClick(filter(), Qt::Key_Down);
    EXPECT_NE(selected(), first);
    QTest::keyClick(filter(), Qt::Key_Up);
    EXPECT_EQ(selected(), first);
    EXPECT_EQ(view().uiParam()->mDayCount, 1);
    EXPECT_TRUE(filter()->hasFocus());
    QTest::keyClick(filter(), Qt::Key_Escape);
    EXPECT_TRUE(filter()->text().isEmpty());
    QTest::keyClick(filter(), Qt::Key_Escape);
    EXPECT_FALSE(filter()->hasFocus());
}

TEST_F(WindowUse, NothingTypedInAFieldReachesTheChart) {
    // What a box and a tree have a use for themselves is theirs.
    const QList<int> walk{Qt::Key_Left, Qt::Key_Right, Qt::Key_Home,   Qt::Key_End,      Qt::Key_Up,
                          Qt::Key_Down, Qt::Key_Space, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_7};
    const QVector<QPair<QWidget *, QList<int>>> fields{
        {filter(), walk},
        {mWindow->formulas()->tree(), walk},
        {mWindow->days(), {Qt::Key_Left, Qt::Key_Right, Qt::Key_X}}};
    for (const auto &[field, keys] : fields) {
        field->setFocus();
        ASSERT_TRUE(field->hasFocus()) << field->metaObject()->className();
        for (const int key : keys) {
            QTest::keyClick(field, static_cast<Qt::Key>(key));
        }
        EXPECT_EQ(view().uiParam()->mDayCount, 1);
        EXPECT_FALSE(view().uiParam()->mCrossShown);
        EXPECT_EQ(view().day(), QDate(2026, 11, 19));
        EXPECT_TRUE(mServices->clock().isPaused());
        EXPECT_TRUE(field->hasFocus()) << "no smart keyboard has come up";
    }
    filter()->clear();
    view().setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
    EXPECT_TRUE(view().uiParam()->mCrossShown) << "the chart has them as before";
}

TEST_F(WindowUse, TheWindowCanBeAsSmallAsItsSmallestSize) {
    mWindow->setFormulasShown(false);
    EXPECT_FALSE(more()->isVisible()) << "at 1200 there is room for all";
    mWindow->resize(kSmallestWindow);
    ASSERT_TRUE(QTest::qWaitFor([this] { return more()->isVisible(); }));
    EXPECT_EQ(mWindow->size(), kSmallestWindow);
    EXPECT_TRUE(control("instrument")->isVisible());
    EXPECT_FALSE(control("download")->isVisible());
    for (const QWidget *child : mWindow->findChildren<QWidget *>()) {
        if (child->isVisible() && child->parentWidget() == control("instrument")->parentWidget()) {
            EXPECT_LE(child->geometry().right(), kSmallestWindow.width()) << qPrintable(child->objectName());
        }
    }
    EXPECT_GE(view().height(), 200);
    mWindow->resize(1200, 760);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !more()->isVisible(); }));
    EXPECT_TRUE(control("download")->isVisible());
}

TEST_F(WindowUse, WhatIsFoldedAwayStandsInAMenu) {
    mWindow->resize(kSmallestWindow);
    ASSERT_TRUE(QTest::qWaitFor([this] { return more()->isVisible(); }));
    const QString before = GZ::CUiResource::instance().theme();
    QAction *theme = entry(folded(), control("theme")->text());
    ASSERT_TRUE(theme);
    theme->trigger();
    EXPECT_NE(GZ::CUiResource::instance().theme(), before);
    mWindow->setThemeName(before);
    QAction *pause = entry(folded(), control("pause")->text());
    ASSERT_TRUE(pause);
    EXPECT_TRUE(pause->isCheckable());
    QAction *paces = entry(folded(), QStringLiteral("速度"));
    ASSERT_TRUE(paces && paces->menu());
    ASSERT_EQ(paces->menu()->actions().size(), 5);
    paces->menu()->actions().at(2)->trigger();
    EXPECT_EQ(mServices->clock().pace(), 60.0);
    const int menus = folded()->findChildren<QMenu *>().size();
    EXPECT_GT(menus, 0);
    folded();
    EXPECT_EQ(folded()->findChildren<QMenu *>().size(), menus) << "those shown before are gone";
}

TEST_F(WindowUse, TheTextOfAButtonThatIsOnIsReadOnItsDarkerGround) {
    for (const char *theme : {"light", "dark"}) {
        mWindow->setThemeName(QLatin1String(theme));
        const QPalette colors = control("formulas")->palette();
        constexpr int kSunken = 118; // percent that the style darkens the ground of such a button by
        ASSERT_TRUE(control("formulas")->isChecked());
        EXPECT_GE(
            tests::contrast(colors.color(QPalette::ButtonText), colors.color(QPalette::Button).darker(kSunken)),
            tests::kReadable)
            << theme;
    }
}

TEST_F(WindowUse, TheSettingsOfAPaneAreTheParametersOfItsFormula) {
    mWindow->setFormulaPanes(1);
    TC::CRealtimeWidget *pane = view().main()->getSubIndexWidgets().first();
    const QString formula = pane->getIndexes().first();
    clickSettings(pane);
    auto *dialog = mWindow->findChild<TC::CModifyModelParamDialog *>();
    ASSERT_TRUE(dialog);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(dialog->name(), formula);
    dialog->close();
}

TEST_F(WindowUse, TheSettingsOfTheMainPaneAreWhatIsShownOfTrades) {
    clickSettings(view().main()->getRealTimeWidget());
    auto *dialog = mWindow->findChild<TC::CRealtimeLinkageSettingDialog *>();
    ASSERT_TRUE(dialog);
    EXPECT_TRUE(dialog->isVisible());
    dialog->close();
}
