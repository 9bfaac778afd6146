#pragma once

#include <QDate>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace terminal {

/// What the windows look like and speak.
struct AppearanceOptions {
    QString theme; ///< "dark" or "light"; empty is the one chosen last
    QString language; ///< "zh" or "en"; empty is the one kept, or the machine's
};

/// What the program was asked for. A value that was not given is empty or stands at its default.
struct CommandLineOptions {
    bool help = false;
    QString instrument; ///< key, as in "SH600000"
    QDate date; ///< trading day to show; null is the running one
    QString snapshot; ///< picture to write instead of opening a window
    QSize size{1200, 700}; ///< of the window or the picture
    bool isSizeGiven = false;
    double ratio = 1.0; ///< device pixels per pixel
    int wall = 0; ///< views of a wall instead of the one window; 0 for none
    AppearanceOptions appearance;
    QStringList imports; ///< files of market data, in order
    std::optional<double> speed; ///< market seconds a second
    QString market; ///< of the imported files
    QString code;
    std::optional<bool> volumeInLots;
    std::optional<bool> labelAtStart;
    bool sessionsFromFile = false; ///< imported days trade when their rows show it
    QString columns; ///< which column of the imported files is what
    QString store; ///< folder or file of the market store
    QString feed; ///< server of a live market
    QString history; ///< server of past days
};

/// The options, or one line that says what is wrong, why, and what to do.
using ParsedCommandLine = std::variant<CommandLineOptions, QString>;

/// Reads the arguments behind the program's name. Values follow their option or stand behind "=".
ParsedCommandLine parseCommandLine(const QStringList &arguments);

/// The text of --help.
QString commandLineHelp();

/// Number of single-character insertions, deletions and replacements between two texts (Levenshtein), letter case
/// aside.
int editDistance(const QString &a, const QString &b);

/// Those of the candidates that are nearest to a text by edit distance, nearest first, `count` at most.
QStringList nearestTexts(const QString &text, const QStringList &candidates, int count);

} // namespace terminal
