#include "terminal/market/StoreSchema.h"

#include "terminal/market/CheckedTables.h"

#include <QSqlQuery>
#include <QStringList>
#include <QVariant>

namespace terminal {
namespace {

constexpr int kApplicationId = 0x54534d53; ///< marks the file as a market store

/// Version 1: instruments and their days.
QStringList marketTables() {
    return {
        QStringLiteral("CREATE TABLE notes (name TEXT PRIMARY KEY, value TEXT NOT NULL) WITHOUT ROWID"),
        QStringLiteral("CREATE TABLE instruments ("
                       "id INTEGER PRIMARY KEY, market TEXT NOT NULL, code TEXT NOT NULL, name TEXT NOT NULL, "
                       "initials TEXT NOT NULL, product TEXT NOT NULL, kind INTEGER NOT NULL, "
                       "price_tick REAL NOT NULL CHECK (price_tick > 0), last_close REAL, "
                       "float_shares REAL NOT NULL, underlying_market TEXT NOT NULL, "
                       "underlying_code TEXT NOT NULL, own_sessions INTEGER NOT NULL, "
                       "simulated INTEGER NOT NULL, UNIQUE (market, code))"),
        QStringLiteral("CREATE TABLE instrument_types ("
                       "instrument INTEGER NOT NULL REFERENCES instruments (id) ON DELETE CASCADE, "
                       "type INTEGER NOT NULL, PRIMARY KEY (instrument, type)) WITHOUT ROWID"),
        QStringLiteral("CREATE TABLE sessions ("
                       "instrument INTEGER NOT NULL REFERENCES instruments (id) ON DELETE CASCADE, "
                       "ordinal INTEGER NOT NULL, first_minute INTEGER NOT NULL, last_minute INTEGER NOT NULL, "
                       "PRIMARY KEY (instrument, ordinal)) WITHOUT ROWID"),
        QStringLiteral("CREATE TABLE trading_days (market TEXT NOT NULL, date TEXT NOT NULL, "
                       "open INTEGER NOT NULL, PRIMARY KEY (market, date)) WITHOUT ROWID"),
        QStringLiteral("CREATE TABLE days ("
                       "instrument INTEGER NOT NULL REFERENCES instruments (id) ON DELETE CASCADE, "
                       "day INTEGER NOT NULL, source INTEGER NOT NULL, open REAL NOT NULL, high REAL NOT NULL, "
                       "low REAL NOT NULL, close REAL NOT NULL, volume REAL NOT NULL, amount REAL NOT NULL, "
                       "PRIMARY KEY (instrument, day)) WITHOUT ROWID"),
        QStringLiteral("CREATE TABLE minute_bars ("
                       "instrument INTEGER NOT NULL, day INTEGER NOT NULL, time INTEGER NOT NULL, "
                       "open REAL NOT NULL, high REAL NOT NULL, low REAL NOT NULL, price REAL NOT NULL, "
                       "average REAL NOT NULL, volume REAL NOT NULL, amount REAL NOT NULL, "
                       "PRIMARY KEY (instrument, day, time), "
                       "FOREIGN KEY (instrument, day) REFERENCES days (instrument, day) ON DELETE CASCADE) "
                       "WITHOUT ROWID"),
    };
}

/// Version 2: what belongs together.
QStringList linkTables() {
    return {
        QStringLiteral("CREATE TABLE sectors (id INTEGER PRIMARY KEY, "
                       "level INTEGER NOT NULL CHECK (level BETWEEN 1 AND 3), name TEXT NOT NULL, "
                       "index_instrument INTEGER REFERENCES instruments (id), UNIQUE (level, name))"),
        QStringLiteral("CREATE TABLE sector_members ("
                       "sector INTEGER NOT NULL REFERENCES sectors (id) ON DELETE CASCADE, "
                       "instrument INTEGER NOT NULL REFERENCES instruments (id) ON DELETE CASCADE, "
                       "PRIMARY KEY (sector, instrument)) WITHOUT ROWID"),
        QStringLiteral("CREATE TABLE convertible_links ("
                       "bond INTEGER NOT NULL REFERENCES instruments (id) ON DELETE CASCADE, "
                       "share INTEGER NOT NULL REFERENCES instruments (id) ON DELETE CASCADE, "
                       "PRIMARY KEY (bond, share)) WITHOUT ROWID"),
        QStringLiteral("CREATE TABLE listed_pairs ("
                       "a_share INTEGER PRIMARY KEY REFERENCES instruments (id) ON DELETE CASCADE, "
                       "h_share INTEGER NOT NULL UNIQUE REFERENCES instruments (id) ON DELETE CASCADE)"),
        QStringLiteral("CREATE TABLE user_indexes (id INTEGER PRIMARY KEY, key TEXT NOT NULL UNIQUE, "
                       "name TEXT NOT NULL, start_time INTEGER NOT NULL, base_value REAL NOT NULL, "
                       "option1 INTEGER NOT NULL, option2 INTEGER NOT NULL, option3 INTEGER NOT NULL, "
                       "last_value REAL NOT NULL)"),
        QStringLiteral("CREATE TABLE user_index_members ("
                       "user_index INTEGER NOT NULL REFERENCES user_indexes (id) ON DELETE CASCADE, "
                       "ordinal INTEGER NOT NULL, "
                       "instrument INTEGER NOT NULL REFERENCES instruments (id) ON DELETE CASCADE, "
                       "PRIMARY KEY (user_index, ordinal)) WITHOUT ROWID"),
        QStringLiteral("CREATE TABLE portfolios (number INTEGER PRIMARY KEY, name TEXT NOT NULL)"),
        QStringLiteral("CREATE TABLE portfolio_positions ("
                       "portfolio INTEGER NOT NULL REFERENCES portfolios (number) ON DELETE CASCADE, "
                       "instrument INTEGER NOT NULL REFERENCES instruments (id) ON DELETE CASCADE, "
                       "quantity REAL NOT NULL, PRIMARY KEY (portfolio, instrument)) WITHOUT ROWID"),
    };
}

/// Version 3: ticks.
QStringList tickTables() {
    return {
        // The rows of a day are in the order in which they happened; many share a time.
        QStringLiteral("CREATE TABLE ticks ("
                       "instrument INTEGER NOT NULL, day INTEGER NOT NULL, ordinal INTEGER NOT NULL, "
                       "time INTEGER NOT NULL, price REAL NOT NULL, volume REAL NOT NULL, "
                       "amount REAL NOT NULL, PRIMARY KEY (instrument, day, ordinal), "
                       "FOREIGN KEY (instrument, day) REFERENCES days (instrument, day) ON DELETE CASCADE) "
                       "WITHOUT ROWID"),
    };
}

/// Orders and deals.
QStringList tradeRecordTables() {
    return {
        // The columns of a primary key stand first: some SQLite versions misjudge NULL in others when they do not.
        QStringLiteral(
            "CREATE TABLE trade_orders ("
            "account TEXT NOT NULL REFERENCES trade_accounts (id) ON DELETE CASCADE, "
            "key TEXT NOT NULL, source INTEGER NOT NULL, day INTEGER NOT NULL, instrument TEXT NOT NULL, "
            "time INTEGER NOT NULL, direction INTEGER NOT NULL, offset_flag INTEGER NOT NULL, "
            "price REAL NOT NULL CHECK (price > 0), volume INTEGER NOT NULL CHECK (volume > 0), "
            "traded INTEGER NOT NULL CHECK (traded BETWEEN 0 AND volume), "
            "status INTEGER NOT NULL, strategy TEXT REFERENCES trade_strategies (name), "
            "command INTEGER NOT NULL, task INTEGER REFERENCES trade_tasks (id) ON DELETE CASCADE, "
            "PRIMARY KEY (account, key, source)) WITHOUT ROWID"),
        QStringLiteral("CREATE INDEX trade_orders_by_day ON trade_orders (day)"),
        QStringLiteral("CREATE INDEX trade_orders_by_task ON trade_orders (task)"),
        QStringLiteral(
            "CREATE TABLE trade_deals ("
            "account TEXT NOT NULL REFERENCES trade_accounts (id) ON DELETE CASCADE, "
            "key TEXT NOT NULL, source INTEGER NOT NULL, order_key TEXT, day INTEGER NOT NULL, instrument "
            "TEXT NOT NULL, "
            "time INTEGER NOT NULL, direction INTEGER NOT NULL, offset_flag INTEGER NOT NULL, "
            "price REAL NOT NULL CHECK (price > 0), volume INTEGER NOT NULL CHECK (volume > 0), "
            "commission REAL NOT NULL, strategy TEXT REFERENCES trade_strategies (name), "
            "command INTEGER NOT NULL, PRIMARY KEY (account, key, source), "
            "FOREIGN KEY (account, order_key, source) REFERENCES trade_orders (account, key, source) "
            "ON DELETE CASCADE) WITHOUT ROWID"),
        QStringLiteral("CREATE INDEX trade_deals_by_day ON trade_deals (day)"),
        QStringLiteral("CREATE INDEX trade_deals_by_order ON trade_deals (account, order_key, source)"),
    };
}

/// Version 4: the user's trading.
QStringList tradeTables() {
    const QStringList accountsAndTasks{
        QStringLiteral("CREATE TABLE trade_accounts (id TEXT PRIMARY KEY, name TEXT NOT NULL, "
                       "type INTEGER NOT NULL, source INTEGER NOT NULL) WITHOUT ROWID"),
        QStringLiteral("CREATE TABLE trade_strategies (name TEXT PRIMARY KEY) WITHOUT ROWID"),
        // Days whose own trading is recorded to its end.
        QStringLiteral("CREATE TABLE trade_days ("
                       "account TEXT NOT NULL REFERENCES trade_accounts (id) ON DELETE CASCADE, "
                       "day INTEGER NOT NULL, PRIMARY KEY (account, day)) WITHOUT ROWID"),
        QStringLiteral("CREATE TABLE trade_tasks (id INTEGER PRIMARY KEY, "
                       "account TEXT NOT NULL REFERENCES trade_accounts (id) ON DELETE CASCADE, "
                       "day INTEGER NOT NULL, strategy TEXT REFERENCES trade_strategies (name), "
                       "command INTEGER NOT NULL, status INTEGER NOT NULL, start_time INTEGER NOT NULL, "
                       "end_time INTEGER NOT NULL, cancel_time INTEGER NOT NULL)"),
        QStringLiteral("CREATE INDEX trade_tasks_by_day ON trade_tasks (day)"),
        QStringLiteral("CREATE TABLE trade_task_items ("
                       "task INTEGER NOT NULL REFERENCES trade_tasks (id) ON DELETE CASCADE, "
                       "ordinal INTEGER NOT NULL, market TEXT NOT NULL, code TEXT NOT NULL, "
                       "operation INTEGER NOT NULL, price_type INTEGER NOT NULL, price REAL NOT NULL, "
                       "quantity INTEGER NOT NULL CHECK (quantity > 0), "
                       "finished INTEGER NOT NULL CHECK (finished BETWEEN 0 AND quantity), "
                       "PRIMARY KEY (task, ordinal)) WITHOUT ROWID"),
    };
    const QStringList cancels{
        // What the user has cancelled; the tasks themselves are recorded anew with their day.
        QStringLiteral("CREATE TABLE trade_cancels (task INTEGER PRIMARY KEY, day INTEGER NOT NULL, "
                       "time INTEGER NOT NULL, text TEXT NOT NULL)"),
    };
    return accountsAndTasks + tradeRecordTables() + cancels;
}

/// Version 5: the user's own lists.
QStringList selfStockTables() {
    return {
        // Lists are shown in the order in which they were made, their instruments in that in which they came.
        QStringLiteral("CREATE TABLE self_stock_lists (id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE)"),
        QStringLiteral("CREATE TABLE self_stocks (id INTEGER PRIMARY KEY, "
                       "list INTEGER NOT NULL REFERENCES self_stock_lists (id) ON DELETE CASCADE, "
                       "key TEXT NOT NULL, UNIQUE (list, key))"),
        QStringLiteral("INSERT INTO self_stock_lists (name) VALUES ('自选股')"),
    };
}

/// Version 6: what a day's source tells of it beside its bars. With it the tables come to hold their rows to rules.
QStringList dayTables() {
    return {
        QStringLiteral("CREATE TABLE previous_closes (instrument INTEGER NOT NULL, day INTEGER NOT NULL, "
                       "price REAL NOT NULL, PRIMARY KEY (instrument, day), "
                       "FOREIGN KEY (instrument, day) REFERENCES days (instrument, day) ON DELETE CASCADE) "
                       "WITHOUT ROWID"),
        QStringLiteral("CREATE TABLE day_sessions (instrument INTEGER NOT NULL, day INTEGER NOT NULL, "
                       "ordinal INTEGER NOT NULL, first_minute INTEGER NOT NULL, last_minute INTEGER NOT NULL, "
                       "PRIMARY KEY (instrument, day, ordinal), "
                       "FOREIGN KEY (instrument, day) REFERENCES days (instrument, day) ON DELETE CASCADE) "
                       "WITHOUT ROWID"),
        // Instruments are found by their keys.
        QStringLiteral("CREATE INDEX IF NOT EXISTS instruments_by_key ON instruments (market || code)"),
    };
}
constexpr int kCheckedVersion = 6; ///< the first one whose tables hold their rows to rules

/// Statements that lead from version to version; the first entry makes version 1.
const QVector<QStringList> &migrations() {
    static const QVector<QStringList> steps{marketTables(), linkTables(),      tickTables(),
                                            tradeTables(),  selfStockTables(), dayTables()};
    return steps;
}

int pragma(QSqlQuery &query, const QString &name) {
    return query.exec(QStringLiteral("PRAGMA ") + name) && query.next() ? query.value(0).toInt() : -1;
}

SchemaOutcome failed(const QSqlQuery &query) {
    return {SchemaOutcome::State::Failed, query.lastError()};
}

/// Runs the statements from a version to the current one, inside a transaction that is open.
bool runSteps(QSqlQuery &query, int version, StoreFaults &faults) {
    for (int step = version; step < migrations().size(); ++step) {
        for (const QString &statement : migrations()[step]) {
            if (!query.exec(statement)) {
                return false;
            }
        }
    }
    if (version < kCheckedVersion && !checkTables(query, faults)) {
        return false;
    }
    return query.exec(QStringLiteral("PRAGMA application_id = %1").arg(kApplicationId)) &&
           query.exec(QStringLiteral("PRAGMA user_version = %1").arg(currentSchemaVersion()));
}

/// The migration itself, in a transaction of its own.
SchemaOutcome migrate(QSqlQuery &query, StoreFaults &faults) {
    // Taking the write lock here shows that nobody else holds the store, and keeps two programs that start together
    // from creating the same tables.
    if (!query.exec(QStringLiteral("BEGIN IMMEDIATE"))) {
        return failed(query);
    }
    SchemaOutcome outcome;
    const int version = pragma(query, QStringLiteral("user_version"));
    const int application = pragma(query, QStringLiteral("application_id"));
    const int tables = query.exec(QStringLiteral("SELECT count(*) FROM sqlite_master")) && query.next()
                           ? query.value(0).toInt()
                           : -1;
    query.finish();
    if (version < 0 || tables < 0) {
        outcome = failed(query);
    } else if (application != kApplicationId && (tables > 0 || version > 0)) {
        outcome.state = SchemaOutcome::State::Foreign;
    } else if (version > currentSchemaVersion()) {
        outcome.state = SchemaOutcome::State::Newer;
    } else if (version == currentSchemaVersion() || runSteps(query, version, faults)) {
        if (query.exec(QStringLiteral("COMMIT"))) {
            return outcome;
        }
        outcome = failed(query);
    } else {
        outcome = failed(query);
    }
    query.exec(QStringLiteral("ROLLBACK"));
    return outcome;
}

} // namespace

int currentSchemaVersion() {
    return migrations().size();
}

SchemaOutcome migrateSchema(QSqlDatabase database, StoreFaults &faults) {
    QSqlQuery query(database);
    // Tables that are built anew would take the rows that refer to them along.
    query.exec(QStringLiteral("PRAGMA foreign_keys = OFF"));
    SchemaOutcome outcome = migrate(query, faults);
    query.exec(QStringLiteral("PRAGMA foreign_keys = ON"));
    return outcome;
}

} // namespace terminal
