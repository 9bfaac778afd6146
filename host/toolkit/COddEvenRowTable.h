#pragma once

#include "host/Export.h"
#include "host/toolkit/CStandardTable.h"

namespace GZ {

/// A table whose rows have two grounds in turn.
class TIMESHARE_EXPORT COddEvenRowTable : public CStandardTable {
    Q_OBJECT
public:
    COddEvenRowTable(int id, int menuFlags, QWidget *parent = nullptr);
};

} // namespace GZ
