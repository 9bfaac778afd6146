#pragma once

#include "host/Export.h"
#include "host/records/RPCFormulaResult.h"
#include "host/services/CSingletonT.h"

#include <QString>

#include <memory>

namespace TC {

/// Cache of whole history results, shared by all views. May be called from any thread.
class TIMESHARE_EXPORT CMultiRequestDataManager {
public:
    virtual ~CMultiRequestDataManager() = default;

    /// The stored series of (instrument, formula). False, and nothing changed, when there is none.
    virtual bool getFormulaHistoryData(const QString &stock, const QString &formula,
                                       std::shared_ptr<se::RPCFormulaMetaResult> &meta,
                                       std::shared_ptr<se::RPCFormulaResult> &result) = 0;
    /// Stores a series.
    virtual void addFormulaHistoryData(const QString &stock, const QString &formula,
                                       const std::shared_ptr<se::RPCFormulaMetaResult> &meta,
                                       const std::shared_ptr<se::RPCFormulaResult> &result) = 0;
};

} // namespace TC
