#include "terminal/trade/TradeStore.h"

#include "terminal/market/SqlColumns.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>

namespace terminal {
namespace {

QVariant textValue(const std::string &utf8) {
    return QString::fromStdString(utf8);
}

/// A text that refers to another table: nothing when it is empty.
QVariant reference(const std::string &utf8) {
    return utf8.empty() ? QVariant(QVariant::String) : textValue(utf8);
}

QVariant reference(int number) {
    return number == 0 ? QVariant(QVariant::Int) : QVariant(number);
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

/// Runs a question and calls `take` with each row.
template <class Take>
void forRows(const QSqlDatabase &database, const QString &question, const QVariantList &values, Take take) {
    QSqlQuery query(database);
    query.setForwardOnly(true);
    query.prepare(question);
    for (const QVariant &value : values) {
        query.addBindValue(value);
    }
    for (query.exec(); query.next();) {
        take(query);
    }
}

/// The values of a question's one column.
template <class Value>
std::set<Value> setOf(const QSqlDatabase &database, const QString &question, const QVariantList &values = {}) {
    std::set<Value> all;
    forRows(database, question, values, [&](const QSqlQuery &row) {
        Value value{};
        takeColumns(row, value);
        all.insert(value);
    });
    return all;
}

void readItems(const QSqlDatabase &database, int day, std::vector<TradeTask> &tasks) {
    forRows(database,
            QStringLiteral("SELECT task, market, code, operation, price_type, price, quantity, finished "
                           "FROM trade_task_items JOIN trade_tasks ON trade_tasks.id = task WHERE day = ? "
                           "ORDER BY task, ordinal"),
            {day}, [&](const QSqlQuery &row) {
                int id = 0;
                TradeTaskItem item;
                takeColumns(row, id, item.market, item.code, item.operation, item.priceType, item.price,
                            item.quantity, item.finished);
                const auto task = std::lower_bound(tasks.begin(), tasks.end(), id,
                                                   [](const TradeTask &one, int of) { return one.id < of; });
                task->items.push_back(item);
            });
}

} // namespace

QString TradeStore::write(const TradeBatch &batch) {
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

TradeChanges TradeStore::read(int day) {
    TradeChanges records;
    QSqlDatabase database = mStore.connection();
    database.transaction(); // one state of the store for all questions
    forRows(
        database,
        QStringLiteral("SELECT id, account, day, strategy, command, status, start_time, end_time, cancel_time "
                       "FROM trade_tasks WHERE day = ? ORDER BY id"),
        {day}, [&](const QSqlQuery &row) { records.tasks.push_back(taskOf(row)); });
    readItems(database, day, records.tasks);
    forRows(database,
            QStringLiteral(
                "SELECT account, key, day, instrument, time, direction, offset_flag, price, volume, traded, "
                "status, strategy, command, task, source FROM trade_orders WHERE day = ?"),
            {day}, [&](const QSqlQuery &row) { records.orders.push_back(orderOf(row)); });
    forRows(
        database,
        QStringLiteral("SELECT account, key, order_key, day, instrument, time, direction, offset_flag, price, "
                       "volume, commission, strategy, command, source FROM trade_deals WHERE day = ?"),
        {day}, [&](const QSqlQuery &row) { records.deals.push_back(dealOf(row)); });
    database.commit();
    return records;
}

std::vector<TradeAccount> TradeStore::accounts() {
    std::vector<TradeAccount> accounts;
    forRows(mStore.connection(),
            QStringLiteral("SELECT id, name, type, source FROM trade_accounts ORDER BY id"), {},
            [&](const QSqlQuery &row) { accounts.push_back(accountOf(row)); });
    return accounts;
}

std::set<std::string> TradeStore::strategies() {
    return setOf<std::string>(mStore.connection(), QStringLiteral("SELECT name FROM trade_strategies"));
}

std::set<std::string> TradeStore::instruments() {
    return setOf<std::string>(
        mStore.connection(),
        QStringLiteral("SELECT instrument FROM trade_orders UNION SELECT instrument FROM trade_deals "
                       "UNION SELECT market || code FROM trade_task_items"));
}

std::vector<TradeCancel> TradeStore::cancels(int day) {
    std::vector<TradeCancel> cancels;
    forRows(mStore.connection(),
            QStringLiteral("SELECT task, day, time, text FROM trade_cancels WHERE day = ? ORDER BY time"),
            {day}, [&](const QSqlQuery &row) { cancels.push_back(cancelOf(row)); });
    return cancels;
}

std::set<int> TradeStore::finishedDays(const std::string &account) {
    return setOf<int>(mStore.connection(), QStringLiteral("SELECT day FROM trade_days WHERE account = ?"),
                      {textValue(account)});
}

std::set<int> TradeStore::ownDaysFrom(const std::string &account, int day) {
    return setOf<int>(
        mStore.connection(),
        QStringLiteral("SELECT day FROM trade_orders WHERE account = ? AND day >= ? AND source = 0 "
                       "UNION SELECT day FROM trade_tasks WHERE account = ? AND day >= ? "
                       "UNION SELECT day FROM trade_days WHERE account = ? AND day >= ?"),
        {textValue(account), day, textValue(account), day, textValue(account), day});
}

} // namespace terminal
