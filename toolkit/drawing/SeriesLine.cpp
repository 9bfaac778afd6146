#include "toolkit/drawing/SeriesLine.h"

namespace TC {
namespace {

/// Element of a vector, or a default where it ends earlier.
template <class Value> Value elementOr(const std::vector<Value> &values, int index, Value fallback) {
    return std::size_t(index) < values.size() ? values[std::size_t(index)] : fallback;
}

/// The elements of one line, and their number; nothing for a line that is not there.
template <class Value>
void lineOf(const std::vector<std::vector<Value>> &lines, int line, const Value *&first, int &size) {
    if (std::size_t(line) < lines.size()) {
        first = lines[std::size_t(line)].data();
        size = static_cast<int>(lines[std::size_t(line)].size());
    }
}

} // namespace

SeriesLine::SeriesLine(const se::RPCFormulaResultCache &series, int line) {
    if (line < 0) {
        return;
    }
    const se::RPCFormulaResult &result = series.result;
    const se::RPCFormulaMetaResult &meta = series.meta;
    lineOf(result.mValues, line, mValues, mSize);
    lineOf(result.mExtra2, line, mSeconds, mSecondSize);
    mValid = result.mValid.data();
    mValidSize = static_cast<int>(result.mValid.size());
    if (std::size_t(line) < result.mTexts.size()) {
        mTexts = &result.mTexts[std::size_t(line)];
    }
    if (!(elementOr(meta.mLineFlags, line, 0) & se::kLineFixedColor)) {
        lineOf(result.mExtra1, line, mColors, mColorSize);
    }
    mLineColor = elementOr(meta.mLineColors, line, se::kDefaultColor);
    mStyle = elementOr(meta.mLineStyles, line, -1);
    mAxis = elementOr(meta.mLineAxis, line, qint32(se::eLineShared));
}

int SeriesLine::lastPoint() const {
    int index = mSize - 1;
    while (index >= 0 && !has(index)) {
        --index;
    }
    return index;
}

const std::string &SeriesLine::text(int i) const {
    static const std::string kNone;
    return mTexts && i >= 0 && std::size_t(i) < mTexts->size() ? (*mTexts)[std::size_t(i)] : kNone;
}

} // namespace TC
