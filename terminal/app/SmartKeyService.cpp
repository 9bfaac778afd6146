#include "terminal/app/SmartKeyService.h"

namespace terminal {

void SmartKeyService::add(TC::ESmartKeyType type, const QVector<SearchEntry> &entries) {
    mGroups.append({type, InstrumentSearch(entries)});
}

QList<TC::CSmartKeyItem> SmartKeyService::search(const QString &text, int limit) {
    QList<TC::CSmartKeyItem> items;
    for (const Group &group : mGroups) {
        for (const SearchEntry &entry : group.entries.find(text, limit - items.size())) {
            TC::CSmartKeyItem item;
            item.mStock = TC::CStockInfo(entry.key, entry.code);
            item.mName = entry.name;
            item.mInitials = entry.initials;
            item.mType = group.type;
            items.append(item);
        }
    }
    return items;
}

} // namespace terminal
