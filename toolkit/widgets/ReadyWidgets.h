#pragma once

#include <QList>
#include <QMap>
#include <QPersistentModelIndex>

#include <functional>

class QTableWidget;
class QWidget;

namespace GZ {

/// The widgets in the cells of a table that has many: they are made for the rows in view and some beneath, and for any
/// other when it is asked for, and end when their rows are far from it. So a table costs what is seen of it, however
/// many rows it has.
class ReadyWidgets {
public:
    /// Makes the widget of a cell without a parent; null for a cell that has its text alone.
    using Maker = std::function<QWidget *(int row)>;
    /// Puts a widget into a cell.
    using Placer = std::function<void(int row, int column, QWidget *widget, int alignment)>;

    static constexpr int kReadyRows = 64; ///< from the first in view on, more when more are seen

    ReadyWidgets(QTableWidget &table, Placer place);

    void setMaker(int column, Maker maker, int alignment);
    /// Makes what is near to the view and ends what is far from it.
    void update();
    /// Makes the widget of a cell, unless it has one.
    void make(int row, int column);

private:
    struct Column {
        Maker make;
        int alignment = 0;
    };
    void endFarFrom(int first, int end);

    QTableWidget &mTable;
    Placer mPlace;
    QMap<int, Column> mColumns;
    QList<QPersistentModelIndex> mMade; ///< cells that may have a widget
};

} // namespace GZ
