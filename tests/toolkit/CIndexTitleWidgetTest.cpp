#include "host/drawing/CIndexTitleWidget.h"

#include "host/toolkit/CPushButton.h"
#include "tests/chartview/ChartFixture.h"

#include <QHelpEvent>
#include <QToolTip>
#include <QtTest>

#include <algorithm>
#include <cmath>

using namespace TC;

namespace {

QString joined(const CArrowColorSimpleText &text) {
    return text.text();
}

class CIndexTitleWidgetTest : public tests::ChartFixture {
protected:
    void makeTitle(EIndexDisplayType type, const QStringList &formulas) {
        mDetail->mName = "浦发银行";
        mData = makeData(type, formulas);
        mTitle = new CIndexTitleWidget(mData, type, EIndexViewType::Ordinary, 1, 50, 0, nullptr, mKeeper.get());
        mTitle->setRealtimeUiParam(mUi);
        mTitle->setStock(mDetail, false);
        mKeeper->resize(600, 100);
        mTitle->resize(600, mTitle->height());
        mKeeper->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(mKeeper.get()));
    }
    /// Main pane of three minutes, 10.00, 10.30, 10.12, the average 0.05 below.
    void makeMain() {
        makeTitle(EIndexDisplayType::Main, {"REALTIME"});
        mData->request(corvane::ERunMode::Ordinary);
        answerLines("REALTIME", {"价格", "均价"}, {{10.0, 10.3, 10.12}, {9.95, 10.25, 10.07}});
        mTitle->updateView();
    }
    void makeSub() {
        makeTitle(EIndexDisplayType::Sub, {"MACD"});
        mHost.mCatalogue.getFormula(QStringLiteral("MACD"))->mParamValues = {12, 26, 9};
        mData->request(corvane::ERunMode::Ordinary);
        answerLines("MACD", {"DIFF", "DEA"}, {{0.1, 0.25, 0.2}, {0.3, 0.35, 0.4}});
        mTitle->updateView();
    }
    void answerLines(const char *formula, std::vector<std::string> names,
                     std::vector<std::vector<double>> values, const char *code = "600000") {
        const fakehost::LiveRequest request =
            mHost.mFormulas.mLive.find(QLatin1String(formula) + QLatin1String(".lua"), QLatin1String(code));
        ASSERT_TRUE(request.onHistory) << formula;
        const int points = static_cast<int>(values[0].size());
        request.onHistory(tests::makeMeta(static_cast<int>(values.size()), {}, std::move(names)),
                          tests::makeResult(tests::minuteTimes(tests::kDay, 570, points), std::move(values)),
                          request.id(), 1, QString(), false);
    }
    GZ::CPushButton *button(int id) {
        for (GZ::CPushButton *found : mTitle->findChildren<GZ::CPushButton *>()) {
            if (found->id() == id) {
                return found;
            }
        }
        return nullptr;
    }
    QList<int> shownButtons() {
        QList<int> ids;
        for (const GZ::CPushButton *found : mTitle->findChildren<GZ::CPushButton *>()) {
            if (found->isVisible()) {
                ids.append(found->id());
            }
        }
        std::sort(ids.begin(), ids.end());
        return ids;
    }
    QString textOf(const char *text) { return QString::fromUtf8(text); }

    boost::shared_ptr<CRealtimeData> mData;
    CIndexTitleWidget *mTitle = nullptr;
};

TEST_F(CIndexTitleWidgetTest, MainPaneTellsInstrumentAndTheLastValues) {
    makeMain();
    // 10.12 against a close of 10.00.
    EXPECT_EQ(mTitle->text(), textOf("浦发银行 600000 价格:10.12 均价:10.07 涨跌:+0.12 涨幅:+1.20%"));
}

TEST_F(CIndexTitleWidgetTest, TellsTheValuesAtTheCursor) {
    makeMain();
    mTitle->updateIndexId(0);
    EXPECT_EQ(mTitle->text(), textOf("浦发银行 600000 价格:10.00 均价:9.95 涨跌:0.00 涨幅:0.00%"));
    mTitle->updateIndexId(1);
    EXPECT_TRUE(mTitle->text().contains(textOf("价格:10.30 均价:10.25 涨跌:+0.30 涨幅:+3.00%")));
    mTitle->updateIndexId(-1);
    EXPECT_TRUE(mTitle->text().contains(textOf("价格:10.12")));
}

