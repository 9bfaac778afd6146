#include "terminal/market/StoreRules.h"

#include "terminal/market/MarketLimits.h"

#include <QStringList>

#include <algorithm>
#include <limits>

namespace terminal {
namespace {

/// Days and times reach from 1970 to 2038: days are 32-bit numbers of seconds.
const QString kDayRule = QStringLiteral("typeof(day) = 'integer' AND day BETWEEN -28800 AND 2147400000");

/// A number within bounds. Texts and blobs, which no conversion makes numbers behind the plus, are larger than all numbers.
QString between(const char *column, double least, double most) {
    return QStringLiteral("+%1 BETWEEN %2 AND %3")
        .arg(QLatin1String(column), QString::number(least, 'g', 17), QString::number(most, 'g', 17));
}

QString whole(const char *column, int least, int most) {
    return QStringLiteral("typeof(%1) = 'integer' AND %1 BETWEEN %2 AND %3")
        .arg(QLatin1String(column))
        .arg(least)
        .arg(most);
}

QString number(const char *column) {
    return whole(column, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
}

QString price(const char *column) {
    return between(column, 0.0, kLargestPrice);
}

QString isText(const char *column) {
    return QStringLiteral("typeof(%1) = 'text'").arg(QLatin1String(column));
}

QString isNamed(const char *column) {
    return isText(column) + QStringLiteral(" AND length(%1) BETWEEN 1 AND 64").arg(QLatin1String(column));
}

QString isOneOf(const char *column, const char *values) {
    return QStringLiteral("%1 IN (%2)").arg(QLatin1String(column), QLatin1String(values));
}

/// A moment in milliseconds since the epoch; 0 for none.
QString moment(const char *column) {
    return QStringLiteral("typeof(%1) = 'integer' AND %1 BETWEEN -2147483648000 AND 2147483647000")
        .arg(QLatin1String(column));
}

/// A moment of a trading day: its night may be held two weeks earlier, its last session on the day after.
QString momentOfDay(const char *column) {
    return QStringLiteral(
               "typeof(%1) = 'integer' AND %1 BETWEEN day * 1000 - 1382400000 AND day * 1000 + 259200000")
        .arg(QLatin1String(column));
}

StoreRule rule(const char *table, const char *key, const QStringList &conditions) {
    return {QLatin1String(table), QLatin1String(key), conditions.join(QStringLiteral(" AND "))};
}

QVector<StoreRule> instrumentRules() {
    const QStringList sessions{whole("ordinal", 0, 31), whole("first_minute", 1, 1440),
                               whole("last_minute", 1, 1440), QStringLiteral("first_minute <= last_minute")};
    return {
        rule("notes", "name", {isText("name"), isText("value")}),
        rule("instruments", "id",
             {isNamed("market"), isNamed("code"), isText("name"), isText("initials"), isText("product"),
              isOneOf("kind", "0, 1, 2, 3, 4, 5"), between("price_tick", 1e-9, kLargestPrice),
              QStringLiteral("(last_close IS NULL OR %1)").arg(price("last_close")),
              between("float_shares", 0.0, kLargestVolume), isText("underlying_market"),
              isText("underlying_code"), isOneOf("own_sessions", "0, 1"), isOneOf("simulated", "0, 1")}),
        rule("instrument_types", "instrument, type", {number("type")}),
        rule("sessions", "instrument, ordinal", sessions),
        rule("trading_days", "market, date",
             {isNamed("market"), QStringLiteral("date GLOB '[12][0-9][0-9][0-9]-[01][0-9]-[0-3][0-9]'"),
              isOneOf("open", "0, 1")}),
        rule("days", "instrument, day",
             {kDayRule, isOneOf("source", "0, 1"), price("open"), price("high"), price("low"), price("close"),
              between("volume", 0.0, 1e30), between("amount", 0.0, 1e30)}),
        rule("previous_closes", "instrument, day", {kDayRule, price("price")}),
        rule("day_sessions", "instrument, day, ordinal", QStringList{kDayRule} + sessions),
        rule("minute_bars", "instrument, day, time",
             {kDayRule, momentOfDay("time"), price("open"), price("high"), price("low"), price("price"),
              between("average", 0.0, 1e30), between("volume", 0.0, 1e30), between("amount", 0.0, 1e30)}),
        rule("ticks", "instrument, day, ordinal",
             {kDayRule, momentOfDay("time"), price("price"), between("volume", 0.0, 1e30),
              between("amount", 0.0, 1e30)}),
    };
}

QVector<StoreRule> linkRules() {
    return {
        rule("sectors", "id", {isOneOf("level", "1, 2, 3"), isText("name")}),
        rule("sector_members", "sector, instrument", {QStringLiteral("1")}),
        rule("convertible_links", "bond, share", {QStringLiteral("1")}),
        rule("listed_pairs", "a_share", {QStringLiteral("1")}),
        rule("user_indexes", "id",
             {isNamed("key"), isText("name"), QStringLiteral("typeof(start_time) = 'integer'"),
              between("base_value", -1e12, 1e12), number("option1"), number("option2"), number("option3"),
              between("last_value", -1e12, 1e12)}),
        rule("user_index_members", "user_index, ordinal", {QStringLiteral("typeof(ordinal) = 'integer'")}),
        rule("portfolios", "number", {whole("number", 0, std::numeric_limits<int>::max()), isText("name")}),
        rule("portfolio_positions", "portfolio, instrument",
             {between("quantity", -kLargestVolume, kLargestVolume)}),
        rule("self_stock_lists", "id", {isText("name")}),
        rule("self_stocks", "id", {isText("key")}),
    };
}

QVector<StoreRule> tradeRules() {
    constexpr int kMost = std::numeric_limits<int>::max();
    const QStringList trade{isText("key"),
                            isText("instrument"),
                            isOneOf("source", "0, 1"),
                            kDayRule,
                            moment("time"),
                            isOneOf("direction", "48, 49"),
                            isOneOf("offset_flag", "0, 48, 49"),
                            price("price"),
                            QStringLiteral("price > 0"),
                            whole("volume", 1, kMost),
                            number("command")};
    return {
        rule("trade_accounts", "id",
             {isText("id"), isText("name"), isOneOf("type", "1, 2"), isOneOf("source", "0, 1")}),
        rule("trade_strategies", "name", {isText("name")}),
        rule("trade_days", "account, day", {kDayRule}),
        rule("trade_tasks", "id",
             {whole("id", 1, kMost), kDayRule, number("command"), number("status"), moment("start_time"),
              moment("end_time"), moment("cancel_time")}),
        rule("trade_task_items", "task, ordinal",
             {whole("ordinal", 0, kMost), isText("market"), isText("code"), isOneOf("operation", "23, 24, 25"),
              number("price_type"), price("price"), whole("quantity", 1, kMost), whole("finished", 0, kMost),
              QStringLiteral("finished <= quantity")}),
        rule("trade_orders", "account, key, source",
             trade + QStringList{whole("traded", 0, kMost), QStringLiteral("traded <= volume"),
                                 isOneOf("status", "0, 1, 2, 3, 4")}),
        rule("trade_deals", "account, key, source",
             trade + QStringList{between("commission", -kLargestAmount, kLargestAmount)}),
        rule("trade_cancels", "task", {whole("task", 1, kMost), kDayRule, moment("time"), isText("text")}),
    };
}

} // namespace

const QVector<StoreRule> &storeRules() {
    static const QVector<StoreRule> rules = instrumentRules() + linkRules() + tradeRules();
    return rules;
}

const StoreRule &storeRule(const QString &table) {
    static const StoreRule none{table, QStringLiteral("1"), QStringLiteral("1")};
    const auto found = std::find_if(storeRules().begin(), storeRules().end(),
                                    [&table](const StoreRule &rule) { return rule.table == table; });
    return found == storeRules().end() ? none : *found;
}

} // namespace terminal
