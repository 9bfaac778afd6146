#pragma once

#include "host/records/IData.h"

#include <QString>
#include <QVariant>
#include <QVector>

namespace TC {
class CStockManager;
} // namespace TC

namespace GZ {

/// What one column shows of a record.
struct RecordCell {
    QString text;
    QVariant sortValue; ///< a number, or invalid to sort by the text
    QString colorKey; ///< empty for the ordinary colour
};

/// A column of a table of records.
struct RecordColumn {
    const char *name; ///< the heading as it is written here, by which layouts are kept in every language

    QString heading() const;

    int alignment; ///< of Qt::Alignment
    RecordCell (*cell)(const kvservice::IData &record,
                       TC::CStockManager &stocks); ///< of a record of the table's kind
};

/// The columns of a table type of CHpfDataTable.
QVector<RecordColumn> recordColumns(int type);

/// Whether a record is of the kind that a table type shows.
bool isRecordOf(int type, const kvservice::IData &record);

} // namespace GZ