TEST_F(CIndexTitleWidgetTest, BehindTheDataThereAreNoValuesAndNoChange) {
    makeMain();
    mTitle->updateIndexId(100);
    EXPECT_EQ(mTitle->text(), textOf("浦发银行 600000 价格:-- 均价:--"));
}

TEST_F(CIndexTitleWidgetTest, FollowsTheStream) {
    makeMain();
    const fakehost::LiveRequest request =
        mHost.mFormulas.mLive.find(QStringLiteral("REALTIME.lua"), QStringLiteral("600000"));
    request.onRealtime(0, request.id(), tests::makePoint(tests::minuteTime(tests::kDay, 573), {9.5, 9.9}));
    mTitle->updateView();
    EXPECT_TRUE(mTitle->text().contains(textOf("价格:9.50 均价:9.90 涨跌:-0.50 涨幅:-5.00%")));
}

TEST_F(CIndexTitleWidgetTest, SubPaneTellsFormulaWithParametersAndLines) {
    makeSub();
    EXPECT_EQ(mTitle->text(), textOf("MACD(12,26,9) DIFF:0.20 DEA:0.40"));
}

TEST_F(CIndexTitleWidgetTest, NamesTheFormulaAskedForBeforeItsSeriesHasCome) {
    makeTitle(EIndexDisplayType::Sub, {"MACD"});
    EXPECT_EQ(mTitle->text(), QStringLiteral("MACD"));
    mTitle->setShowIndex(QStringLiteral("KDJ"));
    EXPECT_EQ(mTitle->text(), QStringLiteral("MACD KDJ"));
    mTitle->setShowIndex(QStringLiteral("macd"));
    EXPECT_EQ(mTitle->text(), QStringLiteral("MACD"));
}

TEST_F(CIndexTitleWidgetTest, OverlaysAreListedBehindTheFormulas) {
    const CInstrumentDetailPtr other = mHost.mStocks.add("SZ", "000001", 20.0, 0.001);
    other->mName = "平安银行";
    makeTitle(EIndexDisplayType::Main, {"REALTIME"});
    mUi->addStock(QStringLiteral("SZ000001"), QString(), true);
    mData->request(corvane::ERunMode::Ordinary);
    answerLines("REALTIME", {"价格", "均价"}, {{10.0, 10.1}, {10.0, 10.1}});
    answerLines("REALTIME", {"价格", "均价"}, {{20.0, 20.5}, {20.0, 20.5}}, "000001");
    mTitle->setAddStockList(mUi->getAllAddStockList());
    // Each against its own close.
    EXPECT_TRUE(mTitle->text().endsWith(textOf("涨幅:+1.00% 平安银行 价格:20.500 涨幅:+2.50%")))
        << mTitle->text().toStdString();
    mTitle->updateIndexId(0);
    EXPECT_TRUE(mTitle->text().endsWith(textOf("平安银行 价格:20.000 涨幅:0.00%")));
    mTitle->clearAddStockList();
    EXPECT_FALSE(mTitle->text().contains(textOf("平安银行")));
}

TEST_F(CIndexTitleWidgetTest, CurvesOfTheTradingTellWhatTheyStandAt) {
    makeMain();
    mUi->mLinkageFlags = 4;
    mUi->mLinkageShow = {false, false, false, true, false, true, true, false};
    mUi->mLinkageAmounts = {{1, {1500.0, 0.0}}};
    mUi->mLinkageProfits = {{0, -12.5}, {2, 30.0}};
    mUi->mLinkageBalances = {{0, 1234567.0}};
    mTitle->updateView();
    EXPECT_TRUE(mTitle->text().endsWith(textOf("买入额:1500.00 卖出额:0.00 盈亏:30.00 配平:123.46万")))
        << mTitle->text().toStdString();
    mTitle->updateIndexId(0);
    EXPECT_TRUE(mTitle->text().endsWith(textOf("涨幅:0.00% 盈亏:-12.50 配平:123.46万")));
}

