// The dialog of the user's trades in the terminal: opened, followed by the chart, filled from files, remembered.

#include "tests/integration/TerminalFixture.h"
#include "tests/support/MessageGuard.h"

#include "host/toolkit/CCheckBox.h"
#include "host/toolkit/CSmallNoNormalButton.h"
#include "host/toolkit/CStandardTable.h"
#include "linkage/CRealtimeLinkageSettingDialog.h"
#include "terminal/config/SavedView.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QThread>
#include <QTimer>

namespace {

using TC::CRealtimeLinkageSettingDialog;

/// Said in the log when a file begins with a heading.
const QString kHeadingLeftOut = QStringLiteral("import: 1 trade records are left out");

class TradeDetailsTest : public tests::TerminalFixture {
protected:
    const int mDay = terminal::dayOf(mToday);

    void SetUp() override {
        TerminalFixture::SetUp();
        start();
    }
    void start() {
        mWindow->setTradesShown(false);
        ASSERT_TRUE(mWindow->showInstrument("SH600000"));
        ASSERT_TRUE(waitUntilComplete());
    }
    CRealtimeLinkageSettingDialog *dialog() { return mWindow->findChild<CRealtimeLinkageSettingDialog *>(); }
    void openByKey() {
        QTest::keyClick(mWindow.get(), Qt::Key_E, Qt::ControlModifier);
        ASSERT_TRUE(dialog());
        ASSERT_TRUE(dialog()->isVisible());
        dialog()->slotTimeout();
    }
    template <class Control> Control *control(int id) {
        for (Control *found : dialog()->findChildren<Control *>()) {
            if (found->id() == id && found->objectName().isEmpty()) {
                return found;
            }
        }
        return nullptr;
    }
    GZ::CCheckBox *box(int id) { return control<GZ::CCheckBox>(id); }
    GZ::CStandardTable *table(int id) {
        for (GZ::CStandardTable *found : dialog()->findChildren<GZ::CStandardTable *>()) {
            if (found->getID() == id) {
                return found;
            }
        }
        return nullptr;
    }
    /// Checks or unchecks the row with a text in a column.
    void toggle(int tableId, int column, const char *text) {
        for (int row = 0; row < table(tableId)->rowCount(); ++row) {
            if (table(tableId)->textAt(row, column) == QString::fromUtf8(text)) {
                click(table(tableId)->widgetAt(row, 0));
                return;
            }
        }
        FAIL() << text;
    }
    static void click(QWidget *on) {
        QTest::mouseClick(on, Qt::LeftButton, Qt::NoModifier, QPoint(6, on->height() / 2));
    }
    QString write(const char *name, const QByteArray &content) {
        QFile file(mFolder.path() + '/' + name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }
    /// Presses a button of imports, gives the file dialog a path, and waits until the file is read.
    void import(int buttonId, const QString &path) {
        QTimer answer;
        QObject::connect(&answer, &QTimer::timeout, mWindow.get(), [&] {
            auto *asked = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            if (asked && QThread::currentThread()->loopLevel() > 0) { // before its loop runs nothing is heard
                answer.stop();
                asked->findChild<QLineEdit *>("fileNameEdit")->setText(path);
                QMetaObject::invokeMethod(asked, "accept");
            }
        });
        answer.start(0);
        auto *pressed = control<GZ::CSmallNoNormalButton>(buttonId);
        click(pressed);
        EXPECT_FALSE(pressed->isEnabled());
        EXPECT_TRUE(QTest::qWaitFor([&] { return pressed->isEnabled(); }, 10000));
    }
    template <class Record>
    static size_t countOf(const std::map<std::string, std::map<std::string, Record>> &records) {
        size_t found = 0;
        for (const auto &account : records) {
            found += account.second.size();
        }
        return found;
    }
    size_t ordersOf(const std::string &account) {
        return countOf(mServices->trade().getOrderDetails(mDay, "SH600000", {account}));
    }
    size_t dealsOf(const std::string &account) {
        return countOf(mServices->trade().getDealDetails(mDay, "SH600000", {account}));
    }
};

TEST_F(TradeDetailsTest, ButtonAndKeyOpenIt) {
    EXPECT_FALSE(dialog());
    QTest::mouseClick(mWindow->findChild<QPushButton *>("trade_details"), Qt::LeftButton);
    ASSERT_TRUE(dialog());
    EXPECT_TRUE(dialog()->isVisible());
    dialog()->close();
    QTest::keyClick(mWindow.get(), Qt::Key_E, Qt::ControlModifier);
    EXPECT_TRUE(dialog()->isVisible());
}

TEST_F(TradeDetailsTest, ChoiceIsOnTheChartAtOnce) {
    const QImage bare = graphImage();
    openByKey();
    EXPECT_EQ(table(0)->rowCount(), 3) << "the accounts of the demonstration";
    EXPECT_GT(table(2)->rowCount(), 3);
    toggle(2, 2, "600000");
    EXPECT_EQ(graphImage(), bare) << "no kind is chosen";
    QImage before = bare;
    for (const int kind : {3, 4, 5, 6, 7, 8, 9}) {
        click(box(kind));
        EXPECT_NE(graphImage(), before) << kind;
        before = graphImage();
    }
    toggle(0, 1, "80010001");
    EXPECT_NE(graphImage(), before) << "an account less";
    dialog()->handleEvent(93, 19, 1, QString(), nullptr);
    EXPECT_EQ(graphImage(), bare) << "no strategy is chosen";
    toggle(1, 1, "TWAP拆单");
    EXPECT_NE(graphImage(), bare);
    dialog()->close();
    EXPECT_EQ(graphImage(), bare);
}

TEST_F(TradeDetailsTest, OrdersAndDealsComeFromFilesAndGoAgain) {
    openByKey();
    toggle(2, 2, "600000");
    click(box(3));
    click(box(4));
    const QImage before = graphImage();
    const tests::ExpectMessages told(kHeadingLeftOut);
    import(12, write("orders.csv", "账号,证券,编号,价格,数量,时间,方向\n"
                                   "out,SH600000,o1,9.90,300,10:15:07,48\n"
                                   "out,SH600000,o2,9.80,500,10:20:00,49\n"
                                   "short,line\n"));
    EXPECT_EQ(ordersOf("out"), 2u);
    import(13, write("deals.xls", "out\tSH600000\td1\t9.85\t200\t10:16:00\t48\n"));
    EXPECT_EQ(dealsOf("out"), 1u);
    EXPECT_TRUE(QTest::qWaitFor([&] { return told.seen().size() == 1; }, 10000));
    EXPECT_EQ(mWindow->status(), "文件已读完：导入 1 条，略去 0 行");
    EXPECT_TRUE(QTest::qWaitFor([&] { return table(0)->rowCount() == 4; }, 10000)) << "a new account";
    EXPECT_TRUE(QTest::qWaitFor([&] { return graphImage() != before; }, 10000));
    click(control<GZ::CSmallNoNormalButton>(21));
    EXPECT_EQ(ordersOf("out"), 0u);
    EXPECT_EQ(dealsOf("out"), 0u);
    EXPECT_TRUE(QTest::qWaitFor([&] { return graphImage() == before; }, 10000));
}

TEST_F(TradeDetailsTest, SpreadsheetIsRead) {
    openByKey();
    const tests::ExpectMessages told(kHeadingLeftOut);
    import(12, QStringLiteral(TIMESHARE_SOURCE_DIR "/tests/terminal/data/orders.xls"));
    EXPECT_EQ(ordersOf("80010001") > 0, true);
    const auto orders = mServices->trade().getOrderDetails(mDay, "SH600000", {"80010001"}).at("80010001");
    ASSERT_EQ(orders.count("o1"), 1u);
    EXPECT_EQ(orders.at("o1")->mTime, "09:31:05");
    EXPECT_EQ(orders.at("o1")->mPrice, 9.87);
    EXPECT_EQ(orders.at("o1")->mVolume, 300);
    EXPECT_TRUE(QTest::qWaitFor([&] { return told.seen().size() == 1; }, 10000));
}

TEST_F(TradeDetailsTest, FileThatCannotBeReadIsToldWithTheReasonInTheStatusLine) {
    openByKey();
    const QString path = write("broken.xls", QByteArray("\xd0\xcf\x11\xe0\0\0 no workbook", 18));
    import(13, path);
    EXPECT_TRUE(mWindow->status().startsWith(path)) << qPrintable(mWindow->status());
    EXPECT_TRUE(mWindow->status().contains("Excel 97-2003"));
}

TEST_F(TradeDetailsTest, WhatIsCheckedIsRememberedForTheNextStart) {
    openByKey();
    for (const int id : {4, 8, 10}) {
        click(box(id));
    }
    dialog()->handleEvent(93, 19, 1, QString(), nullptr);
    mWindow.reset();
    mWindow = std::make_unique<terminal::TerminalWindow>(*mServices);
    mWindow->show();
    start();
    openByKey();
    for (const int id : {3, 4, 5, 6, 7, 8, 9, 10, 11}) {
        EXPECT_EQ(box(id)->isChecked(), id == 4 || id == 8 || id == 10) << id;
    }
    EXPECT_FALSE(dialog()->param()["seebystrategy"]) << "the view by strategies begins off";
    EXPECT_EQ(dialog()->getStocks().size(), size_t(table(2)->rowCount()));
    EXPECT_NE(view().uiParam()->mLinkageShow, (std::array<bool, 8>{}));
}

TEST_F(TradeDetailsTest, TheViewThatIsSavedAloneRemembersWhatIsChecked) {
    openByKey();
    click(box(4));
    const auto saved = [&] {
        const std::optional<terminal::SavedView> view =
            terminal::readSavedView(terminal::ConfigService(mFolder.path() + "/config.json"));
        return view ? view->document : QString();
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return saved().contains(R"("1", "deal")"); }, 10000)) << "while it runs";
    EXPECT_TRUE(saved().contains(R"("0", "order")"));
    mWindow.reset();
    EXPECT_TRUE(mServices->config().section(QStringLiteral("tradeDetails")).isEmpty());
}

