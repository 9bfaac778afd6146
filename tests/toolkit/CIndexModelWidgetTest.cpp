#include "host/windows/CIndexModelWidget.h"

#include "tests/chartview/ChartFixture.h"

#include <QApplication>
#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>
#include <QTimer>
#include <QToolButton>
#include <QtTest>

using namespace TC;

namespace {

using Names = QVector<QString>;

class CIndexModelWidgetTest : public tests::ChartFixture {
protected:
    CIndexModelWidgetTest() {
        mHost.mTemplates.mTemplates = {
            {QStringLiteral("短线"), {QStringLiteral("KDJ"), QStringLiteral("RSI")}}};
        mBar = new CIndexModelWidget(mKeeper.get());
        mKeeper->resize(600, 60);
        mBar->resize(600, mBar->getSize().height());
        mKeeper->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(mKeeper.get()));
    }
    QStringList shown() {
        QStringList texts;
        for (const QToolButton *button : mBar->findChildren<QToolButton *>()) {
            if (button->isVisible()) {
                texts.append(button->text());
            }
        }
        return texts;
    }
    QToolButton *button(const QString &text) {
        for (QToolButton *found : mBar->findChildren<QToolButton *>()) {
            if (found->text() == text && !found->isHidden()) {
                return found;
            }
        }
        return nullptr;
    }
    void click(const char *text) { QTest::mouseClick(button(QString::fromUtf8(text)), Qt::LeftButton); }

    CIndexModelWidget *mBar = nullptr;
};

TEST_F(CIndexModelWidgetTest, OffersTemplatesThenFormulas) {
    EXPECT_EQ(shown(), (QStringList{"短线", "KDJ", "MACD", "VOL"}));
    EXPECT_EQ(mBar->getSize().height(), 24);
    EXPECT_TRUE(mBar->getSelectIndex().isEmpty());
    EXPECT_TRUE(mBar->getSelectTempalte().isEmpty());
    EXPECT_TRUE(mBar->getTemplateIndex().isEmpty());
}

TEST_F(CIndexModelWidgetTest, FormulaTravelsUpAsEvent3039) {
    click("MACD");
    ASSERT_EQ(mKeeper->of(3039).size(), 1u);
    EXPECT_EQ(mKeeper->of(3039)[0].second, 0);
    EXPECT_EQ(mKeeper->of(3039)[0].text, QStringLiteral("MACD"));
    EXPECT_EQ(mBar->getSelectIndex(), (Names{"MACD"}));
    click("KDJ");
    EXPECT_EQ(mBar->getSelectIndex(), (Names{"KDJ", "MACD"})); // in the order of the bar
    EXPECT_TRUE(button(QStringLiteral("KDJ"))->isChecked());
}

TEST_F(CIndexModelWidgetTest, TemplateTravelsUpWithOneAndReplacesWhatIsInUse) {
    click("MACD");
    click("短线");
    ASSERT_EQ(mKeeper->of(3039).size(), 2u);
    EXPECT_EQ(mKeeper->of(3039)[1].second, 1);
    EXPECT_EQ(mKeeper->of(3039)[1].text, QStringLiteral("短线"));
    EXPECT_EQ(mBar->getTemplateIndex(), (Names{"KDJ", "RSI"}));
    EXPECT_EQ(mBar->getSelectTempalte(), (Names{"短线"}));
    EXPECT_EQ(mBar->getSelectIndex(), (Names{"KDJ"})); // what it has of the bar's own
}

TEST_F(CIndexModelWidgetTest, FormulaThatAPaneGivesUpIsNoLongerInUse) {
    click("MACD");
    click("VOL");
    mBar->updateIndexTemplate(QStringLiteral("MACD"));
    EXPECT_EQ(mBar->getSelectIndex(), (Names{"VOL"}));
    EXPECT_FALSE(button(QStringLiteral("MACD"))->isChecked());
    mBar->updateIndexTemplate(QStringLiteral("nothing of that name"));
    EXPECT_EQ(mBar->getSelectIndex(), (Names{"VOL"}));
}

TEST_F(CIndexModelWidgetTest, SelectionIsRestored) {
    mBar->updateSelectIndex({QStringLiteral("VOL"), QStringLiteral("unknown")});
    mBar->updateSelectTemplate({QStringLiteral("短线")});
    EXPECT_EQ(mBar->getSelectIndex(), (Names{"VOL"}));
    EXPECT_EQ(mBar->getSelectTempalte(), (Names{"短线"}));
    mBar->updateSelectIndex({});
    EXPECT_TRUE(mBar->getSelectIndex().isEmpty());
}

TEST_F(CIndexModelWidgetTest, ReadsFormulasAndTemplatesAnewAndKeepsTheSelection) {
    click("MACD");
    mHost.mTemplates.mIndexes = {QStringLiteral("MACD"), QStringLiteral("OBV")};
    mBar->slotIndexTemplateInited();
    EXPECT_EQ(shown(), (QStringList{"短线", "MACD", "OBV"}));
    EXPECT_EQ(mBar->getSelectIndex(), (Names{"MACD"}));
}

