#include "terminal/formula/HostFormulaInputs.h"

#include "host/services/CStockManager.h"
#include "host/toolkit/CUiResource.h"
#include "terminal/formula/RequestDays.h"

namespace terminal {
namespace {

qint32 themeColor(const char *key) {
    const QColor color = GZ::CUiResource::instance().getColor(QLatin1String(key));
    return color.red() | color.green() << 8 | color.blue() << 16;
}

} // namespace

FormulaInputs hostFormulaInputs(const TC::CFormulaParam &param) {
    FormulaInputs inputs;
    inputs.riseColor = themeColor("ic_clr_index_default_rise");
    inputs.fallColor = themeColor("ic_clr_index_default_fall");
    TC::CStockManager &stocks = TC::CSingletonT<TC::CStockManager>::instance();
    const TC::CInstrumentDetailPtr detail = stocks.getInstrumentDetail(feedKeyOf(param));
    if (!detail) {
        return inputs;
    }
    const double close = stocks.getCurrentDateLastClose(detail, requestDayOf(param));
    if (close > 0.0 && close < TC::kUnsetValue) {
        inputs.previousClose = close;
    }
    if (detail->mPriceTick > 0.0) {
        inputs.priceTick = detail->mPriceTick;
    }
    if (detail->mFloatShares > 0.0) {
        inputs.floatShares = detail->mFloatShares;
    }
    return inputs;
}

} // namespace terminal