TEST_F(TradeDetailsTest, AllTradesAreSeenAtTheNextStartWhicheverWayTheyWereSeen) {
    for (const bool byStrategy : {true, false}) {
        openByKey();
        dialog()->handleEvent(93, byStrategy ? 19 : 18, 1, QString(), nullptr);
        mWindow.reset();
        mWindow = std::make_unique<terminal::TerminalWindow>(*mServices);
        mWindow->show();
        start();
        openByKey();
        EXPECT_FALSE(dialog()->param()["seebystrategy"]) << byStrategy;
        EXPECT_FALSE(view().uiParam()->mLinkageShow[7]) << byStrategy;
    }
}

TEST_F(TradeDetailsTest, BalancesAreWorkedOutAgainWithTheNextStart) {
    terminal::TradeService &trade = mServices->trade();
    std::set<std::string> accounts;
    for (const auto &account : trade.getAccounts()) {
        accounts.insert(account->getKey());
    }
    const auto minutes = [&] { return trade.getTotalBalances(trade.getStocks(), accounts, {}, false).size(); };
    openByKey();
    EXPECT_EQ(minutes(), 0U);
    click(box(9));
    ASSERT_GT(minutes(), 0U);
    mWindow.reset();
    trade.stopBalanceCalculator(); // as in another process
    ASSERT_EQ(minutes(), 0U);
    mWindow = std::make_unique<terminal::TerminalWindow>(*mServices);
    EXPECT_GT(minutes(), 0U);
}

} // namespace
