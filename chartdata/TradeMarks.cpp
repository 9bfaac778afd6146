#include "chartdata/TradeMarks.h"

#include "chartdata/ClockTimes.h"
#include "chartdata/MarkStamps.h"
#include "chartdata/ShownDay.h"
#include "chartdata/ValueRange.h"
#include "host/services/CHostClock.h"
#include "host/services/CLinkageManager.h"
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

/// The two kinds of record that are drawn as circles.
struct Orders {
    using Record = kvservice::COrderDetail;
    static constexpr bool kFilled = false;
    static auto fetch(CLinkageManager &linkage, int date, const std::string &instrument,
                      const CLinkageManager::Keys &accounts) {
        return linkage.getOrderDetails(date, instrument, accounts);
    }
    static MarkMap<Record> &marks(MarkBook &book) { return book.orders; }
};
struct Deals {
    using Record = kvservice::CDealDetail;
    static constexpr bool kFilled = true;
    static auto fetch(CLinkageManager &linkage, int date, const std::string &instrument,
                      const CLinkageManager::Keys &accounts) {
        return linkage.getDealDetails(date, instrument, accounts);
    }
    static MarkMap<Record> &marks(MarkBook &book) { return book.deals; }
};

QColor sideColor(bool buy, int alpha) {
    return buy ? QColor(255, 0, 0, alpha) : QColor(0, 255, 0, alpha);
}

std::string strategyOf(const boost::shared_ptr<kvservice::CCommandDetail> &command) {
    return command ? command->mStrategyName : std::string();
}

CInstrumentDetailPtr detailOf(const CRealtimeUiParam &view, const std::string &instrument) {
    return view.service<CStockManager>().getInstrumentDetail(QString::fromStdString(instrument));
}

template <class Record> bool isBuy(const Record &record) {
    return kvservice::isBuyByDirection(record.mDirection, record.mOffsetFlag);
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

/// The letter of a flag, which has a black edge on a light ground.
void drawFlagLetter(QPainter &painter, const QRect &room, const QString &letter, const QColor &color,
                    bool edged) {
    if (edged) {
        painter.setPen(Qt::black);
        for (const QPoint &at : {QPoint(-1, 0), QPoint(1, 0), QPoint(0, -1), QPoint(0, 1)}) {
            painter.drawText(room.translated(at), Qt::AlignCenter, letter);
        }
    }
    painter.setPen(color);
    painter.drawText(room, Qt::AlignCenter, letter);
}

/// The flag of one task item, with the letter of its side.
void stampFlag(MarkStamps &stamps, const QPoint &at, const TaskFlag &flag, bool buy, bool finished) {
    constexpr int kLetterMargin = 8; // a wide letter leaves its room
    constexpr int kMiddleLightness = 128;
    const bool isLight =
        GZ::CUiResource::instance().getColor(QStringLiteral("ic_clr_realtime_graph_bg")).lightness() >=
        kMiddleLightness;
    const QRect bounds = flag.frame.united(flag.letter).adjusted(-kLetterMargin, -4, kLetterMargin, 4);
    stamps.draw({flag.fill.height(), buy, finished, 0}, at, bounds, [&](QPainter &painter) {
        const QColor white(255, 255, 255, kOpaque);
        painter.fillRect(flag.fill, finished ? QColor(255, 255, 255, kFaintAlpha) : sideColor(buy, kSoftAlpha));
        painter.setBrush(Qt::NoBrush);
        painter.setPen(finished ? white : sideColor(buy, kOpaque));
        painter.drawRect(flag.frame);
        drawFlagLetter(painter, flag.letter, buy ? QStringLiteral("B") : QStringLiteral("S"),
                       finished ? sideColor(buy, kOpaque) : white, isLight);
    });
}

/// Places the records of one kind, day and instrument that `isShown` lets pass, hands each to `draw` with its time and
/// point, and enters it.
template <class Record, class IsShown, class Draw>
void placeRecords(CLinkageManager::Records<Record> accounts, double close, MarkPlacer &placer,
                  MarkMap<Record> &marks, IsShown isShown, Draw draw) {
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
                marks.enterNode(at, std::move(entry));
            }
        }
    }
}

/// Draws the items of a task that belong to an instrument as flags; the points where they stand.
std::vector<QPoint> stampTask(MarkStamps &stamps, MarkPlacer &placer, const std::string &instrument,
                              double close, const QTime &time,
                              const boost::shared_ptr<kvservice::CTaskDetail> &task, CLinkageManager &linkage) {
    std::vector<QPoint> points;
    for (const boost::shared_ptr<kvservice::CTaskItem> &item : task->mItems) {
        QPoint at;
        if (item && vmStockKey(item->mMarket, item->mCode) == instrument &&
            placer.place(time, item->mPrice, close, at)) {
            const long long done = linkage.getTaskItemFinishNumber(task, instrument);
            if (placer.isAmongPrices(at)) {
                stampFlag(stamps, at, taskFlag(0, 0, done, item->mQuantity),
                          kvservice::DataHelper::isBuy(item->mOperation), isFinished(*task));
            }
            points.push_back(at);
        }
    }
    return points;
}

} // namespace

/// Close that the prices of an instrument's records are placed against.
double TradeMarks::closeOf(const CInstrumentDetailPtr &detail, bool ofDay) const {
    if (ofDay && mView.mStockKind == eInstrument) {
        return mView.service<CStockManager>().getCurrentDateLastClose(detail, mDay.date());
    }
    return getDetailLastClose(detail);
}

