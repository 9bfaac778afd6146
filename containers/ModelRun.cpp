#include "containers/ModelRun.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "containers/CRealtimeWidget.h"
#include "containers/ConciseStyle.h"
#include "containers/DayGraphs.h"
#include "containers/PaneTitle.h"
#include "host/services/CStrategyTradeManager.h"
#include "host/toolkit/CPushButton.h"
#include "host/toolkit/Events.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <utility>

namespace TC {

namespace {

constexpr QSize kButtonSize(50, 20); ///< pixels, as the other sizes below
constexpr int kButtonRow = 12;
constexpr int kConciseButtonRow = 22;
constexpr int kButtonGap = 5;

QString firstFormula(const DayGraphs &days) {
    return days.main()->getIndexes().value(0);
}

} // namespace

ModelRun::ModelRun(QWidget *pane, const DayGraphs &days, PaneTitle &title,
                   boost::shared_ptr<const CRealtimeUiParam> uiParam, EIndexDisplayType displayType)
    : mDays(days), mTitle(title), mUiParam(std::move(uiParam)) {
    if (displayType != EIndexDisplayType::Sub) {
        return;
    }
    mButton = new GZ::CPushButton(QStringLiteral("img_btn_ok"), eRunButton, 3, 64, 3, 18, pane);
    mButton->setText(CRealtimeWidget::tr("运行模型"));
    mButton->setFontKey(QStringLiteral("fnt_default_small_heavy"));
    mButton->setFixedSize(kButtonSize);
    mButton->hide();
}

void ModelRun::setAutomatic(bool automatic) {
    if (mButton) {
        mAutomatic = automatic;
    }
}

void ModelRun::setLoginInit(bool init) {
    if (mButton) {
        mLoginInit = init;
    }
}

bool ModelRun::isHeld() const {
    return mLoginInit || !mAutomatic;
}

void ModelRun::hold(corvane::ERunMode mode) {
    mHeldMode = mode;
    mLoginInit = false;
}

bool ModelRun::hasModel() const {
    return mDays.main()->hasGroupModelIndex() || mDays.main()->hasPythonIndex();
}

bool ModelRun::isStrategyRunning() const {
    CStrategyInfo strategy;
    return mDays.main()->hasPythonIndex() &&
           mUiParam->services().get<CStrategyTradeManager>().getStrategyByName(firstFormula(mDays), strategy) &&
           strategy.mRunning;
}

bool ModelRun::release() {
    if (!hasModel()) {
        mAutomatic = true;
        return true;
    }
    if (isStrategyRunning() && mAutomatic) {
        return true;
    }
    showButton();
    return false;
}

void ModelRun::showRunning() {
    if (mButton) {
        mButtonShown = false;
        mTitle.showValues();
        placeButton();
    }
}

void ModelRun::showButton() {
    mButtonShown = true;
    mTitle.showModel(firstFormula(mDays));
    placeButton();
}

void ModelRun::placeButton() {
    if (!mButton) {
        return;
    }
    if (mButtonShown) {
        const int x = static_cast<int>(mUiParam->mRightAxisWidth + mUiParam->mDayWidth);
        mButton->move(x, (isConcise(mUiParam->services()) ? kConciseButtonRow : kButtonRow) + kButtonGap);
    }
    mButton->setVisible(mButtonShown);
}

ModelRun::EGroup ModelRun::groupRun() const {
    const CRealtimeGraphWidget &graph = *mDays.main();
    if (!graph.hasGroupModelIndex()) {
        return EGroup::None;
    }
    const bool isDue = mUiParam->isShowGroupIndexGraph() && !graph.getData()->hasData();
    return isDue || graph.hasPythonIndex() ? EGroup::MainGraph : EGroup::Repaint;
}

} // namespace TC
