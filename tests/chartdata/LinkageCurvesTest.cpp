#include "tests/chartdata/LinkageFixture.h"

#include "host/toolkit/CUiResource.h"
#include "tests/support/Numbers.h"

#include <cmath>

using namespace TC;
using tests::kInfinity;

namespace {

class LinkageCurves : public tests::LinkageFixture {
protected:
    static QColor theme(const char *key) { return GZ::CUiResource::instance().getColor(QLatin1String(key)); }
    static void curve(QPainter &painter, const QColor &color, const QPolygon &points) {
        painter.setPen(color);
        painter.drawPolyline(points);
    }
    static QPolygon polygon(std::initializer_list<QPoint> points) { return QPolygon(QVector<QPoint>(points)); }
};

TEST_F(LinkageCurves, TotalsRunFromTheFirstToTheLastAmountAndFlatOnToNow) {
    show({3});
    mHost.mClock.mNow.setTime(QTime(11, 0)); // column 181
    mHost.mLinkage.mAmounts = {{570, {0.0, 0.0}}, {600, {100.0, 0.0}}, {630, {300.0, 150.0}}};
    // 100 is in row 200, 300 in row 0, 150 in row 150.
    EXPECT_TRUE(
        same(drawn(), expected([](QPainter &painter) {
                 curve(painter, theme("tc_clr_total_buyamount"), polygon({{61, 200}, {121, 0}, {181, 0}}));
                 curve(painter, theme("tc_clr_total_sellamount"), polygon({{121, 150}, {181, 150}}));
             })));
    EXPECT_EQ(mUiParam->mLinkageAmounts, (std::map<int, std::pair<double, double>>{
                                             {0, {0.0, 0.0}}, {30, {100.0, 0.0}}, {60, {300.0, 150.0}}}));
}

TEST_F(LinkageCurves, OneAmountWithoutASellLiesInTheMiddleOfNineAndElevenTenths) {
    show({3});
    mHost.mClock.mNow.setTime(QTime(11, 0));
    mHost.mLinkage.mAmounts = {{600, {500.0, 0.0}}, {630, {500.0, 0.0}}};
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         curve(painter, theme("tc_clr_total_buyamount"), polygon({{61, 100}, {181, 100}}));
                     })));
}

TEST_F(LinkageCurves, TotalsThatLieAheadOfNowAreNotExtended) {
    show({3});
    mHost.mClock.mNow.setTime(QTime(9, 40));
    mHost.mLinkage.mAmounts = {{600, {100.0, 0.0}}, {630, {300.0, 0.0}}};
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         curve(painter, theme("tc_clr_total_buyamount"), polygon({{61, 200}, {121, 0}}));
                     })));
}

TEST_F(LinkageCurves, NetAmountLiesAroundTheMiddle) {
    show({4});
    mHost.mClock.mNow.setTime(QTime(11, 0));
    mHost.mLinkage.mAmounts = {
        {570, {0.0, 0.0}}, {600, {100.0, 0.0}}, {630, {100.0, 300.0}}, {640, {0.0, 0.0}}};
    // 100 of 200 is in row 50, -200 in row 200; the entries of zero are left out.
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         curve(painter, theme("tc_clr_buyamount"), polygon({{61, 50}, {121, 200}, {181, 200}}));
                     })));
    EXPECT_EQ(mUiParam->mLinkageAmounts.size(), 4U) << "kept all the same";
}

TEST_F(LinkageCurves, ProfitLiesAroundTheMiddleAndEndsAtItsLastPoint) {
    show({5});
    mHost.mClock.mNow.setTime(QTime(14, 0));
    mHost.mLinkage.mProfits = {{600, -50.0}, {630, 100.0}, {660, 25.0}};
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         curve(painter, QColor(255, 255, 128, 192), polygon({{61, 150}, {121, 0}, {181, 75}}));
                     })));
    EXPECT_EQ(mUiParam->mLinkageProfits, (std::map<int, double>{{30, -50.0}, {60, 100.0}, {90, 25.0}}));
}

TEST_F(LinkageCurves, NightComesBeforeTheDayThatItBelongsTo) {
    show({3, 5, 6});
    mHost.mTimes.mNight.insert("SH600000");
    mUiParam->resetAxis("SH", "600000");
    const int atNight = mUiParam->getXAxisByIndex(mUiParam->getIndexByTime(1320)); // 22:00
    const int morning = mUiParam->getXAxisByIndex(mUiParam->getIndexByTime(570));
    const int noon = mUiParam->getXAxisByIndex(mUiParam->getIndexByTime(660));
    ASSERT_LT(atNight, morning);
    mHost.mClock.mNow.setTime(QTime(11, 0));
    mHost.mLinkage.mAmounts = {{570, {200.0, 0.0}}, {660, {300.0, 0.0}}, {1320, {100.0, 0.0}}};
    mHost.mLinkage.mProfits = {{570, 50.0}, {660, 100.0}, {1320, -100.0}};
    mHost.mLinkage.mBalances = {{570, 50.0}, {660, 100.0}, {1320, 0.0}};
    EXPECT_TRUE(same(
        drawn(), expected([&](QPainter &painter) {
            curve(painter, theme("tc_clr_total_buyamount"),
                  polygon({{atNight, 200}, {morning, 100}, {noon, 0}}));
            curve(painter, QColor(255, 255, 128, 192), polygon({{atNight, 200}, {morning, 50}, {noon, 0}}));
            curve(painter, QColor(255, 128, 0, 192), polygon({{atNight, 100}, {morning, 50}, {noon, 0}}));
        })));
}

