#pragma once

#include "host/records/RPCFormulaResult.h"

#include <QtGlobal>

namespace TC {

/// A number that tells the first `count` points of a series from others: values, flags, further values and
/// texts. `seed` is the number of what came before.
uint digestOfPoints(const se::RPCFormulaResult &series, int count, uint seed);

} // namespace TC
