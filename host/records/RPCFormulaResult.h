#pragma once

#include "host/records/Enumerations.h"

#include <QtGlobal>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace se {

/// Time position of a point: milliseconds since the epoch, then a sub-position. Compared in that order.
using TimePosition = std::pair<qint64, qint64>;

/// Axis of a line, an element of RPCFormulaMetaResult::mLineAxis. A missing element means Shared.
enum ELineAxis : qint32 {
    eLineHidden = 0, ///< neither drawn nor measured
    eLineShared = 1, ///< on the value axis of its pane
    eLineOwn = 2, ///< on an axis of its own, stretched over the pane
};

/// Bit of an element of RPCFormulaMetaResult::mLineFlags: the line keeps its colour, whatever its points say.
constexpr qint32 kLineFixedColor = 1;
/// Element of mLineColors, and of RPCFormulaResult::mExtra1, that leaves the colour to the theme or the line.
constexpr qint32 kDefaultColor = -1;

/// Describes the lines of a series. A vector shorter than mLineCount leaves the rest at their defaults.
struct RPCFormulaMetaResult {
    qint32 mLineCount = 0;
    std::vector<std::string> mLineNames;
    std::vector<qint32> mLineStyles; ///< draw style per line
    std::vector<qint32> mLineColors; ///< red | green << 8 | blue << 16, or kDefaultColor
    std::vector<qint32> mLineFlags; ///< bits, see kLineFixedColor
    std::vector<qint32> mLineAxis; ///< ELineAxis
};

/// The points of a series. The tags may be left out, which makes an empty list, and so may the colours, texts and second
/// values of a line that never has any.
struct RPCFormulaResult {
    std::vector<TimePosition> mTimes; ///< per point, ascending
    std::vector<qint32> mValid; ///< per point, 1 when valid
    std::vector<qint32> mPointTags; ///< per point, the formula service's own
    std::vector<std::vector<double>> mValues; ///< per line, per point
    std::vector<std::vector<qint32>> mExtra1; ///< per line, per point: colour, or kDefaultColor
    std::vector<std::vector<std::string>> mTexts; ///< per line, per point, UTF-8
    std::vector<std::vector<double>> mExtra2; ///< per line, per point: second value of the drawing
    std::vector<double> mShared1; ///< the formula service's own
    std::vector<std::string> mShared2; ///< the formula service's own
};

/// One point for all lines of a request. The colours, the texts and the second values may be left out when no line
/// ever has any.
struct RPCFormulaInstantResult {
    TimePosition mTime;
    std::vector<double> mValues; ///< one per line
    std::vector<qint32> mExtra1; ///< one per line
    std::vector<std::string> mTexts; ///< one per line
    std::vector<double> mExtra2; ///< one per line
};

/// One series as the chart holds it.
struct RPCFormulaResultCache {
    RPCFormulaMetaResult meta;
    RPCFormulaResult result;
    double max = TC::kUnsetValue; ///< extremes of the values seen so far; kUnsetValue when none
    double min = TC::kUnsetValue;
};

} // namespace se

namespace TC {
using se::RPCFormulaInstantResult;
using se::RPCFormulaMetaResult;
using se::RPCFormulaResult;
using se::RPCFormulaResultCache;
} // namespace TC
