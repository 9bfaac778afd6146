#include "terminal/app/DefaultPaths.h"

#include <QStandardPaths>

namespace terminal {

QString defaultStorePath() {
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/market.db");
}

QString defaultHistoryStorePath() {
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/history.db");
}

QString defaultFormulaFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/formulas");
}

QString defaultScriptFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/scripts");
}

QString defaultConfigPath() {
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QStringLiteral("/config.json");
}

} // namespace terminal
