// The time scale with its flag: one day, five days, and a day that begins in the night before.

#include "chartview/CRealtimeTimeWidget.h"

#include "tests/chartview/ChartFixture.h"
#include "tests/support/Golden.h"

using namespace TC;

namespace {

class TimeScalePicture : public tests::ChartFixture {
protected:
    TimeScalePicture() { mUi->mLeftAxisWidth = mUi->mRightAxisWidth = 50; }
    void compare(int index, const QString &name) {
        mUi->resize(QRect(0, 0, 1100, 300));
        mUi->mCrossShown = true;
        CRealtimeTimeWidget scale(mUi, nullptr);
        scale.resize(1100, 20);
        scale.setCursor(index, mUi->getXAxisByIndex(index));
        for (const char *theme : {"dark", "light"}) {
            ASSERT_TRUE(GZ::CUiResource::instance().setTheme(QLatin1String(theme)));
            for (const double ratio : {1.0, 2.0}) {
                EXPECT_TRUE(tests::matchesGolden(
                    tests::rendered(scale, ratio),
                    tests::goldenName(QStringLiteral("time-scale-%1-%2").arg(name, QLatin1String(theme)),
                                      ratio)));
            }
        }
    }
};

TEST_F(TimeScalePicture, OfOneDay) {
    compare(77, "one-day");
}

TEST_F(TimeScalePicture, OfFiveDays) {
    mUi->mDayCount = 5;
    compare(240, "five-days");
}

TEST_F(TimeScalePicture, OfANightSession) {
    mHost.mTimes.mNight.insert("SH600000");
    mUi->resetAxis("SH", "600000");
    compare(200, "night");
}

} // namespace
