#include "toolkit/drawing/SeriesTitle.h"

#include "host/toolkit/PriceDecimals.h"
#include "host/toolkit/Text.h"
#include "host/toolkit/Wording.h"
#include "toolkit/drawing/DrawLook.h"
#include "toolkit/drawing/SeriesLine.h"

#include <algorithm>

namespace TC {
namespace {

/// The overlay whose series it is; null for the instrument's own.
CInstrumentDetailPtr overlayOf(const CFormulaKey &key, const CInstrumentDetailPtr &instrument,
                               const QList<CInstrumentDetailPtr> &addStocks) {
    if (instrument && getDetailQsKey(instrument) == key.mStock) {
        return nullptr;
    }
    const auto found = std::find_if(addStocks.begin(), addStocks.end(), [&](const CInstrumentDetailPtr &stock) {
        return getDetailQsKey(stock) == key.mStock;
    });
    return found == addStocks.end() ? nullptr : *found;
}

/// Decimals of a value of a line: those that the formula's record asks for, else those of a volume or of a price.
int decimalsOf(const CFormulaKey &key, const CFormulaDetailPtr &formula, int line, double value,
               const CInstrumentDetailPtr &instrument) {
    if (formula && formula->mPrecisions.contains(line)) {
        return GZ::getGraphShowTick(value, formula->mPrecisions.value(line));
    }
    if (key.mFormula.contains(QLatin1String("REALTIMEVOL"))) {
        return volumeDecimals(value);
    }
    return GZ::getGraphShowTick(value, decimals(getDetailPriceTick(instrument)));
}

QString valueText(double value, int digits) {
    return GZ::formatDoubleNumber(value, digits, utils::eFormatScaled, false, QStringLiteral("--"));
}

QString lineName(const se::RPCFormulaMetaResult &meta, int line) {
    return std::size_t(line) < meta.mLineNames.size()
               ? GZ::lineText(GZ::sToQs(meta.mLineNames[std::size_t(line)]))
               : QString();
}

CArrowColorSimpleText::EArrow moveOf(const SeriesLine &line, int index) {
    if (!line.has(index) || !line.has(index - 1)) {
        return CArrowColorSimpleText::eArrowNone;
    }
    const double move = line.value(index) - line.value(index - 1);
    return move > kValueTolerance    ? CArrowColorSimpleText::eArrowUp
           : move < -kValueTolerance ? CArrowColorSimpleText::eArrowDown
                                     : CArrowColorSimpleText::eArrowNone;
}

} // namespace

void appendSeries(CArrowColorSimpleText &title, const CFormulaKey &key, const se::RPCFormulaResultCache &series,
                  int index, const CInstrumentDetailPtr &instrument,
                  const QList<CInstrumentDetailPtr> &addStocks, const CFormulaDetailPtr &formula) {
    const DrawLook &look = DrawLook::current();
    const CInstrumentDetailPtr overlay = overlayOf(key, instrument, addStocks);
    QString overlayName = getDetailQsName(overlay);
    const int lines = std::min(series.meta.mLineCount, static_cast<int>(series.result.mValues.size()));
    for (int i = 0; i < lines; ++i) {
        const SeriesLine line(series, i);
        if (line.isHidden()) {
            continue;
        }
        const int at = index < 0 ? line.lastPoint() : index;
        const QColor color = QColor::fromRgba(line.color(at, look.ofLine(i)));
        title.append(overlayName, color);
        overlayName.clear();
        const double number = line.has(at) ? line.value(at) : kUnsetValue;
        const bool isText = line.has(at) && !line.text(at).empty();
        const QString value =
            isText ? GZ::sToQs(line.text(at))
                   : valueText(number, decimalsOf(key, formula, i, number, overlay ? overlay : instrument));
        const QString name = lineName(series.meta, i);
        title.append(name.isEmpty() ? value : name + QLatin1Char(':') + value, color, moveOf(line, at));
    }
}

} // namespace TC
