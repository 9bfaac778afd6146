#pragma once

#include "host/Export.h"
#include "host/records/CFormulaDetail.h"
#include "host/records/CFormulaParam.h"
#include "host/services/ServiceContext.h"

#include <QList>
#include <QString>
#include <boost/shared_ptr.hpp>

namespace TC {

/// What differs between the kinds of instrument that a view can show: the formulas of the main chart, how a
/// request is addressed, and whether the graph has a context menu. Knows the host only.
class TIMESHARE_EXPORT CRealtimeBaseFormulaAxis {
public:
    virtual ~CRealtimeBaseFormulaAxis() = default;

    /// What is asked for instruments and indexes; until it is set, the program's own.
    void setServices(const ServiceContext &services) { mServices = &services; }

    /// Membership in the main chart, letter case included.
    virtual bool isMainFormula(const QString &name) const;
    /// The basic formula, in any letter case.
    virtual bool isBasicFormula(const QString &name) const;
    /// The volume formula, in any letter case.
    virtual bool isVolFormula(const QString &name) const;
    /// The formulas of the main chart, in order. Every kind says its own; the bodies here are what an instrument
    /// with a price and a volume says.
    virtual QList<QString> getMainFormula() const = 0;
    virtual QString getBasicFormula() const = 0;
    virtual QString getVolFormula() const = 0;
    /// Chooses the analysis of a portfolio; nothing for the other kinds.
    virtual void setPortfolioGraphType(int type);
    virtual bool showContextMenu() const = 0;
    /// Addresses a request; false when it must not be sent.
    virtual bool fillRequestParam(CFormulaParam &param, const QString &key,
                                  boost::shared_ptr<CFormulaDetail> formula) = 0;

protected:
    const ServiceContext *mServices = &ServiceContext::processWide();
    QList<QString> mMainFormulas;
};

} // namespace TC
