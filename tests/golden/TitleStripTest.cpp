// The strip above the graphs of a pane.

#include "tests/chartview/ChartFixture.h"
#include "tests/support/Golden.h"

#include "host/drawing/CIndexTitleWidget.h"

using namespace TC;

namespace {

class TitleStripPicture : public tests::ChartFixture {
protected:
    CIndexTitleWidget *makeTitle(EIndexDisplayType type, const QStringList &formulas, int width) {
        mDetail->mName = "浦发银行";
        mData = makeData(type, formulas);
        auto *title =
            new CIndexTitleWidget(mData, type, EIndexViewType::Ordinary, 1, 50, 0, nullptr, mKeeper.get());
        title->setRealtimeUiParam(mUi);
        title->setStock(mDetail, false);
        title->resize(width, title->height());
        mKeeper->resize(width, title->height());
        mTitle = title;
        return title;
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
    void makeMain(int width) {
        mHost.mStocks.add("SZ", "000001", 20.0)->mName = "平安银行";
        makeTitle(EIndexDisplayType::Main, {"REALTIME", "REALTIMEVOL"}, width);
        mUi->addStock(QStringLiteral("SZ000001"), QString(), true);
        mData->request(corvane::ERunMode::Ordinary);
        answerLines("REALTIME", {"价格", "均价"}, {{10.0, 10.3, 10.12}, {9.95, 10.25, 10.27}});
        answerLines("REALTIMEVOL", {"量"}, {{31000.0, 12000.0, 4567.0}});
        answerLines("REALTIME", {"价格", "均价"}, {{20.0, 20.5, 20.4}, {20.0, 20.5, 20.4}}, "000001");
        mTitle->setAddStockList(mUi->getAllAddStockList());
    }
    void makeSub(int width) {
        makeTitle(EIndexDisplayType::Sub, {"MACD"}, width);
        mHost.mCatalogue.getFormula(QStringLiteral("MACD"))->mParamValues = {12, 26, 9};
        mData->request(corvane::ERunMode::Ordinary);
        answerLines("MACD", {"DIFF", "DEA", "MACD"}, {{0.1, 0.25, 0.2}, {0.3, 0.35, 0.4}, {-0.2, -0.1, -0.2}});
        mTitle->updateView();
    }
    void compare(const char *name) {
        for (const char *theme : {"dark", "light"}) {
            ASSERT_TRUE(GZ::CUiResource::instance().setTheme(QLatin1String(theme)));
            mKeeper->resize(mTitle->size());
            for (const double ratio : {1.0, 2.0}) {
                const QString picture = tests::goldenName(
                    QStringLiteral("title-%1-%2").arg(QLatin1String(name), QLatin1String(theme)), ratio);
                EXPECT_TRUE(tests::matchesGolden(tests::rendered(*mKeeper, ratio), picture));
            }
        }
    }

    boost::shared_ptr<CRealtimeData> mData;
    CIndexTitleWidget *mTitle = nullptr;
};

TEST_F(TitleStripPicture, MainPaneWithAnOverlay) {
    makeMain(720);
    compare("main");
}

TEST_F(TitleStripPicture, NarrowMainPaneIsElided) {
    makeMain(330);
    compare("narrow");
}

TEST_F(TitleStripPicture, SelectedSubPane) {
    makeSub(420);
    mTitle->setShowTitleBg(true);
    compare("sub-selected");
}

TEST_F(TitleStripPicture, ConciseSubPane) {
    makeSub(420);
    mTitle->setConciseStyle(true);
    compare("sub-concise");
}

TEST_F(TitleStripPicture, SimpleForm) {
    makeSub(300);
    mTitle->setSimpleTite(QStringLiteral("双均线趋势模型"));
    mTitle->setShowSimpleTitle(true);
    compare("simple");
}

} // namespace
