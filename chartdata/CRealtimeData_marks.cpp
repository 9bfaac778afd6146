// Drawing of orders, deals and tasks.

#include "chartdata/CRealtimeData.h"
#include "chartdata/LinkageGeometry.h"
#include "chartdata/LinkageScope.h"
#include "chartdata/MarkPlacer.h"
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

/// Enters a record at a point: one of the same key there gives way. What the entry is keyed by does not count.
template <class Record, class Entry>
void enterMark(CRealtimeData::Marks<Record> &marks, const QPoint &at, Entry entry) {
    entry.key() = entry.mapped()->getKey();
    auto entered = marks[at.x()][at.y()].insert(std::move(entry));
    if (!entered.inserted) {
        entered.position->second = std::move(entered.node.mapped());
    }
}

/// Places the records of one kind, day and instrument that `isShown` lets pass, and hands each to `draw` with its
/// point. The entries move from the accounts to the marks: copies of thousands would take longer than the drawing.
template <class Record, class IsShown, class Draw>
void placeRecords(CLinkageManager::Records<Record> accounts, double close, MarkPlacer &placer,
                  CRealtimeData::Marks<Record> &marks, IsShown isShown, Draw draw) {
    for (auto &account : accounts) {
        auto &records = account.second;
        while (!records.empty()) {
            auto entry = records.extract(records.begin());
            const Record *record = entry.mapped().get();
            if (!record || !isShown(*record)) {
                continue;
            }
            const QTime time = recordTime(record->mTime);
            QPoint at;
            if (placer.place(time, record->mPrice, close, at)) {
                draw(*record, time, at);
                enterMark<Record>(marks, at, std::move(entry));
            }
        }
    }
}

/// Draws the items of a task that belong to an instrument as flags, and adds the points where they stand.
void stampTask(MarkStamps &stamps, MarkPlacer &placer, const std::string &instrument, double close,
               const QTime &time, const boost::shared_ptr<kvservice::CTaskDetail> &task,
               std::vector<QPoint> &points) {
    for (const boost::shared_ptr<kvservice::CTaskItem> &item : task->mItems) {
        QPoint at;
        if (item && vmStockKey(item->mMarket, item->mCode) == instrument &&
            placer.place(time, item->mPrice, close, at)) {
            const long long done =
                CSingletonT<CLinkageManager>::instance().getTaskItemFinishNumber(task, instrument);
            stampFlag(stamps, at, taskFlag(0, 0, done, item->mQuantity),
                      kvservice::DataHelper::isBuy(item->mOperation), isFinished(*task));
            points.push_back(at);
        }
    }
}

} // namespace

/// Close that the prices of an instrument's records are placed against.
double CRealtimeData::recordClose(const CInstrumentDetailPtr &detail, bool ofTradeDate) const {
    if (ofTradeDate && mUiParam->mStockKind == 0) {
        return CSingletonT<CStockManager>::instance().getCurrentDateLastClose(detail, mTradeDate);
    }
    return getDetailLastClose(detail);
}

void CRealtimeData::drawOrderMarks(QPainter &painter, MarkPlacer &placer, const LinkageScope &scope) {
    CLinkageManager &linkage = CSingletonT<CLinkageManager>::instance();
    MarkStamps stamps(painter);
    for (const std::string &instrument : scope.instruments) {
        const CInstrumentDetailPtr detail = detailOf(instrument);
        if (!detail) {
            continue;
        }
        const bool other = instrument != scope.key;
        placeRecords<kvservice::COrderDetail>(
            linkage.getOrderDetails(mTradeDate, instrument, scope.accounts),
            recordClose(detail, !mIsLastTradingDay), placer, mOrderMarks,
            [&](const auto &order) { return scope.admits(strategyOf(order.mCommand)); },
            [&](const auto &order, const QTime &, const QPoint &at) {
                const bool buy = kvservice::isBuyByDirection(order.mDirection, order.mOffsetFlag);
                stampCircle(stamps, at, false, other, buy, other ? kSoftAlpha : kStrongAlpha);
            });
    }
}

void CRealtimeData::drawDealMarks(QPainter &painter, MarkPlacer &placer, const LinkageScope &scope) {
    CLinkageManager &linkage = CSingletonT<CLinkageManager>::instance();
    MarkStamps stamps(painter);
    for (const std::string &instrument : scope.instruments) {
        const CInstrumentDetailPtr detail = detailOf(instrument);
        if (!detail) {
            continue;
        }
        const bool other = instrument != scope.key;
        placeRecords<kvservice::CDealDetail>(
            linkage.getDealDetails(mTradeDate, instrument, scope.accounts), recordClose(detail, false), placer,
            mDealMarks, [&](const auto &deal) { return scope.admits(strategyOf(deal.mCommand)); },
            [&](const auto &deal, const QTime &, const QPoint &at) {
                const bool buy = kvservice::isBuyByDirection(deal.mDirection, deal.mOffsetFlag);
                stampCircle(stamps, at, true, other, buy, other ? kSoftAlpha : kStrongAlpha);
            });
    }
}

