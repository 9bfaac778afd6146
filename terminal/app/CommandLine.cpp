#include "terminal/app/CommandLine.h"

#include "terminal/app/WindowSize.h"
#include "terminal/feed/FeedAddress.h"
#include "terminal/history/HistoryAddress.h"
#include "terminal/market/SimulatedClock.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QVector>

#include <algorithm>
#include <cmath>
#include <utility>

namespace terminal {
namespace {

constexpr int kSmallestSide = 160; ///< pixels, of a picture
constexpr int kLargestSide = 10000; ///< pixels
constexpr double kLargestRatio = 4.0;

struct CommandWords {
    Q_DECLARE_TR_FUNCTIONS(CommandLine)
};

/// One option: how it is written, what its value is, what it does, and how the value is taken in. The taker answers
/// an empty text, or what is wrong with the value.
struct Option {
    const char *name;
    const char *value; ///< null for a switch
    const char *what;
    QString (*take)(CommandLineOptions &options, const QString &value);
};

/// A message with a text of the user's in it stays one line.
QString oneLine(QString message) {
    for (QChar &c : message) {
        if (c.category() == QChar::Other_Control) {
            c = QLatin1Char(' ');
        }
    }
    return message;
}

QString takeSize(CommandLineOptions &options, const QString &value) {
    static const QRegularExpression pattern(QStringLiteral("^(\\d{1,6})[xX](\\d{1,6})$"));
    const QRegularExpressionMatch match = pattern.match(value);
    if (!match.hasMatch()) {
        return QStringLiteral("not of the form WIDTHxHEIGHT: give two numbers of pixels, as in 1200x700");
    }
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    if (std::min(size.width(), size.height()) < kSmallestSide ||
        std::max(size.width(), size.height()) > kLargestSide) {
        return QStringLiteral("outside %1 to %2 pixels a side: give a size within, as in 1200x700")
            .arg(kSmallestSide)
            .arg(kLargestSide);
    }
    options.size = size;
    options.isSizeGiven = true;
    return {};
}

QString takeRatio(CommandLineOptions &options, const QString &value) {
    bool ok = false;
    const double ratio = value.toDouble(&ok);
    if (!ok || !std::isfinite(ratio) || ratio < 1.0 || ratio > kLargestRatio) {
        return QStringLiteral("no number from 1 to %1: give device pixels per pixel, as in 2")
            .arg(kLargestRatio);
    }
    options.ratio = ratio;
    return {};
}

QString takeWall(CommandLineOptions &options, const QString &value) {
    bool ok = false;
    const int views = value.toInt(&ok);
    if (!ok || views < 1 || views > kMostWallViews) {
        return QStringLiteral("no number from 1 to %1: give the number of views, as in 16").arg(kMostWallViews);
    }
    options.wall = views;
    return {};
}

QString takeSpeed(CommandLineOptions &options, const QString &value) {
    bool ok = false;
    const double speed = value.toDouble(&ok);
    if (!ok || !(speed >= SimulatedClock::kSlowest && speed <= SimulatedClock::kFastest)) {
        return QStringLiteral("no number from %1 to %2: give market seconds a second, as in 60")
            .arg(SimulatedClock::kSlowest)
            .arg(SimulatedClock::kFastest);
    }
    options.speed = speed;
    return {};
}

QString takeDate(CommandLineOptions &options, const QString &value) {
    const QDate date = QDate::fromString(value, QStringLiteral("yyyy-MM-dd"));
    if (!date.isValid()) {
        return QStringLiteral("no date of the calendar: give year-month-day, as in 2026-11-19");
    }
    options.date = date;
    return {};
}

/// Takes one of two words; answers what is wrong when it is neither.
QString takeWord(const QString &value, const char *first, const char *second, bool &isFirst) {
    isFirst = value == QLatin1String(first);
    if (isFirst || value == QLatin1String(second)) {
        return {};
    }
    return QStringLiteral("unknown word: give %1 or %2").arg(QLatin1String(first), QLatin1String(second));
}

QString takeTheme(CommandLineOptions &options, const QString &value) {
    bool dark = false;
    const QString wrong = takeWord(value, "dark", "light", dark);
    options.appearance.theme = value;
    return wrong;
}

QString takeLanguage(CommandLineOptions &options, const QString &value) {
    bool chinese = false;
    const QString wrong = takeWord(value, "zh", "en", chinese);
    options.appearance.language = value;
    return wrong;
}

QString takeVolumeUnit(CommandLineOptions &options, const QString &value) {
    bool lots = false;
    const QString wrong = takeWord(value, "lots", "shares", lots);
    options.volumeInLots = lots;
    return wrong;
}

QString takeLabel(CommandLineOptions &options, const QString &value) {
    bool start = false;
    const QString wrong = takeWord(value, "start", "end", start);
    options.labelAtStart = start;
    return wrong;
}

QString takeSessions(CommandLineOptions &options, const QString &value) {
    return takeWord(value, "file", "market", options.sessionsFromFile);
}

template <QString CommandLineOptions::*member>
QString takeText(CommandLineOptions &options, const QString &value) {
    options.*member = value;
    return {};
}

QString takeInstrument(CommandLineOptions &options, const QString &value) {
    options.instrument = value.toUpper();
    return {};
}

QString takeImport(CommandLineOptions &options, const QString &value) {
    options.imports.append(value);
    return {};
}

QString takeFeed(CommandLineOptions &options, const QString &value) {
    options.feed = value;
    return addressFault(value);
}

QString takeHistory(CommandLineOptions &options, const QString &value) {
    options.history = value;
    return historyAddressFault(value);
}

QString takeHelp(CommandLineOptions &options, const QString &) {
    options.help = true;
    return {};
}

const QVector<Option> &table() {
    static const QVector<Option> options{
        {"--instrument", "KEY", QT_TRANSLATE_NOOP("CommandLine", "显示的证券，如 SH600000"), takeInstrument},
        {"--date", "DATE", QT_TRANSLATE_NOOP("CommandLine", "显示的交易日，如 2026-11-19；缺省为当日"),
         takeDate},
        {"--snapshot", "FILE", QT_TRANSLATE_NOOP("CommandLine", "把走势图写成 PNG 图片后退出，不需要显示器"),
         takeText<&CommandLineOptions::snapshot>},
        {"--size", "WxH", QT_TRANSLATE_NOOP("CommandLine", "窗口或图片的大小，缺省 1200x700"), takeSize},
        {"--ratio", "N", QT_TRANSLATE_NOOP("CommandLine", "每像素的设备像素数，1 至 4，缺省 1"), takeRatio},
        {"--wall", "N", QT_TRANSLATE_NOOP("CommandLine", "一个窗口中同时显示 N 个证券当日的走势，1 至 36"),
         takeWall},
        {"--theme", "dark|light", QT_TRANSLATE_NOOP("CommandLine", "配色，缺省为上次所选"), takeTheme},
        {"--language", "zh|en", QT_TRANSLATE_NOOP("CommandLine", "语言，缺省为上次所给，或按系统的语言"),
         takeLanguage},
        {"--import", "FILE", QT_TRANSLATE_NOOP("CommandLine", "导入分钟线、逐笔成交或快照文件；可以多次给出"),
         takeImport},
        {"--market", "WORD", QT_TRANSLATE_NOOP("CommandLine", "导入文件的市场，如 SH"),
         takeText<&CommandLineOptions::market>},
        {"--code", "CODE", QT_TRANSLATE_NOOP("CommandLine", "导入文件的证券代码，如 600519"),
         takeText<&CommandLineOptions::code>},
        {"--volume-unit", "lots|shares", QT_TRANSLATE_NOOP("CommandLine", "导入文件的成交量单位"),
         takeVolumeUnit},
        {"--label", "start|end", QT_TRANSLATE_NOOP("CommandLine", "导入文件的时间是一分钟的开始还是结束"),
         takeLabel},
        {"--sessions", "market|file",
         QT_TRANSLATE_NOOP("CommandLine", "导入的交易日按市场的交易时段，还是按文件中出现的时间"),
         takeSessions},
        {"--columns", "LIST",
         QT_TRANSLATE_NOOP("CommandLine",
                           "导入文件的列，如 datetime=时刻,open=2,high=3,low=4,close=5,volume=6"),
         takeText<&CommandLineOptions::columns>},
        {"--speed", "N", QT_TRANSLATE_NOOP("CommandLine", "模拟交易所的速度，每秒走过的市场秒数"), takeSpeed},
        {"--store", "FILE", QT_TRANSLATE_NOOP("CommandLine", "行情库文件；缺省在用户的数据目录中"),
         takeText<&CommandLineOptions::store>},
        {"--feed", "URL",
         QT_TRANSLATE_NOOP("CommandLine", "实时行情服务器，如 nats://market:4222；缺省为内置的模拟交易所"),
         takeFeed},
        {"--history", "URL",
         QT_TRANSLATE_NOOP("CommandLine", "历史行情服务器，如 postgres://reader@market:5432/history"),
         takeHistory},
        {"--help", nullptr, QT_TRANSLATE_NOOP("CommandLine", "显示本说明"), takeHelp},
    };
    return options;
}

const Option *findOption(const QString &name) {
    for (const Option &option : table()) {
        if (name == QLatin1String(option.name) || (name == QLatin1String("-h") && option.take == takeHelp)) {
            return &option;
        }
    }
    return nullptr;
}

QString unknownOption(const QString &name) {
    QStringList names;
    for (const Option &option : table()) {
        names.append(QLatin1String(option.name));
    }
    if (!name.startsWith(QLatin1Char('-'))) {
        return QStringLiteral("%1: unexpected argument, options begin with --: see --help").arg(name);
    }
    return QStringLiteral("%1: unknown option: did you mean %2? see --help")
        .arg(name, nearestTexts(name, names, 1).value(0));
}

} // namespace

ParsedCommandLine parseCommandLine(const QStringList &arguments) {
    CommandLineOptions options;
    for (int i = 0; i < arguments.size(); ++i) {
        const int equals =
            arguments[i].startsWith(QLatin1String("--")) ? arguments[i].indexOf(QLatin1Char('=')) : -1;
        const QString name = arguments[i].left(equals);
        const Option *option = findOption(name);
        if (!option) {
            return oneLine(unknownOption(name));
        }
        QString value;
        if (option->value && equals >= 0) {
            value = arguments[i].mid(equals + 1);
        } else if (option->value && i + 1 < arguments.size()) {
            value = arguments[++i];
        } else if (!option->value && equals >= 0) {
            return QStringLiteral("%1: takes no value: leave out what follows the =").arg(name);
        }
        if (option->value && (value.isEmpty() || findOption(value))) {
            return QStringLiteral("%1: the value is missing: give it as in %1 %2").arg(name, option->value);
        }
        const QString wrong = option->take(options, value);
        if (!wrong.isEmpty()) {
            const bool isSecret =
                option->take == takeFeed || option->take == takeHistory; // it may hold what nobody is to see
            return oneLine(isSecret ? QStringLiteral("%1: %2").arg(name, wrong)
                                    : QStringLiteral("%1 %2: %3").arg(name, value, wrong));
        }
    }
    if (options.wall > 0 && (options.date.isValid() || !options.snapshot.isEmpty())) {
        return QStringLiteral("--wall %1: shows the running day in a window: leave out --date and --snapshot")
            .arg(options.wall);
    }
    const bool tooSmall =
        options.size.width() < kSmallestWindow.width() || options.size.height() < kSmallestWindow.height();
    if (tooSmall && options.snapshot.isEmpty() && !options.help) {
        return QStringLiteral(
                   "--size %1x%2: no window is smaller than %3x%4: give a larger size, or --snapshot")
            .arg(options.size.width())
            .arg(options.size.height())
            .arg(kSmallestWindow.width())
            .arg(kSmallestWindow.height());
    }
    return options;
}

QString commandLineHelp() {
    QString text = CommandWords::tr("用法: timeshare-terminal [选项]") + QLatin1Char('\n');
    for (const Option &option : table()) {
        const QString written =
            option.value ? QStringLiteral("%1 %2").arg(QLatin1String(option.name), QLatin1String(option.value))
                         : QString::fromLatin1(option.name);
        text += QStringLiteral("  %1 %2\n").arg(written, -28).arg(CommandWords::tr(option.what));
    }
    return text;
}

int editDistance(const QString &a, const QString &b) {
    const QString s = a.toUpper();
    const QString t = b.toUpper();
    QVector<int> row(t.size() + 1);
    for (int j = 0; j <= t.size(); ++j) {
        row[j] = j;
    }
    for (int i = 1; i <= s.size(); ++i) {
        int diagonal = row[0];
        row[0] = i;
        for (int j = 1; j <= t.size(); ++j) {
            const int replaced = diagonal + (s[i - 1] == t[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, replaced});
        }
    }
    return row[t.size()];
}

QStringList nearestTexts(const QString &text, const QStringList &candidates, int count) {
    QVector<std::pair<int, QString>> ranked;
    for (const QString &candidate : candidates) {
        ranked.append({editDistance(text, candidate), candidate});
    }
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto &x, const auto &y) { return x.first < y.first; });
    QStringList nearest;
    for (int i = 0; i < ranked.size() && i < count; ++i) {
        nearest.append(ranked[i].second);
    }
    return nearest;
}

} // namespace terminal
