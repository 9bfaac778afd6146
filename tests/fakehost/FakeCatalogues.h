#pragma once

/// \file
/// Small doubles: sessions, sectors, user-defined indexes, instrument types, ids.

#include "host/services/CIndexManager.h"
#include "host/services/CSectorManager.h"
#include "host/services/CTradeOpenCloseTimeManager.h"
#include "host/services/IdGenerator.h"
#include "host/services/StockTypeCenter.h"
#include "tests/fakehost/CallLog.h"

#include <QMap>
#include <QSet>

#include <map>
#include <memory>
#include <set>
#include <tuple>

namespace fakehost {

/// Knows no session table and no night session unless told.
class FakeTradeTimes : public TC::CTradeOpenCloseTimeManager {
public:
    struct Table {
        QVector<QPair<int, int>> sessions;
        int count = 0;
    };
    bool getTradeTime(const QString &market, const QString &code, QVector<QPair<int, int>> &sessions,
                      int &count) override {
        const auto found = mTables.constFind(market + code);
        if (found == mTables.constEnd()) {
            return false;
        }
        sessions = found->sessions;
        count = found->count;
        return true;
    }
    bool hasNightQuoter(const QString &market, const QString &code) override {
        return mNight.contains(market + code);
    }
    QMap<QString, Table> mTables; ///< by instrument key
    QSet<QString> mNight; ///< instrument keys
};

class FakeSectorManager : public TC::CSectorManager {
public:
    QString getBkzsCodeByName(const QString &name) override { return mIndexOfSector.value(name); }
    QString getSWSectorByStock(const QString &key, int level) override {
        return mSectorOfStock.value(qMakePair(key, level));
    }
    QSet<QString> getConvertibleCodeByStock(const QString &key) override { return mConvertibles.value(key); }
    QString getAStockByHStock(const QString &key) override { return mAOfH.value(key); }
    QString getHStockByAStock(const QString &key) override { return mAOfH.key(key); }

    QMap<QString, QString> mIndexOfSector;
    QMap<QPair<QString, int>, QString> mSectorOfStock;
    QMap<QString, QSet<QString>> mConvertibles;
    QMap<QString, QString> mAOfH;
};

class FakeIndexManager : public TC::CIndexManager {
public:
    TC::CIndexDetail *add(const QString &key) {
        mIndexes[key] = std::make_unique<TC::CIndexDetail>(key);
        return mIndexes[key].get();
    }
    TC::CIndexDetail *getIndex(const QString &key) override {
        const auto found = mIndexes.find(key);
        return found == mIndexes.end() ? nullptr : found->second.get();
    }
    double storedValue(const std::string &key) override { return valueOf(mStored, key); }
    double dispatchedLastClose(const std::string &key) override { return valueOf(mDispatched, key); }
    double initialValue(const std::string &key) override { return valueOf(mInitial, key); }

    std::map<std::string, double> mStored;
    std::map<std::string, double> mDispatched;
    std::map<std::string, double> mInitial;

private:
    static double valueOf(const std::map<std::string, double> &values, const std::string &key) {
        const auto found = values.find(key);
        return found == values.end() ? 0.0 : found->second;
    }
    std::map<QString, std::unique_ptr<TC::CIndexDetail>> mIndexes;
};

class FakeStockTypes : public kvservice::StockTypeCenter {
public:
    bool isOfType(int type, const std::string &market, const std::string &code) override {
        return mTypes.count({type, market, code}) > 0;
    }
    bool isIndex(const std::string &market, const std::string &code) override {
        return mIndexes.count({market, code}) > 0;
    }
    std::string convertibleBond(const std::string &market, const std::string &code) override {
        const auto found = mBonds.find({market, code});
        return found == mBonds.end() ? std::string() : found->second;
    }
    std::set<std::tuple<int, std::string, std::string>> mTypes;
    std::set<std::pair<std::string, std::string>> mIndexes;
    std::map<std::pair<std::string, std::string>, std::string> mBonds;
};

/// Request ids are "panel-formula-code-number", with a running number.
class FakeIdGenerator : public se::IdGenerator {
public:
    std::string formulaRequestId(int panel, const QString &formula, const QString &code) override {
        return QStringLiteral("%1-%2-%3-%4").arg(panel).arg(formula, code).arg(++mLast).toStdString();
    }
    int requestRoundId() override { return ++mLastRound; }
    int mLast = 0;
    int mLastRound = 0;
};

} // namespace fakehost
