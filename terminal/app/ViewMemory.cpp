#include "terminal/app/ViewMemory.h"

#include "containers/CRealtimeMainWidget.h"
#include "containers/CRealtimeWidget.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/CLinkageManager.h"
#include "terminal/app/ChartView.h"
#include "terminal/config/ConfigService.h"
#include "terminal/market/SimulatedClock.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QWidget>

#include <algorithm>

namespace terminal {
namespace {

constexpr int kLookMilliseconds = 300;
constexpr int kReplacing = 2; ///< type of a formula in place of the chart

/// The formula in place of the ordinary chart; empty when there is none.
QString replacingFormula(const ChartView &view) {
    TC::CFormulaOperateManager &catalogue = TC::CSingletonT<TC::CFormulaOperateManager>::instance();
    for (const QString &name : view.main()->getRealTimeWidget()->getIndexes()) {
        const TC::CFormulaDetailPtr detail = catalogue.getFormula(name);
        if (detail && detail->mType == kReplacing) {
            return name;
        }
    }
    return {};
}

} // namespace

ViewMemory::ViewMemory(ConfigService &config, ChartView &view, const SimulatedClock &clock, QWidget &window)
    : mConfig(config), mView(view), mClock(clock), mWindow(window), mKept(readSavedView(config)),
      mLook(kLookMilliseconds) {
    connect(&mLook, &Heartbeat::beat, this, [this] {
        if (mIsStarted) {
            keep();
        }
    });
}

ViewMemory::~ViewMemory() {
    if (mIsStarted) {
        keep();
    }
}

void ViewMemory::restoreView() {
    if (!mKept) {
        return;
    }
    TC::CRealtimeMainWidget &chart = *mView.main();
    chart.setParam(mKept->document);
    // The document knows no heights. They fit only the panes that they were told of.
    QVector<QString> formulas = chart.getIndexParam();
    std::vector<int> heights(mKept->heights.begin(), mKept->heights.end());
    if (heights.size() == static_cast<size_t>(formulas.size()) + 1) {
        chart.loadSettings(formulas, heights);
    }
    restoreTrades();
    if (!mKept->geometry.isEmpty()) {
        mWindow.restoreGeometry(mKept->geometry);
    }
}

/// The document has brought the choice of trades back, but for two things that it cannot.
void ViewMemory::restoreTrades() {
    TC::CRealtimeMainWidget &chart = *mView.main();
    // A dialog reads this one the other way round than it tells it: all are seen at first.
    chart.presetLinkageDialogSetting({{QStringLiteral("seebystrategy"), true}});
    // The dialog starts it only when it is checked by hand.
    if (chart.getLinkageDialogSetting().value(QStringLiteral("balance"))) {
        TC::CSingletonT<TC::CLinkageManager>::instance().startBalanceCalculator();
    }
}

void ViewMemory::restoreChart() {
    if (!mKept) {
        return;
    }
    for (int day = mView.uiParam()->mDayCount; day < mKept->days; ++day) {
        mView.main()->scaleView(false);
    }
    if (!mKept->mainFormula.isEmpty() && mKept->mainFormula != replacingFormula(mView)) {
        mView.main()->handleDoubleClickedFormula(mKept->mainFormula);
    }
}

void ViewMemory::start() {
    mIsStarted = true;
}

void ViewMemory::keep() {
    SavedView now = current();
    if (mKept == now) {
        return;
    }
    writeSavedView(mConfig, now);
    mKept = std::move(now);
}

SavedView ViewMemory::current() const {
    SavedView now;
    now.document = mView.main()->param();
    for (const int height : mView.main()->getStretchFactorList()) {
        now.heights.append(height);
    }
    now.mainFormula = replacingFormula(mView);
    now.days = mView.uiParam()->mDayCount;
    now.pace = mClock.pace();
    now.geometry = mWindow.saveGeometry();
    return now;
}

} // namespace terminal
