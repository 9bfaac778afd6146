// The smallest host: its own clock, instrument and series (Host.h), defaults for all else. It shows a past day and beside it
// the running one.

#include "Program.h"

#include <timeshare/host/services/DefaultServices.h>

int main(int argc, char **argv) {
    qputenv("TZ", "Asia/Shanghai"); // dates and clock minutes are the exchange's
    tzset();
    QApplication application(argc, argv);
    example::Market market;
    example::Clock clock(market);
    example::Stocks stocks;
    example::Series series(market);
    TC::CSingletonT<TC::CHostClock>::install(&clock);
    TC::CSingletonT<TC::CStockManager>::install(&stocks);
    TC::CSingletonT<TC::CFormulaManager>::install(&series);
    const TC::DefaultServices defaults;
    for (const std::string &name : TC::missingServices()) {
        qCritical("not installed: %s", name.c_str());
    }

    TC::CRealtimeMainWidget view(nullptr, TC::EIndexViewType::Ordinary);
    view.setStock(QStringLiteral("SH600000"), false);
    view.scaleView(false); // one more day
    view.request(false);
    return example::run(view, market, [&] { series.tellNewest(); });
}
