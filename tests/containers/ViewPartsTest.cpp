// The parts of a view by themselves: the row of panes, the selected one, the main chart, where formulas go, the bar.

#include "tests/containers/MainWidgetFixture.h"

#include "containers/CrossLines.h"
#include "containers/FormulaPlacement.h"
#include "containers/KeyedFormulas.h"
#include "containers/MainChart.h"
#include "containers/PaneRow.h"
#include "containers/SelectedPane.h"
#include "containers/TemplateBar.h"

using namespace TC;

namespace {

/// The parts in a widget that is no view.
class ViewParts : public tests::MainWidgetFixture {
protected:
    void makeParts(EIndexViewType type = EIndexViewType::Ordinary) {
        mUi = boost::make_shared<CRealtimeUiParam>(type);
        mUi->setStock("SH600000", false);
        mHome = std::make_unique<QWidget>(mKeeper.get());
        mHome->resize(800, 600);
        mPanes = std::make_unique<PaneRow>(mHome.get(), mUi, type);
        mPanes->list()->resize(mHome->size());
        mSelected = std::make_unique<SelectedPane>(mHome.get(), *mPanes, mUi, type);
        mChart = std::make_unique<MainChart>(*mPanes, mUi);
        mPlacement = std::make_unique<FormulaPlacement>(*mPanes, *mSelected, *mChart, mBar, [this] {
            CRealtimeWidget *pane = mPanes->add(PaneRow::kSubStretch);
            mSelected->select(pane->getId());
            return pane;
        });
        mKeyed = std::make_unique<KeyedFormulas>(*mPanes, *mSelected, *mChart, *mPlacement);
    }
    void addPanes(int count) {
        for (int i = 0; i < count; ++i) {
            mPanes->add(PaneRow::kSubStretch);
        }
    }
    QList<int> idsOf() const {
        QList<int> ids;
        for (const CRealtimeWidget *pane : mPanes->all()) {
            ids.append(pane->getId());
        }
        return ids;
    }
    Names onMain() const { return formulasOf(mPanes->main()); }
    Names onSub(int i) const { return formulasOf(mPanes->subs().value(i)); }
    GZ::CHighlightWidget *frameOf() const { return mHome->findChild<GZ::CHighlightWidget *>(); }

