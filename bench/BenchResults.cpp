#include "bench/BenchResults.h"

namespace bench {

TC::FormulaMetaPtr metaOf(const std::vector<std::string> &names, int style, const std::vector<qint32> &colors) {
    auto meta = std::make_shared<se::RPCFormulaMetaResult>();
    meta->mLineCount = static_cast<qint32>(names.size());
    meta->mLineNames = names;
    meta->mLineStyles.assign(names.size(), style);
    meta->mLineColors = colors;
    meta->mLineFlags.assign(names.size(), 0);
    meta->mLineAxis.assign(names.size(), se::eLineShared);
    return meta;
}

TC::FormulaResultPtr resultOf(int count, int lines, const std::function<qint64(int)> &timeOf,
                              const std::function<double(int line, int index)> &valueOf) {
    auto result = std::make_shared<se::RPCFormulaResult>();
    result->mValues.resize(static_cast<std::size_t>(lines));
    for (int i = 0; i < count; ++i) {
        result->mTimes.emplace_back(timeOf(i), 0);
        result->mValid.push_back(1);
        for (int line = 0; line < lines; ++line) {
            result->mValues[static_cast<std::size_t>(line)].push_back(valueOf(line, i));
        }
    }
    return result;
}

} // namespace bench
