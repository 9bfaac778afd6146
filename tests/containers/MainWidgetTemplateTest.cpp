// The bar of formula templates, models of groups, and the variables of the selected pane.

#include "tests/containers/MainWidgetFixture.h"

#include "host/windows/CIndexModelWidget.h"
#include "host/windows/CViewVariableDialog.h"

#include <QInputDialog>
#include <QTimer>
#include <QToolButton>

using namespace TC;

namespace {

class MainWidgetTemplate : public tests::MainWidgetFixture {
protected:
    using Formulas = QVector<QString>;

    void showBar(int panes = 0) {
        mHost.mConfig.mConfig.mConcise = true;
        mHost.mTemplates.mTemplates = {{QStringLiteral("短线"), {"KDJ", "RSI"}}};
        showView(panes, EIndexViewType::Template);
        ASSERT_TRUE(bar());
        mMain->setIndexModelVisible(true);
        settle();
    }
    CIndexModelWidget *bar() const { return mMain->findChild<CIndexModelWidget *>(); }
    QToolButton *button(const QString &text) const {
        for (QToolButton *one : bar()->findChildren<QToolButton *>()) {
            if (one->text() == text && one->isVisible()) {
                return one;
            }
        }
        return nullptr;
    }
    void click(const QString &text) {
        QToolButton *found = button(text);
        ASSERT_TRUE(found) << text.toStdString();
        QTest::mouseClick(found, Qt::LeftButton);
        settle();
    }
    QList<Names> paneFormulas() const {
        QList<Names> found;
        for (const CRealtimeWidget *one : mMain->getSubIndexWidgets()) {
            found.append(formulasOf(one));
        }
        return found;
    }
};

TEST_F(MainWidgetTemplate, IsHiddenAtFirstAndStandsBeneathTheTimeScale) {
    mHost.mConfig.mConfig.mConcise = true;
    showView(0, EIndexViewType::Template);
    ASSERT_TRUE(bar());
    EXPECT_TRUE(bar()->isHidden());
    EXPECT_EQ(bar()->height(), bar()->getSize().height());
    EXPECT_EQ(rectOf(timeScale()).bottom(), mMain->height() - 1);
    mMain->showIndexModelWidget();
    settle();
    EXPECT_TRUE(bar()->isVisible());
    EXPECT_EQ(rectOf(bar()), QRect(0, mMain->height() - bar()->height(), mMain->width(), bar()->height()));
    EXPECT_EQ(rectOf(timeScale()).bottom() + 1, rectOf(bar()).top());
    mMain->setIndexModelVisible(false);
    EXPECT_TRUE(bar()->isHidden());
}

TEST_F(MainWidgetTemplate, AFormulaOfTheBarGetsAPaneOfItsOwn) {
    showBar(1);
    click("MACD");
    EXPECT_EQ(paneFormulas(), (QList<Names>{{"KDJ"}, {"MACD"}}));
    EXPECT_TRUE(requested().contains("MACD.lua"));
    EXPECT_EQ(frame()->geometry(), rectOf(sub(1)));
    EXPECT_EQ(mMain->getSelectIndex(), (Formulas{"MACD"}));
    EXPECT_TRUE(mKeeper->of(3039).empty()) << "it ends in the view";
}

TEST_F(MainWidgetTemplate, ATemplateTakesThePlaceOfAllPanes) {
    showBar(2);
    mMain->updateSelectIndex({"KDJ", "MACD"});
    click(QStringLiteral("短线"));
    EXPECT_EQ(paneFormulas(), (QList<Names>{{"KDJ"}, {"RSI"}}));
    EXPECT_EQ(ids(), (QList<int>{3, 4})) << "panes of their own";
    EXPECT_TRUE(requested().contains("KDJ.lua"));
    EXPECT_TRUE(requested().contains("RSI.lua"));
    EXPECT_FALSE(requested().contains("MACD.lua"));
    EXPECT_EQ(mMain->getSelectTempalte(), (Formulas{QStringLiteral("短线")}));
    EXPECT_EQ(mMain->getSelectIndex(), (Formulas{"KDJ"})) << "of the bar's own formulas, what is shown";
}

TEST_F(MainWidgetTemplate, KeepsTheFormulasOfAllPanesInOrderAsATemplate) {
    showBar(2);
    QTimer::singleShot(0, this->mMain.get(), [] {
        auto *dialog = qobject_cast<QInputDialog *>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog);
        dialog->setTextValue(QStringLiteral("两个"));
        dialog->accept();
    });
    EXPECT_TRUE(event(3233));
    ASSERT_EQ(mHost.mTemplates.mTemplates.size(), 2);
    EXPECT_EQ(mHost.mTemplates.mTemplates[1].mName, QStringLiteral("两个"));
    EXPECT_EQ(mHost.mTemplates.mTemplates[1].mFormulas, (Formulas{"KDJ", "MACD"}));
}

