#pragma once

#include "host/drawing/CArrowColorSimpleText.h"
#include "host/records/CFormulaDetail.h"
#include "host/records/CFormulaKey.h"
#include "host/records/CInstrumentDetail.h"
#include "host/records/RPCFormulaResult.h"

#include <QList>

namespace TC {

/// Appends a series to a title, as CDrawStyle::getTitleText() tells. `formula` is the record of its formula, or null.
void appendSeries(CArrowColorSimpleText &title, const CFormulaKey &key, const se::RPCFormulaResultCache &series,
                  int index, const CInstrumentDetailPtr &instrument,
                  const QList<CInstrumentDetailPtr> &addStocks, const CFormulaDetailPtr &formula);

} // namespace TC
