#pragma once

#include "host/services/CFormulaManager.h"

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// What a formula tells of its lines, all of one draw style; `colors` as in LineLook.
TC::FormulaMetaPtr metaOf(const std::vector<std::string> &names, int style, const std::vector<qint32> &colors);
/// A result of `count` valid points whose times and values are asked for.
TC::FormulaResultPtr resultOf(int count, int lines, const std::function<qint64(int)> &timeOf,
                              const std::function<double(int line, int index)> &valueOf);

} // namespace bench