TEST_F(CIndexTitleWidgetTest, TellsTheDayThatIsChosen) {
    makeMain();
    auto older = boost::make_shared<CRealtimeData>(mUi, EIndexDisplayType::Main, mKeeper.get());
    older->setTradeDate(tests::kDay - 86400);
    older->addFormula(QStringLiteral("REALTIME"));
    mHost.mStocks.mCloses[qMakePair(QStringLiteral("SH600000"), tests::kDay - 86400)] = 8.0;
    older->applyPushedResult(
        tests::makeMeta(1, {}, {"价格"}),
        tests::makeResult(tests::minuteTimes(tests::kDay - 86400, 570, 2), std::vector<double>{8.0, 8.4}),
        QStringLiteral("REALTIME"));
    mTitle->setIndexData(older);
    // Against the close of the day before that one.
    EXPECT_EQ(mTitle->text(), textOf("浦发银行 600000 2024-03-14 价格:8.40 涨跌:+0.40 涨幅:+5.00%"));
    mTitle->setIndexData(nullptr);
    EXPECT_TRUE(mTitle->text().contains(textOf("价格:10.12")));
    mTitle->setIndexData(older);
    older.reset(); // the graph of that day goes
    mTitle->updateView();
    EXPECT_TRUE(mTitle->text().contains(textOf("价格:10.12")));
}

TEST_F(CIndexTitleWidgetTest, WithoutALastCloseThereIsNoChange) {
    makeMain();
    for (const double close : {0.0, kUnsetValue}) {
        mDetail->mLastClose = close;
        mTitle->updateView();
        EXPECT_EQ(mTitle->text(), textOf("浦发银行 600000 价格:10.12 均价:10.07"));
    }
}

TEST_F(CIndexTitleWidgetTest, ClearedStockLeavesTheValues) {
    makeMain();
    mTitle->clearStock();
    EXPECT_EQ(mTitle->text(), textOf("价格:10.12 均价:10.07"));
}

TEST_F(CIndexTitleWidgetTest, ClearGoesBackToTheLastValue) {
    makeSub();
    mTitle->updateIndexId(0);
    EXPECT_TRUE(mTitle->text().contains(QStringLiteral("DIFF:0.10")));
    mTitle->clear();
    EXPECT_TRUE(mTitle->text().contains(QStringLiteral("DIFF:0.20")));
}

TEST_F(CIndexTitleWidgetTest, SimpleFormTellsTheModelAlone) {
    makeSub();
    mTitle->setSimpleTite(textOf("双均线模型"));
    EXPECT_TRUE(mTitle->text().startsWith(QStringLiteral("MACD")));
    mTitle->setShowSimpleTitle(true);
    EXPECT_EQ(mTitle->text(), textOf("双均线模型"));
    EXPECT_EQ(shownButtons(), (QList<int>{CIndexTitleWidget::eClose}));
    mTitle->setShowSimpleTitle(false);
    EXPECT_TRUE(mTitle->text().startsWith(QStringLiteral("MACD")));
}

TEST_F(CIndexTitleWidgetTest, ButtonsDeliverTheirIdsAsEventFive) {
    makeMain();
    EXPECT_EQ(shownButtons(), (QList<int>{500, 501, 502, 503, 504}));
    for (const int id : shownButtons()) {
        QTest::mouseClick(button(id), Qt::LeftButton);
        const std::vector<tests::Event> events = mKeeper->of(5);
        ASSERT_FALSE(events.empty());
        EXPECT_EQ(events.back().first, id);
        EXPECT_EQ(events.back().second, 0);
        EXPECT_EQ(events.back().text, QString());
        EXPECT_EQ(events.back().data, nullptr);
    }
    EXPECT_EQ(mKeeper->of(5).size(), 5u);
}

TEST_F(CIndexTitleWidgetTest, SubPaneCanBeClosed) {
    makeSub();
    EXPECT_EQ(shownButtons(), (QList<int>{100, 500, 501}));
    QTest::mouseClick(button(100), Qt::LeftButton);
    ASSERT_EQ(mKeeper->of(5).size(), 1u);
    EXPECT_EQ(mKeeper->of(5)[0].first, 100);
}

TEST_F(CIndexTitleWidgetTest, ToolButtonsCanBeHiddenButNotTheCloseButton) {
    makeSub();
    mTitle->setBtnToolVisible(false);
    EXPECT_EQ(shownButtons(), (QList<int>{100}));
    mTitle->setBtnToolVisible(true);
    EXPECT_EQ(shownButtons(), (QList<int>{100, 500, 501}));
}

