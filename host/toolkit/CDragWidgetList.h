#pragma once

#include "host/Export.h"
#include "host/toolkit/CWidgetList.h"

#include <QMap>
#include <QString>
#include <QVector>

namespace GZ {

class WidgetSplitter;

/// A list whose widgets the user resizes with the mouse: before each widget that asks for it stands a splitter, a line
/// of one pixel. Dragging one moves stretch between its two neighbours; all others keep their lengths.
class TIMESHARE_EXPORT CDragWidgetList : public CWidgetList {
    Q_OBJECT
public:
    explicit CDragWidgetList(Qt::Orientation orientation, QWidget *parent = nullptr);
    ~CDragWidgetList() override;

    /// Colour of the splitters, by key of the theme. Of several levels the highest one counts.
    void setSplitter(const QString &colorKey, int level);
    /// Whether the splitters follow the mouse; they are seen in any case.
    void setDragEnable(bool enable);
    bool isDragEnable() const { return mDragEnable; }
    /// Moves the splitter before the item of an index, as a drag does; nothing where there is none, or it is not to move.
    void moveSplitter(int index, int pixels);

protected:
    int gapBefore(int index) const override;
    void placeSplitters() override;

private:
    friend class WidgetSplitter;
    bool hasSplitter(int index) const;
    int shownBefore(int index) const;
    /// The splitter before item `index` was taken, or moved to `pixels` from where it was then.
    void startDrag(int index);
    void drag(int index, int pixels);

    QMap<int, QString> mColors; ///< by level
    QVector<WidgetSplitter *> mSplitters; ///< as many as were needed so far
    bool mDragEnable = true;
    int mDragBefore = 0; ///< lengths of the two neighbours when the drag began
    int mDragAfter = 0;
};

} // namespace GZ
