#include "host/drawing/IndexBaseData.h"

#include "host/services/CFormulaOperateManager.h"
#include "host/services/CStrategyTradeManager.h"
#include "host/services/ServiceContext.h"
#include "toolkit/drawing/SeriesText.h"

#include <algorithm>

namespace TC {
namespace {

using Hold = boost::unique_lock<boost::recursive_mutex>;

constexpr int kReplacesMainChart = 2; ///< CFormulaDetail::mType

} // namespace

IndexBaseData::IndexBaseData(GZ::CEventDeliverer *next, EIndexDisplayType displayType,
                             const ServiceContext &services)
    : GZ::CEventDeliverer(next), mDisplayType(displayType), mDrawStyle(new CDrawStyle), mServices(services) {}

CFormulaDetailPtr IndexBaseData::recordOf(const QString &formula) const {
    return mServices.get<CFormulaOperateManager>().getFormula(formula);
}

IndexBaseData::~IndexBaseData() {
    retire();
    delete mDrawStyle;
}

QList<QString> IndexBaseData::getFormulas() const {
    Hold hold(mLock);
    return mFormulas;
}

QString IndexBaseData::getMainGraph() const {
    Hold hold(mLock);
    for (const QString &formula : mFormulas) {
        if (isMainGraph(formula)) {
            return formula;
        }
    }
    return mFormulas.value(0);
}

IndexBaseData::MaxMinMap IndexBaseData::getMaxMinMap() const {
    Hold hold(mLock);
    return mMaxMin;
}

QString IndexBaseData::getReqID(const CFormulaKey &key) const {
    Hold hold(mLock);
    QString id;
    mReq.getReq(id, key);
    return id;
}

QString IndexBaseData::getShowName(const QString &formula) const {
    const CFormulaDetailPtr record = recordOf(formula);
    return record ? record->mName : formula;
}

QVector<QString> IndexBaseData::reqIds() const {
    Hold hold(mLock);
    return mReq.reqIds();
}

bool IndexBaseData::hasData() const {
    Hold hold(mLock);
    return std::any_of(mData.cbegin(), mData.cend(),
                       [](const se::RPCFormulaResultCache &series) { return !series.result.mTimes.empty(); });
}

bool IndexBaseData::hasGroupModelIndex() const {
    Hold hold(mLock);
    return std::any_of(mFormulas.cbegin(), mFormulas.cend(), [this](const QString &formula) {
        const CFormulaDetailPtr record = recordOf(formula);
        return record && record->mStrParamNames.contains(QStringLiteral("group"));
    });
}

bool IndexBaseData::hasPythonIndex() const {
    Hold hold(mLock);
    return std::any_of(mFormulas.cbegin(), mFormulas.cend(), [this](const QString &formula) {
        const CFormulaDetailPtr record = recordOf(formula);
        return record && record->mLanguage == EFormulaLanguage::Python;
    });
}

bool IndexBaseData::isMainGraph(const QString &formula) const {
    const CFormulaDetailPtr record = recordOf(formula);
    return record && record->mType == kReplacesMainChart;
}

bool IndexBaseData::isNeedYAxis(const se::RPCFormulaResultCache &series, int line) {
    const std::vector<qint32> &axis = series.meta.mLineAxis;
    return line < 0 || line >= static_cast<int>(axis.size()) || axis[line] != se::eLineOwn;
}

void IndexBaseData::updateStrategyBacktestData(const QVector<QString> &requestIds) {
    if (!requestIds.isEmpty()) {
        mServices.get<CStrategyTradeManager>().updateBacktestData(requestIds);
    }
}

std::string IndexBaseData::getResultTxtStr(se::RPCFormulaResult &result, se::RPCFormulaMetaResult &meta,
                                           bool head) {
    return textOfSeries(result, meta, head);
}

std::string IndexBaseData::getResultTxtStr(std::vector<se::RPCFormulaResult> &results,
                                           std::vector<se::RPCFormulaMetaResult> &metas, bool head) {
    return textOfSeries(results, metas, head);
}

} // namespace TC