TEST_F(LinkageCurves, EndOfANightSessionComesBehindItsStartThoughItsIndexDoesNot) {
    show({3, 5});
    mHost.mTimes.mNight.insert("SH600000");
    mUiParam->resetAxis("SH", "600000");
    ASSERT_EQ(mUiParam->getIndexByTime(150), -60) << "02:30, as the last minute of its session";
    const int atNight = mUiParam->getXAxisByIndex(mUiParam->getIndexByTime(1320)); // 22:00
    const int morning = mUiParam->getXAxisByIndex(mUiParam->getIndexByTime(570));
    mHost.mClock.mNow.setTime(QTime(9, 30));
    mHost.mLinkage.mAmounts = {{150, {150.0, 110.0}}, {570, {200.0, 120.0}}, {1320, {100.0, 0.0}}};
    mHost.mLinkage.mProfits = {{150, 50.0}, {570, 100.0}, {1320, -100.0}};
    // 100 is in row 200 and 200 in row 0. Column 1 is the first of the day.
    EXPECT_TRUE(same(
        drawn(), expected([&](QPainter &painter) {
            curve(painter, theme("tc_clr_total_buyamount"), polygon({{atNight, 200}, {1, 100}, {morning, 0}}));
            curve(painter, theme("tc_clr_total_sellamount"), polygon({{1, 180}, {morning, 160}}));
            curve(painter, QColor(255, 255, 128, 192), polygon({{atNight, 200}, {1, 50}, {morning, 0}}));
        })));
}

TEST_F(LinkageCurves, NegativeBalancesDoNotWidenTheRange) {
    show({6});
    mHost.mLinkage.mBalances = {{600, 100.0}, {630, -50.0}, {660, -200.0}};
    // -200 lies 100 rows beneath the pane.
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         curve(painter, QColor(255, 128, 0, 192), polygon({{61, 0}, {121, 150}, {181, 300}}));
                     })));
    EXPECT_EQ(mUiParam->mLinkageBalances, (std::map<int, double>{{30, 100.0}, {60, -50.0}, {90, -200.0}}));
}

TEST_F(LinkageCurves, OnePointOfProfitIsNoLine) {
    show({5, 6});
    mHost.mLinkage.mProfits = {{600, 50.0}};
    mHost.mLinkage.mBalances = {{600, 50.0}};
    EXPECT_EQ(drawn(), blank());
}

TEST_F(LinkageCurves, EmptyTotalsForgetTheOldOnes) {
    show({3, 5, 6});
    mUiParam->mLinkageAmounts = {{1, {1.0, 1.0}}};
    mUiParam->mLinkageProfits = mUiParam->mLinkageBalances = {{1, 1.0}};
    EXPECT_EQ(drawn(), blank());
    EXPECT_TRUE(mUiParam->mLinkageAmounts.empty() && mUiParam->mLinkageProfits.empty() &&
                mUiParam->mLinkageBalances.empty());
}

TEST_F(LinkageCurves, AccountViewHasNoCurves) {
    show({3, 4, 5, 6});
    mUiParam->mLinkageFlags = 2;
    mUiParam->mStockAccounts = {QStringLiteral("A")};
    mHost.mLinkage.mProfits = {{600, -50.0}, {630, 100.0}};
    mHost.mLinkage.mAmounts = {{600, {100.0, 0.0}}, {630, {300.0, 0.0}}};
    EXPECT_EQ(drawn(), blank());
}

TEST_F(LinkageCurves, WhatIsNoNumberIsLeftOut) {
    show({3, 5, 6});
    mHost.mClock.mNow.setTime(QTime(9, 30));
    mHost.mLinkage.mAmounts = {
        {590, {std::nan(""), kInfinity}}, {600, {100.0, 0.0}}, {610, {kUnsetValue, 0.0}}, {630, {300.0, 0.0}}};
    mHost.mLinkage.mProfits = {{600, -100.0}, {610, std::nan("")}, {630, 100.0}, {640, -kInfinity}};
    mHost.mLinkage.mBalances = {{600, 100.0}, {610, kInfinity}, {630, 50.0}};
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         curve(painter, theme("tc_clr_total_buyamount"), polygon({{61, 200}, {121, 0}}));
                         curve(painter, QColor(255, 255, 128, 192), polygon({{61, 200}, {121, 0}}));
                         curve(painter, QColor(255, 128, 0, 192), polygon({{61, 0}, {121, 50}}));
                     })));
}

