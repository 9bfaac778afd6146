// Days of a server of history: read into an empty store, and out of it again. See history.py, which starts the server.

#include "terminal/history/ServerHistory.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketFill.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

using namespace terminal;

const QDate kDate(2025, 11, 21);

void print(const char *what, std::vector<double> times) {
    std::sort(times.begin(), times.end());
    std::printf("%s: median %.2f ms, 99 %% %.2f ms, most %.2f ms (%zu)\n", what, times[times.size() / 2],
                times[times.size() * 99 / 100], times.back(), times.size());
}

double milliseconds(const QElapsedTimer &timer) {
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// What went wrong, or nothing.
QString measure(CMarketStore &store, ServerHistory &history, int instruments) {
    std::vector<double> fetched;
    std::vector<double> cached;
    int taken = 0;
    for (int i = 0; i < instruments; ++i) {
        const QString key = QStringLiteral("SH%1").arg(600000 + i);
        const Instrument *instrument = store.catalogue()->find(key);
        QElapsedTimer timer;
        timer.start();
        const HistoryFailure failure = history.fetch(key, {dayOf(kDate)}, taken);
        fetched.push_back(milliseconds(timer));
        if (!failure.isNone() || taken != 1 || !instrument) {
            return QStringLiteral("%1: %2").arg(key, failure.reason);
        }
        timer.start();
        const size_t bars = store.bars(instrument->id, dayOf(kDate)).size();
        cached.push_back(milliseconds(timer));
        if (bars != 240) {
            return QStringLiteral("%1: %2 bars").arg(key).arg(bars);
        }
    }
    print("a day from the server into the store", fetched);
    print("the same day from the store", cached);
    return {};
}

} // namespace

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    HistoryAddress address;
    QString wrong = readHistoryAddress(arguments.value(1), address);
    const auto server = makePgHistoryServer(address);
    const QTemporaryDir folder;
    CMarketStore store;
    wrong = wrong.isEmpty() ? store.open(folder.filePath(QStringLiteral("history.db"))) : wrong;
    wrong = wrong.isEmpty() ? keepServedDays(store) : wrong;
    wrong = wrong.isEmpty() ? fillStore(store, timeOf(kDate, 600)) : wrong;
    if (wrong.isEmpty() && server) {
        ServerHistory history(store, *server);
        int taken = 0;
        wrong = history.takeInstruments(taken).reason;
        wrong = wrong.isEmpty() ? measure(store, history, arguments.value(2).toInt()) : wrong;
    }
    std::fprintf(stderr, "%s%s", qPrintable(wrong), wrong.isEmpty() ? "" : "\n");
    return wrong.isEmpty() ? 0 : 1;
}
