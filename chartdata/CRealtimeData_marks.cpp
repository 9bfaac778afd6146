// Drawing of orders, deals and tasks.

#include "chartdata/CRealtimeData.h"
#include "chartdata/LinkageGeometry.h"
#include "chartdata/LinkageScope.h"
#include "chartdata/MarkStamps.h"
#include "chartdata/ValueRange.h"
#include "host/services/CHostClock.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/CUiResource.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QPainter>

#include <algorithm>
#include <climits>

namespace TC {
namespace {

constexpr int kFarRight = 10000; ///< column beyond every chart
constexpr int kStrongAlpha = 192;
constexpr int kSoftAlpha = 128;
constexpr int kFaintAlpha = 96;
constexpr int kOpaque = 255;

QColor sideColor(bool buy, int alpha) {
    return buy ? QColor(255, 0, 0, alpha) : QColor(0, 255, 0, alpha);
}

std::string strategyOf(const boost::shared_ptr<kvservice::CCommandDetail> &command) {
    return command ? command->mStrategyName : std::string();
}

CInstrumentDetailPtr detailOf(const std::string &instrument) {
    return CSingletonT<CStockManager>::instance().getInstrumentDetail(QString::fromStdString(instrument));
}

bool isFinished(const kvservice::CTaskDetail &task) {
    return task.mFlag == 0 && (task.mStatus == 8 || task.mStatus == 10);
}

/// Adds a deal to what was traded; one whose amount is no number does not count.
void addTrade(std::pair<int, double> &traded, const kvservice::CDealDetail &deal) {
    if (isUsable(deal.mAmount)) {
        const qint64 count = qint64(traded.first) + deal.mVolume;
        traded.first = static_cast<int>(std::clamp<qint64>(count, INT_MIN, INT_MAX));
        traded.second += deal.mAmount;
    }
}

/// The circle of an order, or with `filled` that of a deal.
void stampCircle(MarkStamps &stamps, const QPoint &at, bool filled, bool small, bool buy, int alpha) {
    const QRect circle = markCircle(0, 0, small);
    stamps.draw({filled, small, buy, alpha}, at, circle.adjusted(-2, -2, 2, 2), [&](QPainter &painter) {
        painter.setPen(sideColor(buy, alpha));
        painter.setBrush(filled ? QBrush(sideColor(buy, alpha)) : QBrush(Qt::NoBrush));
        painter.drawEllipse(circle);
    });
}

/// The flag of one task item, with the letter of its side.
void stampFlag(MarkStamps &stamps, const QPoint &at, const TaskFlag &flag, bool buy, bool finished) {
    constexpr int kLetterMargin = 8; // a wide letter leaves its room
    const QRect bounds = flag.frame.united(flag.letter).adjusted(-kLetterMargin, -4, kLetterMargin, 4);
    stamps.draw({flag.fill.height(), buy, finished, 0}, at, bounds, [&](QPainter &painter) {
        const QColor white(255, 255, 255, kOpaque);
        painter.fillRect(flag.fill, finished ? QColor(255, 255, 255, kFaintAlpha) : sideColor(buy, kSoftAlpha));
        painter.setBrush(Qt::NoBrush);
        painter.setPen(finished ? white : sideColor(buy, kOpaque));
        painter.drawRect(flag.frame);
        painter.setPen(finished ? sideColor(buy, kOpaque) : white);
        painter.drawText(flag.letter, Qt::AlignCenter, buy ? QStringLiteral("B") : QStringLiteral("S"));
    });
}

} // namespace

/// Close that the prices of an instrument's records are placed against.
double CRealtimeData::recordClose(const CInstrumentDetailPtr &detail, bool ofTradeDate) const {
    if (ofTradeDate && mUiParam->mStockKind == 0) {
        return CSingletonT<CStockManager>::instance().getCurrentDateLastClose(detail, mTradeDate);
    }
    return getDetailLastClose(detail);
}

/// Where a record lies in the graph; false when its price can be placed nowhere.
bool CRealtimeData::placeRecord(const QTime &time, double price, double close, const LinkageScope &scope,
                                const QRect &rect, QPoint &at) const {
    const double value = close == scope.close ? price : relativeValue(price, close, scope.close);
    if (!isUsable(value)) {
        return false;
    }
    at = QPoint(mUiParam->getXAxisByIndex(mUiParam->getIndexByTime(time)), yOfValue(value, rect));
    return true;
}

/// Places the records of one kind and day of all instruments of the scope, and hands each to `draw` with its
/// point and whether it belongs to another instrument than the main one.
template <class Record, class Draw>
void CRealtimeData::placeRecords(const CLinkageManager::Records<Record> &accounts, double close,
                                 const LinkageScope &scope, const QRect &rect, Marks<Record> &marks,
                                 Draw draw) {
    for (const auto &account : accounts) {
        for (const auto &item : account.second) {
            const boost::shared_ptr<Record> &record = item.second;
            QPoint at;
            if (!record || !scope.admits(strategyOf(record->mCommand)) ||
                !placeRecord(recordTime(record->mTime), record->mPrice, close, scope, rect, at)) {
                continue;
            }
            marks[at.x()][at.y()][record->getKey()] = record;
            draw(*record, at);
        }
    }
}

void CRealtimeData::drawOrderMarks(QPainter &painter, const QRect &rect, const LinkageScope &scope) {
    CLinkageManager &linkage = CSingletonT<CLinkageManager>::instance();
    MarkStamps stamps(painter);
    for (const std::string &instrument : scope.instruments) {
        const CInstrumentDetailPtr detail = detailOf(instrument);
        if (!detail) {
            continue;
        }
        const bool other = instrument != scope.key;
        placeRecords(linkage.getOrderDetails(mTradeDate, instrument, scope.accounts),
                     recordClose(detail, !mIsLastTradingDay), scope, rect, mOrderMarks,
                     [&](const kvservice::COrderDetail &order, const QPoint &at) {
                         const bool buy = kvservice::isBuyByDirection(order.mDirection, order.mOffsetFlag);
                         stampCircle(stamps, at, false, other, buy, other ? kSoftAlpha : kStrongAlpha);
                     });
    }
}

void CRealtimeData::drawDealMarks(QPainter &painter, const QRect &rect, const LinkageScope &scope) {
    CLinkageManager &linkage = CSingletonT<CLinkageManager>::instance();
    MarkStamps stamps(painter);
    for (const std::string &instrument : scope.instruments) {
        const CInstrumentDetailPtr detail = detailOf(instrument);
        if (!detail) {
            continue;
        }
        const bool other = instrument != scope.key;
        placeRecords(linkage.getDealDetails(mTradeDate, instrument, scope.accounts), recordClose(detail, false),
                     scope, rect, mDealMarks, [&](const kvservice::CDealDetail &deal, const QPoint &at) {
                         const bool buy = kvservice::isBuyByDirection(deal.mDirection, deal.mOffsetFlag);
                         stampCircle(stamps, at, true, other, buy, other ? kSoftAlpha : kStrongAlpha);
                     });
    }
}

void CRealtimeData::drawAccountDeals(QPainter &painter, const QRect &rect, const LinkageScope &scope) {
    mUiParam->mLinkageBuys.clear();
    mUiParam->mLinkageSells.clear();
    const CInstrumentDetailPtr detail = detailOf(scope.key);
    if (!detail) {
        return;
    }
    auto accounts =
        CSingletonT<CLinkageManager>::instance().getDealDetails(mTradeDate, scope.key, scope.accounts);
    const auto isAhead = [this](const boost::shared_ptr<kvservice::CDealDetail> &deal) {
        return mReplayMode && deal && recordTime(deal->mTime) > mReplayTime;
    };
    for (auto &account : accounts) {
        for (auto deal = account.second.begin(); deal != account.second.end();) {
            deal = isAhead(deal->second) ? account.second.erase(deal) : std::next(deal);
        }
    }
    MarkStamps stamps(painter);
    LinkageScope unfiltered = scope;
    unfiltered.filter = false;
    placeRecords(accounts, recordClose(detail, !mIsLastTradingDay || mReplayMode), unfiltered, rect, mDealMarks,
                 [&](const kvservice::CDealDetail &deal, const QPoint &at) {
                     const bool buy = kvservice::isBuyByDirection(deal.mDirection, deal.mOffsetFlag);
                     auto &side = buy ? mUiParam->mLinkageBuys : mUiParam->mLinkageSells;
                     addTrade(side[mUiParam->getIndexByTime(recordTime(deal.mTime))], deal);
                     stampCircle(stamps, at, true, false, buy, kSoftAlpha);
                 });
    drawCostSteps(painter, rect);
}

/// Column where the average-cost steps end.
int CRealtimeData::costStepEnd() const {
    if (mReplayMode) {
        return mUiParam->getXAxisByIndex(mUiParam->getIndexByTime(mReplayTime));
    }
    return mIsLastTradingDay ? mUiParam->getXAxisByIndex(mUiParam->getIndexByTime(hostNow().time()))
                             : kFarRight;
}

void CRealtimeData::drawCostSteps(QPainter &painter, const QRect &rect) {
    const auto column = [this](int index) { return mUiParam->getXAxisByIndex(index); };
    const auto row = [this, &rect](double cost) { return yOfValue(cost, rect); };
    const int end = costStepEnd();
    CostStep at;
    const auto drawSide = [&](const TradedAmounts &traded, bool buy, bool extendsBackwards) {
        painter.setPen(sideColor(buy, kStrongAlpha));
        const std::vector<QLine> steps = costSteps(traded, at, column, row);
        painter.drawLines(steps.data(), static_cast<int>(steps.size()));
        if (at.any && !traded.empty() && (extendsBackwards || end > at.x)) {
            painter.drawLine(at.x, at.y, end, at.y);
        }
    };
    drawSide(mUiParam->mLinkageBuys, true, false);
    drawSide(mUiParam->mLinkageSells, false, true);
}

/// The items of a task that belong to an instrument, as flags.
void CRealtimeData::drawTask(MarkStamps &stamps, const QRect &rect, const LinkageScope &scope,
                             const std::string &instrument, double close, const QTime &time,
                             const boost::shared_ptr<kvservice::CTaskDetail> &task) {
    for (const boost::shared_ptr<kvservice::CTaskItem> &item : task->mItems) {
        QPoint at;
        if (!item || vmStockKey(item->mMarket, item->mCode) != instrument ||
            !placeRecord(time, item->mPrice, close, scope, rect, at)) {
            continue;
        }
        const long long done =
            CSingletonT<CLinkageManager>::instance().getTaskItemFinishNumber(task, instrument);
        mTaskMarks[at.x()][at.y()][task->getKey()] = task;
        stampFlag(stamps, at, taskFlag(0, 0, done, item->mQuantity),
                  kvservice::DataHelper::isBuy(item->mOperation), isFinished(*task));
    }
}

/// Draws the tasks of an instrument that `isShown`, given a task and its time, lets pass.
template <class IsShown>
void CRealtimeData::drawTasks(QPainter &painter, const QRect &rect, const LinkageScope &scope,
                              const std::string &instrument, IsShown isShown) {
    const CInstrumentDetailPtr detail = detailOf(instrument);
    if (!detail) {
        return;
    }
    const double close = recordClose(detail, false);
    MarkStamps stamps(painter);
    ClockTimes clock;
    for (const auto &account :
         CSingletonT<CLinkageManager>::instance().getTaskDetails(instrument, scope.accounts)) {
        for (const auto &item : account.second) {
            const boost::shared_ptr<kvservice::CTaskDetail> &task = item.second;
            if (!task || task->mItems.empty() || !task->mItems.front()) {
                continue;
            }
            const QTime time = clock(task->mStartTime);
            if (isShown(*task, time)) {
                drawTask(stamps, rect, scope, instrument, close, time, task);
            }
        }
    }
}

void CRealtimeData::drawTaskMarks(QPainter &painter, const QRect &rect, const LinkageScope &scope) {
    for (const std::string &instrument : scope.instruments) {
        drawTasks(painter, rect, scope, instrument, [&](const kvservice::CTaskDetail &task, const QTime &) {
            return scope.admits(strategyOf(task.mCommand));
        });
    }
}

void CRealtimeData::drawAccountTasks(QPainter &painter, const QRect &rect, const LinkageScope &scope) {
    if (!mIsLastTradingDay) {
        return;
    }
    painter.setFont(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_default_normal_fix")));
    drawTasks(painter, rect, scope, scope.key, [this](const kvservice::CTaskDetail &task, const QTime &time) {
        const bool ahead = mReplayMode && time > mReplayTime;
        return task.mStartTime != kUnsetTime && !ahead;
    });
}

} // namespace TC
