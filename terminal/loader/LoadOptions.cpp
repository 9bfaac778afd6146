#include "terminal/loader/LoadOptions.h"

#include "terminal/history/HistoryAddress.h"

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
    for (int i = 0; i < arguments.size(); ++i) {
        if (!arguments[i].startsWith(QLatin1String("--"))) {
            options.files.append(arguments[i]);
            continue;
        }
        const int equals = arguments[i].indexOf(QLatin1Char('='));
        const QString name = arguments[i].left(equals);
        if (name == QLatin1String("--help")) {
            options.help = true;
            return options;
        }
        if (!kNames.contains(name)) {
            return QStringLiteral("%1: unknown option: see --help").arg(name);
        }
        if (equals < 0 && i + 1 == arguments.size()) {
            return QStringLiteral("%1: the value is missing: see --help").arg(name);
        }
        const QString value = equals < 0 ? arguments[++i] : arguments[i].mid(equals + 1);
        const QString wrong = takeLoadOption(name, value, options);
        if (!wrong.isEmpty()) {
            return QStringLiteral("%1: %2").arg(name, wrong);
        }
    }
    if (options.history.isEmpty()) {
        return QStringLiteral(
            "--history: the server is missing: give it as in postgres://loader@market:5432/history");
    }
    return options;
}

QString loadHelp() {
    return QStringLiteral(
        "usage: timeshare-load --history URL [options] FILE...\n"
        "Loads files of minute bars, trades or snapshots into a server of history, for terminals that are "
        "started with\n"
        "--history; makes the tables and the role timeshare_reader where they are not there. Without files "
        "that is all.\n"
        "  --history URL              postgres://USER@HOST:PORT/DATABASE?sslmode=...; the password comes from\n"
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
