#include "host/toolkit/COddEvenRowTable.h"

namespace GZ {

COddEvenRowTable::COddEvenRowTable(int id, int menuFlags, QWidget *parent)
    : CStandardTable(id, menuFlags, parent) {
    setAlternatingRowColors(true);
}

} // namespace GZ
