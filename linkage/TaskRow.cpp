#include "linkage/TaskRow.h"

#include "host/services/CLinkageManager.h"
#include "host/toolkit/Text.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QStringList>

#include <algorithm>
#include <map>
#include <string>
#include <tuple>
#include <utility>

namespace TC {
namespace {

struct TaskWords {
    Q_DECLARE_TR_FUNCTIONS(TC::CRealtimeTaskTableDialog)
};

/// "hh:mm:ss"; empty when the time is not set. Digit by digit: a format that is parsed for each row would cost most of a
/// refill.
QString clockText(int time) {
    if (time == kUnsetTime) {
        return {};
    }
    const QTime clock = QDateTime::fromSecsSinceEpoch(static_cast<uint>(time)).time();
    QString text = QStringLiteral("00:00:00");
    int at = 0;
    for (const int part : {clock.hour(), clock.minute(), clock.second()}) {
        text[at] = QChar('0' + part / 10);
        text[at + 1] = QChar('0' + part % 10);
        at += 3;
    }
    return text;
}

QString orderText(const kvservice::CTaskItem &item, const QString &unit, CLinkageManager &linkage) {
    const bool byAmount = item.mOperation == kvservice::EOperationType::BuyByAmount;
    return TaskWords::tr("%1%2%3", "operation, quantity, unit")
        .arg(linkage.getOperationText(static_cast<int>(item.mOperation)), QString::number(item.mQuantity),
             byAmount ? TaskWords::tr("元") : unit);
}

/// What all rows of a task have alike.
TaskRow rowOf(const kvservice::CTaskDetail &task, const CInstrumentDetail &instrument,
              CLinkageManager &linkage) {
    TaskRow row;
    row.taskId = task.mTaskId;
    row.commandId = task.mCommand->mCommandId;
    row.instrument = GZ::sToQs(instrument.mName);
    row.start = clockText(task.mStartTime);
    row.end = clockText(task.mEndTime != kUnsetTime ? task.mEndTime : task.mCancelTime);
    row.status = linkage.getTaskStatusText(task.mStatus);
    row.cancellable = task.mStatus == kvservice::eTaskWaiting || task.mStatus == kvservice::eTaskRunning;
    row.cancelEnabled = task.mCommand->mCancelDisabled != 1;
    return row;
}

auto valuesOf(const TaskRow &row) {
    return std::tie(row.taskId, row.commandId, row.item, row.account, row.instrument, row.start, row.end,
                    row.total, row.finished, row.priceType, row.order, row.buys, row.status, row.cancellable,
                    row.cancelEnabled);
}

} // namespace

bool TaskRow::operator==(const TaskRow &other) const {
    return valuesOf(*this) == valuesOf(other);
}

QString TaskRow::details() const {
    return TaskWords::tr("以%1%2", "price type, order").arg(priceType, order);
}

QString TaskRow::description() const {
    QStringList first = {TaskWords::tr("任务 %1").arg(taskId), account, instrument};
    if (!start.isEmpty()) {
        first.append(TaskWords::tr("%1 开始").arg(start));
    }
    QStringList second = {details(), status};
    if (total != 0) {
        second.append(TaskWords::tr("已完成 %1/%2").arg(finished).arg(total));
    }
    return first.join(QStringLiteral("  ")) + QChar('\n') + second.join(QStringLiteral("  "));
}

std::vector<TaskRow> taskRows(const std::vector<boost::shared_ptr<kvservice::CTaskDetail>> &tasks,
                              const CInstrumentDetail &instrument, CLinkageManager &linkage) {
    std::vector<TaskRow> rows;
    const std::string key = vmStockKey(instrument.mMarket, instrument.mCode);
    const QString unit = linkage.getUnitText(instrument.mMarket, instrument.mCode);
    for (const auto &task : tasks) {
        if (!task || !task->mCommand || task->mItems.empty()) {
            continue;
        }
        TaskRow row = rowOf(*task, instrument, linkage);
        for (const auto &item : task->mItems) {
            if (!item || vmStockKey(item->mMarket, item->mCode) != key) {
                continue;
            }
            row.account = item->mAccount ? GZ::sToQs(item->mAccount->mAccountId) : QString();
            row.total = static_cast<int>(item->mQuantity); // the low 32 bits
            row.finished = static_cast<int>(linkage.getTaskItemFinishNumber(task, key));
            row.priceType = linkage.getPriceTypeText(item->mPriceType);
            row.order = orderText(*item, unit, linkage);
            row.buys = kvservice::DataHelper::isBuy(item->mOperation);
            rows.push_back(row);
            ++row.item;
        }
    }
    return rows;
}

std::vector<TaskRow> inPlaceOf(const std::vector<TaskRow> &shown, std::vector<TaskRow> rows) {
    std::map<std::pair<int, int>, std::size_t> places;
    for (std::size_t place = 0; place < shown.size(); ++place) {
        places.emplace(std::pair(shown[place].taskId, shown[place].commandId), place);
    }
    const auto placeOf = [&places, last = shown.size()](const TaskRow &row) {
        const auto found = places.find({row.taskId, row.commandId});
        return found == places.end() ? last : found->second;
    };
    std::stable_sort(rows.begin(), rows.end(), [&placeOf](const TaskRow &first, const TaskRow &second) {
        return placeOf(first) < placeOf(second);
    });
    return rows;
}

} // namespace TC
