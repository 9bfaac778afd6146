#include "host/toolkit/Events.h"

#include <gtest/gtest.h>

// The numbers are what other programs send and take: a name may change, a number never.

using namespace TC;

namespace {

TEST(EventsTest, EveryEventKeepsItsNumber) {
    EXPECT_EQ(eDownloadStep, 0);
    EXPECT_EQ(eButtonClicked, 5);
    EXPECT_EQ(eWidgetActivated, 13);
    EXPECT_EQ(eCheckBoxToggled, 67);
    EXPECT_EQ(eComboBoxChanged, 71);
    EXPECT_EQ(eRadioButtonPicked, 93);
    EXPECT_EQ(eFormulaReplaced, 180);
    EXPECT_EQ(ePlainDoubleClicked, 189);
    EXPECT_EQ(eLeftSelected, 190);
    EXPECT_EQ(eStatisticAsked, 191);
    EXPECT_EQ(eSubPaneDoubleClicked, 206);
    EXPECT_EQ(eViewChanged, 207);
    EXPECT_EQ(eFormulaAsked, 208);
    EXPECT_EQ(eOverlayAsked, 209);
    EXPECT_EQ(eRegionQuotesAsked, 219);
    EXPECT_EQ(eHolographicPressed, 263);
    EXPECT_EQ(ePaneCloseAsked, 3020);
    EXPECT_EQ(eOrdinaryChartAsked, 3021);
    EXPECT_EQ(ePaneAsked, 3023);
    EXPECT_EQ(eQuietNotice, 3024);
    EXPECT_EQ(eDataChanged, 3029);
    EXPECT_EQ(eCrossLineMoved, 3031);
    EXPECT_EQ(ePanePressed, 3032);
    EXPECT_EQ(eGraphResized, 3033);
    EXPECT_EQ(eTemplateChosen, 3039);
    EXPECT_EQ(eLastValueChanged, 3072);
    EXPECT_EQ(eRequestAnew, 3101);
    EXPECT_EQ(eRangeOutgrown, 3151);
    EXPECT_EQ(eNewWorkAsked, 3159);
    EXPECT_EQ(eLinkageAsked, 3160);
    EXPECT_EQ(eLinkageChosen, 3161);
    EXPECT_EQ(eLinkageClosed, 3162);
    EXPECT_EQ(eLinkageDatasChanged, 3163);
    EXPECT_EQ(eMarkDoubleClicked, 3164);
    EXPECT_EQ(eStageRankingAsked, 3180);
    EXPECT_EQ(eDrawingFinished, 3183);
    EXPECT_EQ(eOtherQuietNotice, 3196);
    EXPECT_EQ(eMainDoubleClicked, 3199);
    EXPECT_EQ(eViewUpdateAsked, 3225);
    EXPECT_EQ(eFixedPriceAsked, 3226);
    EXPECT_EQ(eDaysAsked, 3228);
    EXPECT_EQ(ePaneSettingsAsked, 3230);
    EXPECT_EQ(eTemplateSaveAsked, 3233);
    EXPECT_EQ(eRegionBoundMoved, 3239);
    EXPECT_EQ(eRegionEnded, 3240);
    EXPECT_EQ(eAutoPeriodAsked, 3254);
    EXPECT_EQ(eFilterChanged, 3262);
    EXPECT_EQ(eInstrumentChartAsked, 3265);
    EXPECT_EQ(eReplayControlAsked, 3267);
    EXPECT_EQ(eReplayRangeAsked, 3268);
    EXPECT_EQ(eSelfStockAsked, 4001);
}

TEST(EventsTest, ArgumentsKeepTheirNumbers) {
    EXPECT_EQ(eRunButton, 1024);
    EXPECT_EQ(eTakeFormulaOff, 0);
    EXPECT_EQ(ePutFormulaOn, 1);
    EXPECT_EQ(eTakeAllOverlays, 0);
    EXPECT_EQ(eOverlayWithAxis, 1);
    EXPECT_EQ(eRenewOverlays, 2);
    EXPECT_EQ(eOverlayWithoutAxis, 11);
    EXPECT_EQ(eClosedByUser, 0);
    EXPECT_EQ(eClosedByHost, 1);
    EXPECT_EQ(eOneDayMore, 0);
    EXPECT_EQ(eOneDayFewer, 1);
    EXPECT_EQ(eBackToOneDay, 2);
    EXPECT_EQ(eRegionStart, 0);
    EXPECT_EQ(eRegionEnd, 1);
    EXPECT_EQ(eReplayTime, 2);
}

} // namespace
