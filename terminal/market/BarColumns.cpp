#include "terminal/market/BarColumns.h"

#include <QStringList>
#include <QTextCodec>

#include <vector>

namespace terminal {
namespace {

/// The words under which a column is known, in lower case.
struct Heading {
    int BarColumns::*column;
    const char *words;
};
const std::vector<Heading> kHeadings{
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
};

QString decode(QByteArray line) {
    if (line.startsWith("\xef\xbb\xbf")) {
        line.remove(0, 3);
    }
    QTextCodec::ConverterState state;
    const QString text = QTextCodec::codecForName("UTF-8")->toUnicode(line.constData(), line.size(), &state);
    if (state.invalidChars == 0 && state.remainingChars == 0) {
        return text;
    }
    QTextCodec *chinese = QTextCodec::codecForName("GB18030");
    return chinese ? chinese->toUnicode(line) : text;
}

int BarColumns::*columnOf(const QString &word) {
    for (const Heading &heading : kHeadings) {
        if (QString::fromUtf8(heading.words).split(QLatin1Char(' ')).contains(word)) {
            return heading.column;
        }
    }
    return nullptr;
}

QString findMissing(const BarColumns &columns) {
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

QString recogniseColumns(const QByteArray &headerLine, BarColumns &columns) {
    columns = BarColumns();
    const QString line = decode(headerLine).trimmed();
    if (!line.contains(QLatin1Char(','))) {
        columns.separator = line.contains(QLatin1Char('\t'))  ? '\t'
                            : line.contains(QLatin1Char(';')) ? ';'
                                                              : ',';
    }
    // What stands between blanks at the edges is trimmed, so an unnamed first column is counted from the raw line.
    const QStringList headings = decode(headerLine).split(QLatin1Char(columns.separator));
    columns.count = headings.size();
    for (int i = 0; i < headings.size(); ++i) {
        const QString word = headings[i].trimmed().remove(QLatin1Char('"')).toLower();
        int BarColumns::*column = word.isEmpty() ? nullptr : columnOf(word);
        if (!column) {
            continue;
        }
        if (columns.*column >= 0) {
            return QStringLiteral("two columns for \"%1\"").arg(word);
        }
        columns.*column = i;
    }
    if (columns.dateTime < 0 && columns.date < 0) {
        std::swap(columns.dateTime, columns.clock); // the clock column has to tell the date too
    }
    return findMissing(columns);
}

} // namespace terminal
