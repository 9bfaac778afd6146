#pragma once

#include "host/Export.h"
#include "host/records/CIndexDetail.h"
#include "host/services/CSingletonT.h"

#include <QString>

#include <string>

namespace TC {

/// User-defined indexes.
class TIMESHARE_EXPORT CIndexManager {
public:
    virtual ~CIndexManager() = default;

    /// The record of a user-defined index, owned by the manager, or null.
    virtual CIndexDetail *getIndex(const QString &key) = 0;
    /// Stored last value of an index, 0 when there is none.
    virtual double storedValue(const std::string &key) = 0;
    /// Last close of an index as the formula dispatch knows it, 0 when it does not.
    virtual double dispatchedLastClose(const std::string &key) = 0;
    /// Initial value of an index.
    virtual double initialValue(const std::string &key) = 0;
};

/// A user-defined index's stored last value.
inline double getUserdefineIndex(const std::string &key) {
    return CSingletonT<CIndexManager>::instance().storedValue(key);
}

/// The further sources of a user-defined index's last close.
struct FormulaDispatch {
    static double getUserIndexLastClose(const std::string &key) {
        return CSingletonT<CIndexManager>::instance().dispatchedLastClose(key);
    }
    static double getinitIndex(const std::string &key) {
        return CSingletonT<CIndexManager>::instance().initialValue(key);
    }
};

} // namespace TC
