#include "host/toolkit/CHpfDataTable.h"

#include "host/services/CStockManager.h"
#include "host/services/ServiceContext.h"
#include "host/toolkit/Text.h"
#include "toolkit/widgets/ColumnLayout.h"
#include "toolkit/widgets/RecordColumns.h"
#include "toolkit/widgets/TableCell.h"

namespace GZ {

CHpfDataTable::CHpfDataTable(int type, int id, QWidget *parent, bool fixedOrder)
    : COddEvenRowTable(id, eWholeMenu, parent), mType(type) {
    QStringList headings;
    for (const RecordColumn &column : recordColumns(type)) {
        headings.append(column.heading());
    }
    setHeaders(headings);
    int number = 0;
    for (const RecordColumn &column : recordColumns(type)) {
        horizontalHeaderItem(number++)->setData(ColumnLayout::kNameRole, QString::fromUtf8(column.name));
    }
    setFlag(eSort, !fixedOrder);
}

void CHpfDataTable::updateData(const boost::shared_ptr<kvservice::IData> &record, bool append) {
    if (!record || !isRecordOf(mType, *record)) {
        return;
    }
    const QString key = sToQs(record->getKey());
    int row = append ? -1 : rowOf(key);
    if (row < 0) {
        row = addRow();
        item(row, 0)->setData(eRecordKey, key);
    }
    auto &stocks = TC::ServiceContext::of(this).get<TC::CStockManager>();
    int number = 0;
    for (const RecordColumn &column : recordColumns(mType)) {
        const RecordCell cell = column.cell(*record, stocks);
        setText(row, number, cell.text, column.alignment, cell.sortValue);
        if (!cell.colorKey.isEmpty()) {
            setTextColor(row, number, cell.colorKey);
        }
        ++number;
    }
}

int CHpfDataTable::rowOf(const QString &key) const {
    for (int row = 0; row < rowCount(); ++row) {
        if (item(row, 0)->data(eRecordKey).toString() == key) {
            return row;
        }
    }
    return -1;
}

} // namespace GZ
