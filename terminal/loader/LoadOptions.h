#pragma once

#include "terminal/market/ImportOptions.h"

#include <QStringList>

#include <variant>

namespace terminal {

/// What timeshare-load was asked for.
struct LoadOptions {
    bool help = false;
    QString history; ///< server
    ImportOptions import;
    QStringList files;
};

/// The options, or one line that says what is wrong and what to do; it never repeats an address.
std::variant<LoadOptions, QString> parseLoadOptions(const QStringList &arguments);
QString loadHelp();

} // namespace terminal
