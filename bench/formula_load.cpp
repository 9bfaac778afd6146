// What the services of the terminal cost while a day runs: 80 series over 20 instruments at pace 1, streamed, in percent
// of one core. The figure is processor time of the whole process - exchange, formulas and delivery - so it holds on a
// busy machine too.
//
//     timeshare_formula_load [seconds, 10] [series, 80] [pace, 1]

#include "bench/BenchTerminal.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/IdGenerator.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <cstdlib>
#include <functional>

namespace {

using namespace terminal;

const char *const kFormulas[] = {"REALTIME", "REALTIMEVOL", "MACD", "KDJ"};

/// Lets the event loop run for a time, or until a condition holds.
void runFor(qint64 milliseconds, const std::function<bool()> &isDone = {}) {
    QElapsedTimer time;
    time.start();
    QTimer wake;
    wake.start(isDone ? 10 : 200);
    while (time.elapsed() < milliseconds && !(isDone && isDone())) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

struct Load {
    int histories = 0;
    int points = 0;
};

/// The formulas to ask for: those of the catalogue among the four.
QStringList knownFormulas() {
    auto &catalogue = TC::CSingletonT<TC::CFormulaOperateManager>::instance();
    QStringList names;
    for (const char *name : kFormulas) {
        if (catalogue.getFormula(QString::fromLatin1(name))) {
            names << QString::fromLatin1(name);
        }
    }
    return names;
}

TC::CFormulaParam makeParam(const Instrument &instrument, const QString &formula, int day) {
    auto &catalogue = TC::CSingletonT<TC::CFormulaOperateManager>::instance();
    const TC::CFormulaDetailPtr detail = catalogue.getFormula(formula);
    TC::CFormulaParam param;
    param.mRequestId = se::IdGenerator::genId(1, formula, instrument.code);
    param.mMarket = instrument.market;
    param.mCode = instrument.code;
    param.mFormulaName = detail->mFileName;
    param.mDataMode = 1;
    param.mDataDemand = 3;
    param.mPeriod = 60000;
    param.mStart = {day * 1000LL, 0};
    param.mEnd = {timeOf(dateOf(day), 900), 0};
    return param;
}

/// As many series as asked for, over the shares of the running day.
QVector<TC::CFormulaParam> makeParams(TerminalServices &services, int series) {
    const QStringList formulas = knownFormulas();
    QVector<TC::CFormulaParam> params;
    while (params.size() < series) {
        const int before = params.size();
        for (const Instrument &instrument : services.store().catalogue()->instruments) {
            const bool isChinese =
                instrument.market == QLatin1String("SH") || instrument.market == QLatin1String("SZ");
            for (const QString &formula : formulas) {
                if (isChinese && params.size() < series) {
                    const int day = services.exchange().runningDay(instrument.key());
                    params.append(makeParam(instrument, formula, day));
                }
            }
        }
        if (params.size() == before) {
            break;
        }
    }
    return params;
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TZ", "Asia/Shanghai");
    const QApplication application(argc, argv);
    const int seconds = argc > 1 ? std::atoi(argv[1]) : 10;
    const int series = argc > 2 ? std::atoi(argv[2]) : 80;
    const double pace = argc > 3 ? std::atof(argv[3]) : 1.0;

    const QTemporaryDir folder;
    const std::unique_ptr<TerminalServices> services = openBenchTerminal(folder, pace);
    if (!services) {
        return 1;
    }
    Load load;
    QVector<TC::CFormulaParam> params = makeParams(*services, series);
    const double opening = secondsOf(CLOCK_PROCESS_CPUTIME_ID);
    services->formulas().requestFormulas(
        params,
        [&load](const TC::FormulaMetaPtr &, const TC::FormulaResultPtr &, const QString &, int, const QString &,
                bool) { ++load.histories; },
        [&load](int, const QString &, const TC::FormulaInstantPtr &) { ++load.points; });
    runFor(60000, [&] { return load.histories >= params.size(); });
    std::printf("%d series of %s: first histories %.1f ms of processor time\n", params.size(),
                qPrintable(knownFormulas().join(QLatin1String(", "))),
                (secondsOf(CLOCK_PROCESS_CPUTIME_ID) - opening) * 1e3);

    load = {};
    QElapsedTimer time;
    time.start();
    const double before = secondsOf(CLOCK_PROCESS_CPUTIME_ID);
    runFor(seconds * 1000LL);
    const double used = secondsOf(CLOCK_PROCESS_CPUTIME_ID) - before;
    const double wall = double(time.nsecsElapsed()) / 1e9;
    std::printf(
        "%.1f s of real time at pace %g: %.3f s of processor time, %.2f %% of one core; %d points, %d whole "
        "series\n",
        wall, pace, used, used / wall * 100.0, load.points, load.histories);
    return 0;
}
