#include "toolkit/drawing/SeriesText.h"

#include "host/drawing/IndexBaseData.h"
#include "host/toolkit/Text.h"
#include "host/toolkit/Wording.h"

#include <QDateTime>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace TC {
namespace {

/// Lines that have a column: as many as are described, and of them those that have values or a name.
int columnCount(const se::RPCFormulaResult &result, const se::RPCFormulaMetaResult &meta) {
    const std::size_t known = std::max(result.mValues.size(), meta.mLineNames.size());
    return std::min(std::max(meta.mLineCount, 0), static_cast<int>(known));
}

/// Text that keeps to its cell.
std::string cellText(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
    return text;
}

std::string timeText(qint64 milliseconds) {
    return QDateTime::fromMSecsSinceEpoch(milliseconds)
        .toString(GZ::kDateFormat + QLatin1Char(' ') + GZ::kSecondFormat)
        .toStdString();
}

/// Shortest digits that read back as the same number.
std::string shortestDigits(double value) {
    if (!std::isfinite(value) || value == kUnsetValue) {
        return {};
    }
    char digits[32];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, value);
    return std::string(digits, end.ptr);
}

template <class Element>
Element elementAt(const std::vector<std::vector<Element>> &lines, int line, std::size_t point) {
    const auto at = static_cast<std::size_t>(line);
    return at < lines.size() && point < lines[at].size() ? lines[at][point] : Element();
}

bool hasValue(const se::RPCFormulaResult &result, int line, std::size_t point) {
    const auto at = static_cast<std::size_t>(line);
    const bool valid = point < result.mValid.size() && result.mValid[point] == 1;
    return valid && at < result.mValues.size() && point < result.mValues[at].size();
}

std::string headText(const se::RPCFormulaResult &result, const se::RPCFormulaMetaResult &meta) {
    std::string text = IndexBaseData::tr("时间").toStdString();
    for (int line = 0; line < columnCount(result, meta); ++line) {
        const auto at = static_cast<std::size_t>(line);
        const bool named = at < meta.mLineNames.size() && !meta.mLineNames[at].empty();
        text += '\t';
        text += named ? cellText(GZ::lineText(GZ::sToQs(meta.mLineNames[at])).toStdString())
                      : IndexBaseData::tr("线%1").arg(line + 1).toStdString();
    }
    return text;
}

/// The cells of a point; those behind the end of the series are empty.
std::string rowText(const se::RPCFormulaResult &result, const se::RPCFormulaMetaResult &meta,
                    std::size_t point) {
    std::string text = point < result.mTimes.size() ? timeText(result.mTimes[point].first) : std::string();
    for (int line = 0; line < columnCount(result, meta); ++line) {
        text += '\t';
        if (point >= result.mTimes.size()) {
            continue;
        }
        const std::string value =
            hasValue(result, line, point) ? shortestDigits(result.mValues[line][point]) : "";
        const std::string words = cellText(elementAt(result.mTexts, line, point));
        text += value + (value.empty() || words.empty() ? "" : " ") + words;
    }
    return text;
}

std::string joined(const std::vector<std::string> &blocks) {
    std::string text;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        text += (i ? "\t" : "") + blocks[i];
    }
    return text + '\n';
}

} // namespace

std::string textOfSeries(const se::RPCFormulaResult &result, const se::RPCFormulaMetaResult &meta, bool head) {
    std::string text = head ? headText(result, meta) + '\n' : std::string();
    for (std::size_t point = 0; point < result.mTimes.size(); ++point) {
        text += rowText(result, meta, point) + '\n';
    }
    return text;
}

std::string textOfSeries(const std::vector<se::RPCFormulaResult> &results,
                         const std::vector<se::RPCFormulaMetaResult> &metas, bool head) {
    const std::size_t count = std::min(results.size(), metas.size());
    std::size_t rows = 0;
    std::vector<std::string> blocks(count);
    for (std::size_t i = 0; i < count; ++i) {
        rows = std::max(rows, results[i].mTimes.size());
        blocks[i] = headText(results[i], metas[i]);
    }
    std::string text = head && count > 0 ? joined(blocks) : std::string();
    for (std::size_t row = 0; row < rows; ++row) {
        for (std::size_t i = 0; i < count; ++i) {
            blocks[i] = rowText(results[i], metas[i], row);
        }
        text += joined(blocks);
    }
    return text;
}

} // namespace TC
