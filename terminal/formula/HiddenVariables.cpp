#include "terminal/formula/HiddenVariables.h"

#include "host/records/Enumerations.h"

#include <QStringList>

#include <cmath>

namespace terminal {
namespace {

template <class Value> Value elementOr(const std::vector<Value> &values, size_t place, const Value &other) {
    return place < values.size() ? values[place] : other;
}

QString valueText(double value) {
    if (!std::isfinite(value) || std::fabs(value) >= TC::kUnsetValue) {
        return QStringLiteral("--");
    }
    QString text = QString::number(value, 'f', 4);
    while (text.endsWith(QLatin1Char('0'))) {
        text.chop(1);
    }
    if (text.endsWith(QLatin1Char('.'))) {
        text.chop(1);
    }
    return text == QLatin1String("-0") ? QStringLiteral("0") : text;
}

} // namespace

void HiddenVariables::take(const se::RPCFormulaMetaResult &meta, const se::RPCFormulaResult &result) {
    mLines.clear();
    mTimes.clear();
    for (size_t place = 0; place < meta.mLineAxis.size(); ++place) {
        if (meta.mLineAxis[place] != se::eLineHidden) {
            continue;
        }
        Line line;
        line.place = place;
        line.name = QString::fromStdString(elementOr(meta.mLineNames, place, std::string()));
        line.values = elementOr(result.mValues, place, std::vector<double>());
        line.values.resize(result.mTimes.size(), TC::kUnsetValue);
        mLines.push_back(std::move(line));
    }
    if (!mLines.empty()) {
        mTimes = result.mTimes;
    }
}

void HiddenVariables::take(const se::RPCFormulaInstantResult &point) {
    if (mLines.empty() || (!mTimes.empty() && point.mTime < mTimes.back())) {
        return;
    }
    const bool isNew = mTimes.empty() || mTimes.back() < point.mTime;
    if (isNew) {
        mTimes.push_back(point.mTime);
    }
    for (Line &line : mLines) {
        line.values.resize(mTimes.size(), TC::kUnsetValue);
        line.values.back() = elementOr(point.mValues, line.place, TC::kUnsetValue);
    }
}

size_t HiddenVariables::bytes() const {
    size_t bytes = mTimes.size() * sizeof(se::TimePosition);
    for (const Line &line : mLines) {
        bytes += sizeof(Line) + line.values.size() * sizeof(double);
    }
    return bytes;
}

QString HiddenVariables::textAt(int index) const {
    if (index < 0 || static_cast<size_t>(index) >= mTimes.size()) {
        return {};
    }
    QStringList texts;
    for (const Line &line : mLines) {
        texts.append(line.name + QLatin1Char(':') + valueText(line.values[static_cast<size_t>(index)]));
    }
    return texts.join(QLatin1Char(' '));
}

} // namespace terminal
