#pragma once

#include "chartdata/PaneSeries.h"

#include <QString>

namespace TC {

/// The text of all series, for an export: of one by itself, of several side by side; empty without any.
QString seriesText(const PaneSeries::Map &series);

} // namespace TC
