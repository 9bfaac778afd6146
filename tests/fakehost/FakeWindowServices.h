#pragma once

#include "host/services/CIndexMainWindowHelper.h"
#include "host/services/CIndexTemplateManager.h"
#include "host/services/CSelfStockManager.h"
#include "host/services/CSmartKeyManager.h"
#include "tests/fakehost/CallLog.h"

#include <QMap>

#include <QStringList>

namespace fakehost {

/// Entries whose code, name or initials begin with the text, in their order.
class FakeSmartKeyManager : public TC::CSmartKeyManager {
public:
    void add(const QString &key, const QString &code, const QString &name, const QString &initials,
             TC::ESmartKeyType type = TC::ESmartKeyType::Stock) {
        mItems.append({TC::CStockInfo(key, code), name, initials, type});
    }
    QList<TC::CSmartKeyItem> search(const QString &text, int limit) override {
        mAsked.append(text);
        QList<TC::CSmartKeyItem> found;
        for (const TC::CSmartKeyItem &item : mItems) {
            const bool matches = item.mStock.mCode.startsWith(text) || item.mName.startsWith(text) ||
                                 item.mInitials.startsWith(text, Qt::CaseInsensitive);
            if (matches && found.size() < limit) {
                found.append(item);
            }
        }
        return found;
    }

    QList<TC::CSmartKeyItem> mItems;
    QStringList mAsked; ///< the texts, in order
};

/// Keeps templates in memory.
class FakeIndexTemplateManager : public TC::CIndexTemplateManager {
public:
    QVector<QString> indexes() override { return mIndexes; }
    QVector<TC::CIndexTemplate> templates() override { return mTemplates; }
    void saveTemplate(const TC::CIndexTemplate &saved) override {
        removeTemplate(saved.mName);
        mTemplates.append(saved);
    }
    void removeTemplate(const QString &name) override {
        for (int i = mTemplates.size() - 1; i >= 0; --i) {
            if (mTemplates[i].mName == name) {
                mTemplates.removeAt(i);
            }
        }
    }

    QVector<QString> mIndexes{QStringLiteral("KDJ"), QStringLiteral("MACD"), QStringLiteral("VOL")};
    QVector<TC::CIndexTemplate> mTemplates;
};

/// Lists in memory, in the order in which they were made.
class FakeSelfStockManager : public TC::CSelfStockManager {
public:
    QVector<QString> groups() override { return mGroups; }
    QVector<QString> stocks(const QString &group) override { return mStocks.value(group); }
    QString addStocks(const QString &group, const QVector<QString> &keys) override {
        if (mRefusal.isEmpty()) {
            if (!mGroups.contains(group)) {
                mGroups.append(group);
            }
            mStocks[group] += keys;
        }
        return mRefusal;
    }
    QString removeStocks(const QString &group, const QVector<QString> &keys) override {
        for (const QString &key : keys) {
            mStocks[group].removeAll(key);
        }
        return mRefusal;
    }

    QVector<QString> mGroups{QStringLiteral("自选股")};
    QMap<QString, QVector<QString>> mStocks; ///< by list
    QString mRefusal; ///< what a change is answered with
};

class FakeIndexMainWindowHelper : public TC::CIndexMainWindowHelper {
public:
    explicit FakeIndexMainWindowHelper(CallLog &log) : mLog(log) {}
    void instrumentChanged(const QString &key) override {
        mLog.add(QStringLiteral("CIndexMainWindowHelper::instrumentChanged %1").arg(key));
    }
    void showContrast(const QString &key) override {
        mLog.add(QStringLiteral("CIndexMainWindowHelper::showContrast %1").arg(key));
    }
    void exportFormula(const QString &name) override {
        mLog.add(QStringLiteral("CIndexMainWindowHelper::exportFormula %1").arg(name));
    }

private:
    CallLog &mLog;
};

} // namespace fakehost