TEST_F(CIndexTitleWidgetTest, NarrowTitleKeepsFiftyPixelsOfText) {
    makeMain();
    mTitle->resize(90, 16); // room for two buttons of 16 beside the text
    EXPECT_EQ(shownButtons(), (QList<int>{500, 501}));
    mTitle->resize(40, 16);
    EXPECT_EQ(shownButtons(), QList<int>());
    mTitle->resize(1, 16);
    EXPECT_EQ(painted(*mTitle).pixelColor(0, 8), color("ic_clr_index_title_bg"));
}

TEST_F(CIndexTitleWidgetTest, MenuOpensBeneathItsButton) {
    makeMain();
    EXPECT_EQ(mTitle->getGlobalPoint(), button(500)->mapToGlobal(QPoint(0, 16)));
    mTitle->setBtnToolVisible(false);
    EXPECT_EQ(mTitle->getGlobalPoint(), mTitle->mapToGlobal(QPoint(0, 16)));
}

TEST_F(CIndexTitleWidgetTest, ConciseStyleIsHigherAndLiesOnTheGroundOfTheGraph) {
    makeMain();
    EXPECT_EQ(mTitle->height(), 16);
    EXPECT_EQ(painted(*mTitle).pixelColor(1, 1), color("ic_clr_index_title_bg"));
    mTitle->setConciseStyle(true);
    EXPECT_EQ(mTitle->height(), 26);
    EXPECT_EQ(painted(*mTitle).pixelColor(1, 1), color("ic_clr_realtime_graph_bg"));
    mTitle->setConciseStyle(false);
    mTitle->updateTitleHeight();
    EXPECT_EQ(mTitle->height(), 16);
}

TEST_F(CIndexTitleWidgetTest, SelectedPaneHasAGroundOfItsOwn) {
    makeSub();
    mTitle->setShowTitleBg(true);
    EXPECT_EQ(painted(*mTitle).pixelColor(1, 1), color("ic_clr_index_title_selected_bg"));
    mTitle->setShowTitleBg(false);
    EXPECT_EQ(painted(*mTitle).pixelColor(1, 1), color("ic_clr_index_title_bg"));
}

TEST_F(CIndexTitleWidgetTest, TipTellsWhatIsCut) {
    makeMain();
    const auto tip = [this] {
        QToolTip::hideText();
        QHelpEvent help(QEvent::ToolTip, QPoint(10, 8), mTitle->mapToGlobal(QPoint(10, 8)));
        QApplication::sendEvent(mTitle, &help);
        return QToolTip::text();
    };
    EXPECT_EQ(tip(), QString());
    mTitle->resize(120, 16);
    EXPECT_EQ(tip(), mTitle->text());
    QToolTip::hideText();
}

TEST_F(CIndexTitleWidgetTest, UnchangedValuesRepaintNothing) {
    makeSub();
    QCoreApplication::processEvents();
    struct Paints : QObject {
        bool eventFilter(QObject *, QEvent *event) override {
            mCount += event->type() == QEvent::Paint;
            return false;
        }
        int mCount = 0;
    } paints;
    mTitle->installEventFilter(&paints);
    mTitle->updateView();
    mTitle->updateIndexId(2); // the last one
    QCoreApplication::processEvents();
    EXPECT_EQ(paints.mCount, 0);
    mTitle->updateIndexId(1);
    QCoreApplication::processEvents();
    EXPECT_EQ(paints.mCount, 1);
}

TEST_F(CIndexTitleWidgetTest, WithoutDataItTellsNothing) {
    CIndexTitleWidget title(nullptr, EIndexDisplayType::Main, EIndexViewType::Ordinary, 1, 50, 0, nullptr,
                            nullptr);
    title.setStock(mDetail, false);
    title.updateIndexId(3);
    EXPECT_EQ(title.text(), QString());
}

// The texts of a series

class TitleText : public tests::ChartFixture {
protected:
    QString text(const se::RPCFormulaResultCache &series, int index) {
        CArrowColorSimpleText title(QStringLiteral("fnt_index_title_text"));
        CDrawStyle::getTitleText(title, key("MACD"), series, index, mDetail, {});
        return joined(title);
    }
    static se::RPCFormulaResultCache series(std::vector<double> values, int lines = 1) {
        se::RPCFormulaResultCache made;
        made.meta = *tests::makeMeta(lines);
        made.result = *tests::makeResult(tests::minuteTimes(tests::kDay, 570, static_cast<int>(values.size())),
                                         std::vector<std::vector<double>>(std::size_t(lines), values));
        return made;
    }
};

