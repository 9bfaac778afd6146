#pragma once

#include "chartview/AxisLabels.h"
#include "host/Export.h"
#include "host/drawing/IndexBaseData.h"
#include "host/records/CFormulaKey.h"
#include "host/records/Enumerations.h"
#include "host/toolkit/CBaseWidget.h"
#include "viewmodel/AxisScale.h"

#include <QPixmap>
#include <QStringList>
#include <QVector>
#include <boost/shared_ptr.hpp>

#include <memory>

namespace TC {

class CRealtimeData;
class CRealtimeUiParam;

/// The strip beside a pane: value ticks on the left, percentages against the last close on the right. What it shows
/// is a scale that the view parameters know it by while it lives; the graphs draw their grid lines by it, on
/// whatever thread a result came in on. The strip itself lives on the user-interface thread.
class TIMESHARE_EXPORT CGraphAxisWidget : public GZ::CBaseWidget {
    Q_OBJECT
public:
    enum ESide : int { eLeft = 0, eRight = 1 };

    CGraphAxisWidget(boost::shared_ptr<CRealtimeUiParam> uiParam, boost::shared_ptr<CRealtimeData> source,
                     int side, QWidget *parent = nullptr);
    ~CGraphAxisWidget() override;

    void setDisplayType(EIndexDisplayType displayType);
    /// Takes the merged ranges of the pane and recomputes ticks and time lines.
    void setMaxMinMap(const IndexBaseData::MaxMinMap &ranges);
    /// Shows the button in the band of the last tick. Event 263 tells of a press on it.
    void showHolographicButon(bool show);
    /// Recomputes ticks and time lines for the present size, sessions and day width.
    void recompute();

    IndexBaseData::MaxMinMap getMaxMinMap() const;
    QVector<AxisTick> getTicks() const;
    QVector<int> getTimeLines() const;
    /// What stands on the strip, top down.
    QStringList labelTexts() const;
    ESide side() const { return static_cast<ESide>(mSide); }
    bool isHolographicButtonShown() const { return mHolographicShown; }
    /// As a press on the button; nothing where it is not shown.
    void pressHolographicButton();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void onUiResourceChanged() override;

private:
    /// Key of a formula of this pane, and the first of its formulas that has a series, empty when none has.
    CFormulaKey keyOf(const QString &formula) const;
    QString firstFormulaWithSeries() const;
    /// Key whose range the ticks show.
    CFormulaKey axisKey() const;
    AxisLayout layout() const;
    QVector<AxisLabel> labels() const;
    /// Draws background and labels into the picture, where they differ from what is in it.
    void refreshPicture(double ratio);
    void drawLabels(QPainter &painter, const QVector<AxisLabel> &labels) const;
    static QString textOf(const AxisLabel &label);
    void drawHolographicButton(QPainter &painter) const;
    QRect holographicRect() const;

    EIndexDisplayType mDisplayType = EIndexDisplayType::Main;
    boost::shared_ptr<CRealtimeUiParam> mUiParam;
    boost::shared_ptr<CRealtimeData> mData;
    std::shared_ptr<AxisScale> mScale; ///< what is shown
    int mSide;
    bool mHolographicShown = false;
    QPixmap mHolographicPixmap;
    QPixmap mPicture; ///< background and labels, so that a repaint is a copy
    QVector<AxisLabel> mPictureLabels; ///< the labels in it
    int mPictureGeneration = -1; ///< of the theme it was drawn in
};

} // namespace TC
