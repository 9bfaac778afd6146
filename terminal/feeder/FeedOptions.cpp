#include "terminal/feeder/FeedOptions.h"

#include "terminal/feed/FeedAddress.h"
#include "terminal/market/SimulatedClock.h"
#include "terminal/servers/OptionWords.h"

namespace terminal {
namespace {

constexpr int kMostCopies = 5; ///< that a stream can have

/// Takes one value; answers what is wrong with it.
QString takeOption(const QString &name, const QString &value, FeedOptions &options) {
    if (name == QLatin1String("--server")) {
        options.server = value;
        return addressFault(value);
    }
    if (name == QLatin1String("--store")) {
        options.store = value;
        return {};
    }
    if (name == QLatin1String("--log")) {
        options.log = value;
        return {};
    }
    if (name == QLatin1String("--recorded")) {
        options.recorded = QDate::fromString(value, QStringLiteral("yyyy-MM-dd"));
        return options.recorded.isValid()
                   ? QString()
                   : QStringLiteral("no date of the calendar: give year-month-day, as in 2026-11-19");
    }
    if (name == QLatin1String("--start")) {
        options.start = QTime::fromString(value, QStringLiteral("hh:mm"));
        return options.start.isValid() ? QString()
                                       : QStringLiteral("no time of the clock: give one as in 09:25");
    }
    bool isNumber = false;
    if (name == QLatin1String("--copies")) {
        options.copies = value.toInt(&isNumber);
        return isNumber && options.copies >= 1 && options.copies <= kMostCopies
                   ? QString()
                   : QStringLiteral("no number from 1 to %1: give the servers that keep the stream, as in 3")
                         .arg(kMostCopies);
    }
    options.pace = value.toDouble(&isNumber);
    return isNumber && options.pace >= SimulatedClock::kSlowest && options.pace <= SimulatedClock::kFastest
               ? QString()
               : QStringLiteral("no number from %1 to %2: give market seconds a second, as in 60")
                     .arg(SimulatedClock::kSlowest)
                     .arg(SimulatedClock::kFastest);
}

} // namespace

std::variant<FeedOptions, QString> parseFeedOptions(const QStringList &arguments) {
    static const QStringList kNames{QStringLiteral("--server"), QStringLiteral("--store"),
                                    QStringLiteral("--log"),    QStringLiteral("--recorded"),
                                    QStringLiteral("--start"),  QStringLiteral("--pace"),
                                    QStringLiteral("--copies")};
    FeedOptions options;
    OptionWords words;
    QString wrong = words.take(arguments, kNames, [&options](const QString &name, const QString &value) {
        return takeOption(name, value, options);
    });
    options.help = words.wantsHelp;
    if (wrong.isEmpty() && !words.others.isEmpty() && !options.help) {
        wrong = QStringLiteral("%1: unknown option: see --help")
                    .arg(words.others.first().section(QLatin1Char('='), 0, 0));
    }
    return wrong.isEmpty() ? std::variant<FeedOptions, QString>(options) : wrong;
}

QString feedHelp() {
    return QStringLiteral(
        "usage: timeshare-feed [options]\n"
        "Publishes a running market over NATS, for terminals that are started with --feed.\n"
        "  --server URL       nats://HOST:PORT or tls://HOST:PORT, nats://127.0.0.1:4222 unless given, several "
        "of a\n"
        "                     cluster with commas between;\n"
        "                     credentials come from TIMESHARE_FEED_USER and TIMESHARE_FEED_PASSWORD, from\n"
        "                     TIMESHARE_FEED_TOKEN, or from the file that TIMESHARE_FEED_CREDENTIALS names\n"
        "  --store FILE       market store with the instruments and days; the feed's own unless given\n"
        "  --recorded DATE    plays that stored day instead of the simulated exchange\n"
        "  --start HH:MM      market time to start at; the opening auction unless given\n"
        "  --pace N           market seconds a second, 1 unless given\n"
        "  --copies N         servers of a cluster that keep the minutes, when the feed makes their stream; 1 "
        "unless given\n"
        "  --log FILE         sums and places; a feed that is started again goes on where its log ends\n"
        "  --help             this text\n");
}

} // namespace terminal
