#include "terminal/formula/NativeFormulas.h"

#include "host/toolkit/CUiResource.h"

namespace terminal {
namespace {

constexpr qint32 kLineStyle = 0;
constexpr qint32 kColorStickStyle = 2;

qint32 themeColor(const char *key) {
    const QColor color = GZ::CUiResource::instance().getColor(QLatin1String(key));
    return color.red() | color.green() << 8 | color.blue() << 16;
}

/// A result whose lines stand at nothing, of the shape that all lines and points fill.
se::RPCFormulaResult shaped(const MinuteBars &bars, size_t lines) {
    const size_t points = bars.size();
    se::RPCFormulaResult result;
    result.mTimes.reserve(points);
    for (const MinuteBar &bar : bars) {
        result.mTimes.emplace_back(bar.time, 0);
    }
    result.mValid.assign(points, 1);
    result.mPointTags.assign(points, 0);
    result.mValues.assign(lines, std::vector<double>(points, 0.0));
    result.mExtra1.assign(lines, std::vector<qint32>(points, se::kDefaultColor));
    result.mTexts.assign(lines, std::vector<std::string>(points));
    result.mExtra2.assign(lines, std::vector<double>(points, 0.0));
    return result;
}

se::RPCFormulaInstantResult shapedPoint(const MinuteBar &bar, std::vector<double> values) {
    se::RPCFormulaInstantResult point;
    point.mTime = {bar.time, 0};
    point.mExtra1.assign(values.size(), se::kDefaultColor);
    point.mTexts.assign(values.size(), std::string());
    point.mExtra2.assign(values.size(), 0.0);
    point.mValues = std::move(values);
    return point;
}

se::RPCFormulaMetaResult description(std::vector<std::string> names, qint32 style) {
    se::RPCFormulaMetaResult meta;
    const size_t lines = names.size();
    meta.mLineCount = static_cast<qint32>(lines);
    meta.mLineNames = std::move(names);
    meta.mLineStyles.assign(lines, style);
    meta.mLineColors.assign(lines, se::kDefaultColor);
    meta.mLineFlags.assign(lines, 0);
    meta.mLineAxis.assign(lines, se::eLineShared);
    return meta;
}

class PriceFormula : public FormulaProgram {
public:
    se::RPCFormulaMetaResult describe() const override { return description({"价格", "均价"}, kLineStyle); }

    se::RPCFormulaResult evaluate(const MinuteBars &bars) const override {
        se::RPCFormulaResult result = shaped(bars, 2);
        for (size_t i = 0; i < bars.size(); ++i) {
            result.mValues[0][i] = bars[i].price;
            result.mValues[1][i] = bars[i].average;
        }
        return result;
    }

    se::RPCFormulaInstantResult evaluateLast(const MinuteBars &bars) const override {
        return shapedPoint(bars.back(), {bars.back().price, bars.back().average});
    }
};

class VolumeFormula : public FormulaProgram {
public:
    se::RPCFormulaMetaResult describe() const override { return description({"成交量"}, kColorStickStyle); }

    se::RPCFormulaResult evaluate(const MinuteBars &bars) const override {
        se::RPCFormulaResult result = shaped(bars, 1);
        for (size_t i = 0; i < bars.size(); ++i) {
            result.mValues[0][i] = bars[i].volume;
            result.mExtra1[0][i] = colorOf(bars, i);
        }
        return result;
    }

    se::RPCFormulaInstantResult evaluateLast(const MinuteBars &bars) const override {
        se::RPCFormulaInstantResult point = shapedPoint(bars.back(), {bars.back().volume});
        point.mExtra1[0] = colorOf(bars, bars.size() - 1);
        return point;
    }

private:
    /// An unchanged price, and a first minute without an opening price, leave the colour to the theme.
    qint32 colorOf(const MinuteBars &bars, size_t i) const {
        const double before = i > 0 ? bars[i - 1].price : bars[i].open;
        if (before <= 0.0 || bars[i].price == before) {
            return se::kDefaultColor;
        }
        return bars[i].price > before ? mRise : mFall;
    }

    const qint32 mRise = themeColor("ic_clr_index_default_rise");
    const qint32 mFall = themeColor("ic_clr_index_default_fall");
};

} // namespace

std::unique_ptr<FormulaProgram> makeNativeFormula(const TC::CFormulaParam &param) {
    if (param.mFormulaName == QLatin1String("REALTIME")) {
        return std::make_unique<PriceFormula>();
    }
    if (param.mFormulaName == QLatin1String("REALTIMEVOL")) {
        return std::make_unique<VolumeFormula>();
    }
    return nullptr;
}

} // namespace terminal
