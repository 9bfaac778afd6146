#include "terminal/trade/DemoWallet.h"

#include "tests/terminal/Samples.h"

#include <gtest/gtest.h>

using namespace terminal;
using tests::kBond;
using tests::kShare;
using tests::kSteelFuture;

namespace {

Catalogue market() {
    Catalogue catalogue;
    const auto add = [&](const QString &key, InstrumentKind kind) { catalogue.instruments[key].kind = kind; };
    add(kShare, InstrumentKind::Stock);
    add(kBond, InstrumentKind::ConvertibleBond);
    add(kSteelFuture, InstrumentKind::Future);
    return catalogue;
}

DemoAccount shares(double cash) {
    DemoAccount account;
    account.account.type = 2;
    account.cash = cash;
    account.fees = {0.00025, 5.0, 0.0005};
    account.desks = {{kShare, "", 1, 100, 1}, {kBond, "", 1, 10, 1}};
    account.holdings = {{kShare, 700}};
    return account;
}

DemoAccount futures(double cash) {
    DemoAccount account;
    account.account.type = 1;
    account.cash = cash;
    account.fees = {0.0001, 0.0, 0.0};
    account.marginRate = 0.1;
    account.desks = {{kSteelFuture, "", 1, 1, 1}};
    return account;
}

TradeOrder walletOrder(const QString &instrument, int direction, double price, int volume) {
    TradeOrder made;
    made.instrument = instrument.toStdString();
    made.direction = direction;
    made.price = price;
    made.volume = volume;
    return made;
}

/// Fits an order and sets aside what it needs.
TradeOrder placed(DemoWallet &wallet, TradeOrder made, int lot) {
    wallet.fit(made, lot);
    wallet.setAside(made, lot);
    return made;
}

void fill(DemoWallet &wallet, TradeOrder &of, int lot, double price, int volume, double commission) {
    TradeDeal deal;
    deal.instrument = of.instrument;
    deal.direction = of.direction;
    deal.offset = of.offset;
    deal.price = price;
    deal.volume = volume;
    deal.commission = commission;
    wallet.settle(of, deal, lot);
    of.traded += volume;
}

} // namespace

TEST(DemoWallet, PurchaseSetsAsideItsLimitAndTheDearestCommission) {
    DemoWallet wallet(shares(10000.0), market());
    // A lot at 9.90 can cost 990 and the least commission, 5: ten lots are covered.
    TradeOrder buy = placed(wallet, walletOrder(kShare, kBuy, 9.90, 5000), 100);
    EXPECT_EQ(buy.volume, 1000);
    EXPECT_EQ(buy.offset, 0);
    EXPECT_NEAR(wallet.cash(), 50.0, 1e-9);
    fill(wallet, buy, 100, 9.80, 300, 5.0);
    EXPECT_NEAR(wallet.cash(), 50.0 + 3 * 995.0 - 2940.0 - 5.0, 1e-9);
    wallet.release(buy, 100);
    EXPECT_NEAR(wallet.cash(), 10000.0 - 2940.0 - 5.0, 1e-9);
}

TEST(DemoWallet, OrderIsCutToWholeLots) {
    DemoWallet wallet(shares(3000.0), market());
    TradeOrder buy = walletOrder(kShare, kBuy, 9.90, 250);
    wallet.fit(buy, 100);
    EXPECT_EQ(buy.volume, 200);
    TradeOrder dear = walletOrder(kShare, kBuy, 40.0, 100);
    wallet.fit(dear, 100);
    EXPECT_EQ(dear.volume, 0);
}

TEST(DemoWallet, SaleSetsAsideWhatIsHeld) {
    DemoWallet wallet(shares(0.0), market());
    TradeOrder sale = placed(wallet, walletOrder(kShare, kSell, 10.0, 5000), 100);
    EXPECT_EQ(sale.volume, 700);
    EXPECT_EQ(placed(wallet, walletOrder(kShare, kSell, 10.0, 100), 100).volume, 0);
    fill(wallet, sale, 100, 10.0, 200, 6.0);
    EXPECT_NEAR(wallet.cash(), 1994.0, 1e-9);
    wallet.release(sale, 100);
    EXPECT_EQ(placed(wallet, walletOrder(kShare, kSell, 10.0, 5000), 100).volume, 500);
}

