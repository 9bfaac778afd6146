// The cross line with its labels over a graph between its axis strips.

#include "tests/chartview/GraphFixture.h"
#include "tests/support/Golden.h"

#include "chartview/CCrossLineWidget.h"

#include <cmath>

using namespace TC;

namespace {

class CrossLinePicture : public tests::GraphFixture {
protected:
    void compare(bool byKey, const QString &name) {
        makeMainGraph();
        mUi->mLeftAxisWidth = mUi->mRightAxisWidth = 50;
        mKeeper->resize(500, 297);
        CGraphAxisWidget right(mUi, mData, CGraphAxisWidget::eRight, mKeeper.get());
        mStrip->setParent(mKeeper.get());
        mStrip->setGeometry(0, 17, 50, 280);
        right.setGeometry(450, 17, 50, 280);
        mGraph->setGeometry(50, 17, 400, 280);
        mUi->resize(QRect(0, 0, 500, 297));
        mKeeper->show();
        mStrip->show();
        right.show();
        mGraph->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(mKeeper.get()));
        std::vector<double> prices;
        for (int i = 0; i < 241; ++i) {
            prices.push_back(10.0 + 0.3 * std::sin(i * 0.04));
        }
        fillMain(prices);
        right.setMaxMinMap(mData->getMaxMinMap());
        mUi->mLeftAxis = mStrip.get();
        mUi->mCrossShown = true;
        mUi->mCursorByKey = byKey;
        mUi->mCrossIndex = byKey ? 240 : 90;
        CCrossLineWidget line(mUi, mData, mKeeper.get());
        line.setFixedExtent(500, 297);
        line.setGraphRect(mGraph->geometry(), 17);
        line.setX(mUi->getXAxisByIndex(90));
        line.setY(90);
        line.show();
        for (const char *theme : {"dark", "light"}) {
            ASSERT_TRUE(GZ::CUiResource::instance().setTheme(QLatin1String(theme)));
            for (const double ratio : {1.0, 2.0}) {
                EXPECT_TRUE(tests::matchesGolden(
                    tests::rendered(*mKeeper, ratio),
                    tests::goldenName(QStringLiteral("cross-line-%1-%2").arg(name, QLatin1String(theme)),
                                      ratio)));
            }
        }
        mUi->mLeftAxis = nullptr;
    }
};

TEST_F(CrossLinePicture, OfTheMouse) {
    compare(false, "mouse");
}

TEST_F(CrossLinePicture, OfTheKeyboardOnTheLastMinute) {
    compare(true, "keyboard");
}

} // namespace