TEST_F(CIndexModelWidgetTest, DeletedFormulaIsNoLongerOffered) {
    click("短线");
    mBar->delIndexTemplate(QStringLiteral("KDJ"));
    EXPECT_EQ(shown(), (QStringList{"短线", "MACD", "VOL"}));
    EXPECT_EQ(mBar->getTemplateIndex(), (Names{"RSI"}));
}

TEST_F(CIndexModelWidgetTest, WhatDoesNotFitIsInAMenu) {
    mBar->resize(130, 24);
    const QStringList visible = shown();
    EXPECT_TRUE(visible.contains(QStringLiteral("…")));
    EXPECT_FALSE(visible.contains(QStringLiteral("VOL")));
    QTimer::singleShot(0, [] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        ASSERT_FALSE(menu->actions().isEmpty());
        EXPECT_EQ(menu->actions().last()->text(), QStringLiteral("VOL"));
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().last()).center());
    });
    click("…");
    ASSERT_EQ(mKeeper->of(3039).size(), 1u);
    EXPECT_EQ(mKeeper->of(3039)[0].text, QStringLiteral("VOL"));
    mBar->resize(600, 24);
    EXPECT_EQ(shown(), (QStringList{"短线", "KDJ", "MACD", "VOL"}));
}

TEST_F(CIndexModelWidgetTest, ButtonsCanBeSwitchedOffAndTheBarHidden) {
    mBar->changeBtnStatus(false);
    click("MACD");
    EXPECT_TRUE(mKeeper->of(3039).empty());
    mBar->changeBtnStatus(true);
    click("MACD");
    EXPECT_EQ(mKeeper->of(3039).size(), 1u);
    mBar->setIndexModelVisible(false);
    EXPECT_FALSE(mBar->isVisible());
    mBar->showIndexModelWidget();
    EXPECT_TRUE(mBar->isVisible());
    mBar->showIndexModelWidget();
    EXPECT_FALSE(mBar->isVisible());
}

TEST_F(CIndexModelWidgetTest, SavesTheFormulasUnderTheNameThatTheUserGives) {
    QTimer::singleShot(0, [] {
        auto *dialog = qobject_cast<QInputDialog *>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        dialog->setTextValue(QStringLiteral(" 趋势 "));
        dialog->accept();
    });
    mBar->showSaveModelDialog({QStringLiteral("MACD"), QStringLiteral("OBV")});
    ASSERT_EQ(mHost.mTemplates.mTemplates.size(), 2);
    EXPECT_EQ(mHost.mTemplates.mTemplates[1].mName, QStringLiteral("趋势"));
    EXPECT_EQ(mHost.mTemplates.mTemplates[1].mFormulas, (Names{"MACD", "OBV"}));
    EXPECT_EQ(shown(), (QStringList{"短线", "趋势", "KDJ", "MACD", "VOL"}));
}

TEST_F(CIndexModelWidgetTest, NameThatIsTakenIsAskedAbout) {
    for (const bool replace : {false, true}) {
        QTimer::singleShot(0, [replace] {
            auto *dialog = qobject_cast<QInputDialog *>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            dialog->setTextValue(QStringLiteral("短线"));
            QTimer::singleShot(0, [replace] {
                auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
                ASSERT_NE(box, nullptr);
                QTest::mouseClick(box->button(replace ? QMessageBox::Yes : QMessageBox::No), Qt::LeftButton);
            });
            dialog->accept();
        });
        mBar->showSaveModelDialog({QStringLiteral("VOL")});
        ASSERT_EQ(mHost.mTemplates.mTemplates.size(), 1);
        EXPECT_EQ(mHost.mTemplates.mTemplates[0].mFormulas, replace ? Names{"VOL"} : (Names{"KDJ", "RSI"}));
    }
}

TEST_F(CIndexModelWidgetTest, NoNameOrNoFormulasSaveNothing) {
    mBar->showSaveModelDialog({}); // does not even ask
    for (const bool accept : {true, false}) {
        QTimer::singleShot(0, [accept] {
            auto *dialog = qobject_cast<QInputDialog *>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            dialog->setTextValue(accept ? QStringLiteral("  ") : QStringLiteral("x"));
            accept ? dialog->accept() : dialog->reject();
        });
        mBar->showSaveModelDialog({QStringLiteral("VOL")});
    }
    EXPECT_EQ(mHost.mTemplates.mTemplates.size(), 1);
}

TEST_F(CIndexModelWidgetTest, FollowsTheTheme) {
    const QColor dark = painted(*mBar).pixelColor(599, 12);
    GZ::CUiResource::instance().setTheme(QStringLiteral("light"));
    EXPECT_NE(painted(*mBar).pixelColor(599, 12), dark);
}

} // namespace
