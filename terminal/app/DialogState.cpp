#include "terminal/app/DialogState.h"

#include <QSettings>

namespace terminal {

void keepDialogStateIn(const QString &folder) {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder);
}

} // namespace terminal
