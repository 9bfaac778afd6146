#pragma once

#include "host/Export.h"
#include "host/toolkit/CUiResource.h"

#include <QList>
#include <QStringList>
#include <QTableWidget>

#include <functional>
#include <memory>

namespace GZ {

class ColumnLayout;
class ReadyWidgets;
class RowOrder;

/// A table of rows that only its owner changes, in the look of the theme. Cells are texts or widgets. The user sorts by
/// a click on a heading, widens and moves columns, hides them and copies by the context menu; how the columns then lie
/// can be kept as a text.
///
/// Whatever is done to its rows, what stays of them keeps its widgets and stays selected.
class TIMESHARE_EXPORT CStandardTable : public QTableWidget, public CUiResourceChangeHandler {
    Q_OBJECT
public:
    /// What a table does. A new one does everything but the last.
    enum EFlag : int {
        eFocus = 0x1, ///< takes the keyboard, and with it a selection of rows
        eMoveColumns = 0x2, ///< headings can be dragged
        eResizeColumns = 0x4,
        eSort = 0x8, ///< a click on a heading sorts, by texts and numbers and not by widgets
        eHighRows = 0x800000, ///< rows have room for a text above a bar
        eStandardFlags = eFocus | eMoveColumns | eResizeColumns | eSort,
    };
    /// Entries of the context menu.
    enum EMenu : int {
        eCopyCell = 0x1,
        eCopyRows = 0x2,
        eCopyAll = 0x4,
        eSelectAll = 0x8,
        eFitColumns = 0x10,
        eShowColumns = 0x20,
        eDefaultLayout = 0x40,
        eUnsorted = 0x80,
        eCopyWithHeadings = 0x100, ///< copied rows begin with the headings
        eWholeMenu = 0x1ff,
    };
    /// Bits of a cell's alignment, beside those of Qt::Alignment.
    enum EAlignment : int {
        eFillWidth = 0x1000, ///< the widget is as wide as its cell
        eFillHeight = 0x2000,
        eFill = eFillWidth | eFillHeight,
        eCentered = Qt::AlignCenter,
    };

    CStandardTable(int id, int menuFlags, QWidget *parent = nullptr);
    ~CStandardTable() override;

    /// The number under which the user's configuration keeps the layout.
    int getID() const { return mId; }
    int getFlags() const { return mFlags; }
    void setFlags(int flags);
    void setFlag(int flag, bool on) { setFlags(on ? mFlags | flag : mFlags & ~flag); }
    /// Whether the last column takes the width that is left over; it does unless told.
    void setAutoAdjust(bool adjust);
    /// Pixels; 0 hides the headings.
    void setHeaderHeight(int height);
    /// Replaces all columns; rows and the user's layout go.
    void setHeaders(const QStringList &headers);
    /// The width until the user chooses another.
    void setDefaultWidth(int column, int width);

    /// Adds an empty row at the end; answers its number.
    int addRow() { return addRows(1); }
    /// Adds empty rows at the end, in one go; answers the number of the first.
    int addRows(int count);
    /// Takes out all rows but the first ones, and ends the widgets in them.
    void truncateRows(int count);
    void clearRows() { truncateRows(0); }
    /// Puts the rows into another order, in which they count as added: place 0 gets the row `rows[0]`. The list has every
    /// row once.
    void rearrangeRows(const QList<int> &rows);
    /// A text; `alignment` is of Qt::Alignment. Rows sort by the number `sortValue`, or by the text when it is none.
    void setText(int row, int column, const QString &text, int alignment = eCentered,
                 const QVariant &sortValue = {});
    /// The colour of a text by its key in the theme, which it follows.
    void setTextColor(int row, int column, const QString &colorKey);
    /// A widget, which the table owns from now on: of its own size, placed by Qt::Alignment, or filling the cell as
    /// EAlignment says.
    void setWidget(int row, int column, QWidget *widget, int alignment = eCentered);
    /// Cells of a column get widgets, which `make` makes by the number of the row, as they come near to what is seen of
    /// the table, and lose them far from it: for tables of many rows. It answers null for a cell that has its text alone.
    /// Such a cell should have the text that its widget shows.
    void setWidgetMaker(int column, std::function<QWidget *(int row)> make, int alignment = eCentered);
    /// Makes such widgets, after rows have come or changed.
    void makeWidgets();
    /// The widget that was placed in a cell, or is made for it now; null when there is none.
    QWidget *widgetAt(int row, int column) const;
    /// The same, but null when none has been made yet.
    QWidget *madeWidgetAt(int row, int column) const;
    /// The text of a cell, which a widget in it hides; when it has none, the texts that its widget shows.
    QString textAt(int row, int column) const;

    /// Sorts by a column; a negative one puts the rows into the order in which they were added.
    void sortRows(int column, Qt::SortOrder order);
    /// Sorts rows in that came since they were sorted, and gives every column that the user has not sized the width
    /// that its heading and its visible rows need.
    void adjustVisibleRowsColumnWidth();

    /// The user's layout: order, widths that he chose, hidden columns, sorting. Empty as long as he has changed nothing.
    QString saveConfigStr() const;
    /// Takes such a layout over. Columns that this table does not have are passed over; a text that is no layout
    /// changes nothing and answers false.
    bool loadConfigStr(const QString &text);
    /// Columns as they were before the user's changes.
    void restoreDefaultLayout();

    void onUiResourceChanged() override;

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void applyFlags();
    void onHeadingClicked(int column);
    void showSorting();
    int neededWidth(int column) const;

    int mId;
    int mMenuFlags;
    int mFlags = eStandardFlags;
    std::unique_ptr<ColumnLayout> mColumns;
    std::unique_ptr<RowOrder> mOrder;
    std::unique_ptr<ReadyWidgets> mReady;
};

} // namespace GZ
