#pragma once

#include "host/Export.h"
#include "host/toolkit/CBaseWidget.h"

#include <QMargins>
#include <QString>

#include <vector>

namespace GZ {

/// One widget of a list.
struct CWidgetListItem {
    QWidget *mWidget = nullptr;
    int mStretch = 0; ///< share of the free length; 0 keeps the length that the widget has
    int mOldStretch = 0; ///< the stretch before the last change of it
    int mAnchor = 3; ///< bits of CWidgetList::EAnchor
    bool mSplit = false; ///< a splitter stands before it, in a list that has splitters
    bool mFixed = false; ///< has a length of its own and takes no share
    int mKeptLength = 0; ///< length at a stretch of 0, in pixels
};

/// Lays widgets out in a row or a column: those with a fixed length get it, the others share the rest by stretch. The
/// widgets become children of the list. A hidden widget takes no room. Lengths follow sizes and visibility of the
/// widgets by themselves.
class TIMESHARE_EXPORT CWidgetList : public CBaseWidget {
    Q_OBJECT
public:
    /// Where a widget lies across the list: along one edge, in the middle (none), or from edge to edge (both).
    enum EAnchor : int { eAnchorNone = 0, eAnchorStart = 1, eAnchorEnd = 2, eAnchorBoth = 3 };

    explicit CWidgetList(Qt::Orientation orientation, QWidget *parent = nullptr);

    void setOrientation(Qt::Orientation orientation);
    Qt::Orientation orientation() const { return mOrientation; }
    /// Pixels around all widgets; negative ones count as 0.
    void setMargin(int margin);
    void setMargins(const QMargins &margins);
    /// Pixels between two widgets.
    void setSpacing(int spacing);

    /// Adds a widget that shares the free length. `split`: in a list with splitters, one stands before it. A widget
    /// that is null, or in the list already, changes nothing. A negative stretch counts as 0.
    void addStretchWidget(QWidget *widget, int stretch, int anchor, bool split);
    /// The same at a position, held to the list.
    void insertStretchWidget(int index, QWidget *widget, int stretch, int anchor, bool split);
    /// Adds a widget that keeps its own length: its fixed size, else its size hint.
    void addFixedWidget(QWidget *widget, int anchor, bool split);
    void insertFixedWidget(int index, QWidget *widget, int anchor, bool split);

    /// Adds an empty place of a length in pixels at the end.
    void addSpace(int pixels);
    /// Adds an empty place that shares the free length.
    void addStretch(int stretch = 1);

    int count() const { return static_cast<int>(mItems.size()); }
    /// Null beyond the list, as the item is.
    QWidget *widgetAt(int index) const;
    const CWidgetListItem *getItem(int index) const;
    int indexOf(const QWidget *widget) const; ///< -1 when absent
    bool containItem(const QWidget *widget) const { return indexOf(widget) >= 0; }
    /// Takes a widget out of the list and answers it. It stays a child, and is the caller's to hide or delete.
    QWidget *popWidgetAt(int index);

    /// Whether eWidgetActivated is delivered when the mouse enters a widget of the list; at first it is not.
    void setTellsActivation(bool tells) { mTellsActivation = tells; }

    /// Gives a widget another stretch and remembers the one it had. With 0 it keeps the length it has just now. The
    /// lengths follow with the next updateWidgetLength.
    void changeStretch(QWidget *widget, int stretch);
    /// Gives a widget its former stretch back.
    void resetOldStretch(QWidget *widget);
    /// Lays out now.
    void updateWidgetLength();

    /// The fixed lengths, the spacing and the margins; a widget that shares the rest counts with its size hint.
    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;
    void childEvent(QChildEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

    /// Pixels between two neighbours that are both shown, the second of them at `index`.
    virtual int gapBefore(int index) const;
    /// Called after the widgets have their places.
    virtual void placeSplitters();

    CWidgetListItem *itemOf(const QWidget *widget);
    bool isShown(int index) const;
    int lengthOf(const QWidget *widget) const;

    std::vector<CWidgetListItem> mItems;

private:
    void insertItem(int index, CWidgetListItem item);
    int ownLength(const QWidget *widget) const;
    QRect placed(const CWidgetListItem &item, const QRect &slot) const;

    Qt::Orientation mOrientation;
    QMargins mMargins;
    int mSpacing = 0;
    bool mTellsActivation = false;
};

} // namespace GZ
