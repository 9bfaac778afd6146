// A whole view: main pane and formula pane with titles, strips and cross line, and the time scale beneath.

#include "tests/containers/MainWidgetFixture.h"

#include <cmath>

using namespace TC;

namespace {

constexpr QSize kSize(900, 520);
constexpr int kMinutes = 241;
constexpr int kDayLength = 86400;

/// A day that needs no random numbers; each day has a wave and a level of its own.
double priceOf(int day, int minute) {
    return 10.0 + 0.12 * day + 0.2 * std::sin(minute * 0.03 + day) + 0.05 * std::sin(minute * 0.4);
}
double volumeOf(int day, int minute) {
    return 3000.0 + 40000.0 * std::exp(-minute / 30.0) + 1200.0 * (1.0 + std::sin(minute * 2.1 + day));
}
double waveOf(int day, int minute) {
    return 50.0 + 30.0 * std::sin(minute * 0.05 + day);
}

class ViewPicture : public tests::MainWidgetFixture {
protected:
    /// The days end on 2024-03-15; the newest one has run until 14:00.
    void showDays(int days) {
        mDetail->mName = "浦发银行";
        mHost.mCatalogue.getFormula("KDJ")->mParamValues = {9, 3, 3};
        showView(1);
        mKeeper->resize(kSize);
        mMain->resize(kSize);
        for (int day = 1; day < days; ++day) {
            mMain->scaleView(false);
        }
        mMain->request(false);
        for (int back = 0; back < days; ++back) {
            answerDay("REALTIME", back, {"价格", "均价"}, {priceOf, averageOf}, {0, 0});
            answerDay("REALTIMEVOL", back, {"量"}, {volumeOf}, {2});
            answerDay("KDJ", back, {"K", "D"}, {waveOf, [](int day, int i) { return waveOf(day, i - 8); }},
                      {0, 0});
        }
        settle();
    }
    static double averageOf(int day, int minute) {
        double sum = 0.0;
        for (int i = 0; i <= minute; ++i) {
            sum += priceOf(day, i);
        }
        return sum / (minute + 1);
    }
    using Line = std::function<double(int, int)>;
    void answerDay(const char *formula, int back, const std::vector<std::string> &names,
                   const std::vector<Line> &lines, const std::vector<qint32> &styles) {
        const int date = tests::kDay - back * kDayLength;
        const int count = back == 0 ? 181 : kMinutes;
        std::vector<se::TimePosition> times;
        std::vector<std::vector<double>> values(lines.size());
        for (int i = 0; i < count; ++i) {
            times.push_back(tests::minuteTime(date, i <= 120 ? 570 + i : 660 + i));
            for (std::size_t line = 0; line < lines.size(); ++line) {
                values[line].push_back(lines[line](back, i));
            }
        }
        for (const fakehost::LiveRequest &request : mHost.mFormulas.mLive.all()) {
            if (request.param.mFormulaName == QLatin1String(formula) + QLatin1String(".lua") &&
                request.param.mStart.first / 1000 == date) {
                request.onHistory(tests::makeMeta(static_cast<int>(lines.size()), styles, names),
                                  tests::makeResult(times, values), request.id(), 1, QString(), false);
            }
        }
    }
    void compare(const QString &name) {
        for (const char *theme : {"dark", "light"}) {
            ASSERT_TRUE(GZ::CUiResource::instance().setTheme(QLatin1String(theme)));
            settle();
            for (const double ratio : {1.0, 2.0}) {
                const QString picture =
                    tests::goldenName(QStringLiteral("view-%1-%2").arg(name, QLatin1String(theme)), ratio);
                EXPECT_TRUE(tests::matchesGolden(tests::rendered(*mKeeper, ratio), picture));
            }
        }
    }
};

TEST_F(ViewPicture, OneDayWithTheMouseInTheMainPane) {
    showDays(1);
    mUi->mCrossShown = true;
    moveTo(graph(pane()), {300, 120});
    compare("one-day");
}

TEST_F(ViewPicture, FiveDaysWithTheMouseInAnOlderDayOfTheFormulaPane) {
    showDays(5);
    mUi->mCrossShown = true;
    moveTo(graph(sub(0), 2), {60, 60});
    compare("five-days");
}

} // namespace