    std::unique_ptr<QWidget> mHome;
    std::unique_ptr<PaneRow> mPanes;
    std::unique_ptr<SelectedPane> mSelected;
    TemplateBar mBar;
    std::unique_ptr<MainChart> mChart;
    std::unique_ptr<FormulaPlacement> mPlacement;
    std::unique_ptr<KeyedFormulas> mKeyed;
};

TEST_F(ViewParts, IdOfAPaneIsNeverUsedAgain) {
    makeParts();
    addPanes(2);
    EXPECT_EQ(idsOf(), (QList<int>{0, 1, 2}));
    mPanes->remove(mPanes->sub(2));
    mPanes->remove(mPanes->sub(1));
    addPanes(1);
    EXPECT_EQ(idsOf(), (QList<int>{0, 3}));
    EXPECT_EQ(mPanes->sub(0), nullptr) << "the main pane is no formula pane";
    EXPECT_EQ(mPanes->sub(1), nullptr);
}

TEST_F(ViewParts, RemovedPaneIsOutOfTheListAtOnceAndGoesLater) {
    makeParts();
    addPanes(1);
    const QPointer<CRealtimeWidget> pane = mPanes->sub(1);
    mPanes->remove(pane);
    EXPECT_TRUE(mPanes->subs().isEmpty());
    EXPECT_EQ(mPanes->list()->count(), 1);
    ASSERT_TRUE(pane);
    EXPECT_TRUE(pane->isHidden());
    settle();
    EXPECT_FALSE(pane);
}

TEST_F(ViewParts, HalfOfTheMainPaneIsTheShareOfANewOne) {
    makeParts();
    EXPECT_EQ(mPanes->newStretch(), 1);
    addPanes(2);
    mPanes->setMainStretch(7);
    EXPECT_EQ(mPanes->newStretch(), 3);
    EXPECT_EQ(mPanes->stretches(), (std::vector<int>{7, 1, 1}));
}

TEST_F(ViewParts, MaximisedRowTellsTheStretchesOfBefore) {
    makeParts();
    addPanes(1);
    mPanes->toggleMaximised(1);
    EXPECT_TRUE(mPanes->list()->isDragEnable()) << "one formula pane alone is not maximised";
    addPanes(1);
    mPanes->toggleMaximised(7);
    EXPECT_TRUE(mPanes->list()->isDragEnable()) << "no such pane";
    mPanes->toggleMaximised(2);
    EXPECT_FALSE(mPanes->list()->isDragEnable());
    EXPECT_EQ(mPanes->stretches(), (std::vector<int>{2, 1, 1}));
    mPanes->toggleMaximised(7);
    EXPECT_TRUE(mPanes->list()->isDragEnable()) << "any pane restores them";
    EXPECT_EQ(mPanes->stretches(), (std::vector<int>{2, 1, 1}));
}

TEST_F(ViewParts, FormulasAreToldPaneByPane) {
    makeParts();
    addPanes(2);
    mPanes->sub(2)->addIndex("KDJ");
    mPanes->sub(1)->addIndex("MACD");
    mPanes->sub(1)->addIndex("VOL");
    EXPECT_EQ(mPanes->subFormulas(), (QVector<QString>{"MACD", "VOL", "KDJ"}));
}

TEST_F(ViewParts, RowThatIsGoingHasNoPanes) {
    makeParts();
    addPanes(2);
    mPanes->deleteAll();
    EXPECT_EQ(mPanes->main(), nullptr);
    EXPECT_TRUE(mPanes->all().isEmpty());
}

TEST_F(ViewParts, SelectionMayBeOfAPaneThatHasGone) {
    makeParts();
    addPanes(2);
    EXPECT_EQ(mSelected->id(), -1);
    mSelected->select(1);
    EXPECT_EQ(mSelected->sub(), mPanes->sub(1));
    mPanes->remove(mPanes->sub(1));
    EXPECT_EQ(mSelected->id(), 1);
    EXPECT_EQ(mSelected->sub(), nullptr);
    EXPECT_EQ(mSelected->subOrLast(), mPanes->sub(2));
    mSelected->selectAt(5);
    EXPECT_EQ(mSelected->id(), 2) << "the last one";
    mPanes->remove(mPanes->sub(2));
    mSelected->selectAt(0);
    EXPECT_TRUE(mSelected->isMain());
    EXPECT_EQ(mSelected->subOrLast(), nullptr);
    EXPECT_TRUE(frameOf()->isHidden()) << "no frame without formula panes";
}

TEST_F(ViewParts, FrameStaysForAnIdThatNoPaneHas) {
    makeParts();
    addPanes(2);
    mSelected->select(2);
    const QRect before = frameOf()->geometry();
    EXPECT_EQ(before.size(), mPanes->sub(2)->size());
    mSelected->select(9);
    EXPECT_EQ(frameOf()->geometry(), before);
    EXPECT_EQ(mSelected->id(), 9);
}

TEST_F(ViewParts, NothingIsSelectedInAPlainView) {
    makeParts(EIndexViewType::Plain);
    addPanes(1);
    mSelected->select(1);
    EXPECT_EQ(mSelected->id(), -1);
    EXPECT_TRUE(frameOf()->isHidden());
}

TEST_F(ViewParts, OneFormulaReplacesTheChartAndOneIsAttached) {
    makeParts();
    mChart->addMainFormulas();
    EXPECT_EQ(onMain(), (Names{"REALTIME", "REALTIMEVOL"}));
    EXPECT_TRUE(mChart->toggleAttached("MA"));
    EXPECT_TRUE(mChart->toggleAttached("BOLL"));
    EXPECT_EQ(onMain(), (Names{"REALTIME", "REALTIMEVOL", "BOLL"}));
    mChart->replaceBy("TREND");
    EXPECT_EQ(onMain(), (Names{"BOLL", "TREND"}));
    EXPECT_FALSE(mUi->mShowVolume);
    mChart->replaceBy("REALTIME");
    EXPECT_EQ(onMain(), (Names{"BOLL", "REALTIME", "REALTIMEVOL"}));
    EXPECT_TRUE(mUi->mShowVolume);
    mChart->attachAnew("BOLL");
    EXPECT_EQ(onMain(), (Names{"REALTIME", "REALTIMEVOL", "BOLL"})) << "it has gone to the end";
    EXPECT_FALSE(mChart->toggleAttached("BOLL")) << "there is nothing new to show";
    EXPECT_EQ(onMain(), (Names{"REALTIME", "REALTIMEVOL"}));
}

TEST_F(ViewParts, NetValueIsOfFundsThatPublishOne) {
    makeParts();
    mChart->applyNetValue();
    EXPECT_FALSE(mChart->has("IOPV"));
    mHost.mTypes.mTypes.insert({100013, "SH", "600000"});
    mChart->applyNetValue();
    mChart->applyNetValue();
    EXPECT_EQ(onMain(), (Names{"IOPV"}));
    mHost.mTypes.mTypes.clear();
    mChart->applyNetValue();
    EXPECT_EQ(onMain(), Names());
}

TEST_F(ViewParts, UnknownFormulaGoesNowhere) {
    makeParts();
    mPlacement->show("NOSUCH");
    mPlacement->apply("NOSUCH", corvane::ERunMode::Ordinary);
    mPlacement->confirm("NOSUCH");
    mPlacement->modify("NOSUCH");
    EXPECT_TRUE(onMain().isEmpty());
    EXPECT_TRUE(mPanes->subs().isEmpty());
}

TEST_F(ViewParts, FormulaGoesIntoTheSelectedPaneElseTheLast) {
    makeParts();
    mChart->addMainFormulas();
    mPlacement->show("KDJ");
    EXPECT_EQ(onSub(0), (Names{"KDJ"})) << "a pane is made for the first";
    addPanes(1);
    mPanes->sub(2)->addIndex("MACD");
    mSelected->select(1);
    mPlacement->show("VOL");
    EXPECT_EQ(onSub(0), (Names{"VOL"}));
    mSelected->select(0);
    mPlacement->show("CCI");
    EXPECT_EQ(onSub(1), (Names{"CCI"}));
}

TEST_F(ViewParts, KeyIsForgottenWithItsPane) {
    makeParts();
    mChart->addMainFormulas();
    mKeyed->place("k", 0, "KDJ");
    ASSERT_EQ(mPanes->subs().size(), 1);
    mKeyed->forget(mPanes->sub(1));
    mPanes->remove(mPanes->sub(1));
    addPanes(1);
    mKeyed->place("k", 0, "MACD");
    EXPECT_EQ(mPanes->subs().size(), 2) << "as if the key were new";
    mKeyed->place("other", 5, "MACD");
    EXPECT_EQ(mPanes->subs().size(), 2) << "no such type";
}

TEST_F(ViewParts, WithoutABarNothingHappens) {
    makeParts();
    addPanes(1);
    mBar.setVisible(true);
    mBar.toggle();
    mBar.enableButtons(true);
    mBar.placeButtons();
    mBar.refresh();
    mBar.selectFormulas({"KDJ"});
    mBar.selectTemplates({"mine"});
    mBar.givenUp("KDJ");
    mBar.replaced(mPanes->sub(1), "KDJ");
    mBar.deleted("KDJ");
    mBar.save({"KDJ"});
    EXPECT_EQ(mBar.widget(), nullptr);
    EXPECT_TRUE(mBar.selectedFormulas().isEmpty());
    EXPECT_TRUE(mBar.selectedTemplates().isEmpty());
    EXPECT_TRUE(mBar.templateFormulas().isEmpty());
}

TEST_F(ViewParts, CrossLineTakesFourKeys) {
    makeParts();
    CrossLines lines(*mPanes, mUi);
    for (const int key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End}) {
        EXPECT_TRUE(lines.takeKey(key)) << key;
    }
    EXPECT_TRUE(lines.isShown());
    for (const int key : {Qt::Key_Up, Qt::Key_Escape, Qt::Key_A}) {
        EXPECT_FALSE(lines.takeKey(key)) << key;
    }
    lines.toggle();
    EXPECT_FALSE(lines.isShown());
}

TEST_F(ViewParts, AnythingMayBeToldToBeUnderTheMouse) {
    makeParts();
    CrossLines lines(*mPanes, mUi);
    mUi->mCrossShown = true;
    lines.followGraph(nullptr);
    lines.followGraph(mHome.get());
    EXPECT_TRUE(lines.isShown());
}

} // namespace
