#pragma once

#include "terminal/market/TableHeadings.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace terminal {

class CMarketStore;

/// What a column of market data can be, by the word that the command line and the store have for it.
struct ColumnRole {
    QString word; ///< one of the headings that files are recognised by
    QString title; ///< for the user
};
const QVector<ColumnRole> &columnRoles();

/// The role of a heading that files are recognised by; empty for any other.
QString roleOfHeading(const QString &heading);

/// Reads which column is what, as "datetime=成交时间,price=3": a word of columnRoles(), and a heading or the number of a
/// column from 1 on; "#3" is a number for sure. The headings become those words, and all columns that are not named are passed over. Nothing is
/// changed by an empty choice. Answers an empty text or what is wrong.
QString applyColumns(const QString &choice, TableHeadings &headings);

/// The choice that was made for files of the same headings; empty when there was none.
QString rememberedColumns(CMarketStore &store, const TableHeadings &headings);
/// Keeps a choice for files of the same headings. Answers an empty text or what went wrong.
QString rememberColumns(CMarketStore &store, const TableHeadings &headings, const QString &choice);

} // namespace terminal
