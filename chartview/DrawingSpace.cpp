#include "chartview/DrawingSpace.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/GraphSubject.h"
#include "host/services/CConfigService.h"
#include "host/toolkit/Text.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QWidget>

#include <cmath>
#include <limits>

namespace TC {

namespace {

/// Whole part, held to what an integer can take; 0 for what is no number.
template <class Integer> Integer wholePart(double value) {
    if (std::isnan(value)) {
        return 0;
    }
    // The largest 64-bit integer itself is no double: the bound is the next power of two.
    constexpr double above = static_cast<double>(std::numeric_limits<Integer>::max());
    constexpr double lowest = static_cast<double>(std::numeric_limits<Integer>::min());
    return value >= above    ? std::numeric_limits<Integer>::max()
           : value <= lowest ? std::numeric_limits<Integer>::min()
                             : static_cast<Integer>(value);
}

/// Minute that a drawing of the trading client is placed at: its seconds are added as they are.
int minuteOfDrawing(double milliseconds) {
    const int time = utils::millisecondsToTime(wholePart<qint64>(milliseconds));
    return time / 10000 * 60 + time / 100 % 100 + time % 100;
}

} // namespace

QPointF DrawingSpace::toLogical(const QPointF &pixel) const {
    bool percent = true;
    const int index = mSubject.uiParam->getIndexByXAxis(wholePart<int>(pixel.x()));
    return {static_cast<double>(index),
            mSubject.data->valueAtY(wholePart<int>(pixel.y()), mGraph.rect(), &percent)};
}

QPointF DrawingSpace::toPixel(const QPointF &logical) const {
    const CRealtimeUiParam &uiParam = *mSubject.uiParam;
    const int index = mSubject.uiParam->service<CConfigService>().isClientType(EClientType::Trading)
                          ? uiParam.getIndexByTime(minuteOfDrawing(logical.x()))
                          : wholePart<int>(logical.x());
    const QRect priceRows(0, 0, mGraph.width(), mSubject.data->mainChartHeight(mGraph.rect()));
    return {static_cast<double>(uiParam.getXAxisByIndex(index)),
            static_cast<double>(mSubject.data->yOfValue(logical.y(), priceRows))};
}

} // namespace TC
