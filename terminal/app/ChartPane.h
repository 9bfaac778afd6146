#pragma once

#include "host/drawing/IndexBaseData.h"
#include "host/toolkit/CBaseWidget.h"

#include <QDate>
#include <QString>
#include <boost/shared_ptr.hpp>

namespace TC {
class CGraphAxisWidget;
class CRealtimeData;
class CRealtimeGraphWidget;
class CRealtimeUiParam;
} // namespace TC

namespace terminal {

class ChartTitle;
class TimeRow;

/// One day of one instrument: the graph between its two axis strips, a title over it and the clock times beneath.
class ChartPane : public GZ::CBaseWidget {
    Q_OBJECT
public:
    explicit ChartPane(QWidget *parent = nullptr);
    ~ChartPane() override;

    /// Shows an instrument of the catalogue; a null day is the running one. False, and nothing changed, for an
    /// unknown instrument.
    bool show(const QString &key, const QDate &day);
    /// Withdraws what is under way and asks for everything anew, as after a theme or the store changed.
    void reload();

    QString instrument() const { return mInstrument; }
    /// The trading day shown.
    QDate day() const;
    /// Whether a past day was asked for.
    bool isPastDay() const { return mPastDay.isValid(); }
    /// Whether every series that was asked for has arrived.
    bool isComplete() const;
    /// Points of the price series.
    int pointCount() const;

    TC::CRealtimeGraphWidget *graph() const { return mGraph; }
    boost::shared_ptr<TC::CRealtimeData> data() const { return mData; }
    boost::shared_ptr<TC::CRealtimeUiParam> uiParam() const { return mUiParam; }
    ChartTitle *title() const { return mTitle; }

    bool handleEvent(int event, int first, int second, QString text, void *data) override;
    void onUiResourceChanged() override;
    using QWidget::show;

signals:
    /// Something that the title tells has changed.
    void changed();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    /// Midnight of the trading day to show, seconds since the epoch.
    int askedDate() const;
    void request();
    void updateAxis(bool overwrite);
    void updateTitle();

    boost::shared_ptr<TC::CRealtimeUiParam> mUiParam;
    boost::shared_ptr<TC::CRealtimeData> mData;
    TC::CGraphAxisWidget *mLeftAxis;
    TC::CGraphAxisWidget *mRightAxis;
    TC::CRealtimeGraphWidget *mGraph;
    ChartTitle *mTitle;
    TimeRow *mTimeRow;
    QString mInstrument;
    QDate mPastDay; ///< null for the running day
    int mTradeDate = 0; ///< day shown, seconds since the epoch at its midnight
};

} // namespace terminal
