#include "terminal/formula/HostFormulaInputs.h"

#include "host/drawing/LineColor.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/ThemeColor.h"
#include "terminal/formula/RequestDays.h"
#include "terminal/market/SimulatedDay.h"

#include <limits>

namespace terminal {
namespace {

/// The close of the day before; no number when it is not known.
double previousClose(TC::CStockManager &stocks, const TC::CInstrumentDetailPtr &detail, int day) {
    const double close = stocks.getCurrentDateLastClose(detail, day);
    return close > 0.0 && close < TC::kUnsetValue ? close : std::numeric_limits<double>::quiet_NaN();
}

/// What stands under the instrument, and the net value of a fund of the made-up market.
void addUnderlying(FormulaInputs &inputs, TC::CStockManager &stocks, const Instrument &instrument, int day) {
    if (!instrument.underlyingCode.isEmpty()) {
        inputs.underlying = instrument.underlyingKey();
        inputs.underlyingClose = previousClose(stocks, stocks.getInstrumentDetail(inputs.underlying), day);
    }
    if (instrument.kind == InstrumentKind::Fund && instrument.simulated) {
        inputs.previousNetValue = simulatedNetValue(instrument.key(), day, inputs.previousClose);
    }
}

} // namespace

FormulaInputs hostFormulaInputs(const TC::CFormulaParam &param, const Catalogue &catalogue) {
    FormulaInputs inputs;
    inputs.riseColor = TC::lineColor(GZ::themeColor("ic_clr_index_default_rise"));
    inputs.fallColor = TC::lineColor(GZ::themeColor("ic_clr_index_default_fall"));
    TC::CStockManager &stocks = TC::CSingletonT<TC::CStockManager>::instance();
    const TC::CInstrumentDetailPtr detail = stocks.getInstrumentDetail(feedKeyOf(param));
    if (!detail) {
        return inputs;
    }
    const int day = requestDayOf(param);
    inputs.previousClose = previousClose(stocks, detail, day);
    if (detail->mPriceTick > 0.0) {
        inputs.priceTick = detail->mPriceTick;
    }
    if (detail->mFloatShares > 0.0) {
        inputs.floatShares = detail->mFloatShares;
    }
    if (const Instrument *instrument = catalogue.find(feedKeyOf(param))) {
        addUnderlying(inputs, stocks, *instrument, day);
    }
    return inputs;
}

} // namespace terminal
