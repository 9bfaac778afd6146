#include "chartdata/SeriesText.h"

#include "host/drawing/IndexBaseData.h"
#include "host/toolkit/Text.h"

namespace TC {

QString seriesText(const PaneSeries::Map &series) {
    if (series.isEmpty()) {
        return QString();
    }
    if (series.size() == 1) {
        se::RPCFormulaResultCache entry = series.first();
        return GZ::sToQs(IndexBaseData::getResultTxtStr(entry.result, entry.meta, true));
    }
    std::vector<se::RPCFormulaResult> results;
    std::vector<se::RPCFormulaMetaResult> metas;
    for (const se::RPCFormulaResultCache &entry : series) {
        results.push_back(entry.result);
        metas.push_back(entry.meta);
    }
    return GZ::sToQs(IndexBaseData::getResultTxtStr(results, metas, true));
}

} // namespace TC
