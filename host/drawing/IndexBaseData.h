#pragma once

#include "host/Export.h"
#include "host/drawing/CDrawStyle.h"
#include "host/drawing/IndexBaseDataReq.h"
#include "host/records/CFormulaDetail.h"
#include "host/records/CFormulaKey.h"
#include "host/records/RPCFormulaResult.h"
#include "host/services/ServiceContext.h"
#include "host/toolkit/CEventDeliverer.h"

#include <QList>
#include <QMap>
#include <QObject>
#include <QPair>
#include <QString>
#include <QVector>
#include <boost/thread/recursive_mutex.hpp>

#include <string>
#include <vector>

namespace TC {

/// Base of the data object of a pane: its series, value ranges, request ids and formula names.
class TIMESHARE_EXPORT IndexBaseData : public QObject, public GZ::CEventDeliverer {
    Q_OBJECT
public:
    using MaxMinMap = QMap<CFormulaKey, QPair<double, double>>; ///< first the maximum, second the minimum

    /// `next` hears of new data; `services` is what its formulas are known to.
    explicit IndexBaseData(GZ::CEventDeliverer *next, EIndexDisplayType displayType = EIndexDisplayType::Main,
                           const ServiceContext &services = ServiceContext::processWide());
    ~IndexBaseData() override;

    /// The services of the view that the data belong to.
    const ServiceContext &services() const { return mServices; }
    /// The series held. The reference is for the thread that changes them, or for a holder of the lock.
    const QMap<CFormulaKey, se::RPCFormulaResultCache> &getData() const { return mData; }
    /// Shows the series to `reader` while nothing can change them. Any thread.
    template <class Reader> void readData(Reader reader) const {
        boost::recursive_mutex::scoped_lock hold(mLock);
        reader(mData);
    }
    /// The trading day of the series, seconds since the epoch at its midnight; 0 when it is not known.
    virtual int getTradeDate() const { return 0; }
    /// Whether a series is held. Any thread.
    bool hasSeries(const CFormulaKey &key) const {
        boost::recursive_mutex::scoped_lock hold(mLock);
        return mData.contains(key);
    }
    QList<QString> getFormulas() const;
    /// The main formula of this chart: the first of its formulas for which isMainGraph holds, else the first.
    virtual QString getMainGraph() const;
    MaxMinMap getMaxMinMap() const;
    /// Request id of a series, or empty.
    QString getReqID(const CFormulaKey &key) const;
    /// Name to show for a formula: that of its record, else the name itself.
    QString getShowName(const QString &formula) const;
    QVector<QString> reqIds() const;
    /// Whether a series has points.
    bool hasData() const;
    /// Whether a formula of this pane is a group model: its record has a text parameter "group".
    bool hasGroupModelIndex() const;
    /// Whether a formula of this pane is a script model.
    bool hasPythonIndex() const;
    /// Whether a formula is the main formula of the chart.
    virtual bool isMainGraph(const QString &formula) const;
    /// Whether a line lies on the value axis of the pane; false when it carries its own.
    static bool isNeedYAxis(const se::RPCFormulaResultCache &series, int line);
    /// Refreshes the back-test series of the named requests.
    void updateStrategyBacktestData(const QVector<QString> &requestIds);

    /// Text of one series: a head line with the names of the lines, then a row a point with its time, columns
    /// separated by tabs. The flag adds the head.
    static std::string getResultTxtStr(se::RPCFormulaResult &result, se::RPCFormulaMetaResult &meta, bool head);
    /// The same of several series side by side, rows by position.
    static std::string getResultTxtStr(std::vector<se::RPCFormulaResult> &results,
                                       std::vector<se::RPCFormulaMetaResult> &metas, bool head);

protected:
    mutable boost::recursive_mutex mLock; ///< guards everything below and all that derived classes add
    EIndexDisplayType mDisplayType;
    QMap<CFormulaKey, se::RPCFormulaResultCache> mData;
    MaxMinMap mMaxMin;
    IndexBaseDataReq mReq;
    CDrawStyle *mDrawStyle = nullptr;
    QList<QString> mFormulas;

private:
    /// The record of a formula, or null.
    CFormulaDetailPtr recordOf(const QString &formula) const;

    const ServiceContext &mServices;
};

} // namespace TC