TEST(DemoWallet, BondsOfTheDayMayBeSoldAndSharesNot) {
    DemoWallet wallet(shares(1e6), market());
    TradeOrder share = placed(wallet, walletOrder(kShare, kBuy, 10.0, 300), 100);
    fill(wallet, share, 100, 10.0, 300, 5.0);
    EXPECT_EQ(placed(wallet, walletOrder(kShare, kSell, 10.0, 5000), 100).volume, 700);
    EXPECT_EQ(placed(wallet, walletOrder(kBond, kSell, 120.0, 50), 10).volume, 0);
    TradeOrder bond = placed(wallet, walletOrder(kBond, kBuy, 120.0, 30), 10);
    EXPECT_EQ(placed(wallet, walletOrder(kBond, kSell, 120.0, 50), 10).volume, 0) << "not while it rests";
    fill(wallet, bond, 10, 120.0, 20, 5.0);
    EXPECT_EQ(placed(wallet, walletOrder(kBond, kSell, 120.0, 50), 10).volume, 20);
}

TEST(DemoWallet, FutureIsOpenedOnMarginAndClosedWithItsGain) {
    DemoWallet wallet(futures(100000.0), market());
    TradeOrder much = walletOrder(kSteelFuture, kBuy, 3000.0, 100);
    wallet.fit(much, 1);
    EXPECT_EQ(much.volume, 33); // a contract needs 3000 of margin and 3 of commission
    EXPECT_EQ(much.offset, kOpening);
    TradeOrder buy = placed(wallet, walletOrder(kSteelFuture, kBuy, 3000.0, 10), 1);
    EXPECT_NEAR(wallet.cash(), 100000.0 - 30030.0, 1e-9);
    fill(wallet, buy, 1, 2990.0, 10, 29.9);
    EXPECT_NEAR(wallet.cash(), 100000.0 - 29900.0 - 29.9, 1e-9);
    EXPECT_EQ(wallet.closable(kSteelFuture.toStdString(), false), 10);
    EXPECT_EQ(wallet.closable(kSteelFuture.toStdString(), true), 0);
    TradeOrder sale = placed(wallet, walletOrder(kSteelFuture, kSell, 3100.0, 50), 1);
    EXPECT_EQ(sale.volume, 10);
    EXPECT_EQ(sale.offset, kClosing);
    fill(wallet, sale, 1, 3100.0, 4, 12.4);
    // Four of ten contracts: margin of 119600 at 10 per cent, and 124000 - 119600 of gain.
    EXPECT_NEAR(wallet.cash(), 70070.1 + 11960.0 + 4400.0 - 12.4, 1e-6);
    EXPECT_EQ(wallet.closable(kSteelFuture.toStdString(), false), 0);
    wallet.release(sale, 1);
    EXPECT_EQ(wallet.closable(kSteelFuture.toStdString(), false), 6);
}

TEST(DemoWallet, ShortPositionGainsWhenThePriceFalls) {
    DemoWallet wallet(futures(100000.0), market());
    TradeOrder much = walletOrder(kSteelFuture, kSell, 3000.0, 100);
    wallet.fit(much, 1);
    EXPECT_EQ(much.volume, 30); // a sale may trade a tenth higher: 3303.30 a contract
    TradeOrder sale = placed(wallet, walletOrder(kSteelFuture, kSell, 3000.0, 2), 1);
    EXPECT_EQ(sale.offset, kOpening);
    EXPECT_NEAR(wallet.cash(), 100000.0 - 6606.6, 1e-9);
    fill(wallet, sale, 1, 3000.0, 2, 6.0);
    EXPECT_NEAR(wallet.cash(), 100000.0 - 6000.0 - 6.0, 1e-9);
    TradeOrder buy = placed(wallet, walletOrder(kSteelFuture, kBuy, 2900.0, 5), 1);
    EXPECT_EQ(buy.volume, 2);
    EXPECT_EQ(buy.offset, kClosing);
    fill(wallet, buy, 1, 2900.0, 2, 5.8);
    EXPECT_NEAR(wallet.cash(), 100000.0 - 6.0 + 2000.0 - 5.8, 1e-9);
    EXPECT_EQ(wallet.closable(kSteelFuture.toStdString(), true), 0);
}

TEST(DemoWallet, InstrumentThatIsNotHeldIsNotSold) {
    DemoWallet wallet(shares(1e6), market());
    TradeOrder sale = walletOrder(QStringLiteral("SZ000001"), kSell, 10.0, 100);
    wallet.fit(sale, 100);
    EXPECT_EQ(sale.volume, 0);
    EXPECT_EQ(wallet.closable("SH600000", true), 0) << "shares are sold, not closed";
}
