// The market store: the first fill, and imports into the store that it left.

#include "terminal/market/FileImporter.h"
#include "terminal/market/MarketDate.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTextStream>

#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

using namespace terminal;

[[noreturn]] void fail(const QString &what) {
    std::fprintf(stderr, "%s\n", qPrintable(what));
    std::exit(1);
}

double seconds(const QElapsedTimer &timer) {
    return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

/// The clock of a trade, n hundredths of a second into the 14400 seconds of a share's day.
QString clockOf(int hundredths) {
    const int second = hundredths / 100;
    const int sinceMidnight = second < 7200 ? 34200 + second : 46800 + second - 7200;
    return QStringLiteral("%1:%2:%3.%4")
        .arg(sinceMidnight / 3600, 2, 10, QLatin1Char('0'))
        .arg(sinceMidnight / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(sinceMidnight % 60, 2, 10, QLatin1Char('0'))
        .arg(hundredths % 100 * 10, 3, 10, QLatin1Char('0'));
}

/// Writes rows of ten instruments, a day each.
void writeTicks(const QString &path, int rows, bool snapshots) {
    constexpr int kInstruments = 10;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        fail(file.errorString());
    }
    QTextStream text(&file);
    text << (snapshots ? "symbol,date,time,last,total_volume,total_turnover,high,low\n"
                       : "symbol,datetime,price,volume\n");
    const int each = rows / kInstruments;
    for (int instrument = 0; instrument < kInstruments; ++instrument) {
        for (int i = 0; i < each; ++i) {
            const QString clock = clockOf(static_cast<int>(1440000LL * i / each));
            const QString price = QString::number(20.0 + 0.01 * (i / 100 % 150), 'f', 2);
            if (snapshots) {
                text << 600900 + instrument << ".SH,2025-03-24," << clock << ',' << price << ','
                     << 100LL * (i + 1) << ',' << 2075LL * (i + 1) << ",21.49,20.00\n";
            } else {
                text << 600910 + instrument << ".SH,2025-03-24 " << clock << ',' << price << ','
                     << 100 * (1 + i % 9) << '\n';
            }
        }
    }
}

/// Writes minute bars of so many instruments, one after the other, as many rows each.
void writeBars(const QString &path, int rows, int instruments) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        fail(file.errorString());
    }
    QTextStream text(&file);
    text << "symbol,datetime,open,high,low,close,volume,amount\n";
    for (int instrument = 0; instrument < instruments; ++instrument) {
        int left = rows / instruments;
        for (QDate day(1990, 1, 1); left > 0; day = day.addDays(1)) {
            for (int minute = 571; minute <= 900 && left > 0; minute += minute == 690 ? 91 : 1, --left) {
                text << 200000 + instrument << ".SH," << day.toString(Qt::ISODate) << ' '
                     << QStringLiteral("%1:%2")
                            .arg(minute / 60, 2, 10, QLatin1Char('0'))
                            .arg(minute % 60, 2, 10, QLatin1Char('0'))
                     << ",10.01,10.22,9.93,10.1" << minute % 10 << ",1234500,12468450.25\n";
            }
        }
    }
}

void importAndTell(CMarketStore &store, const char *what, const QString &path) {
    QElapsedTimer timer;
    timer.start();
    const std::clock_t before = std::clock();
    const ImportOutcome outcome = importMarketFile(store, {}, path);
    const double time = seconds(timer);
    const double processor = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
    if (!outcome.isGood()) {
        fail(outcome.error);
    }
    std::printf("%-14s %8d rows in %6.2f s: %8.0f rows a second, %8.0f a second of processor time\n", what,
                outcome.rows, time, outcome.rows / time, outcome.rows / processor);
    QFile::remove(path);
}

} // namespace

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    const int rows = argc > 1 ? std::atoi(argv[1]) : 2000000;
    const QTemporaryDir folder;
    CMarketStore store;
    QElapsedTimer timer;
    timer.start();
    QString trouble = store.open(folder.filePath("market.db"));
    trouble = trouble.isEmpty() ? fillStore(store, timeOf(QDate(2026, 11, 20), 630)) : trouble;
    if (!trouble.isEmpty()) {
        fail(trouble);
    }
    std::printf("first fill in %.2f s, %.1f MB\n", seconds(timer),
                static_cast<double>(QFileInfo(store.path()).size()) / 1e6);
    writeTicks(folder.filePath("trades.csv"), rows, false);
    importAndTell(store, "trades", folder.filePath("trades.csv"));
    writeTicks(folder.filePath("snapshots.csv"), rows, true);
    importAndTell(store, "snapshots", folder.filePath("snapshots.csv"));
    for (const int instruments : {1, 1000, 20000}) {
        CMarketStore own; // so that none of them finds the rows of another
        const QString path = folder.filePath(QStringLiteral("%1.db").arg(instruments));
        trouble = own.open(path);
        if (!trouble.isEmpty()) {
            fail(trouble);
        }
        writeBars(folder.filePath("bars.csv"), rows, instruments);
        importAndTell(own, qPrintable(QStringLiteral("bars of %1").arg(instruments)),
                      folder.filePath("bars.csv"));
    }
    return 0;
}
