#include "toolkit/drawing/TitleContent.h"

#include "host/drawing/CDrawStyle.h"
#include "host/records/ValueComparison.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/PriceDecimals.h"
#include "host/toolkit/Text.h"
#include "host/toolkit/ThemeColor.h"
#include "host/toolkit/Wording.h"
#include "toolkit/drawing/DrawLook.h"
#include "toolkit/drawing/SeriesLine.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace TC {
namespace {

/// A number with its sign, a rise with "+".
QString signedText(double value, int digits, int flags) {
    const QString text = GZ::formatDoubleNumber(value, digits, flags, false, QStringLiteral("--"));
    return value > 0.0 ? QLatin1Char('+') + text : text;
}

} // namespace

void TitleContent::write(CArrowColorSimpleText &title, const IndexBaseData &source) const {
    if (mDisplayType == EIndexDisplayType::Main) {
        addInstrument(title, source);
    }
    addFormulas(title, source);
    if (mDisplayType == EIndexDisplayType::Main) {
        addCurves(title);
    }
}

void TitleContent::addInstrument(CArrowColorSimpleText &title, const IndexBaseData &source) const {
    const QColor color = GZ::themeColor("ic_clr_index_title_name");
    title.append(getDetailQsName(mStock), color);
    if (getDetailQsCode(mStock) != getDetailQsName(mStock)) {
        title.append(getDetailQsCode(mStock), color);
    }
    if (source.getTradeDate() != 0 &&
        !showsToday(source.getTradeDate(), source.services().get<CStockManager>())) {
        title.append(GZ::exchangeDate(source.getTradeDate()).toString(GZ::kDateFormat),
                     GZ::themeColor("ic_clr_index_title_text"));
    }
}

void TitleContent::addFormulas(CArrowColorSimpleText &title, const IndexBaseData &source) const {
    const double close = lastClose(source);
    const bool main = mDisplayType == EIndexDisplayType::Main;
    QList<QString> formulas = source.getFormulas();
    if (!mShowIndex.isEmpty() && !formulas.contains(mShowIndex.toUpper())) {
        formulas.append(mShowIndex);
    }
    source.readData([&](const QMap<CFormulaKey, se::RPCFormulaResultCache> &data) {
        for (const QString &formula : formulas) {
            if (!main || !source.isMainGraph(formula)) {
                title.append(formulaHead(formula, source.services().get<CFormulaOperateManager>()),
                             GZ::themeColor("ic_clr_index_title_name"));
            }
            for (auto entry = data.begin(); entry != data.end(); ++entry) {
                if (entry.key().mFormula == formula && !overlay(entry.key())) {
                    CDrawStyle::getTitleText(title, entry.key(), *entry, mIndex, mStock, mAddStocks,
                                             source.services());
                    if (main && formula == QLatin1String("REALTIME")) {
                        addChange(title, *entry, close);
                    }
                }
            }
        }
        for (auto entry = data.begin(); entry != data.end(); ++entry) {
            addOverlay(title, entry.key(), *entry, source);
        }
    });
}

/// The overlay whose series it is; null for the instrument's own.
CInstrumentDetailPtr TitleContent::overlay(const CFormulaKey &key) const {
    const auto found =
        std::find_if(mAddStocks.begin(), mAddStocks.end(), [&](const CInstrumentDetailPtr &stock) {
            return getDetailQsKey(stock) == key.mStock && getDetailQsKey(mStock) != key.mStock;
        });
    return found == mAddStocks.end() ? nullptr : *found;
}

void TitleContent::addOverlay(CArrowColorSimpleText &title, const CFormulaKey &key,
                              const se::RPCFormulaResultCache &series, const IndexBaseData &source) const {
    const CInstrumentDetailPtr stock = overlay(key);
    if (!stock) {
        return;
    }
    CDrawStyle::getTitleText(title, key, series, mIndex, mStock, mAddStocks, source.services());
    const SeriesLine price(series, 0);
    const int at = mIndex < 0 ? price.lastPoint() : mIndex;
    const double close = closeBefore(stock, source.getTradeDate(), source.services().get<CStockManager>());
    if (key.mFormula == QLatin1String("REALTIME") && price.has(at) && !isUnset(close) &&
        close > kValueTolerance) {
        const double change = (price.value(at) - close) / close;
        title.append(tr("涨幅:%1").arg(signedText(change, 2, utils::eFormatPercent)),
                     QColor::fromRgba(DrawLook::current().ofSign(change)));
    }
}

void TitleContent::addCurves(CArrowColorSimpleText &title) const {
    const TitleCurves curves = mView.curves(mIndex);
    const QColor color = GZ::themeColor("ic_clr_index_title_text");
    for (const auto &[name, value] : {std::pair<QString, double>{tr("买入额:%1"), curves.bought},
                                      {tr("卖出额:%1"), curves.sold},
                                      {tr("净买额:%1"), curves.net},
                                      {tr("盈亏:%1"), curves.profit},
                                      {tr("配平:%1"), curves.balance}}) {
        if (!isUnset(value)) {
            title.append(
                name.arg(GZ::formatDoubleNumber(value, 2, utils::eFormatScaled, false, QStringLiteral("--"))),
                color);
        }
    }
}

void TitleContent::addChange(CArrowColorSimpleText &title, const se::RPCFormulaResultCache &series,
                             double lastClose) const {
    const SeriesLine price(series, 0);
    const int at = mIndex < 0 ? price.lastPoint() : mIndex;
    if (!price.has(at) || isUnset(lastClose) || lastClose < kValueTolerance) {
        return;
    }
    const double change = price.value(at) - lastClose;
    const double sign = std::fabs(change) > kValueTolerance ? change : 0.0;
    const QColor color = QColor::fromRgba(DrawLook::current().ofSign(sign));
    const int digits = decimals(getDetailPriceTick(mStock));
    title.append(tr("涨跌:%1").arg(signedText(sign, digits, utils::eFormatPlain)), color);
    title.append(tr("涨幅:%1").arg(signedText(sign / lastClose, 2, utils::eFormatPercent)), color);
}

bool TitleContent::showsToday(int date, CStockManager &stocks) const {
    const bool past = mGetTradeDateFunc || mView.isPast();
    if (date == 0) {
        return !past;
    }
    return stocks.getLastTradingDay(getDetailQsMarket(mStock)) == date;
}

double TitleContent::lastClose(const IndexBaseData &source) const {
    if (!mStock || !mView.isInstrument()) {
        return kUnsetValue;
    }
    return closeBefore(mStock, source.getTradeDate(), source.services().get<CStockManager>());
}

/// The close before the day that is shown, a time in seconds, or before the view's when that is 0.
double TitleContent::closeBefore(const CInstrumentDetailPtr &stock, int date, CStockManager &stocks) const {
    if (showsToday(date, stocks)) {
        return getDetailLastClose(stock);
    }
    return date == 0 ? kUnsetValue : stocks.getCurrentDateLastClose(stock, date);
}

} // namespace TC
