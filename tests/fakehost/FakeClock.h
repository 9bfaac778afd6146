#pragma once

#include "host/services/CHostClock.h"

namespace fakehost {

/// A clock that stands until it is set.
class FakeClock : public TC::CHostClock {
public:
    QDateTime currentDateTime() const override { return mNow; }
    QDateTime mNow{QDate(2024, 3, 15), QTime(10, 0)};
};

} // namespace fakehost