TEST_F(MainWidgetTemplate, HearsOfTheFormulaThatAPaneGivesUp) {
    showBar(2);
    mMain->updateSelectIndex({"KDJ", "MACD", "VOL"});
    mMain->highlightWidget(sub(0)->getId());
    mMain->handleDoubleClickedFormula("RSI");
    EXPECT_EQ(mMain->getSelectIndex(), (Formulas{"MACD", "VOL"}));
    mMain->highlightWidget(pane()->getId());
    mMain->handleDoubleClickedFormula("CCI");
    EXPECT_EQ(paneFormulas(), (QList<Names>{{"RSI"}, {"CCI"}}));
    EXPECT_EQ(mMain->getSelectIndex(), (Formulas{"MACD", "VOL"})) << "not with the main pane selected";
    mMain->updateIndexTemplate(sub(1), "CCI");
    EXPECT_EQ(mMain->getSelectIndex(), (Formulas{"MACD", "VOL"})) << "the pane keeps its formula";
}

TEST_F(MainWidgetTemplate, HearsOfItWithTheMainPaneSelectedWhenAFormulaIsApplied) {
    showBar(2);
    mMain->updateSelectIndex({"KDJ", "MACD"});
    mMain->highlightWidget(pane()->getId());
    mMain->handleApplyFormula("RSI", EFormulaLanguage::Native, corvane::ERunMode::Ordinary);
    EXPECT_EQ(paneFormulas(), (QList<Names>{{"KDJ"}, {"RSI"}}));
    EXPECT_EQ(mMain->getSelectIndex(), (Formulas{"KDJ"}));
}

TEST_F(MainWidgetTemplate, HearsOfPanesThatGo) {
    showBar(3);
    mMain->updateSelectIndex({"KDJ", "MACD", "VOL"});
    sub(2)->updateIndex("VOL");
    mMain->adjustIndexWidgetSize(3);
    EXPECT_EQ(mMain->getSelectIndex(), (Formulas{"KDJ", "MACD"})) << "the last pane has gone";
    sub(1)->destorySubWidget();
    EXPECT_EQ(mMain->getSelectIndex(), (Formulas{"KDJ"}));
    mMain->delAllIndexWidgets();
    EXPECT_TRUE(mMain->getSelectIndex().isEmpty());
}

TEST_F(MainWidgetTemplate, LosesADeletedFormulaWhenTheHostSaysSo) {
    showBar(1);
    mMain->handleDeleteFormula("VOL");
    EXPECT_TRUE(button("VOL")) << "the view alone does not touch the bar";
    mMain->updateIndex("VOL", 4, EFormulaLanguage::Native, corvane::ERunMode::Ordinary);
    settle();
    EXPECT_FALSE(button("VOL"));
    EXPECT_TRUE(button("KDJ"));
}

TEST_F(MainWidgetTemplate, IsToldWhatIsInUseAndWhetherItCanBeClicked) {
    showBar();
    mMain->updateSelectTemplate({QStringLiteral("短线")});
    EXPECT_EQ(mMain->getSelectTempalte(), (Formulas{QStringLiteral("短线")}));
    mMain->changeBtnStatus(false);
    EXPECT_FALSE(button("KDJ")->isEnabled());
    mMain->changeBtnStatus(true);
    EXPECT_TRUE(button("KDJ")->isEnabled());
    mHost.mTemplates.mIndexes.append("CCI");
    mMain->updateIndexTemplate();
    settle();
    EXPECT_TRUE(button("CCI"));
}

