// Both strips of a pane side by side.

#include "tests/chartview/ChartFixture.h"
#include "tests/support/Golden.h"

#include "chartview/CGraphAxisWidget.h"

using namespace TC;

namespace {

class AxisStripPicture : public tests::ChartFixture {
protected:
    void compare(EIndexDisplayType type, const IndexBaseData::MaxMinMap &ranges, const QString &name,
                 bool withButton = false) {
        const bool main = type == EIndexDisplayType::Main;
        const auto data = makeData(type, main ? QStringList{"REALTIME", "REALTIMEVOL"} : QStringList{"MACD"});
        data->request(corvane::ERunMode::Ordinary);
        answer(main ? "REALTIME" : "MACD", {10.0, 10.5});
        mKeeper->resize(110, main ? 420 : 150);
        CGraphAxisWidget left(mUi, data, CGraphAxisWidget::eLeft, mKeeper.get());
        CGraphAxisWidget right(mUi, data, CGraphAxisWidget::eRight, mKeeper.get());
        for (CGraphAxisWidget *strip : {&left, &right}) {
            strip->setDisplayType(type);
            strip->setGeometry(strip == &left ? 0 : 60, 0, 50, mKeeper->height());
            strip->setMaxMinMap(ranges);
            strip->show();
        }
        right.showHolographicButon(withButton);
        for (const char *theme : {"dark", "light"}) {
            ASSERT_TRUE(GZ::CUiResource::instance().setTheme(QLatin1String(theme)));
            for (const double ratio : {1.0, 2.0}) {
                const QString picture = tests::goldenName(
                    QStringLiteral("axis-strip-%1-%2").arg(name, QLatin1String(theme)), ratio);
                EXPECT_TRUE(tests::matchesGolden(tests::rendered(*mKeeper, ratio), picture));
            }
        }
    }
};

TEST_F(AxisStripPicture, MainPaneWithVolume) {
    compare(EIndexDisplayType::Main, {{key("REALTIME"), {10.43, 9.57}}, {key("REALTIMEVOL"), {1234567.0, 0.0}}},
            "main-volume", true);
}

TEST_F(AxisStripPicture, MainPaneWithoutVolume) {
    mUi->mShowVolume = false;
    mDetail->mPriceTick = 0.001;
    compare(EIndexDisplayType::Main, {{key("REALTIME"), {10.43, 9.57}}}, "main-plain");
}

TEST_F(AxisStripPicture, SubPane) {
    compare(EIndexDisplayType::Sub, {{key("MACD"), {0.42, -0.31}}}, "sub");
}

} // namespace
