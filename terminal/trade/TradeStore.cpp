#include "terminal/trade/TradeStore.h"

#include "terminal/market/SqlColumns.h"
#include "terminal/market/StoreRows.h"
#include "terminal/market/StoreTurn.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>

namespace terminal {
namespace {

constexpr std::chrono::milliseconds
    kBusyPatience(100); ///< the records wait for the next time; the market does not

QVariant textValue(const std::string &utf8) {
    return QString::fromStdString(utf8);
}

/// A text that refers to another table: nothing when it is empty.
QVariant reference(const std::string &utf8) {
    return utf8.empty() ? QVariant() : textValue(utf8);
}

QVariant reference(int number) {
    return number == 0 ? QVariant() : QVariant(number);
}

/// Runs statements until one fails.
class Statements {
public:
    explicit Statements(const QSqlDatabase &database) : mDatabase(database) {}

    void run(const QString &statement, const QVariantList &values = {}) {
        if (!mGood) {
            return;
        }
        QSqlQuery &query = prepared(statement);
        for (int i = 0; mGood && i < values.size(); ++i) {
            query.bindValue(i, values[i]);
        }
        mGood = mGood && query.exec();
        mError = mGood ? mError : query.lastError();
        query.finish();
    }
    bool isGood() const { return mGood; }
    QSqlError error() const { return mError; }

private:
    QSqlQuery &prepared(const QString &statement) {
        const auto found = mPrepared.find(statement);
        if (found != mPrepared.end()) {
            return found->second;
        }
        QSqlQuery query(mDatabase);
        mGood = query.prepare(statement);
        return mPrepared.emplace(statement, query).first->second;
    }

