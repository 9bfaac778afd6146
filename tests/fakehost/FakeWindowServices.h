#pragma once

#include "host/services/CIndexTemplateManager.h"
#include "host/services/CSmartKeyManager.h"

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

} // namespace fakehost
