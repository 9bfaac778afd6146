#include "host/services/MainSeries.h"

#include "host/drawing/DrawStyles.h"
#include "host/toolkit/Text.h"

namespace TC {
namespace {

enum class Kind { None, Price, Volume };

Kind kindOf(const QString &formula) {
    if (GZ::isSameName(formula, QLatin1String("REALTIME"))) {
        return Kind::Price;
    }
    return GZ::isSameName(formula, QLatin1String("REALTIMEVOL")) ? Kind::Volume : Kind::None;
}

std::vector<double> closes(const std::vector<MinuteBar> &bars) {
    std::vector<double> values;
    for (const MinuteBar &bar : bars) {
        values.push_back(bar.mClose);
    }
    return values;
}

/// Mean price of all that was traded until the end of a bar.
double meanPrice(const MinuteBar &bar, double volume, double amount) {
    return volume > 0.0 ? amount / volume : bar.mClose;
}

std::vector<double> meanPrices(const std::vector<MinuteBar> &bars) {
    std::vector<double> values;
    double volume = 0.0;
    double amount = 0.0;
    for (const MinuteBar &bar : bars) {
        volume += bar.mVolume;
        amount += bar.mAmount;
        values.push_back(meanPrice(bar, volume, amount));
    }
    return values;
}

/// Change of the close by which the volume of a bar is coloured.
double changeAt(const std::vector<MinuteBar> &bars, std::size_t i) {
    return bars[i].mClose - (i > 0 ? bars[i - 1].mClose : bars[i].mOpen);
}

std::vector<double> volumes(const std::vector<MinuteBar> &bars) {
    std::vector<double> values;
    for (const MinuteBar &bar : bars) {
        values.push_back(bar.mVolume);
    }
    return values;
}

std::vector<double> changes(const std::vector<MinuteBar> &bars) {
    std::vector<double> values;
    for (std::size_t i = 0; i < bars.size(); ++i) {
        values.push_back(changeAt(bars, i));
    }
    return values;
}

} // namespace

bool MainSeries::isMain(const QString &formula) {
    return kindOf(formula) != Kind::None;
}

FormulaMetaPtr MainSeries::meta(const QString &formula) {
    const Kind kind = kindOf(formula);
    if (kind == Kind::None) {
        return nullptr;
    }
    const auto meta = std::make_shared<se::RPCFormulaMetaResult>();
    meta->mLineNames =
        kind == Kind::Price ? std::vector<std::string>{"价格", "均价"} : std::vector<std::string>{"成交量"};
    const auto lines = meta->mLineNames.size();
    meta->mLineCount = static_cast<qint32>(lines);
    meta->mLineStyles.assign(lines, kind == Kind::Price ? eLineStyle : eColorStickStyle);
    meta->mLineColors.assign(lines, se::kDefaultColor);
    meta->mLineFlags.assign(lines, 0);
    meta->mLineAxis.assign(lines, se::eLineShared);
    return meta;
}

FormulaResultPtr MainSeries::result(const QString &formula, const std::vector<MinuteBar> &bars) {
    const Kind kind = kindOf(formula);
    if (kind == Kind::None) {
        return nullptr;
    }
    const auto result = std::make_shared<se::RPCFormulaResult>();
    for (const MinuteBar &bar : bars) {
        result->mTimes.emplace_back(bar.mEnd, 0);
    }
    if (kind == Kind::Price) {
        result->mValues = {closes(bars), meanPrices(bars)};
        result->mExtra2.assign(2, std::vector<double>(bars.size(), kUnsetValue));
    } else {
        result->mValues = {volumes(bars)};
        result->mExtra2 = {changes(bars)};
    }
    const std::size_t lines = result->mValues.size();
    result->mValid.assign(bars.size(), 1);
    result->mPointTags.assign(bars.size(), 0);
    result->mExtra1.assign(lines, std::vector<qint32>(bars.size(), se::kDefaultColor));
    result->mTexts.assign(lines, std::vector<std::string>(bars.size()));
    return result;
}

FormulaInstantPtr MainSeries::lastPoint(const QString &formula, const std::vector<MinuteBar> &bars) {
    MainDay day;
    for (const MinuteBar &bar : bars) {
        day.add(bar);
    }
    return day.lastPoint(formula);
}

bool MainDay::add(const MinuteBar &bar) {
    if (!mBars.empty() && bar.mEnd < mBars.back().mEnd) {
        return false;
    }
    if (!mBars.empty() && bar.mEnd == mBars.back().mEnd) {
        mBars.back() = bar;
        return true;
    }
    if (!mBars.empty()) {
        mVolumeBefore += mBars.back().mVolume;
        mAmountBefore += mBars.back().mAmount;
    }
    mBars.push_back(bar);
    return true;
}

FormulaInstantPtr MainDay::lastPoint(const QString &formula) const {
    const Kind kind = kindOf(formula);
    if (kind == Kind::None || mBars.empty()) {
        return nullptr;
    }
    const MinuteBar &bar = mBars.back();
    const auto point = std::make_shared<se::RPCFormulaInstantResult>();
    point->mTime = {bar.mEnd, 0};
    if (kind == Kind::Price) {
        const double mean = meanPrice(bar, mVolumeBefore + bar.mVolume, mAmountBefore + bar.mAmount);
        point->mValues = {bar.mClose, mean};
        point->mExtra2.assign(2, kUnsetValue);
    } else {
        point->mValues = {bar.mVolume};
        point->mExtra2 = {changeAt(mBars, mBars.size() - 1)};
    }
    point->mExtra1.assign(point->mValues.size(), se::kDefaultColor);
    point->mTexts.assign(point->mValues.size(), {});
    return point;
}

} // namespace TC
