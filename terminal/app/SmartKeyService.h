#pragma once

#include "host/services/CSmartKeyManager.h"
#include "terminal/app/InstrumentSearch.h"

#include <QVector>

namespace terminal {

/// What the smart keyboard finds: groups of entries of one kind, searched one after the other. User-interface thread.
class SmartKeyService : public TC::CSmartKeyManager {
public:
    void clear() { mGroups.clear(); }
    void add(TC::ESmartKeyType type, const QVector<SearchEntry> &entries);
    QList<TC::CSmartKeyItem> search(const QString &text, int limit) override;

private:
    struct Group {
        TC::ESmartKeyType type;
        InstrumentSearch entries;
    };
    QVector<Group> mGroups;
};

} // namespace terminal