TEST_F(LinkageCurves, ValuesThatAreAllZeroLieInTheMiddle) {
    show({5});
    mHost.mLinkage.mProfits = {{600, 0.0}, {630, 0.0}};
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         curve(painter, QColor(255, 255, 128, 192), polygon({{61, 100}, {121, 100}}));
                     })));
}

TEST_F(LinkageCurves, EachHasAColourOfItsOwn) {
    const QSet<QRgb> colours = {theme("tc_clr_total_buyamount").rgba(), theme("tc_clr_total_sellamount").rgba(),
                                theme("tc_clr_buyamount").rgba()};
    EXPECT_EQ(colours.size(), 3) << "or the tests here could not tell them apart";
}

TEST_F(LinkageCurves, AmountsOfZeroMakeNoPoint) {
    show({3});
    mHost.mClock.mNow.setTime(QTime(9, 30));
    mHost.mLinkage.mAmounts = {{600, {100.0, 0.0}}, {615, {0.0, 0.0}}, {630, {300.0, 0.0}}};
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         curve(painter, theme("tc_clr_total_buyamount"), polygon({{61, 200}, {121, 0}}));
                     })));
}

TEST_F(LinkageCurves, OneAmountAloneIsExtendedToNow) {
    show({3});
    mHost.mClock.mNow.setTime(QTime(11, 0));
    mHost.mLinkage.mAmounts = {{600, {0.0, 500.0}}};
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         curve(painter, theme("tc_clr_total_sellamount"), polygon({{61, 100}, {181, 100}}));
                     })));
}

TEST_F(LinkageCurves, NetAmountLiesOverTheTotals) {
    show({3, 4});
    mHost.mClock.mNow.setTime(QTime(11, 0));
    mHost.mLinkage.mAmounts = {{600, {100.0, 0.0}}, {630, {200.0, 300.0}}};
    // Totals from 100 to 300, net from -100 to 100.
    EXPECT_TRUE(
        same(drawn(), expected([](QPainter &painter) {
                 curve(painter, theme("tc_clr_total_buyamount"), polygon({{61, 200}, {121, 100}, {181, 100}}));
                 curve(painter, theme("tc_clr_total_sellamount"), polygon({{121, 0}, {181, 0}}));
                 curve(painter, theme("tc_clr_buyamount"), polygon({{61, 0}, {121, 200}, {181, 200}}));
             })));
}

TEST_F(LinkageCurves, NetAmountThatLiesAheadOfNowIsNotExtended) {
    show({4});
    mHost.mClock.mNow.setTime(QTime(10, 30));
    mHost.mLinkage.mAmounts = {{600, {100.0, 0.0}}, {630, {0.0, 100.0}}};
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         curve(painter, theme("tc_clr_buyamount"), polygon({{61, 0}, {121, 200}}));
                     })));
}

TEST_F(LinkageCurves, NetAmountOfTheLastOfTheMinutesThatShareAnIndexIsDrawn) {
    show({4});
    mHost.mClock.mNow.setTime(QTime(9, 30));
    // 11:40 lies in the break and shares index 120, in column 241, with 11:30. Its range counts all the same.
    mHost.mLinkage.mAmounts = {{600, {100.0, 0.0}}, {690, {400.0, 0.0}}, {700, {200.0, 0.0}}};
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         curve(painter, theme("tc_clr_buyamount"), polygon({{61, 75}, {241, 50}}));
                     })));
    EXPECT_EQ(mUiParam->mLinkageAmounts,
              (std::map<int, std::pair<double, double>>{{30, {100.0, 0.0}}, {120, {200.0, 0.0}}}));
}

TEST_F(LinkageCurves, BalanceEndsAtItsLastPoint) {
    show({6});
    mHost.mClock.mNow.setTime(QTime(14, 0));
    mHost.mLinkage.mBalances = {{600, 100.0}, {630, 50.0}};
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         curve(painter, QColor(255, 128, 0, 192), polygon({{61, 0}, {121, 50}}));
                     })));
}

TEST_F(LinkageCurves, BalancesThatAreAllNegativeDoNoHarm) {
    show({6});
    mHost.mLinkage.mBalances = {{600, -100.0}, {630, -50.0}};
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         curve(painter, QColor(255, 128, 0, 192), polygon({{61, 100}, {121, 100}}));
                     })))
        << "no range: in the middle";
}

TEST_F(LinkageCurves, AmountsThatAreUnsetMakeNoNetAmount) {
    show({4});
    mHost.mClock.mNow.setTime(QTime(9, 30));
    mHost.mLinkage.mAmounts = {{600, {100.0, 0.0}},
                               {615, {kUnsetValue, kUnsetValue}},
                               {620, {std::nan(""), 0.0}},
                               {630, {0.0, 100.0}}};
    EXPECT_TRUE(same(drawn(), expected([](QPainter &painter) {
                         curve(painter, theme("tc_clr_buyamount"), polygon({{61, 0}, {121, 200}}));
                     })));
}

} // namespace
