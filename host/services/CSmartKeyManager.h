#pragma once

#include "host/Export.h"
#include "host/records/CSmartKeyItem.h"
#include "host/services/CSingletonT.h"

#include <QList>
#include <QString>

namespace TC {

/// Answers what a user types: instruments, user-defined indexes, shortcuts.
class TIMESHARE_EXPORT CSmartKeyManager {
public:
    virtual ~CSmartKeyManager() = default;

    /// The entries that a code, a key, pinyin initials or a part of a name stands for, the best first, `limit` at
    /// most. Empty for an empty text.
    virtual QList<CSmartKeyItem> search(const QString &text, int limit) = 0;
};

} // namespace TC
