#include "terminal/market/BarColumns.h"

#include <vector>

namespace terminal {
namespace {

const std::vector<KnownHeading<BarColumns>> kHeadings{
    {&BarColumns::dateTime, "datetime dt date_time trade_time bar_time eob 日期时间 交易时间"},
    {&BarColumns::date, "date trade_date 日期"},
    {&BarColumns::clock, "time 时间"},
    {&BarColumns::tradingDay, "tradingday trading_day 交易日"},
    {&BarColumns::symbol,
     "symbol code ts_code order_book_id instrument contract 代码 证券代码 股票代码 合约 合约代码"},
    {&BarColumns::exchange, "exchange market 交易所 市场"},
    {&BarColumns::open, "open 开盘 开盘价"},
    {&BarColumns::high, "high 最高 最高价"},
    {&BarColumns::low, "low 最低 最低价"},
    {&BarColumns::close, "close 收盘 收盘价"},
    {&BarColumns::volume, "volume vol 成交量"},
    {&BarColumns::amount, "amount turnover total_turnover money 成交额 成交金额"},
    {&BarColumns::average, "junjia average avg_price vwap 均价"},
    {&BarColumns::previousClose, "preclosepx preclose pre_close prev_close previous_close 昨收 昨收价"},
};

QString missingBarColumn(const BarColumns &columns) {
    const std::vector<std::pair<int, const char *>> needed{{columns.open, "open"},
                                                           {columns.high, "high"},
                                                           {columns.low, "low"},
                                                           {columns.close, "close"},
                                                           {columns.volume, "volume"}};
    for (const auto &column : needed) {
        if (column.first < 0) {
            return QStringLiteral("no column \"%1\"").arg(QLatin1String(column.second));
        }
    }
    if (columns.dateTime < 0 && columns.clock < 0) {
        return QStringLiteral("no column \"datetime\", nor \"date\" and \"time\"");
    }
    return {};
}

} // namespace

bool isSameBarColumn(const QString &one, const QString &other) {
    return isSameColumn(kHeadings, one, other);
}

QString recogniseColumns(const TableHeadings &headings, BarColumns &columns) {
    columns = BarColumns();
    const QString trouble = findColumns(headings, kHeadings, columns);
    return trouble.isEmpty() ? missingBarColumn(columns) : trouble;
}

} // namespace terminal
