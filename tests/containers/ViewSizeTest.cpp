// How large a view likes to be, and the words beside its bools.

#include "tests/containers/MainWidgetFixture.h"

#include "host/drawing/CIndexTitleWidget.h"

#include <QVBoxLayout>

using namespace TC;

namespace tests {
namespace {

constexpr int kScaleHeight = 20; ///< pixels

class ViewSize : public MainWidgetFixture {
protected:
    static int titleHeight(const CRealtimeWidget *of) { return of->findChild<CIndexTitleWidget *>()->height(); }
};

TEST_F(ViewSize, AFormulaPaneLikesHalfTheHeightOfThePriceChart) {
    showView(2);
    EXPECT_EQ(pane()->sizeHint(), QSize(720, 360));
    EXPECT_EQ(sub(0)->sizeHint(), QSize(720, 180));
    EXPECT_EQ(mMain->sizeHint(), QSize(720, 360 + 2 * 180 + kScaleHeight));
    mMain->delIndexWidget(sub(0)->getId());
    EXPECT_EQ(mMain->sizeHint(), QSize(720, 360 + 180 + kScaleHeight));
}

TEST_F(ViewSize, AViewWithoutTimeScaleLikesLess) {
    makeView(EIndexViewType::NoTimeScale);
    EXPECT_EQ(mMain->sizeHint(), QSize(720, 360));
}

TEST_F(ViewSize, ThereIsRoomForTheTitles) {
    showView(1);
    EXPECT_GT(titleHeight(pane()), 0);
    EXPECT_EQ(pane()->minimumSizeHint(), QSize(150, 2 * titleHeight(pane())));
    EXPECT_EQ(sub(0)->minimumSizeHint(), QSize(150, titleHeight(sub(0))));
    EXPECT_EQ(mMain->minimumSizeHint(),
              QSize(150, 2 * titleHeight(pane()) + titleHeight(sub(0)) + kScaleHeight));
}

TEST_F(ViewSize, ALayoutAsksForWhatItLikes) {
    makeView();
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(mMain.get());
    EXPECT_EQ(window.sizeHint(), QSize(720, 360 + kScaleHeight));
    mMain->setParent(nullptr);
}

TEST_F(ViewSize, WordsDoWhatTheBoolsDo) {
    showView();
    mMain->setStock(QStringLiteral("SH600000"));
    EXPECT_EQ(mMain->getStock(), QStringLiteral("SH600000"));
    mMain->request(ERequest::Start);
    EXPECT_FALSE(mHost.mFormulas.mLive.all().isEmpty());
    mMain->scaleView(eOneDayMore);
    EXPECT_EQ(mUi->mDayCount, 2);
    mMain->scaleView(eOneDayMore);
    mMain->scaleView(eOneDayFewer);
    EXPECT_EQ(mUi->mDayCount, 2);
    mMain->scaleView(eBackToOneDay);
    EXPECT_EQ(mUi->mDayCount, 1);
    fill(30);
    mMain->moveCursor(ECursorStep::Left); // shows it, at the newest point
    mMain->moveCursor(ECursorStep::Left);
    const int index = mUi->mCrossIndex;
    mMain->moveCursor(ECursorStep::Right);
    EXPECT_EQ(mUi->mCrossIndex, index + 1);
}

} // namespace
} // namespace tests
