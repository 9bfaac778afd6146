#pragma once

/// \file
/// Default services for what is known of instruments and formulas: next to nothing.

#include "host/services/CFormulaOperateManager.h"
#include "host/services/CIndexManager.h"
#include "host/services/CMultiRequestDataManager.h"
#include "host/services/CSectorManager.h"
#include "host/services/CTradeOpenCloseTimeManager.h"
#include "host/services/IdGenerator.h"
#include "host/services/StockTypeCenter.h"

#include <boost/make_shared.hpp>

#include <atomic>

namespace TC {

/// Leaves the sessions to the built-in table.
class DefaultTradeTimes : public CTradeOpenCloseTimeManager {
public:
    bool getTradeTime(const QString &, const QString &, QVector<QPair<int, int>> &, int &) override {
        return false;
    }
    bool hasNightQuoter(const QString &, const QString &) override { return false; }
};

class DefaultSectors : public CSectorManager {
public:
    QString getBkzsCodeByName(const QString &) override { return {}; }
    QString getSWSectorByStock(const QString &, int) override { return {}; }
    QSet<QString> getConvertibleCodeByStock(const QString &) override { return {}; }
    QString getAStockByHStock(const QString &) override { return {}; }
    QString getHStockByAStock(const QString &) override { return {}; }
};

class DefaultIndexes : public CIndexManager {
public:
    CIndexDetail *getIndex(const QString &) override { return nullptr; }
    double storedValue(const std::string &) override { return 0.0; }
    double dispatchedLastClose(const std::string &) override { return 0.0; }
    double initialValue(const std::string &) override { return 0.0; }
};

/// Every instrument is an ordinary share.
class DefaultTypes : public kvservice::StockTypeCenter {
public:
    bool isOfType(int, const std::string &, const std::string &) override { return false; }
    bool isIndex(const std::string &, const std::string &) override { return false; }
    std::string convertibleBond(const std::string &, const std::string &) override { return {}; }
};

/// Ids by a running number, unique in the process. Any thread.
class DefaultIds : public se::IdGenerator {
public:
    std::string formulaRequestId(int panel, const QString &formula, const QString &code) override {
        return QStringLiteral("%1-%2-%3-%4").arg(panel).arg(formula, code).arg(requestRoundId()).toStdString();
    }
    int requestRoundId() override {
        static std::atomic<int> last{0};
        return ++last;
    }
};

/// No view is shown what another one has fetched.
class DefaultHistories : public CMultiRequestDataManager {
public:
    bool getFormulaHistoryData(const QString &, const QString &, std::shared_ptr<se::RPCFormulaMetaResult> &,
                               std::shared_ptr<se::RPCFormulaResult> &) override {
        return false;
    }
    void addFormulaHistoryData(const QString &, const QString &,
                               const std::shared_ptr<se::RPCFormulaMetaResult> &,
                               const std::shared_ptr<se::RPCFormulaResult> &) override {}
};

/// The two formulas of the main chart, which the user neither sees in menus nor edits.
class DefaultFormulas : public CFormulaOperateManager {
public:
    DefaultFormulas() {
        for (const QString &name : {QStringLiteral("REALTIME"), QStringLiteral("REALTIMEVOL")}) {
            const auto formula = boost::make_shared<CFormulaDetail>();
            formula->mName = name;
            formula->mFileName = name;
            formula->mType = eReplacingFormula;
            formula->mVisible = false;
            mFormulas.insert(name, formula);
        }
    }
    CFormulaDetailPtr getFormula(const QString &name) override { return mFormulas.value(name.toUpper()); }

private:
    QMap<QString, CFormulaDetailPtr> mFormulas; ///< by name; unchanged once made, so that any thread may ask
};

} // namespace TC