    QSqlDatabase mDatabase;
    std::map<QString, QSqlQuery> mPrepared;
    bool mGood = true;
    QSqlError mError;
};

void forget(Statements &statements, const TradeBatch &batch) {
    if (batch.forgetImports) {
        for (const char *table : {"trade_deals", "trade_orders", "trade_accounts"}) {
            statements.run(QStringLiteral("DELETE FROM %1 WHERE source = 1").arg(QLatin1String(table)));
        }
    }
    for (const TradeBatch::AccountDay &day : batch.forgottenDays) {
        const QVariantList which{textValue(day.first), day.second};
        for (const char *table : {"trade_deals", "trade_orders"}) {
            statements.run(QStringLiteral("DELETE FROM %1 WHERE account = ? AND day = ? AND source = 0")
                               .arg(QLatin1String(table)),
                           which);
        }
        statements.run(QStringLiteral("DELETE FROM trade_tasks WHERE account = ? AND day = ?"), which);
        statements.run(QStringLiteral("DELETE FROM trade_days WHERE account = ? AND day = ?"), which);
    }
}

void put(Statements &statements, const TradeAccount &account) {
    statements.run(
        QStringLiteral("INSERT INTO trade_accounts (id, name, type, source) VALUES (?, ?, ?, ?) "
                       "ON CONFLICT (id) DO UPDATE SET name = excluded.name, type = excluded.type, "
                       "source = min(source, excluded.source)"),
        {textValue(account.id), textValue(account.name), account.type, static_cast<int>(account.source)});
}

void putStrategy(Statements &statements, const std::string &strategy) {
    if (!strategy.empty()) {
        statements.run(QStringLiteral("INSERT OR IGNORE INTO trade_strategies (name) VALUES (?)"),
                       {textValue(strategy)});
    }
}

void put(Statements &statements, const TradeTask &task) {
    putStrategy(statements, task.strategy);
    statements.run(
        QStringLiteral(
            "INSERT INTO trade_tasks (id, account, day, strategy, command, status, start_time, end_time, "
            "cancel_time) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?) ON CONFLICT (id) DO UPDATE SET "
            "status = excluded.status, cancel_time = excluded.cancel_time"),
        {task.id, textValue(task.account), task.day, reference(task.strategy), task.command, task.status,
         task.start, task.end, task.cancelled});
    for (size_t i = 0; i < task.items.size(); ++i) {
        const TradeTaskItem &item = task.items[i];
        statements.run(
            QStringLiteral("INSERT INTO trade_task_items (task, ordinal, market, code, operation, "
                           "price_type, price, quantity, finished) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?) "
                           "ON CONFLICT (task, ordinal) DO UPDATE SET finished = excluded.finished"),
            {task.id, static_cast<int>(i), textValue(item.market), textValue(item.code),
             static_cast<int>(item.operation), item.priceType, item.price, item.quantity, item.finished});
    }
}

void put(Statements &statements, const TradeOrder &order) {
    putStrategy(statements, order.strategy);
    statements.run(
        QStringLiteral(
            "INSERT INTO trade_orders (account, key, day, instrument, time, direction, offset_flag, price, "
            "volume, traded, status, strategy, command, task, source) "
            "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?) ON CONFLICT (account, key, source) "
            "DO UPDATE SET day = excluded.day, instrument = excluded.instrument, time = excluded.time, "
            "direction = excluded.direction, price = excluded.price, volume = excluded.volume, "
            "traded = excluded.traded, status = excluded.status"),
        {textValue(order.account), textValue(order.key), order.day, textValue(order.instrument), order.time,
         order.direction, order.offset, order.price, order.volume, order.traded, order.status,
         reference(order.strategy), order.command, reference(order.task), static_cast<int>(order.source)});
}

void put(Statements &statements, const TradeDeal &deal) {
    putStrategy(statements, deal.strategy);
    statements.run(
        QStringLiteral(
            "INSERT INTO trade_deals (account, key, order_key, day, instrument, time, direction, "
            "offset_flag, price, volume, commission, strategy, command, source) "
            "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?) ON CONFLICT (account, key, source) "
            "DO UPDATE SET day = excluded.day, instrument = excluded.instrument, time = excluded.time, "
            "direction = excluded.direction, price = excluded.price, volume = excluded.volume, "
            "commission = excluded.commission"),
        {textValue(deal.account), textValue(deal.key), reference(deal.order), deal.day,
         textValue(deal.instrument), deal.time, deal.direction, deal.offset, deal.price, deal.volume,
         deal.commission, reference(deal.strategy), deal.command, static_cast<int>(deal.source)});
}

TradeTask taskOf(const QSqlQuery &row) {
    TradeTask task;
    takeColumns(row, task.id, task.account, task.day, task.strategy, task.command, task.status, task.start,
                task.end, task.cancelled);
    return task;
}

TradeOrder orderOf(const QSqlQuery &row) {
    TradeOrder order;
    takeColumns(row, order.account, order.key, order.day, order.instrument, order.time, order.direction,
                order.offset, order.price, order.volume, order.traded, order.status, order.strategy,
                order.command, order.task, order.source);
    return order;
}

TradeDeal dealOf(const QSqlQuery &row) {
    TradeDeal deal;
    takeColumns(row, deal.account, deal.key, deal.order, deal.day, deal.instrument, deal.time, deal.direction,
                deal.offset, deal.price, deal.volume, deal.commission, deal.strategy, deal.command,
                deal.source);
    return deal;
}

TradeAccount accountOf(const QSqlQuery &row) {
    TradeAccount account;
    takeColumns(row, account.id, account.name, account.type, account.source);
    return account;
}

TradeCancel cancelOf(const QSqlQuery &row) {
    TradeCancel cancel;
    takeColumns(row, cancel.task, cancel.day, cancel.time, cancel.text);
    return cancel;
}

/// A reading whose rows are all taken. The answer is invalid when all went well.
template <class Take> QSqlError forRows(CMarketStore &store, const StoreQuestion &question, Take take) {
    return StoreRows(store.connection(), store.faults()).read(question, [&take](const QSqlQuery &row) {
        take(row);
        return true;
    });
}

/// The values of one column.
template <class Value> void collect(CMarketStore &store, const StoreQuestion &question, std::set<Value> &all) {
    forRows(store, question, [&all](const QSqlQuery &row) {
        Value value{};
        takeColumns(row, value);
        all.insert(value);
    });
}

/// Those of a table with many rows and few different values, whose wrong rows are told when a day is read.
void collectFew(CMarketStore &store, const StoreQuestion &question, std::set<std::string> &all) {
    StoreRows(store.connection(), store.faults()).readDistinct(question, [&all](const QSqlQuery &row) {
        all.insert(row.value(0).toString().toStdString());
    });
}

QSqlError readItems(CMarketStore &store, int day, std::vector<TradeTask> &tasks) {
    const auto take = [&tasks](const QSqlQuery &row) {
        int id = 0;
        TradeTaskItem item;
        takeColumns(row, id, item.market, item.code, item.operation, item.priceType, item.price, item.quantity,
                    item.finished);
        const auto task = std::lower_bound(tasks.begin(), tasks.end(), id,
                                           [](const TradeTask &one, int of) { return one.id < of; });
        const bool known = task != tasks.end() && task->id == id;
        if (known) {
            task->items.push_back(item);
        }
        return known;
    };
    return StoreRows(store.connection(), store.faults())
        .read(
            {QStringLiteral("trade_task_items"),
             QStringLiteral("task, market, code, operation, price_type, price, quantity, finished"),
             QStringLiteral("WHERE task IN (SELECT id FROM trade_tasks WHERE day = ?) ORDER BY task, ordinal"),
             {day}},
            take);
}

} // namespace

QString TradeStore::write(const TradeBatch &batch) {
    const StoreTurn turn(mStore, kBusyPatience);
    if (!turn.isMine()) {
        return mStore.describeBusy();
    }
    Statements statements(mStore.connection());
    statements.run(QStringLiteral("BEGIN IMMEDIATE"));
    const bool begun = statements.isGood();
    forget(statements, batch);
    for (const TradeAccount &account : batch.accounts) {
        put(statements, account);
    }
    for (const TradeTask &task : batch.changes.tasks) {
        put(statements, task);
    }
    for (const TradeOrder &order : batch.changes.orders) {
        put(statements, order);
    }
    for (const TradeDeal &deal : batch.changes.deals) {
        put(statements, deal);
    }
    for (const TradeCancel &cancel : batch.cancels) {
        statements.run(
            QStringLiteral("INSERT OR REPLACE INTO trade_cancels (task, day, time, text) VALUES (?, ?, ?, ?)"),
            {cancel.task, cancel.day, cancel.time, textValue(cancel.text)});
    }
    for (const TradeBatch::AccountDay &day : batch.finishedDays) {
        statements.run(QStringLiteral("INSERT OR IGNORE INTO trade_days (account, day) VALUES (?, ?)"),
                       {textValue(day.first), day.second});
    }
    statements.run(QStringLiteral("COMMIT"));
    if (statements.isGood()) {
        return {};
    }
    if (begun) {
        QSqlQuery(mStore.connection()).exec(QStringLiteral("ROLLBACK"));
    }
    return mStore.describe(statements.error());
}

std::optional<TradeChanges> TradeStore::read(int day, QString &trouble) {
    TradeChanges records;
    QSqlDatabase database = mStore.connection();
    if (!database.transaction()) { // one state of the store for all questions
        trouble = mStore.describe(database.lastError());
        return std::nullopt;
    }
    const QString ofDay = QStringLiteral("WHERE day = ?");
    const StoreQuestion tasks{
        QStringLiteral("trade_tasks"),
        QStringLiteral("id, account, day, strategy, command, status, start_time, end_time, cancel_time"),
        QStringLiteral("WHERE day = ? ORDER BY id"),
        {day}};
    const StoreQuestion orders{
        QStringLiteral("trade_orders"),
        QStringLiteral("account, key, day, instrument, time, direction, offset_flag, price, volume, traded, "
                       "status, strategy, command, task, source"),
        ofDay,
        {day}};
    const StoreQuestion deals{
        QStringLiteral("trade_deals"),
        QStringLiteral("account, key, order_key, day, instrument, time, direction, "
                       "offset_flag, price, volume, commission, strategy, command, source"),
        ofDay,
        {day}};
    const QSqlError errors[]{
        forRows(mStore, tasks, [&](const QSqlQuery &row) { records.tasks.push_back(taskOf(row)); }),
        readItems(mStore, day, records.tasks),
        forRows(mStore, orders, [&](const QSqlQuery &row) { records.orders.push_back(orderOf(row)); }),
        forRows(mStore, deals, [&](const QSqlQuery &row) { records.deals.push_back(dealOf(row)); })};
    database.commit();
    for (const QSqlError &error : errors) {
        if (error.isValid()) {
            trouble = mStore.describe(error);
            return std::nullopt;
        }
    }
    return records;
}

std::vector<TradeAccount> TradeStore::accounts() {
    std::vector<TradeAccount> accounts;
    forRows(mStore,
            {QStringLiteral("trade_accounts"), QStringLiteral("id, name, type, source"),
             QStringLiteral("ORDER BY id")},
            [&](const QSqlQuery &row) { accounts.push_back(accountOf(row)); });
    return accounts;
}

std::set<std::string> TradeStore::strategies() {
    std::set<std::string> names;
    collect(mStore, {QStringLiteral("trade_strategies"), QStringLiteral("name"), {}}, names);
    return names;
}

std::set<std::string> TradeStore::instruments() {
    std::set<std::string> keys;
    collectFew(mStore, {QStringLiteral("trade_orders"), QStringLiteral("instrument"), {}}, keys);
    collectFew(mStore, {QStringLiteral("trade_deals"), QStringLiteral("instrument"), {}}, keys);
    collectFew(mStore, {QStringLiteral("trade_task_items"), QStringLiteral("market || code"), {}}, keys);
    return keys;
}

std::vector<TradeCancel> TradeStore::cancels(int day) {
    std::vector<TradeCancel> cancels;
    forRows(mStore,
            {QStringLiteral("trade_cancels"),
             QStringLiteral("task, day, time, text"),
             QStringLiteral("WHERE day = ? ORDER BY time"),
             {day}},
            [&](const QSqlQuery &row) { cancels.push_back(cancelOf(row)); });
    return cancels;
}

std::set<int> TradeStore::finishedDays(const std::string &account) {
    std::set<int> days;
    collect(mStore,
            {QStringLiteral("trade_days"),
             QStringLiteral("day"),
             QStringLiteral("WHERE account = ?"),
             {textValue(account)}},
            days);
    return days;
}

std::set<int> TradeStore::ownDaysFrom(const std::string &account, int day) {
    const QString rest = QStringLiteral("WHERE account = ? AND day >= ?");
    const QVariantList values{textValue(account), day};
    std::set<int> days;
    collect(mStore,
            {QStringLiteral("trade_orders"), QStringLiteral("day"), rest + QStringLiteral(" AND source = 0"),
             values},
            days);
    for (const char *table : {"trade_tasks", "trade_days"}) {
        collect(mStore, {QLatin1String(table), QStringLiteral("day"), rest, values}, days);
    }
    return days;
}

} // namespace terminal