TEST_F(TitleText, ValuesHaveTheDecimalsOfTheFormulaElseOfThePriceStep) {
    EXPECT_EQ(text(series({1.23456}), 0), QStringLiteral("L0:1.23"));
    mDetail->mPriceTick = 0.001;
    EXPECT_EQ(text(series({1.23456}), 0), QStringLiteral("L0:1.235"));
    mHost.mCatalogue.getFormula(QStringLiteral("MACD"))->mPrecisions = {{0, 0}, {1, 4}};
    EXPECT_EQ(text(series({1.23456}, 2), 0), QStringLiteral("L0:1 L1:1.2346"));
}

TEST_F(TitleText, LargeValuesAreInUnits) {
    EXPECT_EQ(text(series({1234567.0}), 0), QStringLiteral("L0:123.46万"));
    mHost.mCatalogue.getFormula(QStringLiteral("MACD"))->mPrecisions = {{0, 0}};
    EXPECT_EQ(text(series({1234567.0}), 0), QStringLiteral("L0:123.46万"));
    EXPECT_EQ(text(series({9999.0}), 0), QStringLiteral("L0:9999"));
}

TEST_F(TitleText, VolumesHaveTheDecimalsOfTheirUnit) {
    const auto volume = [&](double value) {
        CArrowColorSimpleText title(QStringLiteral("fnt_index_title_text"));
        CDrawStyle::getTitleText(title, key("REALTIMEVOL"), series({value}), 0, mDetail, {});
        return joined(title);
    };
    EXPECT_EQ(volume(4567.0), QStringLiteral("L0:4567"));
    EXPECT_EQ(volume(1234567.0), QStringLiteral("L0:123.46万"));
    EXPECT_EQ(volume(12345678.0), QStringLiteral("L0:1234.6万"));
}

TEST_F(TitleText, PointsThatAreNoneAreDashes) {
    se::RPCFormulaResultCache made = series({1.0, 2.0, std::nan(""), kUnsetValue});
    made.result.mValid[0] = 0;
    for (const int index : {0, 2, 3, 4, 1000000}) {
        EXPECT_EQ(text(made, index), QStringLiteral("L0:--")) << index;
    }
    EXPECT_EQ(text(made, -1), QStringLiteral("L0:2.00"));
}

TEST_F(TitleText, HiddenLinesAreLeftOut) {
    se::RPCFormulaResultCache made = series({1.0}, 3);
    made.meta.mLineAxis[1] = se::eLineHidden;
    EXPECT_EQ(text(made, 0), QStringLiteral("L0:1.00 L2:1.00"));
}

TEST_F(TitleText, PointWithATextTellsTheText) {
    se::RPCFormulaResultCache made = series({1.0, 1.0});
    made.result.mTexts[0][1] = "买入";
    EXPECT_EQ(text(made, 0), QStringLiteral("L0:1.00"));
    EXPECT_EQ(text(made, 1), QStringLiteral("L0:买入"));
}

TEST_F(TitleText, RunsHaveTheColoursOfTheLinesAndPoints) {
    se::RPCFormulaResultCache made = series({1.0, 2.0}, 3);
    made.meta.mLineColors[1] = 0x030201;
    made.result.mExtra1[2][1] = 0x0000ff;
    CArrowColorSimpleText title(QStringLiteral("fnt_index_title_text"));
    CDrawStyle::getTitleText(title, key("MACD"), made, 1, mDetail, {});
    const QList<QPair<QString, QColor>> runs = title.getTextColor();
    ASSERT_EQ(runs.size(), 3);
    EXPECT_EQ(runs[0].second, color("ic_clr_index_line_1"));
    EXPECT_EQ(runs[1].second, QColor(1, 2, 3));
    EXPECT_EQ(runs[2].second, QColor(255, 0, 0));
}

TEST_F(TitleText, HostileDescriptionsAreSafe) {
    se::RPCFormulaResultCache made = series({1.0}, 2);
    made.meta.mLineCount = 1 << 30;
    made.meta.mLineNames.resize(1);
    EXPECT_EQ(text(made, 0), QStringLiteral("L0:1.00 1.00"));
    made.meta.mLineCount = -4;
    EXPECT_EQ(text(made, 0), QString());
    made = se::RPCFormulaResultCache();
    made.meta.mLineCount = 2;
    EXPECT_EQ(text(made, -1), QString());
}

} // namespace
