#pragma once

#include "host/Export.h"
#include "host/services/CSingletonT.h"

#include <QDateTime>

namespace TC {

/// The current date and time of the market, at UTC+8. A simulated or replayed market runs its own clock.
class TIMESHARE_EXPORT CHostClock {
public:
    virtual ~CHostClock() = default;
    virtual QDateTime currentDateTime() const = 0;
};

/// Current date and time of the installed clock.
inline QDateTime hostNow() {
    return CSingletonT<CHostClock>::instance().currentDateTime();
}

} // namespace TC
