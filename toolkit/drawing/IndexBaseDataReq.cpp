#include "host/drawing/IndexBaseDataReq.h"

namespace TC {

bool IndexBaseDataReq::add(const CFormulaKey &key, const QString &requestId) {
    if (requestId.isEmpty()) {
        return false;
    }
    const auto known = mKeys.constFind(requestId);
    if (known != mKeys.constEnd()) {
        if (*known == key) {
            return false;
        }
        mIds.remove(*known);
    }
    mKeys.remove(mIds.value(key));
    mKeys.insert(requestId, key);
    mIds.insert(key, requestId);
    return true;
}

bool IndexBaseDataReq::getKey(CFormulaKey &key, const QString &requestId) const {
    const auto found = mKeys.constFind(requestId);
    if (found == mKeys.constEnd()) {
        return false;
    }
    key = *found;
    return true;
}

bool IndexBaseDataReq::getReq(QString &requestId, const CFormulaKey &key) const {
    const auto found = mIds.constFind(key);
    if (found == mIds.constEnd()) {
        return false;
    }
    requestId = *found;
    return true;
}

bool IndexBaseDataReq::removeReq(const QString &requestId) {
    const auto found = mKeys.find(requestId);
    if (found == mKeys.end()) {
        return false;
    }
    mIds.remove(*found);
    mKeys.erase(found);
    return true;
}

void IndexBaseDataReq::clear() {
    mKeys.clear();
    mIds.clear();
}

QVector<QString> IndexBaseDataReq::reqIds() const {
    return mIds.values().toVector();
}

} // namespace TC
