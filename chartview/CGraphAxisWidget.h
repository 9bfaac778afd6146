#pragma once

#include "host/drawing/IndexBaseData.h"
#include "host/records/Enumerations.h"
#include "host/toolkit/CBaseWidget.h"

#include <QMap>
#include <QPair>
#include <QPixmap>
#include <QVector>
#include <boost/shared_ptr.hpp>

namespace TC {

class CRealtimeData;
class CRealtimeUiParam;

/// One value tick of an axis strip.
struct AxisTick {
    double value = 0.0;
    int y = 0; ///< pixel row of the strip
};

/// The strip beside a pane: value ticks on the left, percentages against the last close on the right. Its tick
/// rows and time columns are the grid lines of the graphs.
class CGraphAxisWidget : public GZ::CBaseWidget {
    Q_OBJECT
public:
    enum ESide : int { eLeft = 0, eRight = 1 };

    CGraphAxisWidget(boost::shared_ptr<CRealtimeUiParam> uiParam, boost::shared_ptr<CRealtimeData> data, int side,
                     QWidget *parent = nullptr);

    void setDisplayType(EIndexDisplayType displayType);
    /// Takes the merged ranges of the pane and recomputes ticks and time lines.
    void setMaxMinMap(const IndexBaseData::MaxMinMap &ranges);
    void showHolographicButon(bool show);

    IndexBaseData::MaxMinMap getMaxMinMap() const;
    QVector<AxisTick> getTicks() const;
    QVector<int> getTimeLines() const;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    EIndexDisplayType mDisplayType = EIndexDisplayType::Main;
    boost::shared_ptr<CRealtimeUiParam> mUiParam;
    boost::shared_ptr<CRealtimeData> mData;
    IndexBaseData::MaxMinMap mMaxMinMap;
    QVector<AxisTick> mTicks;    ///< top down
    QVector<int> mTimeLines;     ///< columns of a day graph
    int mSide;
    bool mHolographicShown = false;
    QPixmap mHolographicPixmap;
};

} // namespace TC
