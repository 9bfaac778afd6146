#pragma once

#include "terminal/market/ImportedInstrument.h"
#include "terminal/market/TickColumns.h"

#include <QDate>
#include <QString>
#include <QStringList>
#include <QVector>

namespace terminal {

/// What the beginning and the end of a file of market data tell of it.
struct ImportPreview {
    QString error; ///< empty, or one line "FILE:LINE: reason"
    ImportKind kind = ImportKind::Bars;
    InstrumentName told; ///< by the first row; empty where the file does not tell
    InstrumentName guess; ///< the same, completed by the file's name and by what codes are as a rule
    bool severalInstruments = false; ///< among the first rows
    QVector<QStringList> rows; ///< the first rows as they are understood, in the columns of previewHeadings()
    QDate firstDate; ///< calendar dates of the first rows and of the last one
    QDate lastDate;
    int rowsAbout = 0; ///< rows of the file, by their length
    TableHeadings headings; ///< as they stand
    QVector<QStringList> fields; ///< of the first rows, as they stand
};

/// Reads the first 200 rows and the last one. `columns` is what the user has chosen, see ColumnChoice.
ImportPreview previewFile(const QString &path, const QString &columns = {});

/// Columns of a preview: the time first, then prices, volume and amount.
QStringList previewHeadings(ImportKind kind);
/// What a file holds, for the user.
QString kindText(ImportKind kind);

} // namespace terminal
