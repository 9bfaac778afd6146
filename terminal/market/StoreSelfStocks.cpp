#include "terminal/market/StoreSelfStocks.h"

#include "terminal/market/SqlConnections.h"
#include "terminal/market/StoreTurn.h"

#include <QCoreApplication>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace terminal {
namespace {

constexpr int kPatience = 40; ///< milliseconds, in which the screen stands still

struct SelfStockWords {
    Q_DECLARE_TR_FUNCTIONS(StoreSelfStocks)
};

/// While it lives a connection waits no longer for another process than so many milliseconds.
class ShortPatience {
public:
    ShortPatience(const QSqlDatabase &database, int milliseconds) : mDatabase(database) { set(milliseconds); }
    ~ShortPatience() { set(kForeignPatience); }
    ShortPatience(const ShortPatience &) = delete;
    ShortPatience &operator=(const ShortPatience &) = delete;

private:
    void set(int milliseconds) {
        QSqlQuery(mDatabase).exec(QStringLiteral("PRAGMA busy_timeout = %1").arg(milliseconds));
    }

    QSqlDatabase mDatabase;
};

bool run(QSqlQuery &query, const QString &statement, const QVariantList &values) {
    bool good = query.prepare(statement);
    for (const QVariant &value : values) {
        query.addBindValue(value);
    }
    return good && query.exec();
}

} // namespace

QVector<QString> StoreSelfStocks::column(const StoreQuestion &question) {
    QVector<QString> texts;
    StoreRows(mStore.connection(), mStore.faults()).read(question, [&texts](const QSqlQuery &row) {
        texts.append(row.value(0).toString());
        return true;
    });
    return texts;
}

QVector<QString> StoreSelfStocks::groups() {
    return column({QStringLiteral("self_stock_lists"), QStringLiteral("name"), QStringLiteral("ORDER BY id")});
}

QVector<QString> StoreSelfStocks::stocks(const QString &group) {
    return column({QStringLiteral("self_stocks"),
                   QStringLiteral("key"),
                   QStringLiteral("WHERE list = (SELECT id FROM self_stock_lists WHERE name = ?) ORDER BY id"),
                   {group}});
}

QString StoreSelfStocks::addStocks(const QString &group, const QVector<QString> &keys) {
    if (group.trimmed().isEmpty()) {
        return SelfStockWords::tr("列表要有名称");
    }
    return changeEach(
        group, keys,
        QStringLiteral("INSERT INTO self_stocks (list, key) "
                       "SELECT id, ? FROM self_stock_lists WHERE name = ? ON CONFLICT DO NOTHING"));
}

QString StoreSelfStocks::removeStocks(const QString &group, const QVector<QString> &keys) {
    return changeEach(group, keys,
                      QStringLiteral("DELETE FROM self_stocks WHERE key = ? AND "
                                     "list = (SELECT id FROM self_stock_lists WHERE name = ?)"));
}

QString StoreSelfStocks::changeEach(const QString &group, const QVector<QString> &keys,
                                    const QString &statement) {
    const StoreTurn turn(mStore, std::chrono::milliseconds(kPatience));
    if (!turn.isMine()) {
        return SelfStockWords::tr("列表“%1”没有改变：%2").arg(group, mStore.describeBusy());
    }
    QSqlDatabase database = mStore.connection();
    const ShortPatience patience(database, kPatience);
    QSqlQuery query(database);
    bool good = query.exec(QStringLiteral("BEGIN IMMEDIATE"));
    const bool open = good;
    good = good &&
           run(query, QStringLiteral("INSERT INTO self_stock_lists (name) VALUES (?) ON CONFLICT DO NOTHING"),
               {group});
    for (int i = 0; good && i < keys.size(); ++i) {
        good = run(query, statement, {keys[i], group});
    }
    good = good && query.exec(QStringLiteral("COMMIT"));
    if (!good) {
        const QString reason = mStore.describe(query.lastError());
        if (open) {
            query.exec(QStringLiteral("ROLLBACK"));
        }
        return SelfStockWords::tr("列表“%1”没有改变：%2").arg(group, reason);
    }
    if (mListener) {
        mListener();
    }
    return {};
}

} // namespace terminal
