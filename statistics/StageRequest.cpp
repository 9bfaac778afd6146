#include "statistics/StageRequest.h"

#include <QStringList>

namespace TC {

QString StageRequest::text() const {
    return QStringList{QString::number(start), QString::number(end),       QString::number(type),
                       QString::number(param), QString::number(criterion), criterionText}
        .join(QLatin1Char(','));
}

} // namespace TC
