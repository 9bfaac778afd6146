#include "terminal/trade/DemoRoster.h"

#include "host/services/CLinkageManager.h"
#include "terminal/market/SimulatedInstruments.h"

#include <QHash>

namespace terminal {
namespace {

using kvservice::EOperationType;

const std::string kRoundTrip = "日内回转";
const std::string kReversion = "均值回归";
const std::string kSlicing = "TWAP拆单";
const std::string kArbitrage = "期现套利";
const std::string kTrend = "趋势跟踪";

const FeeSchedule kShareFees{0.00025, 5.0, 0.0005};
const FeeSchedule kFutureFees{0.000023, 0.0, 0.0};

DemoAccount steadyAccount() {
    DemoAccount account;
    account.account = {"80010001", "稳健一号", TC::CLinkageManager::kStockAccounts, TradeSource::Own};
    account.fees = kShareFees;
    account.cash = 5e6;
    account.holdings = {{QStringLiteral("SH600000"), 80000},
                        {QStringLiteral("SH600519"), 1000},
                        {QStringLiteral("SH510300"), 500000}};
    account.desks = {{QStringLiteral("SH600000"), kRoundTrip, 18, 100, 80},
                     {QStringLiteral("SH600000"), "", 4, 100, 50},
                     {QStringLiteral("SH600519"), kRoundTrip, 10, 100, 3},
                     {QStringLiteral("SH510300"), kArbitrage, 14, 100, 400}};
    account.tasks = {
        {kSlicing, {{QStringLiteral("SH600000"), EOperationType::Buy, 60000, 100}}, 0.10, 0.62},
        {kSlicing, {{QStringLiteral("SH510300"), EOperationType::Sell, 200000, 100}}, 0.55, 0.95},
    };
    return account;
}

DemoAccount quantAccount() {
    DemoAccount account;
    account.account = {"80020002", "量化二号", TC::CLinkageManager::kStockAccounts, TradeSource::Own};
    account.number = 1;
    account.fees = kShareFees;
    account.cash = 3e6;
    account.holdings = {{QStringLiteral("SH600000"), 90000},
                        {QStringLiteral("SZ000001"), 40000},
                        {QStringLiteral("SZ300750"), 4000},
                        {QStringLiteral("SH113050"), 600}};
    account.desks = {{QStringLiteral("SH600000"), kReversion, 14, 100, 60},
                     {QStringLiteral("SZ000001"), kReversion, 16, 100, 60},
                     {QStringLiteral("SZ300750"), kTrend, 12, 100, 8},
                     {QStringLiteral("SH113050"), "", 5, 10, 40}};
    account.tasks = {{kSlicing,
                      {{QStringLiteral("SH600000"), EOperationType::Sell, 40000, 100},
                       {QStringLiteral("SZ000001"), EOperationType::Buy, 35000, 100}},
                      0.22,
                      0.80}};
    return account;
}

DemoAccount futuresAccount() {
    DemoAccount account;
    account.account = {"90010001", "期货一号", TC::CLinkageManager::kFutureAccounts, TradeSource::Own};
    account.number = 2;
    account.fees = kFutureFees;
    account.cash = 6e6;
    account.marginRate = 0.12;
    account.desks = {{QStringLiteral("CFFEXIF2612"), kArbitrage, 14, 1, 3},
                     {QStringLiteral("SHFEAU2612"), kTrend, 18, 1, 5},
                     {QStringLiteral("SHFERB2701"), kReversion, 20, 1, 40}};
    account.tasks = {{kSlicing, {{QStringLiteral("SHFERB2701"), EOperationType::Buy, 600, 1}}, 0.45, 0.90}};
    return account;
}

} // namespace

const std::vector<DemoAccount> &demoAccounts() {
    static const std::vector<DemoAccount> accounts{steadyAccount(), quantAccount(), futuresAccount()};
    return accounts;
}

double contractMultiplier(const QString &instrument) {
    static const QHash<QString, double> multipliers = [] {
        QHash<QString, double> all;
        for (const SimulatedInstrument &simulated : simulatedInstruments()) {
            all[simulated.instrument.key()] = simulated.multiplier;
        }
        return all;
    }();
    return multipliers.value(instrument, 1.0);
}

} // namespace terminal
