#include "chartview/CRealtimeGraphWidget.h"

#include "tests/chartview/GraphFixture.h"

#include <cmath>
#include <limits>

using namespace TC;

namespace {

using corvane::ERunMode;

class Graph : public tests::GraphFixture {
protected:
    QStringList requests() const { return mHost.mLog.of("CFormulaManager::requestFormulas"); }
    QStringList replayRequests() const { return mHost.mLog.of("CReplayManager::requestFormulas"); }
    void addGroupModel(EFormulaLanguage language) {
        const CFormulaDetailPtr model = mHost.mCatalogue.add("GROUPMODEL");
        model->mStrParamNames = {"group"};
        model->mStrParamValues = {"x"};
        model->mLanguage = language;
    }
    void showGroupGraphs() { mHost.mTypes.mIndexes.insert({"SH", "600000"}); }
};

// Identity

TEST_F(Graph, HasItsNameAndTracksTheMouse) {
    makeMainGraph();
    EXPECT_EQ(mGraph->objectName(), "realtime_graph_widget");
    EXPECT_TRUE(mGraph->hasMouseTracking());
}

TEST_F(Graph, AnswersForItsClassAndItsDrawingLayer) {
    makeMainGraph();
    QObject *object = mGraph.get();
    EXPECT_EQ(object->qt_metacast("TC::CRealtimeGraphWidget"), mGraph.get());
    EXPECT_EQ(object->qt_metacast("IGraphWidget"), static_cast<IGraphWidget *>(mGraph.get()));
    EXPECT_EQ(object->qt_metacast("GZ::CBaseWidget"), static_cast<GZ::CBaseWidget *>(mGraph.get()));
    EXPECT_EQ(object->qt_metacast("Other"), nullptr);
}

// Passed on to the data

TEST_F(Graph, FormulasAreThoseOfItsData) {
    makeGraph(EIndexDisplayType::Sub, {"MACD"});
    EXPECT_EQ(mGraph->getData(), mData);
    mGraph->addIndex("kdj");
    EXPECT_EQ(mGraph->getIndexes(), (QList<QString>{"MACD", "KDJ"}));
    EXPECT_TRUE(mGraph->findIndex("Kdj"));
    mGraph->delIndex("MACD");
    EXPECT_EQ(mData->getFormulas(), (QList<QString>{"KDJ"}));
    mGraph->updateIndex("MACD");
    EXPECT_EQ(mData->getFormulas(), (QList<QString>{"MACD"}));
    mGraph->delAllIndex();
    EXPECT_TRUE(mGraph->getIndexes().isEmpty());
    EXPECT_FALSE(mGraph->findIndex("MACD"));
}

TEST_F(Graph, WithdrawsTheRequestsOfItsData) {
    makeMainGraph();
    mGraph->request(ERunMode::Ordinary);
    EXPECT_EQ(mHost.mFormulas.mLive.all().size(), 2);
    mGraph->unrequest();
    EXPECT_TRUE(mHost.mFormulas.mLive.all().isEmpty());
}

TEST_F(Graph, SynchronousRequestIsThatOfItsData) {
    makeMainGraph();
    mGraph->syncRequest(ERunMode::Ordinary);
    EXPECT_EQ(mHost.mLog.of("CFormulaManager::requestFormulasSync").size(), 1);
}

TEST_F(Graph, PushedResultReachesItsData) {
    makeGraph(EIndexDisplayType::Sub, {"MACD"});
    mGraph->minitermFormulaDataCallback(tests::makeMeta(1),
                                        tests::makeResult(tests::minuteTimes(tests::kDay, 570, 3), {1, 2, 3}),
                                        "SH600000", "MACD", 1);
    EXPECT_TRUE(mData->hasSeries(key("MACD")));
}

TEST_F(Graph, DroppingOverlaysDropsTheirSeriesAndRepaints) {
    mHost.mStocks.add("SZ", "000001", 5.0);
    mUi->addStock("SZ000001", "", true);
    makeMainGraph();
    showGraph(300, 200);
    fillMain();
    answer("REALTIME", {5.0, 5.1, 5.2, 5.1, 5.0}, 0, "000001");
    const CFormulaKey overlay("SZ000001", "REALTIME");
    ASSERT_TRUE(mData->hasSeries(overlay));
    tests::PaintWatch watch(mGraph.get());
    QCoreApplication::processEvents();
    watch.mRegions.clear();
    mGraph->updateOverlay();
    EXPECT_FALSE(mData->hasSeries(overlay));
    EXPECT_TRUE(mData->hasSeries(key("REALTIME")));
    QCoreApplication::processEvents();
    ASSERT_EQ(watch.mRegions.size(), 1);
    EXPECT_EQ(watch.mRegions[0], QRegion(mGraph->rect()));
}

TEST_F(Graph, DestructionWithdrawsAndEmptiesItsData) {
    makeMainGraph();
    showGraph(300, 200);
    fillMain();
    ASSERT_FALSE(mData->getData().isEmpty());
    mGraph.reset();
    EXPECT_TRUE(mData->getData().isEmpty());
    EXPECT_TRUE(mHost.mFormulas.mLive.all().isEmpty());
}

// Requests

TEST_F(Graph, OrdinaryRequestGoesToTheFormulaService) {
    makeMainGraph();
    mGraph->request(ERunMode::Ordinary);
    EXPECT_EQ(requests().size(), 1);
    EXPECT_TRUE(replayRequests().isEmpty());
}

TEST_F(Graph, RequestInReplayGoesToTheReplayService) {
    makeMainGraph();
    mGraph->beReplay(true);
    mGraph->request(ERunMode::Ordinary);
    EXPECT_TRUE(requests().isEmpty());
    EXPECT_EQ(replayRequests().size(), 1);
    mGraph->beReplay(false);
    mGraph->request(ERunMode::Ordinary);
    EXPECT_EQ(requests().size(), 1);
}

TEST_F(Graph, NativeGroupModelInASubPaneIsNotRequested) {
    addGroupModel(EFormulaLanguage::Native);
    makeGraph(EIndexDisplayType::Sub, {"GROUPMODEL"});
    mGraph->request(ERunMode::Ordinary);
    EXPECT_TRUE(requests().isEmpty());
    mGraph->beReplay(true);
    mGraph->request(ERunMode::Ordinary);
    EXPECT_TRUE(replayRequests().isEmpty());
}

TEST_F(Graph, ScriptGroupModelInASubPaneIsRequested) {
    addGroupModel(EFormulaLanguage::Python);
    makeGraph(EIndexDisplayType::Sub, {"GROUPMODEL"});
    mGraph->request(ERunMode::Ordinary);
    EXPECT_EQ(requests().size(), 1);
}

TEST_F(Graph, LanguageOfTheFirstFormulaDecidesOnAGroupModel) {
    addGroupModel(EFormulaLanguage::Python);
    makeGraph(EIndexDisplayType::Sub, {"MACD", "GROUPMODEL"});
    mGraph->request(ERunMode::Ordinary);
    EXPECT_TRUE(requests().isEmpty());
    addGroupModel(EFormulaLanguage::Native);
    mHost.mCatalogue.getFormula("MACD")->mLanguage = EFormulaLanguage::Python;
    mGraph->request(ERunMode::Ordinary);
    EXPECT_EQ(requests().size(), 1);
    mHost.mCatalogue.mFormulas.remove("MACD");
    mGraph->request(ERunMode::Ordinary);
    EXPECT_EQ(requests().size(), 1) << "an unknown first formula has no language";
}

TEST_F(Graph, GroupModelIsRequestedWhereGroupGraphsAreShown) {
    addGroupModel(EFormulaLanguage::Native);
    showGroupGraphs();
    makeGraph(EIndexDisplayType::Sub, {"GROUPMODEL"});
    mGraph->request(ERunMode::Ordinary);
    EXPECT_EQ(requests().size(), 1);
}

TEST_F(Graph, GroupModelIsRequestedInAMainPane) {
    addGroupModel(EFormulaLanguage::Native);
    makeGraph(EIndexDisplayType::Main, {"GROUPMODEL"});
    mGraph->request(ERunMode::Ordinary);
    EXPECT_EQ(requests().size(), 1);
}

// The mouse, as the pane asks for it

TEST_F(Graph, RowOfTheMouseCountsOnlyWhileItMovesHere) {
    makeMainGraph();
    member(tests::Peek_mMouseY()) = 33;
    EXPECT_FALSE(mGraph->isCrossActive());
    EXPECT_EQ(mGraph->getMouseY(), -1);
    member(tests::Peek_mCrossActive()) = true;
    EXPECT_TRUE(mGraph->isCrossActive());
    EXPECT_EQ(mGraph->getMouseY(), 33);
}

// Events

TEST_F(Graph, TwoEventsOfTheHostAreSwallowed) {
    makeMainGraph();
    mHost.mLog.clear();
    EXPECT_TRUE(mGraph->handleEvent(3024, 1, 2, "x", nullptr));
    EXPECT_TRUE(mGraph->handleEvent(3196, 1, 2, "x", nullptr));
    EXPECT_TRUE(mKeeper->mEvents.empty());
    EXPECT_TRUE(mHost.mLog.all().isEmpty());
}

TEST_F(Graph, Event3101RequestsEverythingAnew) {
    makeMainGraph();
    showGraph(300, 200);
    fillMain();
    const QList<fakehost::LiveRequest> before = mHost.mFormulas.mLive.all();
    mHost.mLog.clear();
    EXPECT_TRUE(mGraph->handleEvent(3101, 0, 0, "", nullptr));
    EXPECT_EQ(mHost.mLog.of("CFormulaManager::unrequestFormulas").size(), 1);
    EXPECT_EQ(requests().size(), 1);
    const QList<fakehost::LiveRequest> after = mHost.mFormulas.mLive.all();
    ASSERT_EQ(after.size(), 2);
    EXPECT_NE(after[0].id(), before[0].id());
}

TEST_F(Graph, OtherEventsGoUpwards) {
    makeMainGraph();
    int payload = 0;
    EXPECT_TRUE(mGraph->handleEvent(4711, 1, 2, "x", &payload));
    ASSERT_EQ(mKeeper->of(4711).size(), 1u);
    EXPECT_EQ(mKeeper->mEvents[0].first, 1);
    EXPECT_EQ(mKeeper->mEvents[0].second, 2);
    EXPECT_EQ(mKeeper->mEvents[0].text, "x");
    EXPECT_EQ(mKeeper->mEvents[0].data, &payload);
}

TEST_F(Graph, FinishedDrawingIsToldToTheHost) {
    makeMainGraph();
    int notification = 0;
    IGraphController *layer = mGraph.get();
    layer->onGraphFinished(&notification);
    ASSERT_EQ(mKeeper->of(3183).size(), 1u);
    EXPECT_EQ(mKeeper->mEvents[0].first, 0);
    EXPECT_EQ(mKeeper->mEvents[0].second, 0);
    EXPECT_EQ(mKeeper->mEvents[0].text, "");
    EXPECT_EQ(mKeeper->mEvents[0].data, &notification);
}

// Size and visibility

TEST_F(Graph, ResizingFitsTheChartAndTellsTheHost) {
    makeMainGraph();
    showGraph(300, 200);
    mKeeper->mEvents.clear();
    mGraph->resize(310, 190);
    EXPECT_TRUE(mData->covers(QSize(310, 190)));
    ASSERT_EQ(mKeeper->of(3033).size(), 1u);
    EXPECT_EQ(mKeeper->mEvents[0].first, 0);
    EXPECT_EQ(mKeeper->mEvents[0].second, 0);
    EXPECT_EQ(mKeeper->mEvents[0].data, nullptr);
}

TEST_F(Graph, HiddenGraphDrawsNoChart) {
    makeGraph(EIndexDisplayType::Sub, {"MACD"});
    mData->setTradeDate(tests::kDay - 86400); // a past day, so that all of it is in the pixmap
    showGraph(300, 200);
    mGraph->hide();
    const QImage empty = chart();
    mGraph->request(ERunMode::Ordinary);
    answer("MACD", {1.0, 5.0, 2.0, 4.0});
    rescale();
    EXPECT_EQ(chart(), empty);
    mGraph->show();
    EXPECT_NE(chart(), empty) << "drawn at once when it is shown";
}

// Conversions of the drawing layer

class GraphConversions : public Graph {
protected:
    void SetUp() override {
        makeMainGraph();
        showGraph(482, 300); // two pixels a minute
        fillMain();
        mStrip->setMaxMinMap({{key("REALTIME"), {12.0, 8.0}}, {key("REALTIMEVOL"), {1000.0, 0.0}}});
        ASSERT_DOUBLE_EQ(mUi->mDayWidth, 482.0);
    }
    QPointF toPixel(double index, double value) {
        return member(tests::Peek_mSpace()).toPixel(QPointF(index, value));
    }
    QPointF toLogical(double x, double y) { return member(tests::Peek_mSpace()).toLogical(QPointF(x, y)); }
};

TEST_F(GraphConversions, IndexAndValueBecomeAPixelOfThePriceRows) {
    // 200 of 300 rows are those of the price: 50 rows a unit.
    EXPECT_EQ(toPixel(0, 8.0), QPointF(1, 200));
    EXPECT_EQ(toPixel(120, 10.0), QPointF(241, 100));
    EXPECT_EQ(toPixel(120.9, 12.0), QPointF(241, 0));
    mUi->mShowVolume = false;
    EXPECT_EQ(toPixel(120, 10.0), QPointF(241, 150));
}

TEST_F(GraphConversions, PixelBecomesIndexAndValue) {
    EXPECT_EQ(toLogical(240.9, 100.9), QPointF(120, 10.0));
    EXPECT_EQ(toLogical(0.0, 200.0), QPointF(0, 8.0));
    EXPECT_EQ(toLogical(481.0, 250.0), QPointF(240, 500.0)) << "in the volume band, of its range";
}

TEST_F(GraphConversions, TradingClientKeepsATimeInPlaceOfTheIndex) {
    mHost.mConfig.mClientType = EClientType::Trading;
    const QDateTime half(QDate(2024, 3, 15), QTime(10, 0, 0));
    EXPECT_EQ(toPixel(half.toMSecsSinceEpoch(), 10.0), QPointF(61, 100)) << "10:00 is index 30";
    const QDateTime seconds(QDate(2024, 3, 15), QTime(10, 0, 25));
    EXPECT_EQ(toPixel(seconds.toMSecsSinceEpoch(), 10.0), QPointF(111, 100))
        << "its seconds count as minutes: index 55";
}

TEST_F(GraphConversions, OtherClientsDoNot) {
    mHost.mConfig.mClientType = EClientType::Web;
    EXPECT_EQ(toPixel(30, 10.0), QPointF(61, 100));
}

TEST_F(GraphConversions, TakeAnyNumber) {
    const double infinite = std::numeric_limits<double>::infinity();
    for (const double odd : {std::nan(""), infinite, -infinite, 1e300, -1e300, kUnsetValue}) {
        EXPECT_GE(toPixel(odd, 10.0).x(), 1);
        EXPECT_LE(toPixel(odd, 10.0).x(), 482);
        EXPECT_GE(toLogical(odd, 0).x(), 0);
        EXPECT_LE(toLogical(odd, 0).x(), 240);
        toPixel(0, odd);
        toLogical(0, odd);
        mHost.mConfig.mClientType = EClientType::Trading;
        toPixel(odd, odd);
        mHost.mConfig.mClientType.reset();
    }
}

TEST_F(GraphConversions, DrawingsFollowTheScale) {
    mGraph->setGraphType(EVmGraphType::HorizontalLine);
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(240, 100), QPointF(240, 100), Qt::LeftButton,
                      Qt::LeftButton, {});
    ASSERT_TRUE(mGraph->onMousePress(&press, mGraph.get()));
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(240, 100), QPointF(240, 100), Qt::LeftButton, {},
                        {});
    mGraph->recalcValueByAxis();
    mGraph->onMouseRelease(&release);
    const auto rowOfDrawing = [this] {
        const QImage with = paintedGraph();
        const QImage without = chart();
        for (int y = 0; y < 200; ++y) {
            // Far from the handles at its point.
            if (with.pixel(400, y) != without.pixel(400, y)) {
                return y;
            }
        }
        return -1;
    };
    EXPECT_NEAR(rowOfDrawing(), 100, 1);
    // Twice the range around the same middle less one: 10.0 moves up from the middle to a quarter of the height.
    const IndexBaseData::MaxMinMap wider{{key("REALTIME"), {12.0, 4.0}}, {key("REALTIMEVOL"), {1000.0, 0.0}}};
    mStrip->setMaxMinMap(wider);
    mGraph->updateAxis(wider, true);
    EXPECT_NEAR(rowOfDrawing(), 50, 1);
}

} // namespace
