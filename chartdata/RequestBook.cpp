#include "chartdata/RequestBook.h"

#include "chartdata/RequestTimes.h"
#include "host/services/CConfigService.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/CStockManager.h"
#include "host/services/DataLog.h"
#include "host/services/IdGenerator.h"
#include "host/toolkit/Text.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <boost/lexical_cast.hpp>

#include <limits>

namespace TC {
namespace {

constexpr qint64 kMinute = 60000;

/// Sets each named argument to its value; one without a value is "0".
template <class Value, class ToText>
void setArguments(QMap<QString, QString> &arguments, const QVector<QString> &names,
                  const QVector<Value> &values, ToText toText) {
    for (int i = 0; i < names.size(); ++i) {
        arguments[names[i]] = i < values.size() ? toText(values[i]) : QStringLiteral("0");
    }
}

/// Makes the request of a script model: its file in the script folder, and its arguments.
void addressScript(CFormulaParam &param, const CFormulaDetail &formula, CFormulaOperateManager &catalogue) {
    param.mFormulaName = catalogue.pythonDir() + QStringLiteral("\\%1.py").arg(formula.mName.toUpper());
    setArguments(param.mArguments, formula.mParamNames, formula.mParamValues,
                 [](double value) { return QString::fromStdString(boost::lexical_cast<std::string>(value)); });
    setArguments(param.mArguments, formula.mStrParamNames, formula.mStrParamValues,
                 [](const QString &value) { return value; });
}

/// What every request of a formula has.
CFormulaParam commonParam(const CFormulaDetail &formula, corvane::ERunMode mode) {
    CFormulaParam param;
    param.mFormulaName = formula.mFileName;
    param.mLanguage = static_cast<qint32>(formula.mLanguage);
    param.mPeriod = kMinute;
    param.mLimit = std::numeric_limits<qint32>::max();
    param.mLimitFlag = 1;
    if (mode == corvane::ERunMode::HandOver) {
        param.mRunData = formula.mRunData;
    }
    return param;
}

void setTimes(CFormulaParam &param, const RequestTimes &times) {
    param.mStart = times.start;
    param.mEnd = times.end;
    param.mDataDemand = times.demand;
}

} // namespace

QSet<CFormulaKey> RequestBook::wantedKeys() const {
    QSet<CFormulaKey> keys;
    const QString stock = mView.getStock();
    for (const QString &name : mFormulas) {
        keys.insert(CFormulaKey(stock, name));
        if (mDisplayType != EIndexDisplayType::Main || !mView.isBasicFormula(name)) {
            continue;
        }
        for (const CInstrumentDetailPtr &overlay : mView.getAllAddStockList()) {
            keys.insert(CFormulaKey(getDetailQsKey(overlay), name));
        }
    }
    return keys;
}

/// Calls `fill` with each request, its key, its formula and whether it is one of an instrument, and enters those for
/// which it answers true.
template <class Fill> QVector<CFormulaParam> RequestBook::openEach(corvane::ERunMode mode, Fill fill) {
    QVector<CFormulaParam> params;
    auto &catalogue = mView.service<CFormulaOperateManager>();
    for (const CFormulaKey &key : wantedKeys()) {
        const CFormulaDetailPtr formula = catalogue.getFormula(key.mFormula);
        if (!formula) {
            warnOfData(QStringLiteral(
                           "unknown formula \"%1\": CFormulaOperateManager::getFormula does not know it, and "
                           "nothing is asked for")
                           .arg(key.mFormula));
            continue;
        }
        catalogue.genLuaFormula(formula->mFileName, formula->mName);
        CFormulaParam param = commonParam(*formula, mode);
        const CInstrumentDetailPtr detail = mView.service<CStockManager>().getInstrumentDetail(key.mStock);
        if (detail) {
            param.mMarket = getDetailQsMarket(detail);
            param.mCode = getDetailQsCode(detail);
        } else {
            param.mStockKind = mView.mStockKind;
        }
        if (formula->mLanguage == EFormulaLanguage::Python) {
            addressScript(param, *formula, catalogue);
        }
        if (!fill(param, key, formula, detail != nullptr)) {
            continue;
        }
        param.mRequestId = mView.service<se::IdGenerator>().formulaRequestId(mView.getMainPanelID(),
                                                                             formula->mFileName, param.mCode);
        mIds.add(key, GZ::sToQs(param.mRequestId));
        params.append(param);
    }
    return params;
}

QVector<CFormulaParam> RequestBook::openOrdinary(int tradeDate, corvane::ERunMode mode) {
    auto &stocks = mView.service<CStockManager>();
    const QPair<qint64, qint64> bounds = stocks.getStartEndTime(mView.getStockDetail(), tradeDate);
    const auto fill = [&](CFormulaParam &param, const CFormulaKey &key, const CFormulaDetailPtr &formula,
                          bool isInstrument) {
        if (!isInstrument && mView.isOverlayIndex(key.mStock)) {
            param.mStockKind = eUserIndex;
        }
        if (!isInstrument && !mView.fillRequestParam(param, key.mStock, formula)) {
            return false;
        }
        const int last = stocks.getLastTradingDay(calendarMarket(param.mMarket));
        setTimes(param, requestTimes(param.mMarket, bounds.first, bounds.second, last));
        param.mDataMode = 1;
        if (!mView.mFormulaAccount.isEmpty()) {
            param.mArguments[QStringLiteral("__sys__account")] = mView.mFormulaAccount;
        }
        const CUserConfig *user = mView.service<CConfigService>().userConfig();
        if (user && mDisplayType == EIndexDisplayType::Sub && formula->mLanguage == EFormulaLanguage::Native) {
            param.mInterval = user->subIndexRefresh() * 1000LL;
        }
        return true;
    };
    return openEach(mode, fill);
}

QVector<CFormulaParam> RequestBook::openFixedPrice(int tradeDate, corvane::ERunMode mode) {
    auto &stocks = mView.service<CStockManager>();
    const QPair<qint64, qint64> bounds = stocks.getStartEndTime(mView.getStockDetail(), tradeDate);
    const auto fill = [&](CFormulaParam &param, const CFormulaKey &key, const CFormulaDetailPtr &formula,
                          bool isInstrument) {
        if (!isInstrument && !mView.fillRequestParam(param, key.mStock, formula)) {
            return false;
        }
        const int last = stocks.getLastTradingDay(param.mMarket);
        setTimes(param, fixedPriceTimes(bounds.first, bounds.second, last));
        param.mDataMode = 3;
        param.mLevel = mView.mFixedPriceLevel;
        return true;
    };
    return openEach(mode, fill);
}

QVector<CFormulaParam> RequestBook::open(int tradeDate, corvane::ERunMode mode) {
    return mView.mFixedPriceRequest ? openFixedPrice(tradeDate, mode) : openOrdinary(tradeDate, mode);
}

QString RequestBook::close(const CFormulaKey &key) {
    QString id;
    if (mIds.getReq(id, key)) {
        mIds.removeReq(id);
    }
    return id;
}

QVector<QString> RequestBook::closeOverlays(const QString &formula) {
    QVector<QString> ids;
    for (const CInstrumentDetailPtr &overlay : mView.getAllAddStockList()) {
        const QString id = close(CFormulaKey(getDetailQsKey(overlay), formula));
        if (!id.isEmpty()) {
            ids.append(id);
        }
    }
    return ids;
}

QVector<QString> RequestBook::closeAll() {
    const QVector<QString> ids = mIds.reqIds();
    mIds.clear();
    return ids;
}

} // namespace TC
