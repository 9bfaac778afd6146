#include "terminal/app/Program.h"

#include "chartdata/RequestLog.h"
#include "host/toolkit/CUiResource.h"
#include "host/toolkit/QtCompat.h"
#include "terminal/app/ChartView.h"
#include "terminal/app/CommandLine.h"
#include "terminal/app/DefaultPaths.h"
#include "terminal/app/DialogState.h"
#include "terminal/app/FillBehind.h"
#include "terminal/app/ImportJob.h"
#include "terminal/app/LogFile.h"
#include "terminal/app/LogWatch.h"
#include "terminal/app/MemoryWatch.h"
#include "terminal/app/ProgramGuard.h"
#include "terminal/app/ProgressTeller.h"
#include "terminal/app/Snapshot.h"
#include "terminal/app/TerminalServices.h"
#include "terminal/app/TerminalWindow.h"
#include "terminal/app/ThemeStyle.h"
#include "terminal/app/Translations.h"
#include "terminal/app/WallWindow.h"
#include "terminal/config/ConfigService.h"
#include "terminal/formula/ScriptModelCatalogue.h"
#include "terminal/market/MarketDate.h"
#include "terminal/threads/SmallHeaps.h"

#include <QApplication>
#include <QFileInfo>
#include <QFont>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <langinfo.h>
#include <optional>

