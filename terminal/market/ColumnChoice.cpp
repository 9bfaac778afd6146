#include "terminal/market/ColumnChoice.h"

#include "terminal/market/BarColumns.h"
#include "terminal/market/MarketWriter.h"
#include "terminal/market/TickColumns.h"

#include <QCoreApplication>
#include <QCryptographicHash>

#include <algorithm>

namespace terminal {
namespace {

struct ColumnWords {
    Q_DECLARE_TR_FUNCTIONS(ColumnChoice)
};

/// Place of a column that is named by its heading or its number; -1 for none.
int placeOfColumn(const QString &name, const TableHeadings &headings) {
    const bool isMarked = name.startsWith(QLatin1Char('#'));
    const int byHeading = headings.words.indexOf(name.toLower());
    const int number = name.mid(isMarked ? 1 : 0).toInt(); // 0 for none
    const bool isPlace = number >= 1 && number <= headings.words.size();
    return isPlace && (isMarked || byHeading < 0) ? number - 1 : byHeading;
}

bool isRole(const QString &word) {
    return std::any_of(columnRoles().begin(), columnRoles().end(),
                       [&word](const ColumnRole &role) { return role.word == word; });
}

QString roleWords() {
    QStringList words;
    for (const ColumnRole &role : columnRoles()) {
        words.append(role.word);
    }
    return words.join(QLatin1Char(' '));
}

QString noteOf(const TableHeadings &headings) {
    const QByteArray line = headings.words.join(QLatin1Char('\n')).toUtf8();
    return QStringLiteral("columns ") +
           QString::fromLatin1(QCryptographicHash::hash(line, QCryptographicHash::Sha1).toHex());
}

} // namespace

const QVector<ColumnRole> &columnRoles() {
    static const QVector<ColumnRole> roles{
        {QStringLiteral("datetime"), ColumnWords::tr("日期时间")},
        {QStringLiteral("date"), ColumnWords::tr("日期")},
        {QStringLiteral("time"), ColumnWords::tr("时间")},
        {QStringLiteral("tradingday"), ColumnWords::tr("交易日")},
        {QStringLiteral("symbol"), ColumnWords::tr("代码")},
        {QStringLiteral("exchange"), ColumnWords::tr("交易所")},
        {QStringLiteral("open"), ColumnWords::tr("开盘价")},
        {QStringLiteral("high"), ColumnWords::tr("最高价")},
        {QStringLiteral("low"), ColumnWords::tr("最低价")},
        {QStringLiteral("close"), ColumnWords::tr("收盘价")},
        {QStringLiteral("volume"), ColumnWords::tr("成交量")},
        {QStringLiteral("amount"), ColumnWords::tr("成交额")},
        {QStringLiteral("average"), ColumnWords::tr("均价")},
        {QStringLiteral("preclose"), ColumnWords::tr("昨收价")},
        {QStringLiteral("price"), ColumnWords::tr("逐笔成交价")},
        {QStringLiteral("last"), ColumnWords::tr("快照最新价")},
        {QStringLiteral("total_volume"), ColumnWords::tr("当日总成交量")},
        {QStringLiteral("total_value"), ColumnWords::tr("当日总成交额")},
    };
    return roles;
}

QString roleOfHeading(const QString &heading) {
    for (const ColumnRole &role : columnRoles()) {
        const bool isKnown =
            !heading.isEmpty() && (isSameBarColumn(heading, role.word) || isSameTickColumn(heading, role.word));
        if (isKnown) {
            return role.word;
        }
    }
    return {};
}

QString applyColumns(const QString &choice, TableHeadings &headings) {
    if (choice.isEmpty()) {
        return {};
    }
    QStringList words;
    for (int i = 0; i < headings.words.size(); ++i) {
        words.append(QString());
    }
    for (const QString &part : choice.split(QLatin1Char(','))) {
        const int equals = part.indexOf(QLatin1Char('='));
        const QString word = part.left(equals).trimmed().toLower();
        const QString name = part.mid(equals + 1).trimmed();
        if (equals < 0 || !isRole(word)) {
            return QStringLiteral("\"%1\" names no column: give WORD=HEADING, with one of %2")
                .arg(part.trimmed(), roleWords());
        }
        const int place = placeOfColumn(name, headings);
        if (place < 0) {
            return QStringLiteral("no column \"%1\" for %2").arg(name, word);
        }
        if (words.contains(word) || !words[place].isEmpty()) {
            return QStringLiteral("\"%1\" is given twice").arg(words.contains(word) ? word : name);
        }
        words[place] = word;
    }
    headings.words = words;
    return {};
}

QString rememberedColumns(CMarketStore &store, const TableHeadings &headings) {
    return store.note(noteOf(headings));
}

QString rememberColumns(CMarketStore &store, const TableHeadings &headings, const QString &choice) {
    MarketWriter writer(store);
    if (writer.putNote(noteOf(headings), choice)) {
        writer.commit();
    }
    return writer.error();
}

} // namespace terminal
