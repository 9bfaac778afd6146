#pragma once

#include "host/records/RPCFormulaResult.h"

#include <string>
#include <vector>

namespace TC {

/// A series as text, as IndexBaseData::getResultTxtStr() tells.
std::string textOfSeries(const se::RPCFormulaResult &result, const se::RPCFormulaMetaResult &meta, bool head);
/// Several side by side.
std::string textOfSeries(const std::vector<se::RPCFormulaResult> &results,
                         const std::vector<se::RPCFormulaMetaResult> &metas, bool head);

} // namespace TC
