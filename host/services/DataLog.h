#pragma once

#include "host/Export.h"

#include <QLoggingCategory>
#include <QString>

namespace TC {

/// What the library has to say about the data of a host that cannot be right: the category "timeshare.data" of Qt's
/// logging, warnings alone, once a request and kind. Off until it is asked for, and then it costs nothing: by
/// `QT_LOGGING_RULES=timeshare.data=true` in the environment or by QLoggingCategory::setFilterRules. Any thread.
TIMESHARE_EXPORT const QLoggingCategory &dataLog();

/// Says something there, where it is switched on.
TIMESHARE_EXPORT void warnOfData(const QString &words);

} // namespace TC
