#include "host/services/DataLog.h"

#include <QDebug>

namespace TC {

const QLoggingCategory &dataLog() {
    static const QLoggingCategory category("timeshare.data", QtFatalMsg);
    return category;
}

void warnOfData(const QString &words) {
    if (dataLog().isWarningEnabled()) {
        QMessageLogger().warning(dataLog()).noquote() << words;
    }
}

} // namespace TC