TEST_F(MainWidgetTemplate, FollowsTheWidthOfTheView) {
    showBar();
    mMain->resize(150, 400);
    settle();
    EXPECT_FALSE(button("VOL")) << "it is in the menu at the end";
    EXPECT_EQ(rectOf(bar()), QRect(0, 400 - bar()->height(), 150, bar()->height()));
}

// Variables

class VariablesOfAView : public tests::MainWidgetFixture {};

TEST_F(VariablesOfAView, AreThoseOfTheSelectedFormulaPane) {
    showView(2);
    fill();
    mUi->mCrossIndex = 1;
    mHost.mFormulas.mHideVar = QStringLiteral("X=3");
    mMain->highlightWidget(sub(1)->getId());
    mMain->viewVariable();
    EXPECT_FALSE(sub(0)->findChild<CViewVariableDialog *>());
    auto *dialog = sub(1)->findChild<CViewVariableDialog *>();
    ASSERT_TRUE(dialog);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_TRUE(dialog->text().startsWith(QStringLiteral("MACD 时间:2024/03/15 09:31 ")))
        << dialog->text().toStdString();
    EXPECT_TRUE(dialog->text().endsWith(QStringLiteral(" X=3")));
}

TEST_F(VariablesOfAView, AreNotShownOfTheMainPane) {
    showView(1);
    fill();
    mUi->mCrossIndex = 1;
    mMain->highlightWidget(pane()->getId());
    mMain->viewVariable();
    EXPECT_FALSE(mMain->findChild<CViewVariableDialog *>());
}

// Models of groups

class GroupModelsOfAView : public tests::MainWidgetFixture {
protected:
    GroupModelsOfAView() { mHost.mCatalogue.getFormula("KDJ")->mStrParamNames.append(QStringLiteral("group")); }
    void makeScript() { mHost.mCatalogue.getFormula("KDJ")->mLanguage = EFormulaLanguage::Python; }
    void makeIndex(bool index) {
        mHost.mTypes.mIndexes.clear();
        if (index) {
            mHost.mTypes.mIndexes.insert({"SH", "600000"});
        }
    }
    /// How many live requests have a formula's file, whatever folder it is in.
    int live(const QString &formula) const {
        const QStringList all = requested();
        return static_cast<int>(std::count_if(all.begin(), all.end(), [&formula](const QString &file) {
            return file.contains(formula, Qt::CaseInsensitive);
        }));
    }
};

TEST_F(GroupModelsOfAView, LoseTheirDataWithARequestOnAStock) {
    makeIndex(true);
    showView(2);
    fill();
    ASSERT_TRUE(sub(0)->hasData());
    makeIndex(false);
    mMain->request(false);
    EXPECT_FALSE(sub(0)->hasData());
    EXPECT_TRUE(sub(1)->hasData()) << "an ordinary formula keeps what it shows until its results come";
}

TEST_F(GroupModelsOfAView, KeepTheirDataWithARequestOnAnIndex) {
    makeIndex(true);
    showView(1);
    fill();
    mMain->request(false);
    EXPECT_TRUE(sub(0)->hasData());
}

TEST_F(GroupModelsOfAView, OnAStockGoOnWhenTheViewWithdraws) {
    makeScript();
    makeIndex(false);
    showView(2);
    mMain->request(false);
    ASSERT_EQ(live("KDJ"), 1);
    ASSERT_EQ(live("MACD"), 1);
    mMain->unrequest();
    EXPECT_EQ(live("KDJ"), 1);
    EXPECT_EQ(live("MACD"), 0);
    EXPECT_EQ(live("REALTIME"), 0);
}

TEST_F(GroupModelsOfAView, OnAnIndexAreWithdrawnToo) {
    makeScript();
    makeIndex(true);
    showView(1);
    mMain->request(false);
    ASSERT_EQ(live("KDJ"), 1);
    mMain->unrequest();
    EXPECT_EQ(live("KDJ"), 0);
}

} // namespace
