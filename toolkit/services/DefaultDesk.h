#pragma once

/// \file
/// Default services for the user's settings and lists, kept in memory, and for the windows around a chart, of which there
/// are none.

#include "host/services/CConfigService.h"
#include "host/services/CEnhanceDrawManager.h"
#include "host/services/CIndexMainWindowHelper.h"
#include "host/services/CIndexTemplateManager.h"
#include "host/services/CSelfStockManager.h"
#include "host/services/CSmartKeyManager.h"

#include <QCoreApplication>

#include <algorithm>

namespace TC {

class DefaultUserConfig : public CUserConfig {
public:
    QString tableConfig(int tableId) const override { return mTables.value(tableId); }
    void setTableConfig(int tableId, const QString &text) override { mTables.insert(tableId, text); }

private:
    QMap<int, QString> mTables; ///< layouts by table id
};

/// Everything as it is unless somebody changes it. Models are hidden, since nothing runs them.
class DefaultConfig : public CConfigService, public UserConfigInterface {
public:
    CConfig *config() override { return &mConfig; }
    CUserConfig *userConfig() override { return &mUserConfig; }
    bool isClientType(EClientType) override { return false; }
    UserConfigInterface &indexUserConfig() override { return *this; }
    bool hideModel() override { return true; }
    bool isBrokerQuoteMode() override { return false; }
    bool isLevel2User(const QString &) override { return false; }
    UserConfigRecord read() const override { return mRecord; }
    void write(const UserConfigRecord &record) override { mRecord = record; }

private:
    CConfig mConfig;
    DefaultUserConfig mUserConfig;
    UserConfigRecord mRecord;
};

class DefaultDrawings : public CEnhanceDrawManager {
public:
    void drawGraph(int, const std::string &, QPainter *, const QRect &,
                   const boost::function<QPointF(const QPointF &)> &) override {}
};

class DefaultMainWindow : public CIndexMainWindowHelper {
public:
    void instrumentChanged(const QString &) override {}
    void showContrast(const QString &) override {}
    void exportFormula(const QString &) override {}
};

class DefaultTemplates : public CIndexTemplateManager {
public:
    QVector<QString> indexes() override { return {}; }
    QVector<CIndexTemplate> templates() override { return mTemplates; }
    void saveTemplate(const CIndexTemplate &saved) override {
        const auto at = find(saved.mName);
        if (at == mTemplates.end()) {
            mTemplates.append(saved);
        } else {
            *at = saved;
        }
    }
    void removeTemplate(const QString &name) override {
        const auto at = find(name);
        if (at != mTemplates.end()) {
            mTemplates.erase(at);
        }
    }

private:
    QVector<CIndexTemplate>::iterator find(const QString &name) {
        return std::find_if(mTemplates.begin(), mTemplates.end(),
                            [&](const CIndexTemplate &kept) { return kept.mName == name; });
    }
    QVector<CIndexTemplate> mTemplates;
};

/// Begins with one empty list.
class DefaultSelfStocks : public CSelfStockManager {
public:
    DefaultSelfStocks() { mGroups.append({QCoreApplication::translate("TC::DefaultServices", "自选"), {}}); }
    QVector<QString> groups() override {
        QVector<QString> names;
        for (const Group &group : mGroups) {
            names.append(group.name);
        }
        return names;
    }
    QVector<QString> stocks(const QString &group) override {
        const auto at = find(group);
        return at == mGroups.end() ? QVector<QString>() : at->keys;
    }
    QString addStocks(const QString &group, const QVector<QString> &keys) override {
        if (find(group) == mGroups.end()) {
            mGroups.append({group, {}});
        }
        QVector<QString> &kept = find(group)->keys;
        for (const QString &key : keys) {
            if (!kept.contains(key)) {
                kept.append(key);
            }
        }
        return {};
    }
    QString removeStocks(const QString &group, const QVector<QString> &keys) override {
        const auto at = find(group);
        for (const QString &key : keys) {
            if (at != mGroups.end()) {
                at->keys.removeAll(key);
            }
        }
        return {};
    }

private:
    struct Group {
        QString name;
        QVector<QString> keys;
    };
    QVector<Group>::iterator find(const QString &name) {
        return std::find_if(mGroups.begin(), mGroups.end(),
                            [&](const Group &group) { return group.name == name; });
    }
    QVector<Group> mGroups;
};

class DefaultSmartKeys : public CSmartKeyManager {
public:
    QList<CSmartKeyItem> search(const QString &, int) override { return {}; }
};

} // namespace TC
