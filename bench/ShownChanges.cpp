#include "bench/ShownChanges.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "terminal/app/ChartView.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <algorithm>

ShownChanges::ShownChanges(terminal::ChartView &view, MarketTimes &times, int number)
    : mView(view), mTimes(&times.at[0] +
                          static_cast<ptrdiff_t>(number) * static_cast<ptrdiff_t>(MarketTimes::kMostChanges)) {
    onPaint();
    mShown = mPainted;
}

QObject *ShownChanges::graph() const {
    return mView.graph();
}

void ShownChanges::onPaint() {
    const auto series = mView.data()->getData().constFind(
        TC::CFormulaKey(mView.instrument(), mView.uiParam()->getBasicFormula()));
    if (series == mView.data()->getData().constEnd() || series->result.mValues.empty() ||
        series->result.mValues[0].empty()) {
        return;
    }
    const quint64 sequence = publishedSequence(series->result.mValues[0].back());
    mPainted = sequence < MarketTimes::kMostChanges ? std::max(mPainted, sequence) : mPainted;
}

void ShownChanges::onShown(double time, std::vector<double> &late) {
    for (; mShown < mPainted; ++mShown) {
        late.push_back(1e3 * (time - mTimes[mShown + 1]));
    }
}
