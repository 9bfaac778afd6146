#include "terminal/loader/LoadOptions.h"

#include "terminal/history/HistoryAddress.h"
#include "terminal/servers/OptionWords.h"

namespace terminal {
namespace {

/// Takes one of two words; answers what is wrong when it is neither.
QString takeEither(const QString &value, const char *first, const char *second, bool &isFirst) {
    isFirst = value == QLatin1String(first);
    return isFirst || value == QLatin1String(second)
               ? QString()
               : QStringLiteral("unknown word: give %1 or %2").arg(QLatin1String(first), QLatin1String(second));
}

/// Takes one value; answers what is wrong with it.
QString takeLoadOption(const QString &name, const QString &value, LoadOptions &options) {
    bool isFirst = false;
    QString wrong;
    if (name == QLatin1String("--history")) {
        options.history = value;
        wrong = historyAddressFault(value);
    } else if (name == QLatin1String("--market")) {
        options.import.market = value;
    } else if (name == QLatin1String("--code")) {
        options.import.code = value;
    } else if (name == QLatin1String("--columns")) {
        options.import.columns = value;
    } else if (name == QLatin1String("--volume-unit")) {
        wrong = takeEither(value, "lots", "shares", isFirst);
        options.import.volumeInLots = isFirst;
    } else if (name == QLatin1String("--label")) {
        wrong = takeEither(value, "start", "end", isFirst);
        options.import.labelAtStart = isFirst;
    } else {
        wrong = takeEither(value, "file", "market", isFirst);
        options.import.sessionsFromFile = isFirst;
    }
    return wrong;
}

} // namespace

std::variant<LoadOptions, QString> parseLoadOptions(const QStringList &arguments) {
    static const QStringList kNames{QStringLiteral("--history"), QStringLiteral("--market"),
                                    QStringLiteral("--code"),    QStringLiteral("--columns"),
                                    QStringLiteral("--label"),   QStringLiteral("--volume-unit"),
                                    QStringLiteral("--sessions")};
    LoadOptions options;
    OptionWords words;
    QString wrong = words.take(arguments, kNames, [&options](const QString &name, const QString &value) {
        return takeLoadOption(name, value, options);
    });
    options.help = words.wantsHelp;
    options.files = words.others;
    if (wrong.isEmpty() && options.history.isEmpty() && !options.help) {
        wrong = QStringLiteral(
            "--history: the server is missing: give it as in postgres://loader@market:5432/history");
    }
    return wrong.isEmpty() ? std::variant<LoadOptions, QString>(options) : wrong;
}

QString loadHelp() {
    return QStringLiteral(
        "usage: timeshare-load --history URL [options] FILE...\n"
        "Loads files of minute bars, trades or snapshots into a server of history, for terminals that are "
        "started with\n"
        "--history; makes the tables and the role timeshare_reader where they are not there. Without files "
        "that is all.\n"
        "  --history URL              postgres://USER@HOST:PORT/DATABASE?sslmode=..., with commas between "
        "several\n"
        "                             HOST:PORT of a server and its standby; the password comes from\n"
        "                             TIMESHARE_HISTORY_PASSWORD, from the file that "
        "TIMESHARE_HISTORY_CREDENTIALS\n"
        "                             names, or from PGPASSFILE\n"
        "  --market WORD              market of the files, when they do not tell\n"
        "  --code CODE                code of their one instrument\n"
        "  --volume-unit lots|shares  unit of their volumes\n"
        "  --label start|end          whether a minute is labelled by its start or its end\n"
        "  --sessions market|file     whether days trade as the market does, or as the rows show\n"
        "  --columns LIST             which column is what\n"
        "  --help                     this text\n");
}

} // namespace terminal
