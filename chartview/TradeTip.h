#pragma once

#include <QCoreApplication>
#include <QList>
#include <QPoint>
#include <boost/shared_ptr.hpp>

class QPainter;

namespace kvservice {
class CDealDetail;
class COrderDetail;
} // namespace kvservice

namespace TC {

class CRealtimeData;

/// The box with the trades under the mouse: deals, or else orders. Hidden, it keeps its trades until the next search.
class TradeTip {
    Q_DECLARE_TR_FUNCTIONS(TC::TradeTip)
public:
    /// Takes the trades at a point of the graph; shown when there are any.
    void search(const CRealtimeData &data, const QPoint &at);
    bool isShown() const { return mShowTip; }
    /// Whether it was shown.
    bool hide();
    /// The same, and forgets its trades.
    bool drop();
    void paint(QPainter &painter) const;

private:
    bool mShowTip = false;
    QList<boost::shared_ptr<kvservice::COrderDetail>> mOrderTips;
    QList<boost::shared_ptr<kvservice::CDealDetail>> mDealTips;
};

} // namespace TC
