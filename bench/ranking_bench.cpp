// The ranking of 5 000 instruments over a stretch: the whole day of 241 minutes, and half an hour of it.

#include "host/services/CHostClock.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketWriter.h"
#include "terminal/market/SimulatedExchange.h"
#include "terminal/market/StageRanking.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace {

using namespace terminal;

constexpr int kInstruments = 5000;
const QDate kDay(2025, 3, 24);

[[noreturn]] void fail(const QString &what) {
    std::fprintf(stderr, "%s\n", qPrintable(what));
    std::exit(1);
}

MinuteBars barsOf(int instrument) {
    MinuteBars bars;
    for (int minute = 570; minute <= 900; minute += minute == 690 ? 91 : 1) {
        MinuteBar bar;
        bar.time = timeOf(kDay, minute);
        bar.price = 10.0 + 0.01 * ((instrument * 7 + minute * 13) % 100);
        bar.open = bar.high = bar.low = bar.average = bar.price;
        bar.volume = 100.0 * (1 + (instrument + minute) % 50);
        bar.amount = bar.volume * bar.price;
        bars.push_back(bar);
    }
    return bars;
}

void fill(CMarketStore &store) {
    MarketWriter writer(store);
    for (int i = 0; i < kInstruments; ++i) {
        Instrument instrument;
        instrument.market = i % 2 ? QStringLiteral("SZ") : QStringLiteral("SH");
        instrument.code = QStringLiteral("%1").arg(100000 + i);
        instrument.name = instrument.code;
        const qint64 row = writer.putInstrument(instrument);
        if (row == 0 || !writer.putDay(row, dayOf(kDay), BarSource::Imported, barsOf(i))) {
            fail(writer.error());
        }
    }
    if (!writer.commit()) {
        fail(writer.error());
    }
}

void rankAndTell(CMarketStore &store, SimulatedExchange &exchange, const char *what, int from, int to) {
    QElapsedTimer timer;
    timer.start();
    QVector<StageRow> rows = stageRows(store, exchange, timeOf(kDay, from), timeOf(kDay, to));
    rankStage(rows, eStageChangeRatio);
    std::printf("%-12s %6d instruments %8.3f s\n", what, rows.size(),
                static_cast<double>(timer.nsecsElapsed()) / 1e9);
}

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    CMarketStore store;
    const QString trouble = store.open(folder.filePath(QStringLiteral("market.db")));
    if (!trouble.isEmpty()) {
        fail(trouble);
    }
    fill(store);
    SimulatedClock clock(timeOf(kDay, 960), 1.0);
    TC::CSingletonT<TC::CHostClock>::install(&clock);
    SimulatedExchange exchange(store, clock);
    for (int run = 0; run < 3; ++run) {
        rankAndTell(store, exchange, "whole day", 570, 900);
        rankAndTell(store, exchange, "half an hour", 600, 630);
    }
    return 0;
}
