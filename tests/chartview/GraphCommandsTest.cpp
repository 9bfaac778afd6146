// The instrument of a graph, its overlays and accounts.

#include "host/windows/CSmartKeyboardDialog.h"
#include "tests/chartview/GraphFixture.h"

#include <QApplication>
#include <QMessageBox>
#include <QTimer>

namespace tests {
namespace {

class GraphCommands : public GraphFixture {
protected:
    GraphCommands() { mHost.mSectors.mAOfH.insert(QStringLiteral("HK00600"), QStringLiteral("SH600000")); }
    void makePaired() { makeGraph(TC::EIndexDisplayType::Main, {"REALTIME"}, TC::EIndexViewType::Paired); }
    void overlay(int count) {
        for (int i = 0; i < count; ++i) {
            const std::string code = "60000" + std::to_string(i + 1);
            mHost.mStocks.add("SH", code);
            mUi->addStock(QStringLiteral("SH") + QString::fromStdString(code), QString(), true);
        }
    }
    /// What the host is asked to overlay: the second argument and the key of each event.
    QList<QPair<int, QString>> asked() const {
        QList<QPair<int, QString>> all;
        for (const Event &event : mKeeper->of(209)) {
            EXPECT_EQ(event.first, 0);
            all.append({event.second, event.text});
        }
        return all;
    }
    /// Answers the next message box, and tells its title and text.
    static QStringList answeredBox(const std::function<void()> &action) {
        QStringList told;
        QTimer::singleShot(0, [&told] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            told = QStringList{box->windowTitle(), box->text()};
            box->accept();
        });
        action();
        return told;
    }
    const QStringList kLimit{QStringLiteral("提示"), QStringLiteral("已达到允许叠加最大限制数3!")};
};

TEST_F(GraphCommands, APairedViewOverlaysTheCounterpartInPlaceOfItsOverlays) {
    makePaired();
    overlay(1);
    mGraph->setStock(QStringLiteral("SH600000"), true);
    EXPECT_EQ(asked(), (QList<QPair<int, QString>>{{0, QString()}, {1, QStringLiteral("HK00600")}}));
}

TEST_F(GraphCommands, TheCounterpartOfAShareOfTheOtherMarketIsFoundToo) {
    makePaired();
    overlay(1);
    mGraph->setStock(QStringLiteral("HK00600"), true);
    EXPECT_EQ(asked().value(1).second, QStringLiteral("SH600000"));
}

TEST_F(GraphCommands, WithoutOverlaysNothingIsAskedFor) {
    makePaired();
    mGraph->setStock(QStringLiteral("SH600000"), true);
    EXPECT_TRUE(asked().isEmpty());
}

TEST_F(GraphCommands, AShareWithoutACounterpartOnlyLosesTheOverlays) {
    makePaired();
    overlay(1);
    mGraph->setStock(QStringLiteral("SZ000001"), true);
    EXPECT_EQ(asked(), (QList<QPair<int, QString>>{{0, QString()}}));
}

TEST_F(GraphCommands, TheSameInstrumentAgainChangesNothing) {
    makePaired();
    mGraph->setStock(QStringLiteral("SH600000"), false);
    overlay(1);
    mGraph->setStock(QStringLiteral("SH600000"), true);
    EXPECT_TRUE(asked().isEmpty());
}

TEST_F(GraphCommands, OverlaysGoWhenThePairingEnds) {
    makePaired();
    mGraph->setStock(QStringLiteral("SH600000"), true);
    overlay(1);
    mGraph->setStock(QStringLiteral("SZ000001"), false);
    EXPECT_EQ(asked(), (QList<QPair<int, QString>>{{0, QString()}}));
    mGraph->setStock(QStringLiteral("SH600000"), false); // it has ended before
    EXPECT_EQ(asked().size(), 1);
}

TEST_F(GraphCommands, AnyOtherViewKeepsItsOverlays) {
    makeMainGraph();
    overlay(1);
    mGraph->setStock(QStringLiteral("SH600000"), true);
    EXPECT_TRUE(asked().isEmpty());
}

TEST_F(GraphCommands, AFourthOverlayIsWarnedOf) {
    makeMainGraph();
    mGraph->setStock(QStringLiteral("SH600000"), false);
    overlay(3);
    EXPECT_EQ(answeredBox([this] { mGraph->slotOverlayAHStock(); }), kLimit);
    EXPECT_EQ(answeredBox([this] { mGraph->superposedStock(); }), kLimit);
    EXPECT_TRUE(asked().isEmpty());
}

TEST_F(GraphCommands, AnOverlayIsPickedInTheSmartKeyboard) {
    makeMainGraph();
    showGraph(300, 200);
    mGraph->superposedStock();
    TC::CSmartKeyboardDialog *keyboard = TC::CSmartKeyboardDialog::instance();
    EXPECT_TRUE(keyboard->isVisible());
    EXPECT_EQ(keyboard->windowTitle(), QStringLiteral("叠加品种"));
    keyboard->hide();
}

// Accounts

class GraphAccounts : public GraphCommands {
protected:
    void SetUp() override { makeMainGraph(); }
    void expectShown(const QList<QString> &stock, const QList<QString> &futures, bool accountView) const {
        EXPECT_EQ(mUi->mStockAccounts, stock);
        EXPECT_EQ(mUi->mFutureAccounts, futures);
        EXPECT_EQ((mUi->mLinkageFlags & 2) != 0, accountView);
        EXPECT_EQ(mUi->mLinkageFlags & 1, 1);
    }
    std::size_t told() const { return mKeeper->of(3163).size(); }
};

TEST_F(GraphAccounts, OneAccountIsShownAndTakenAway) {
    mGraph->updateLinkageData(QStringLiteral("a"), true);
    expectShown({"a"}, {}, true);
    mGraph->updateLinkageData(QStringLiteral("a"), false);
    expectShown({}, {}, false);
    EXPECT_EQ(told(), 2u);
}

TEST_F(GraphAccounts, OneThatIsListedAlreadyChangesNothing) {
    mUi->mFutureAccounts = {"a"};
    mGraph->updateLinkageData(QStringLiteral("a"), true);
    expectShown({}, {"a"}, false);
    EXPECT_EQ(told(), 0u);
}

TEST_F(GraphAccounts, SeveralAreAddedAndTakenTogether) {
    mUi->mStockAccounts = {"b"};
    mGraph->updateLinkageData(QStringLiteral("a,b"), true);
    expectShown({"b", "a"}, {}, true);
    mGraph->updateLinkageData(QStringLiteral("b,c"), false);
    expectShown({"a"}, {}, true);
    EXPECT_EQ(told(), 2u);
}

TEST_F(GraphAccounts, SeveralOfWhichAllAreListedAreToldAllTheSame) {
    mUi->mStockAccounts = {"a", "b"};
    mGraph->updateLinkageData(QStringLiteral("a,b"), true);
    expectShown({"a", "b"}, {}, true);
    EXPECT_EQ(told(), 1u);
}

TEST_F(GraphAccounts, AFutureHasAccountsOfItsOwn) {
    for (const char *market : {"DF", "DCE", "SF", "SHFE", "ZF", "CZCE", "IF", "CFFEX", "INE"}) {
        mDetail->mMarket = market;
        mGraph->updateLinkageData(QLatin1String(market), true);
    }
    EXPECT_TRUE(mUi->mStockAccounts.isEmpty());
    EXPECT_EQ(mUi->mFutureAccounts.size(), 9);
    mDetail->mMarket = "if"; // another word
    mGraph->updateLinkageData(QStringLiteral("s"), true);
    EXPECT_EQ(mUi->mStockAccounts, QList<QString>{"s"});
}

TEST_F(GraphAccounts, TheOtherListKeepsTheAccountViewOn) {
    mUi->mFutureAccounts = {"f"};
    mUi->mStockAccounts = {"a"};
    mGraph->updateLinkageData(QStringLiteral("a"), false);
    expectShown({}, {"f"}, true);
}

TEST_F(GraphAccounts, AListCountsAsItsAccountsTogether) {
    mGraph->updateLinkageData(QList<QString>{"a", "b"}, true);
    expectShown({"a", "b"}, {}, true);
    mGraph->updateLinkageData(QList<QString>{}, true);
    mGraph->updateLinkageData(QList<QString>{}, false);
    EXPECT_EQ(told(), 1u);
}

} // namespace
} // namespace tests
