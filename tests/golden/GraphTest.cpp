// A graph between its axis strips.

#include "tests/chartview/GraphFixture.h"
#include "tests/support/Golden.h"

#include "host/records/CDealDetail.h"

#include <cmath>
#include <functional>

using namespace TC;

namespace {

constexpr int kStrip = 50;

/// A day of 241 minutes that needs no random numbers.
double priceOf(int minute) {
    return 10.0 + 0.22 * std::sin(minute * 0.031) + 0.07 * std::sin(minute * 0.37) +
           0.03 * std::sin(minute * 1.9);
}
double volumeOf(int minute) {
    return 4000.0 + 60000.0 * std::exp(-minute / 25.0) + 1500.0 * (1.0 + std::sin(minute * 2.3)) +
           (minute > 220 ? 400.0 * (minute - 220) : 0.0);
}

class GraphPicture : public tests::GraphFixture {
protected:
    void makePane(EIndexDisplayType type, const QStringList &formulas, const QSize &size) {
        makeGraph(type, formulas);
        mRight = std::make_unique<CGraphAxisWidget>(mUi, mData, CGraphAxisWidget::eRight, mKeeper.get());
        mRight->setDisplayType(type);
        mStrip->setParent(mKeeper.get());
        mUi->mLeftAxisWidth = mUi->mRightAxisWidth = kStrip;
        mKeeper->resize(size);
        mUi->resize(QRect(QPoint(), size));
        mStrip->setGeometry(0, 0, kStrip, size.height());
        mRight->setGeometry(size.width() - kStrip, 0, kStrip, size.height());
        mGraph->setGeometry(kStrip, 0, size.width() - 2 * kStrip, size.height());
        mStrip->show();
        mKeeper->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(mKeeper.get()));
        mGraph->request(corvane::ERunMode::Ordinary);
    }
    /// Answers a request with the first `count` minutes of the day.
    void answerLines(const char *formula, int count, const std::vector<std::function<double(int)>> &lines,
                     const std::vector<qint32> &styles) {
        const fakehost::LiveRequest request = mHost.mFormulas.mLive.find(
            mHost.mCatalogue.getFormula(QLatin1String(formula))->mFileName, QStringLiteral("600000"));
        ASSERT_TRUE(request.onHistory);
        std::vector<se::TimePosition> times;
        std::vector<std::vector<double>> values(lines.size());
        for (int i = 0; i < count; ++i) {
            times.push_back(tests::minuteTime(tests::kDay, i <= 120 ? 570 + i : 660 + i));
            for (std::size_t line = 0; line < lines.size(); ++line) {
                values[line].push_back(lines[line](i));
            }
        }
        request.onHistory(tests::makeMeta(static_cast<int>(lines.size()), styles),
                          tests::makeResult(times, values), request.id(), 1, QString(), false);
    }
    void fillDay(int count) {
        double sum = 0.0;
        std::vector<double> averages;
        for (int i = 0; i < count; ++i) {
            sum += priceOf(i);
            averages.push_back(sum / (i + 1));
        }
        answerLines("REALTIME", count,
                    {priceOf, [averages](int i) { return averages[static_cast<std::size_t>(i)]; }}, {0, 0});
        answerLines("REALTIMEVOL", count, {volumeOf}, {2});
        rescalePane();
    }
    void rescalePane() {
        mRight->setMaxMinMap(mData->getMaxMinMap());
        rescale();
        mGraph->updateView();
    }
    void compare(const QString &name) {
        for (const char *theme : {"dark", "light"}) {
            ASSERT_TRUE(GZ::CUiResource::instance().setTheme(QLatin1String(theme)));
            for (const double ratio : {1.0, 2.0}) {
                const QString picture =
                    tests::goldenName(QStringLiteral("graph-%1-%2").arg(name, QLatin1String(theme)), ratio);
                EXPECT_TRUE(tests::matchesGolden(tests::rendered(*mKeeper, ratio), picture));
            }
        }
    }

    std::unique_ptr<CGraphAxisWidget> mRight;
};

TEST_F(GraphPicture, WholeDayWithVolume) {
    makePane(EIndexDisplayType::Main, {"REALTIME", "REALTIMEVOL"}, QSize(700, 420));
    fillDay(241);
    compare("day");
}

TEST_F(GraphPicture, RunningDayWithoutVolume) {
    mUi->mShowVolume = false;
    makePane(EIndexDisplayType::Main, {"REALTIME", "REALTIMEVOL"}, QSize(700, 300));
    fillDay(150);
    compare("running");
}

TEST_F(GraphPicture, SubPane) {
    makePane(EIndexDisplayType::Sub, {"MACD"}, QSize(700, 160));
    answerLines("MACD", 241,
                {[](int i) { return 0.3 * std::sin(i * 0.05); },
                 [](int i) { return 0.25 * std::sin(i * 0.05 - 0.4); },
                 [](int i) { return 0.15 * std::cos(i * 0.05); }},
                {0, 0, 2});
    rescalePane();
    compare("sub");
}

TEST_F(GraphPicture, SelectionsRegionLinesAndTip) {
    makePane(EIndexDisplayType::Main, {"REALTIME", "REALTIMEVOL"}, QSize(700, 420));
    fillDay(241);
    member(tests::Peek_mLeftSelecting()) = true;
    member(tests::Peek_mLeftRect()) = QRect(100, 80, 120, 90);
    member(tests::Peek_mRightSelecting()) = true;
    member(tests::Peek_mRightRect()) = QRect(260, 60, 140, 160);
    regionLines().show();
    mGraph->setRegionLine(180, 215);
    member(tests::Peek_mShowTip()) = true;
    for (const int direction : {48, 49}) {
        auto deal = boost::make_shared<kvservice::CDealDetail>();
        deal->mDirection = direction;
        deal->mVolume = 300;
        deal->mPrice = 10.05;
        member(tests::Peek_mDealTips()).append(deal);
    }
    compare("layers");
}

} // namespace
