#pragma once

#include "host/toolkit/CStandardTable.h"

namespace GZ {

/// A table whose rows have two grounds in turn.
class COddEvenRowTable : public CStandardTable {
    Q_OBJECT
public:
    COddEvenRowTable(int id, int menuFlags, QWidget *parent = nullptr);
};

} // namespace GZ
