#pragma once

#include "host/services/CConfigService.h"
#include "host/services/ServiceContext.h"
#include "host/toolkit/CCommonDialog.h"
#include "host/toolkit/CHpfDataTable.h"

#include <QList>

namespace TC {

// What the dialogs of orders and of deals do alike.

/// Gives a dialog its title, its size, and a table in the layout that the user left.
inline GZ::CHpfDataTable *setUpRecordDialog(GZ::CCommonDialog &dialog, const QString &title, int tableType,
                                            int tableId) {
    dialog.setWindowTitle(title);
    dialog.setMinimumSize(400, 200);
    dialog.resize(800, 300);
    auto *table = new GZ::CHpfDataTable(tableType, tableId, &dialog, false);
    if (const CUserConfig *config = ServiceContext::of(&dialog).get<CConfigService>().userConfig()) {
        const QString layout = config->tableConfig(table->getID());
        if (!layout.isEmpty()) {
            table->loadConfigStr(layout);
        }
    }
    dialog.setInnerWidget(table);
    return table;
}

/// Keeps the layout of a table, which may be null, in the user's configuration.
inline void saveTableLayout(const GZ::CHpfDataTable *table) {
    CUserConfig *config = table ? ServiceContext::of(table).get<CConfigService>().userConfig() : nullptr;
    if (config) {
        config->setTableConfig(table->getID(), table->saveConfigStr());
    }
}

/// Replaces the rows of a table by records, in their order.
template <class Record> void showRecords(GZ::CHpfDataTable *table, const QList<Record> &records) {
    table->clearRows();
    for (const Record &record : records) {
        table->updateData(record, true);
    }
    table->adjustVisibleRowsColumnWidth();
}

} // namespace TC
