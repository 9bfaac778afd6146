#pragma once

#include "host/Export.h"

#include <QAction>
#include <QString>

namespace GZ {

/// A menu entry that carries a number and a text, and tells them when it is chosen.
class TIMESHARE_EXPORT CParameterAction : public QAction {
    Q_OBJECT
public:
    CParameterAction(const QString &caption, int number, const QString &parameter, QObject *parent = nullptr);

    int number() const { return mNumber; }
    const QString &parameter() const { return mParameter; }

Q_SIGNALS:
    /// The entry was chosen.
    void triggered(bool checked, int number, const QString &parameter);

private:
    const int mNumber;
    const QString mParameter;
};

} // namespace GZ
