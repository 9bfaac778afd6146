#include "terminal/market/CheckedTables.h"

#include "terminal/market/StoreRules.h"

#include <QSqlError>
#include <QStringList>
#include <QVariant>

namespace terminal {
namespace {

/// Builds one table anew.
class CheckedTable {
public:
    CheckedTable(QSqlQuery &query, const StoreRule &rule) : mQuery(query), mRule(rule) {}

    bool build(StoreFaults &faults) {
        const QStringList indexes =
            texts("SELECT sql FROM sqlite_master WHERE type = 'index' AND tbl_name = '%1' "
                  "AND sql IS NOT NULL");
        bool good = setAside(faults) && mQuery.exec(checkedSql()) &&
                    run(QStringLiteral("INSERT OR IGNORE INTO checked SELECT * FROM %1 WHERE (%2) IS TRUE")) &&
                    run(QStringLiteral("DROP TABLE %1")) &&
                    run(QStringLiteral("ALTER TABLE checked RENAME TO %1"));
        for (const QString &index : indexes) {
            good = good && mQuery.exec(index);
        }
        return good;
    }

private:
    bool run(const QString &statement) { return mQuery.exec(filled(statement)); }

    QString filled(const QString &statement) const {
        return statement.contains(QLatin1String("%2")) ? statement.arg(mRule.table, mRule.condition)
                                                       : statement.arg(mRule.table);
    }

    QStringList texts(const char *question) {
        QStringList all;
        for (run(QLatin1String(question)); mQuery.next();) {
            all.append(mQuery.value(0).toString());
        }
        return all;
    }

    /// The table's own statement, with another name and the rule in it.
    QString checkedSql() {
        QString sql = texts("SELECT sql FROM sqlite_master WHERE type = 'table' AND name = '%1'").value(0);
        sql.remove(0, sql.indexOf(QLatin1Char('(')));
        sql.insert(sql.lastIndexOf(QLatin1Char(')')), QStringLiteral(", CHECK (%1)").arg(mRule.condition));
        return QStringLiteral("CREATE TABLE checked ") + sql;
    }

    bool setAside(StoreFaults &faults) {
        const QStringList columns = texts("SELECT name FROM pragma_table_info('%1')");
        const QString content =
            QStringLiteral("quote(%1)").arg(columns.join(QStringLiteral(") || ', ' || quote(")));
        const bool good = run(QStringLiteral("INSERT INTO set_aside SELECT '%1', ") + content +
                              QStringLiteral(" FROM %1 WHERE (%2) IS NOT TRUE"));
        for (const QString &row : texts("SELECT content FROM set_aside WHERE source = '%1'")) {
            faults.tell(mRule.table, QLatin1Char('(') + row.left(kShown) + QLatin1Char(')'),
                        QStringLiteral("a value out of range"));
        }
        return good;
    }

    static constexpr int kShown = 80; ///< characters of a row

    QSqlQuery &mQuery;
    const StoreRule &mRule;
};

} // namespace

bool checkTables(QSqlQuery &query, StoreFaults &faults) {
    bool good = query.exec(QStringLiteral("CREATE TABLE IF NOT EXISTS set_aside (source TEXT NOT NULL, "
                                          "content TEXT NOT NULL)"));
    for (const StoreRule &rule : storeRules()) {
        good = good && CheckedTable(query, rule).build(faults);
    }
    return good;
}

} // namespace terminal