namespace terminal {
namespace {

constexpr int kBadInput = 2; ///< exit status
constexpr int kNearestDays = 3; ///< told beside a day without bars
constexpr std::chrono::milliseconds kStartWait{1500}; ///< for days of a server, before there is a window
constexpr std::chrono::milliseconds kSnapshotWait{20000};
const QString kDateFormat = QStringLiteral("yyyy-MM-dd");
const QString kProgram = QStringLiteral("timeshare-terminal");
const QString kLanguageField = QStringLiteral("language");

/// What the offscreen platform says of itself is of no use to anybody; all else goes to the standard error stream.
void onMessage(QtMsgType, const QMessageLogContext &, const QString &message) {
    if (!message.startsWith(QLatin1String("This plugin does not support"))) {
        std::fprintf(stderr, "%s\n", message.toUtf8().constData());
    }
}

int refuse(const QString &line) {
    std::fprintf(stderr, "timeshare-terminal: %s\n", line.toUtf8().constData());
    return kBadInput;
}

/// The language of messages, as the environment has it.
QByteArray languageOfEnvironment() {
    for (const char *name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
        const QByteArray value = qgetenv(name);
        if (!value.isEmpty()) {
            return value;
        }
    }
    return {};
}

void setUpProcess() {
    keepHeapsSmall();
    qputenv("TZ", "Asia/Shanghai");
    tzset();
    std::setlocale(LC_ALL, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) {
        qputenv("LANGUAGE", languageOfEnvironment()); // stays, whatever the locale
        qputenv("LC_ALL", "C.UTF-8"); // file names and the log are UTF-8
        std::setlocale(LC_ALL, "");
    }
}

/// What has to stand before the application object is made.
void setUpScreen(const CommandLineOptions &options) {
    const bool hasDisplay =
        !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if (!options.snapshot.isEmpty() || (!hasDisplay && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_FONT_DPI", "96"); // one picture on every machine
    }
    if (qEnvironmentVariableIsEmpty("QT_XCB_GL_INTEGRATION")) {
        qputenv("QT_XCB_GL_INTEGRATION",
                "none"); // nothing is drawn with it, and to load it takes a third of the start
    }
    if (options.ratio != 1.0) {
        qputenv("QT_SCALE_FACTOR", QByteArray::number(options.ratio));
        QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    }
    GZ::useHighDpiPixmaps();
}

void setUpLook() {
    std::setlocale(LC_NUMERIC, "C"); // documents are read and written with a point
    QApplication::setStyle(new ThemeStyle);
    QFont font(QStringLiteral("Noto Sans CJK SC"));
    font.setPixelSize(13);
    QApplication::setFont(font);
}

/// The language of the command line, the one kept, or the machine's.
Language chosenLanguage(const CommandLineOptions &options) {
    const QString word = options.appearance.language.isEmpty() ? keptValue(defaultConfigPath(), kLanguageField)
                                                               : options.appearance.language;
    return languageOf(word, machineLocale());
}

/// What the terminal starts with.
struct StartView {
    QString key; ///< of the instrument
    QDate day; ///< null while it is not chosen
};

/// Imports the files of the command line; the start becomes the last instrument of the last one. Answers what went
/// wrong.
QString importFiles(TerminalServices &services, const CommandLineOptions &options, StartView &start) {
    const ImportOptions choices{options.market,
                                options.code,
                                options.volumeInLots,
                                options.labelAtStart,
                                options.sessionsFromFile,
                                options.columns,
                                {}};
    for (const QString &path : options.imports) {
        ImportOutcome outcome;
        {
            ProgressTeller teller(QObject::tr("正在导入 %1").arg(QFileInfo(path).fileName()),
                                  options.snapshot.isEmpty());
            outcome = importMarketFile(services.store(), choices, path,
                                       [&teller](int done, int total) { return teller(done, total); });
        }
        for (const QString &line : leftOutTexts(outcome)) {
            std::fprintf(stderr, "%s\n", line.toUtf8().constData());
        }
        if (!outcome.isGood()) {
            return outcome.error;
        }
        if (!outcome.instruments.isEmpty()) {
            start = {outcome.instruments.last().key, dateOf(outcome.instruments.last().lastDay)};
            std::fprintf(stderr, "%s\n", importedText(outcome).toUtf8().constData());
        }
    }
    return {};
}

QString unknownInstrument(const TerminalServices &services, const QString &key) {
    return QStringLiteral("--instrument %1: unknown instrument: the nearest are %2")
        .arg(key, services.search().nearest(key, InstrumentSearch::kNearest).join(QStringLiteral(", ")));
}

/// One line for a day without bars, with the nearest that have some.
QString noTradingDay(TerminalServices &services, const QString &key, const QDate &date) {
    QVector<QDate> days = services.daysOf(key);
    std::stable_sort(days.begin(), days.end(), [&](const QDate &a, const QDate &b) {
        return std::abs(a.daysTo(date)) < std::abs(b.daysTo(date));
    });
    QStringList nearest;
    for (int i = 0; i < days.size() && i < kNearestDays; ++i) {
        nearest.append(days[i].toString(kDateFormat));
    }
    const Instrument *instrument = services.store().catalogue()->find(key);
    const bool trades = services.store().catalogue()->calendar(instrument->market).isTradingDay(date);
    return QStringLiteral("--date %1: %2 of %3: the nearest are %4")
        .arg(date.toString(kDateFormat),
             trades ? QStringLiteral("no bars are stored") : QStringLiteral("no trading day"), key,
             nearest.isEmpty() ? QStringLiteral("none") : nearest.join(QStringLiteral(", ")));
}

/// Writes the picture of a day; answers what went wrong.
QString snapshot(TerminalServices &services, const CommandLineOptions &options, const StartView &start) {
    const bool live = start.day == services.runningDayOf(start.key);
    while (!live && services.trade().recordPastDay()) { // a window shows them as they come
    }
    const bool isGuessed = services.isCloseGuessed(start.key, start.day);
    SnapshotSheet sheet(services.chartSources(),
                        isGuessed ? services.titleOf(start.key, start.day) : QString());
    sheet.resize(options.size);
    sheet.setAttribute(Qt::WA_DontShowOnScreen);
    sheet.show();
    ChartView &view = sheet.view();
    view.showTrades(true);
    view.setFormulaPanes(1);
    view.show(start.key, live ? QDate() : start.day);
    if (!waitForChart(view)) {
        return QStringLiteral("%1: no data arrived in time: try again").arg(start.key);
    }
    const QString trouble = services.trouble(); // a window has a line for it
    if (!trouble.isEmpty()) {
        std::fprintf(stderr, "timeshare-terminal: %s\n", trouble.toUtf8().constData());
    }
    return writePicture(sheet, options.snapshot);
}

/// The day to start with: that of the command line, of the import, the running one, or the newest stored one.
QString chooseDay(TerminalServices &services, const CommandLineOptions &options, StartView &start) {
    services.awaitHistory(start.key, options.date, options.snapshot.isEmpty() ? kStartWait : kSnapshotWait);
    const QVector<QDate> days = services.daysOf(start.key);
    if (options.date.isValid()) {
        start.day = options.date;
        if (services.isFillDue()) {
            return {}; // asked again when they are made
        }
        return days.contains(start.day) ? QString() : noTradingDay(services, start.key, start.day);
    }
    if (!start.day.isValid()) {
        const QDate running = services.runningDayOf(start.key);
        start.day = days.contains(running) ? running : days.value(0);
    }
    return {};
}

/// Makes the days that a first start lacks, behind its window. The status when the program ends with that.
std::optional<int> fillDays(TerminalServices &services, const CommandLineOptions &options, StartView &start,
                            const QWidget &window) {
    if (!services.isFillDue()) {
        return std::nullopt;
    }
    QString error = fillBehind(services);
    if (!window.isVisible()) {
        return 0; // it was closed meanwhile
    }
    error = error.isEmpty() ? chooseDay(services, options, start) : error;
    return error.isEmpty() ? std::nullopt : std::make_optional(refuse(error));
}

int showWall(TerminalServices &services, const CommandLineOptions &options, StartView start) {
    WallWindow wall(services, options.wall);
    wall.resize(options.size);
    wall.show();
    if (const auto status = fillDays(services, options, start, wall)) {
        return *status;
    }
    wall.showFrom(start.key);
    return QApplication::exec();
}

int showTerminal(TerminalServices &services, const CommandLineOptions &options, StartView start) {
    TerminalWindow window(services);
    if (options.isSizeGiven || !window.isPlaceRestored()) {
        window.resize(options.size);
    }
    if (!options.speed) {
        window.restorePace();
    }
    window.show();
    if (const auto status = fillDays(services, options, start, window)) {
        return *status;
    }
    const QString chosen = window.view()->instrument(); // while the days were made
    window.showInstrument(chosen.isEmpty() ? start.key : chosen, chosen.isEmpty() ? start.day : QDate());
    return QApplication::exec();
}

int showWindow(TerminalServices &services, const CommandLineOptions &options, const StartView &start,
               const QString &noLog) {
    if (!options.appearance.language.isEmpty()) {
        services.config().setValue(kLanguageField, options.appearance.language);
    }
    const LogWatch watch(&TC::lostLogLines, services.messages().sink());
    if (!noLog.isEmpty()) {
        services.messages().sink()({QObject::tr("日志"), 0, noLog});
    }
    const MemoryWatch memory(services.messages().sink());
    return options.wall > 0 ? showWall(services, options, start) : showTerminal(services, options, start);
}

TerminalSettings settingsOf(const CommandLineOptions &options) {
    TerminalSettings settings;
    settings.store = options.store;
    settings.config = defaultConfigPath();
    settings.formulas = defaultFormulaFolder();
    settings.scripts = defaultScriptFolder();
    settings.speed = options.speed.value_or(1.0);
    settings.feed = options.feed;
    settings.history = options.history;
    // What is to be read or imported before there is a window needs the days.
    settings.leavesFill = options.snapshot.isEmpty() && options.imports.isEmpty();
    return settings;
}

/// Opens the services; null, with the reason, when that fails.
std::unique_ptr<TerminalServices> openServices(const CommandLineOptions &options, QString &error) {
    const TerminalSettings settings = settingsOf(options);
    if (!copyMissingFiles(builtInScripts(), settings.scripts)) {
        qWarning("%s: the script models that come with the terminal could not be put there",
                 qPrintable(settings.scripts));
    }
    ProgressTeller teller(QObject::tr("正在生成行情库"), options.snapshot.isEmpty());
    return TerminalServices::open(settings, error, std::ref(teller));
}

/// The instrument to start with: that of the command line, of its imports, of the time before, or the first of all.
QString chooseInstrument(TerminalServices &services, const CommandLineOptions &options, StartView &start) {
    services.awaitHistory({}, {}, kStartWait); // instruments that only a server has
    if (!options.instrument.isEmpty()) {
        start = {services.search().exact(options.instrument), QDate()};
        return start.key.isEmpty() ? unknownInstrument(services, options.instrument) : QString();
    }
    if (start.key.isEmpty()) {
        start.key = services.search().exact(services.config().value(QStringLiteral("instrument")));
    }
    if (start.key.isEmpty()) {
        start.key = TC::getDetailQsKey(TC::CSingletonT<TC::CStockManager>::instance().getDefaultDetail());
    }
    return {};
}

QString chooseTheme(TerminalServices &services, const CommandLineOptions &options) {
    QString error;
    const QString theme = options.appearance.theme.isEmpty()
                              ? services.config().value(QStringLiteral("theme"), QStringLiteral("dark"))
                              : options.appearance.theme;
    return GZ::CUiResource::instance().setTheme(theme, &error) ? QString() : error;
}

/// `noLog` says why there is no log; empty when there is one.
int run(const CommandLineOptions &options, const QString &noLog) {
    QString error = options.snapshot.isEmpty() ? QString() : checkPicturePath(options.snapshot);
    if (!error.isEmpty()) {
        return refuse(QStringLiteral("--snapshot ") + error);
    }
    const std::unique_ptr<TerminalServices> services = openServices(options, error);
    if (!services) {
        return refuse(error);
    }
    StartView start;
    error = importFiles(*services, options, start);
    for (const auto choose : {&chooseInstrument, &chooseDay}) {
        error = error.isEmpty() ? choose(*services, options, start) : error;
    }
    error = error.isEmpty() ? chooseTheme(*services, options) : error;
    if (!error.isEmpty()) {
        return refuse(error);
    }
    if (options.snapshot.isEmpty()) {
        return showWindow(*services, options, start, noLog);
    }
    error = snapshot(*services, options, start);
    return error.isEmpty() ? 0 : refuse(QStringLiteral("--snapshot ") + error);
}

int runUnguarded(int argc, char **argv) {
    setUpProcess();
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.append(QString::fromUtf8(argv[i]));
    }
    const ParsedCommandLine parsed = parseCommandLine(arguments);
    if (const QString *wrong = std::get_if<QString>(&parsed)) {
        return refuse(*wrong);
    }
    const CommandLineOptions &options = std::get<CommandLineOptions>(parsed);
    if (options.help) {
        QCoreApplication texts(argc, argv);
        QCoreApplication::setApplicationName(kProgram);
        installLanguage(chosenLanguage(options));
        std::fputs(commandLineHelp().toUtf8().constData(), stdout);
        return 0;
    }
    setUpScreen(options);
    qInstallMessageHandler(onMessage);
    QTemporaryDir runtimeFolder;
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) {
        qputenv("XDG_RUNTIME_DIR", runtimeFolder.path().toLocal8Bit());
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName(kProgram);
    setUpLook();
    keepDialogStateIn(QFileInfo(defaultConfigPath()).path());
    if (!installLanguage(chosenLanguage(options))) {
        qWarning("the texts of the language could not be read");
    }
    const QString noLog = openLogFile(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
                                      QStringLiteral("/terminal.log"));
    if (!noLog.isEmpty()) {
        std::fprintf(stderr, "timeshare-terminal: %s\n", noLog.toUtf8().constData());
    }
    const int status = run(options, noLog);
    closeLogFile();
    return status;
}

} // namespace

int runTerminal(int argc, char **argv) {
    return runGuarded([&] { return runUnguarded(argc, argv); });
}

} // namespace terminal
