#pragma once

/// \file
/// Builds series, their descriptions and single points in one expression.

#include "host/records/RPCFormulaResult.h"
#include "host/services/CFormulaManager.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tests {

/// 2024-03-15 at UTC+8, the trading day of the recording doubles.
constexpr int kDay = 1710432000;

/// Time position of a clock minute of a day; `date` in seconds since the epoch at its midnight.
inline se::TimePosition minuteTime(int date, int minute, qint64 sub = 0) {
    return {(date + minute * 60LL) * 1000LL, sub};
}

/// Time positions of `count` consecutive minutes from `minute` on.
inline std::vector<se::TimePosition> minuteTimes(int date, int minute, int count) {
    std::vector<se::TimePosition> times;
    for (int i = 0; i < count; ++i) {
        times.push_back(minuteTime(date, minute + i));
    }
    return times;
}

/// Description of `lines` lines; colours are left to the theme, every line lies on the shared axis. Missing
/// styles are 0, missing names "L0", "L1" and so on.
inline TC::FormulaMetaPtr makeMeta(int lines, std::vector<qint32> styles = {},
                                   std::vector<std::string> names = {}) {
    auto meta = std::make_shared<se::RPCFormulaMetaResult>();
    meta->mLineCount = lines;
    styles.resize(lines, 0);
    for (int line = static_cast<int>(names.size()); line < lines; ++line) {
        names.push_back("L" + std::to_string(line));
    }
    meta->mLineStyles = std::move(styles);
    meta->mLineNames = std::move(names);
    meta->mLineColors.assign(lines, se::kDefaultColor);
    meta->mLineFlags.assign(lines, 0);
    meta->mLineAxis.assign(lines, se::eLineShared);
    return meta;
}

/// A whole series of valid points: per line its values, one a time. The further per-point vectors have default
/// elements in the same shape.
inline TC::FormulaResultPtr makeResult(std::vector<se::TimePosition> times,
                                       std::vector<std::vector<double>> values) {
    auto result = std::make_shared<se::RPCFormulaResult>();
    const std::size_t points = times.size();
    const std::size_t lines = values.size();
    result->mTimes = std::move(times);
    result->mValues = std::move(values);
    result->mValid.assign(points, 1);
    result->mPointTags.assign(points, 0);
    result->mExtra1.assign(lines, std::vector<qint32>(points, se::kDefaultColor));
    result->mTexts.assign(lines, std::vector<std::string>(points));
    result->mExtra2.assign(lines, std::vector<double>(points, 0.0));
    return result;
}

/// The same with the lines as separate arguments.
template <class... Lines>
TC::FormulaResultPtr makeResult(std::vector<se::TimePosition> times, std::vector<double> line,
                                Lines... further) {
    return makeResult(std::move(times),
                      std::vector<std::vector<double>>{std::move(line), std::move(further)...});
}

/// One point of all lines.
inline TC::FormulaInstantPtr makePoint(se::TimePosition time, std::vector<double> values) {
    auto point = std::make_shared<se::RPCFormulaInstantResult>();
    point->mTime = time;
    point->mExtra1.assign(values.size(), se::kDefaultColor);
    point->mTexts.assign(values.size(), std::string());
    point->mExtra2.assign(values.size(), 0.0);
    point->mValues = std::move(values);
    return point;
}

} // namespace tests