void CRealtimeData::drawAccountDeals(QPainter &painter, MarkPlacer &placer, const LinkageScope &scope) {
    mUiParam->mLinkageBuys.clear();
    mUiParam->mLinkageSells.clear();
    const CInstrumentDetailPtr detail = detailOf(scope.key);
    if (!detail) {
        return;
    }
    {
        MarkStamps stamps(painter);
        placeRecords<kvservice::CDealDetail>(
            CSingletonT<CLinkageManager>::instance().getDealDetails(mTradeDate, scope.key, scope.accounts),
            recordClose(detail, !mIsLastTradingDay || mReplayMode), placer, mDealMarks,
            [this](const auto &deal) { return !mReplayMode || recordTime(deal.mTime) <= mReplayTime; },
            [&](const auto &deal, const QTime &time, const QPoint &at) {
                const bool buy = kvservice::isBuyByDirection(deal.mDirection, deal.mOffsetFlag);
                auto &side = buy ? mUiParam->mLinkageBuys : mUiParam->mLinkageSells;
                addTrade(side[placer.indexOf(time)], deal);
                stampCircle(stamps, at, true, false, buy, kSoftAlpha);
            });
    }
    drawCostSteps(painter, placer);
}

/// Column where the average-cost steps end.
int CRealtimeData::costStepEnd() const {
    if (mReplayMode) {
        return mUiParam->getXAxisByIndex(mUiParam->getIndexByTime(mReplayTime));
    }
    return mIsLastTradingDay ? mUiParam->getXAxisByIndex(mUiParam->getIndexByTime(hostNow().time()))
                             : kFarRight;
}

void CRealtimeData::drawCostSteps(QPainter &painter, const MarkPlacer &placer) {
    const auto column = [&placer](int index) { return placer.columnOf(index); };
    const auto row = [&placer](double cost) { return placer.rowOf(cost); };
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

/// Draws the tasks of an instrument that `isShown`, given a task and its time, lets pass.
template <class IsShown>
void CRealtimeData::drawTasks(QPainter &painter, MarkPlacer &placer, const LinkageScope &scope,
                              const std::string &instrument, IsShown isShown) {
    const CInstrumentDetailPtr detail = detailOf(instrument);
    if (!detail) {
        return;
    }
    const double close = recordClose(detail, false);
    MarkStamps stamps(painter);
    ClockTimes clock;
    std::vector<QPoint> points;
    auto accounts = CSingletonT<CLinkageManager>::instance().getTaskDetails(instrument, scope.accounts);
    for (auto &account : accounts) {
        while (!account.second.empty()) {
            auto entry = account.second.extract(account.second.begin());
            const boost::shared_ptr<kvservice::CTaskDetail> &task = entry.mapped();
            if (!task || task->mItems.empty() || !task->mItems.front()) {
                continue;
            }
            const QTime time = clock(task->mStartTime);
            if (!isShown(*task, time)) {
                continue;
            }
            points.clear();
            stampTask(stamps, placer, instrument, close, time, task, points);
            for (std::size_t i = 1; i < points.size(); ++i) {
                mTaskMarks[points[i].x()][points[i].y()][task->getKey()] = task;
            }
            if (!points.empty()) {
                enterMark<kvservice::CTaskDetail>(mTaskMarks, points.front(), std::move(entry));
            }
        }
    }
}

void CRealtimeData::drawTaskMarks(QPainter &painter, MarkPlacer &placer, const LinkageScope &scope) {
    for (const std::string &instrument : scope.instruments) {
        drawTasks(painter, placer, scope, instrument, [&](const kvservice::CTaskDetail &task, const QTime &) {
            return scope.admits(strategyOf(task.mCommand));
        });
    }
}

void CRealtimeData::drawAccountTasks(QPainter &painter, MarkPlacer &placer, const LinkageScope &scope) {
    if (!mIsLastTradingDay) {
        return;
    }
    painter.setFont(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_default_normal_fix")));
    drawTasks(painter, placer, scope, scope.key, [this](const kvservice::CTaskDetail &task, const QTime &time) {
        const bool ahead = mReplayMode && time > mReplayTime;
        return task.mStartTime != kUnsetTime && !ahead;
    });
}

} // namespace TC
