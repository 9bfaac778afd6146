#pragma once

#include <QString>

namespace terminal {

/// The store file when none is named, in the user's data folder.
QString defaultStorePath();
/// The one with the days of a server.
QString defaultHistoryStorePath();
/// The configuration file, in the user's configuration folder.
QString defaultConfigPath();
/// The folder of the user's own formulas, in the user's data folder.
QString defaultFormulaFolder();
/// The folder of the script models, in the user's data folder.
QString defaultScriptFolder();

} // namespace terminal