template <class Kind> void TradeMarks::drawRecords(const LinkageScope &scope, bool closeOfDay, bool withAhead) {
    using Record = typename Kind::Record;
    MarkStamps stamps(mPainter);
    for (const std::string &instrument : scope.instruments) {
        const CInstrumentDetailPtr detail = detailOf(mView, instrument);
        if (!detail) {
            continue;
        }
        const bool other = instrument != scope.key;
        const auto isShown = [&](const Record &record) {
            return scope.admits(strategyOf(record.mCommand)) &&
                   (withAhead || !mDay.isAhead(recordTime(record.mTime)));
        };
        placeRecords<Record>(
            Kind::fetch(mView.service<CLinkageManager>(), mDay.date(), instrument, scope.accounts),
            closeOf(detail, closeOfDay), mPlacer, Kind::marks(mBook), isShown,
            [&](const Record &record, const QTime &, const QPoint &at) {
                if (mPlacer.isAmongPrices(at)) {
                    stampCircle(stamps, at, Kind::kFilled, other, isBuy(record),
                                other ? kSoftAlpha : kStrongAlpha);
                }
            });
    }
}

void TradeMarks::drawOrders(const LinkageScope &scope) {
    drawRecords<Orders>(scope, !mDay.isLive(), true);
}

void TradeMarks::drawAccountOrders(const LinkageScope &scope) {
    drawRecords<Orders>(scope, !mDay.isLive(), false);
}

void TradeMarks::drawDeals(const LinkageScope &scope) {
    drawRecords<Deals>(scope, false, true);
}

void TradeMarks::drawAccountDeals(const LinkageScope &scope) {
    mView.mLinkageBuys.clear();
    mView.mLinkageSells.clear();
    const CInstrumentDetailPtr detail = detailOf(mView, scope.key);
    if (!detail) {
        return;
    }
    {
        MarkStamps stamps(mPainter);
        placeRecords<kvservice::CDealDetail>(
            Deals::fetch(mView.service<CLinkageManager>(), mDay.date(), scope.key, scope.accounts),
            closeOf(detail, !mDay.isLive() || mDay.isReplayed()), mPlacer, mBook.deals,
            [this](const auto &deal) { return !mDay.isAhead(recordTime(deal.mTime)); },
            [&](const auto &deal, const QTime &time, const QPoint &at) {
                const bool buy = isBuy(deal);
                auto &side = buy ? mView.mLinkageBuys : mView.mLinkageSells;
                addTrade(side[mPlacer.indexOf(time)], deal);
                if (mPlacer.isAmongPrices(at)) {
                    stampCircle(stamps, at, true, false, buy, kSoftAlpha);
                }
            });
    }
    drawCostSteps();
}

/// Column where the average-cost steps end.
int TradeMarks::costStepEnd() const {
    if (mDay.isReplayed()) {
        return mView.getXAxisByIndex(mView.getIndexByTime(mDay.replayTime()));
    }
    return mDay.isLive() ? mView.getXAxisByIndex(
                               mView.getIndexByTime(mView.service<CHostClock>().currentDateTime().time()))
                         : kFarRight;
}

void TradeMarks::drawCostSteps() {
    const auto column = [this](int index) { return mPlacer.columnOf(index); };
    const auto row = [this](double cost) { return mPlacer.rowOf(cost); };
    const int end = costStepEnd();
    CostStep at;
    const auto drawSide = [&](const TradedAmounts &traded, bool buy, bool extendsBackwards) {
        mPainter.setPen(sideColor(buy, kStrongAlpha));
        const std::vector<QLine> steps = costSteps(traded, at, column, row);
        mPainter.drawLines(steps.data(), static_cast<int>(steps.size()));
        if (at.any && !traded.empty() && (extendsBackwards || end > at.x)) {
            mPainter.drawLine(at.x, at.y, end, at.y);
        }
    };
    drawSide(mView.mLinkageBuys, true, false);
    drawSide(mView.mLinkageSells, false, true);
}

/// Draws the tasks of an instrument that `isShown`, given a task and its time, lets pass.
template <class IsShown>
void TradeMarks::drawTasksOf(const std::string &instrument, const LinkageScope &scope, IsShown isShown) {
    const CInstrumentDetailPtr detail = detailOf(mView, instrument);
    if (!detail) {
        return;
    }
    const double close = closeOf(detail, false);
    MarkStamps stamps(mPainter);
    ClockTimes clock;
    auto accounts = mView.service<CLinkageManager>().getTaskDetails(instrument, scope.accounts);
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
            const std::vector<QPoint> points =
                stampTask(stamps, mPlacer, instrument, close, time, task, mView.service<CLinkageManager>());
            for (std::size_t i = 1; i < points.size(); ++i) {
                mBook.tasks.enter(points[i], task);
            }
            if (!points.empty()) {
                mBook.tasks.enterNode(points.front(), std::move(entry));
            }
        }
    }
}

void TradeMarks::drawTasks(const LinkageScope &scope) {
    for (const std::string &instrument : scope.instruments) {
        drawTasksOf(instrument, scope, [&](const kvservice::CTaskDetail &task, const QTime &) {
            return scope.admits(strategyOf(task.mCommand));
        });
    }
}

void TradeMarks::drawAccountTasks(const LinkageScope &scope) {
    if (!mDay.isLive()) {
        return;
    }
    mPainter.setFont(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_default_normal_fix")));
    drawTasksOf(scope.key, scope, [this](const kvservice::CTaskDetail &task, const QTime &time) {
        return task.mStartTime != kUnsetTime && !mDay.isAhead(time);
    });
}

} // namespace TC
