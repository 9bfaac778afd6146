#pragma once

#include "host/Export.h"
#include "host/records/COrderDetail.h"
#include "host/toolkit/CCommonDialog.h"
#include "statistics/TransactionRequests.h"

#include <QDate>
#include <QMap>
#include <QString>
#include <QStringList>
#include <boost/shared_ptr.hpp>

class QTime;
class QTimeEdit;

namespace GZ {
class CCheckBox;
class CComboBox;
class CMediumNormalButton;
class CPushButton;
class CPushButtonGroup;
} // namespace GZ

namespace TC {

class CRealtimeStageDialog;
class CWatchPlateWidget;

/// The statistics of a stretch of the chart: its figures, the count of its periods and its transactions. The user moves
/// its bounds by the two edits, which asks the view for another stretch by event 3239; hidden, it tells the view so by
/// event 3240. Made for a replay, it has a tab in which an order of the user begins the stretch, and a box with which
/// its end follows the replay.
class TIMESHARE_EXPORT CRealtimeStatisticDialog : public GZ::CCommonDialog {
    Q_OBJECT
public:
    CRealtimeStatisticDialog(QWidget *parent, bool isReplay);
    ~CRealtimeStatisticDialog() override;

    /// Takes an instrument by its key; unless `first`, its transactions of the stretch are asked for.
    void setStock(const QString &stock, bool first);
    /// Shows the number of periods and the figures, see RegionFigure.h; those that the list does not have stay blank.
    void setValues(int cycleCount, const QStringList &values);
    /// Takes a stretch, in seconds since the epoch, and asks for its transactions.
    void setRange(quint64 startTime, quint64 endTime);
    /// The replay stands at a time of day: the end of the stretch goes there when the user wants it to. The view works on
    /// the stretch before this returns, so it is not to be called while it paints.
    void followTime(const QTime &time);

    bool handleEvent(int event, int first, int second, QString text, void *data) override;
    void onUiResourceChanged() override;

public Q_SLOTS:
    /// The start or the end was changed in its edit. One that would turn the stretch round, or leave none, falls back.
    void slotStartTimeChanged(QTime time);
    void slotEndTimeChanged(QTime time);

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void createUi();
    void createReplayUi();
    QString countText() const;
    /// Puts and shows every control where the tab wants it.
    void placeControls();
    void paintFigure(QPainter &painter, int position, const QRect &place) const;

    bool handleClick(int id);
    void setTracking(bool tracking);
    void askForQuotes();
    void rankStage();
    void startAtOrder();

    void loadOrders();
    void requestTransactions();
    void takeTransactions(const QString &stock, const TransactionRequests::Records &records);

    QStringList mValues; ///< by position
    int mCycleCount = 0;
    qint64 mStartTime = 0; ///< seconds since the epoch
    qint64 mEndTime = 0;
    QString mStock;
    QDate mDate; ///< of the start; that of both edits
    bool mIsReplay;
    bool mIsTracking = false; ///< the tab of the orders is shown
    QTimeEdit *mStartEdit = nullptr;
    QTimeEdit *mEndEdit = nullptr;
    GZ::CPushButton *mStageButton = nullptr;
    GZ::CMediumNormalButton *mQuoteButton = nullptr;
    GZ::CPushButtonGroup *mTabGroup = nullptr; ///< null outside a replay, as the next two
    GZ::CCheckBox *mLiveCheck = nullptr;
    GZ::CComboBox *mOrderCombo = nullptr;
    QMap<QString, boost::shared_ptr<kvservice::COrderDetail>> mOrders; ///< by contract number
    CRealtimeStageDialog *mStageDialog = nullptr; ///< made when it is first wanted
    CWatchPlateWidget *mWatchPlate = nullptr;
    TransactionRequests mRequests;
};

} // namespace TC
