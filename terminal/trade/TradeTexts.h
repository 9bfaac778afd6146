#pragma once

#include "terminal/market/Instrument.h"

namespace terminal {

// What the user reads for the numbers of trade records. A number without a word is shown as a number.

/// Of ETaskStatus.
QString taskStatusText(int status);
/// Of EPriceType.
QString priceTypeText(int priceType);
/// Of EOperationType.
QString operationText(int operation);
/// What quantities of an instrument are counted in; of an instrument that is not known (null), by its market alone.
QString unitText(const Instrument *instrument, const QString &market);

} // namespace terminal
