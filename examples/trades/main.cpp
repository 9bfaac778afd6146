// The user's trades on the chart: an account with orders and deals of the running day. Each deal comes a minute of the
// market after its order.

#include "Program.h"

#include <timeshare/host/services/CLinkageManager.h>
#include <timeshare/host/services/DefaultServices.h>

#include <boost/make_shared.hpp>

namespace {

const std::string kAccount = "1001";
const std::string kStock = "SH600000";

/// Orders at every fifteenth minute, bought and sold by turns.
class Trading : public TC::CLinkageManager {
public:
    explicit Trading(const example::Market &market) : mMarket(market) {}

    bool isEnabled() override { return true; }
    std::vector<std::string> getAccountIds(int type) override {
        return type == kStockAccounts ? std::vector<std::string>{kAccount} : std::vector<std::string>();
    }
    std::vector<boost::shared_ptr<kvservice::CAccountInfo>> getAccounts() override {
        const auto account = boost::make_shared<kvservice::CAccountInfo>();
        account->mAccountId = kAccount;
        account->mAccountName = "示例账户";
        return {account};
    }
    bool getAccounts(const QList<QString> &names, Keys &accounts) override {
        accounts.clear();
        if (names.contains(QString::fromStdString(kAccount))) {
            accounts.insert(kAccount);
        }
        return !accounts.empty();
    }
    Keys getStocks() override { return {kStock}; }
    Records<kvservice::COrderDetail> getOrderDetails(int date, const std::string &instrument,
                                                     const Keys &accounts) override {
        return isAsked(date, instrument, accounts) ? mOrders : Records<kvservice::COrderDetail>();
    }
    Records<kvservice::CDealDetail> getDealDetails(int date, const std::string &instrument,
                                                   const Keys &accounts) override {
        return isAsked(date, instrument, accounts) ? mDeals : Records<kvservice::CDealDetail>();
    }
    QString getUnitText(const std::string &, const std::string &) override { return QStringLiteral("股"); }

    /// Trades until the newest minute of the market, and tells of it.
    void goOn() {
        for (; mTraded < mMarket.minutes(); ++mTraded) {
            const TC::MinuteBar &bar = mMarket.today().bars()[static_cast<std::size_t>(mTraded)];
            if (mTraded % 15 == 7) {
                order(bar);
            } else if (mTraded % 15 == 8) {
                deal(bar);
            }
        }
        sigLinkageChanged({kStock}); // on any thread
    }

private:
    static bool isAsked(int date, const std::string &instrument, const Keys &accounts) {
        return date == example::kToday && instrument == kStock && accounts.count(kAccount) > 0;
    }
    static std::string clockOf(const TC::MinuteBar &bar) {
        return QTime(0, 0)
            .addSecs(static_cast<int>(bar.mEnd / 1000 - example::kToday))
            .toString("hh:mm:ss")
            .toStdString();
    }
    int direction() const { return mTraded / 15 % 2 == 0 ? 48 : 49; } ///< 48 buys, 49 sells
    std::string key() const { return std::to_string(mTraded / 15); }

    void order(const TC::MinuteBar &bar) {
        const auto order = boost::make_shared<kvservice::COrderDetail>();
        order->mOrderKey = key();
        order->mAccount = kAccount;
        order->mStockKey = kStock;
        order->mDirection = direction();
        order->mPrice = bar.mClose;
        order->mVolume = 500;
        order->mTime = clockOf(bar);
        mOrders[kAccount][order->mOrderKey] = order;
    }
    void deal(const TC::MinuteBar &bar) {
        const auto deal = boost::make_shared<kvservice::CDealDetail>();
        deal->mDealKey = key();
        deal->mAccount = kAccount;
        deal->mStockKey = kStock;
        deal->mDirection = direction();
        deal->mPrice = bar.mClose;
        deal->mVolume = 500;
        deal->mAmount = deal->mPrice * deal->mVolume;
        deal->mTime = clockOf(bar);
        mDeals[kAccount][deal->mDealKey] = deal;
    }

    const example::Market &mMarket;
    int mTraded = 0; ///< minutes
    Records<kvservice::COrderDetail> mOrders;
    Records<kvservice::CDealDetail> mDeals;
};

} // namespace

int main(int argc, char **argv) {
    qputenv("TZ", "Asia/Shanghai");
    tzset();
    QApplication application(argc, argv);
    example::Market market;
    example::Clock clock(market);
    example::Stocks stocks;
    Trading trading(market);
    example::Series series(market);
    TC::CSingletonT<TC::CHostClock>::install(&clock);
    TC::CSingletonT<TC::CStockManager>::install(&stocks);
    TC::CSingletonT<TC::CFormulaManager>::install(&series);
    TC::CSingletonT<TC::CLinkageManager>::install(&trading);
    const TC::DefaultServices defaults;

    TC::CRealtimeMainWidget view(nullptr, TC::EIndexViewType::Ordinary);
    view.setStock(QStringLiteral("SH600000"), false);
    view.request(false);
    view.updateLinkageData(QList<QString>{QString::fromStdString(kAccount)},
                           true); // the trades of this account
    trading.goOn();
    return example::run(view, market, [&] {
        series.tellNewest();
        trading.goOn();
    });
}
