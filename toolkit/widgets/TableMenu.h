#pragma once

#include <QPoint>

class QMenu;

namespace GZ {

class ColumnLayout;
class CStandardTable;

/// The context menu of a table, which it is a child of: copying, by entries of CStandardTable::EMenu, and the columns'
/// layout. `at` is the place of the mouse in the table's viewport. It may be empty.
QMenu *makeTableMenu(CStandardTable &table, ColumnLayout &columns, int entries, const QPoint &at);

} // namespace GZ
