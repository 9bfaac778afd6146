#pragma once

#include "host/services/CIndexMainWindowHelper.h"

#include <QObject>

namespace terminal {

/// What charts ask of the terminal's window, which connects to the signals.
class WindowRequests : public QObject, public TC::CIndexMainWindowHelper {
    Q_OBJECT
public:
    void instrumentChanged(const QString &key) override { Q_EMIT instrumentShown(key); }
    void showContrast(const QString &key) override { Q_EMIT contrastAsked(key); }
    void exportFormula(const QString &name) override { Q_EMIT exportAsked(name); }

Q_SIGNALS:
    void instrumentShown(const QString &key);
    void contrastAsked(const QString &key);
    /// The name may be empty.
    void exportAsked(const QString &name);
};

} // namespace terminal
