// A session at the terminal under a failing call: it starts, imports, trades, runs a model, changes the configuration
// and the view, and ends. What is acknowledged to the user is told on the standard output, a word a line. Argument: the
// folder with the store, "bars.csv", "orders.xls" and "model.py".

#include "terminal/app/BackgroundJob.h"
#include "terminal/app/ChartView.h"
#include "terminal/app/ImportJob.h"
#include "terminal/app/LogFile.h"
#include "terminal/app/ProgramGuard.h"
#include "terminal/app/TerminalServices.h"
#include "terminal/app/TerminalWindow.h"
#include "terminal/app/ThemeStyle.h"
#include "terminal/formula/ScriptModelProcess.h"
#include "terminal/market/MarketDate.h"

#include <QApplication>
#include <QSqlQuery>
#include <QTest>

#include <cstdio>
#include <functional>

using namespace terminal;

namespace {

constexpr int kPatience = 8000; ///< milliseconds

void tell(const char *word) {
    std::printf("%s\n", word);
    std::fflush(stdout);
}

void complain(const QString &line) {
    std::fprintf(stderr, "%s\n", line.toUtf8().constData());
}

class Session {
public:
    explicit Session(const QString &folder) : mFolder(folder) {}

    int run() {
        TerminalSettings settings;
        settings.store = path("market.db");
        settings.config = path("config.json");
        settings.formulas = path("formulas");
        settings.scripts = path("scripts");
        settings.start = timeOf(QDate(2026, 11, 20), 630);
        QString error;
        mServices = TerminalServices::open(settings, error);
        if (!mServices) {
            complain(error);
            return 2;
        }
        mServices->clock().pause();
        mWindow = std::make_unique<TerminalWindow>(*mServices);
        mWindow->show();
        mWindow->showInstrument(QStringLiteral("SH600000"), QDate(2026, 11, 19));
        if (QTest::qWaitFor([this] { return mWindow->view()->isComplete(); }, kPatience)) {
            tell("chart");
        }
        configure();
        importBars();
        importOrders();
        importDeal();
        runModel();
        runJob();
        mWindow->view()->setFormulaPanes(3);
        QTest::qWait(1); // whoever has to hear of it
        mWindow.reset();
        mServices->config().waitUntilWritten();
        const QStringList troubles = mServices->config().messages();
        complain(troubles.join('\n'));
        if (troubles.isEmpty()) {
            tell("view");
        }
        mServices.reset();
        tell("end");
        return 0;
    }

private:
    QString path(const char *name) const { return mFolder + QLatin1Char('/') + QLatin1String(name); }

    void configure() {
        mServices->config().setValue(QStringLiteral("fault"), QStringLiteral("configured"));
        if (mServices->config().waitUntilWritten() && mServices->config().messages().isEmpty()) {
            tell("configuration");
        }
    }
    void importBars() {
        ImportJob job(mServices->store(), path("bars.csv"), {});
        bool over = false;
        QObject::connect(&job, &ImportJob::finished, [&over] { over = true; });
        job.start();
        if (!QTest::qWaitFor([&over] { return over; }, kPatience)) {
            complain(QStringLiteral("the import did not come to its end"));
            tell("endless");
            return;
        }
        complain(job.outcome().error);
        if (job.outcome().isGood()) {
            tell("bars");
        }
    }
    /// A spreadsheet, which another process reads.
    void importOrders() {
        bool over = false;
        bool good = false;
        QObject::connect(&mServices->files(), &FileClient::sigReadFinished, mWindow.get(),
                         [&](int, bool isGood, const QString &text) {
                             over = true;
                             good = isGood;
                             complain(text);
                         });
        int seq = 0;
        int lines = 0;
        mServices->files().readFileByLine(seq, TC::EFileType::Spreadsheet, path("orders.xls"),
                                          [&lines](const QString &) { return ++lines; });
        if (!QTest::qWaitFor([&over] { return over; }, kPatience)) {
            complain(QStringLiteral("the spreadsheet did not come to its end"));
            tell("endless");
        }
        mServices->files().stop(); // the handlers refer to what is here
        if (good && lines == 4) {
            tell("spreadsheet");
        }
    }
    /// Acknowledged is what is in the store.
    void importDeal() {
        mServices->trade().importDeal("out", "SH600000", "4711", 10.0, 100,
                                      timeOf(QDate(2026, 11, 20), 575) / 1000, 48);
        const auto isStored = [this] {
            QSqlQuery query(mServices->store().connection());
            return query.exec("SELECT count(*) FROM trade_deals WHERE key = '4711'") && query.next() &&
                   query.value(0).toInt() == 1;
        };
        if (QTest::qWaitFor(isStored, kPatience / 4)) {
            tell("deal");
        }
    }
    void runModel() {
        ScriptModelCommand command{defaultPython(), path("model.py"), {}};
        QByteArray output;
        const ScriptModelExit exit = ScriptModelProcess().run(command, {}, [&output](const QByteArray &piece) {
            output += piece;
            return true;
        });
        if (exit.way == ScriptModelExit::Finished && output == "sound\n") {
            tell("model");
        }
    }

    /// As a dialog has it that works something out.
    void runJob() {
        BackgroundJob job;
        bool done = false;
        job.start([&done](BackgroundJob &) { done = true; });
        if (!QTest::qWaitFor([&job] { return !job.isRunning(); }, kPatience)) {
            tell("endless");
        }
        if (done != job.isUndone()) {
            tell(done ? "job" : "no-job");
        }
    }

    const QString mFolder;
    std::unique_ptr<TerminalServices> mServices;
    std::unique_ptr<TerminalWindow> mWindow;
};

} // namespace

int main(int argc, char **argv) {
    return runGuarded([&] {
        QApplication application(argc, argv);
        QApplication::setStyle(new ThemeStyle);
        const QString folder = QString::fromLocal8Bit(argc > 1 ? argv[1] : ".");
        complain(openLogFile(folder + QStringLiteral("/terminal.log")));
        const int status = Session(folder).run();
        closeLogFile();
        return status;
    });
}
