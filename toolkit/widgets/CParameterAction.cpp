#include "host/toolkit/CParameterAction.h"

namespace GZ {

CParameterAction::CParameterAction(const QString &caption, int number, const QString &parameter,
                                   QObject *parent)
    : QAction(caption, parent), mNumber(number), mParameter(parameter) {
    connect(this, &QAction::triggered, this,
            [this](bool checked) { Q_EMIT triggered(checked, mNumber, mParameter); });
}

} // namespace GZ
