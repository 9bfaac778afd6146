#include "terminal/market/TickColumns.h"

namespace terminal {
namespace {

const std::vector<KnownHeading<TickColumns>> &knownHeadings() {
    static const std::vector<KnownHeading<TickColumns>> known{
        {&TickColumns::dateTime,
         "datetime dt date_time trade_time tick_time timestamp 日期时间 交易时间 成交时间"},
        {&TickColumns::date, "date mddate trade_date 日期"},
        {&TickColumns::clock, "time mdtime 时间"},
        {&TickColumns::tradingDay, "tradingday trading_day 交易日"},
        {&TickColumns::symbol, "symbol code securityid ts_code order_book_id instrument instrumentid contract "
                               "代码 证券代码 股票代码 合约 合约代码"},
        {&TickColumns::exchange, "exchange market 交易所 市场"},
        {&TickColumns::price, "price tradeprice trade_price tradepx 价格 成交价 成交价格"},
        {&TickColumns::last, "last lastpx lastprice last_price 最新 最新价 现价"},
        {&TickColumns::volume, "volume vol qty quantity tradeqty trade_qty 成交量 数量"},
        {&TickColumns::amount, "amount money turnover trademoney trade_money 成交额 成交金额 金额"},
        {&TickColumns::totalVolume, "totalvolumetrade total_volume_trade totalvolume total_volume cum_volume "
                                    "acc_volume 总量 总成交量 累计成交量"},
        {&TickColumns::totalAmount, "totalvaluetrade total_value_trade totalvalue total_value total_turnover "
                                    "cum_amount acc_amount 总额 总成交额 累计成交额"},
        {&TickColumns::high, "highpx high highprice high_price 最高 最高价"},
        {&TickColumns::low, "lowpx low lowprice low_price 最低 最低价"},
        {&TickColumns::previousClose, "preclosepx preclose pre_close prev_close previous_close 昨收 昨收价"},
    };
    return known;
}

/// What is missing, in the words of the file's kind.
QString missingTickColumn(const TickColumns &columns) {
    const bool snapshots = columns.kind == ImportKind::Snapshots;
    if (columns.price < 0) {
        return QStringLiteral("no column \"price\", nor \"last\"");
    }
    if (columns.volume < 0) {
        return QStringLiteral("no column \"%1\"")
            .arg(snapshots ? QStringLiteral("total_volume") : QStringLiteral("volume"));
    }
    if (columns.dateTime < 0 && columns.clock < 0) {
        return QStringLiteral("no column \"datetime\", nor \"date\" and \"time\"");
    }
    return {};
}

} // namespace

bool isSameTickColumn(const QString &one, const QString &other) {
    return isSameColumn(knownHeadings(), one, other);
}

ImportKind kindOfTable(const TableHeadings &headings) {
    TickColumns columns;
    findColumns(headings, knownHeadings(), columns);
    if (columns.last >= 0) {
        return ImportKind::Snapshots;
    }
    const auto has = [&headings](const char *english, const char *chinese) {
        return headings.words.contains(QLatin1String(english)) ||
               headings.words.contains(QString::fromUtf8(chinese));
    };
    const bool closes = has("close", "收盘") || has("close", "收盘价");
    return columns.price >= 0 && !closes ? ImportKind::Trades : ImportKind::Bars;
}

QString recogniseTickColumns(const TableHeadings &headings, TickColumns &columns) {
    columns = TickColumns();
    const QString trouble = findColumns(headings, knownHeadings(), columns);
    if (!trouble.isEmpty()) {
        return trouble;
    }
    if (columns.last >= 0) {
        columns.kind = ImportKind::Snapshots;
        columns.price = columns.last;
        columns.volume = columns.totalVolume >= 0 ? columns.totalVolume : columns.volume;
        columns.amount = columns.totalAmount >= 0 ? columns.totalAmount : columns.amount;
    }
    return missingTickColumn(columns);
}

} // namespace terminal
