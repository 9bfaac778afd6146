#include "terminal/app/ImportDialog.h"
#include "tests/integration/TerminalFixture.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QSqlQuery>
#include <QTableWidget>

namespace {

using terminal::ImportDialog;

const QByteArray kTrades("Symbol,Datetime,Price,Volume\n");

class ImportDialogTest : public tests::TerminalFixture {
protected:
    void SetUp() override {
        TerminalFixture::SetUp();
        ASSERT_TRUE(mWindow->showInstrument("SH600000"));
        QTest::keyClick(mWindow.get(), Qt::Key_O, Qt::ControlModifier);
        mDialog = mWindow->findChild<ImportDialog *>("import_dialog");
        ASSERT_TRUE(mDialog);
        ASSERT_TRUE(mDialog->isVisible());
    }
    QString write(const char *name, const QByteArray &content) {
        QFile file(mFolder.path() + '/' + name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }
    /// Types a path and presses return, as a user without a mouse does.
    void typePath(const QString &path) {
        auto *field = child<QLineEdit>("path");
        field->setFocus();
        QTest::keyClicks(field, path);
        QTest::keyClick(field, Qt::Key_Return);
    }
    template <class Widget> Widget *child(const char *name) {
        auto *widget = mDialog->findChild<Widget *>(QLatin1String(name));
        EXPECT_TRUE(widget) << name;
        return widget;
    }
    void click(const char *button) { QTest::mouseClick(child<QPushButton>(button), Qt::LeftButton); }
    QString text(const char *label) { return child<QLabel>(label)->text(); }
    bool waitUntilDone() {
        return QTest::qWaitFor([this] { return !mDialog->isImporting(); }, 30000);
    }
    int count(const char *table) {
        QSqlQuery query(mServices->store().connection());
        return query.exec(QStringLiteral("SELECT count(*) FROM %1").arg(QLatin1String(table))) && query.next()
                   ? query.value(0).toInt()
                   : -1;
    }
    QByteArray manyTrades(const QByteArray &symbol, int rows) {
        QByteArray content = kTrades;
        const QByteArray row = symbol + ",2026-03-23 09:31:30,10,1\n";
        for (int i = 0; i < rows; ++i) {
            content += row;
        }
        return content;
    }

    ImportDialog *mDialog = nullptr;
};

} // namespace

TEST_F(ImportDialogTest, ThePreviewShowsTheRowsAsTheyAreUnderstood) {
    typePath(write("tick_600998.SH_20260323.csv", kTrades + "600998,2026.03.23T09:31:00,10.10,300\n"
                                                            "600998,2026.03.24T09:31:01,10.20,200\n"));
    EXPECT_TRUE(text("info").contains(QStringLiteral("逐笔成交"))) << qPrintable(text("info"));
    EXPECT_TRUE(text("info").contains("2026-03-23"));
    EXPECT_TRUE(text("info").contains("2026-03-24"));
    EXPECT_EQ(child<QComboBox>("market")->currentText(), "SH") << "guessed from the name of the file";
    EXPECT_EQ(child<QLineEdit>("code")->text(), "600998");
    auto *table = child<QTableWidget>("preview");
    ASSERT_EQ(table->rowCount(), 2);
    EXPECT_EQ(table->item(0, 0)->text(), "2026-03-23 09:31:00");
    EXPECT_EQ(table->item(0, 1)->text(), "10.1");
    EXPECT_EQ(table->item(1, 2)->text(), "200");
    EXPECT_EQ(count("ticks"), 0) << "nothing is imported yet";
}

TEST_F(ImportDialogTest, WhatIsImportedIsShownByTheWindow) {
    typePath(write("a.csv", kTrades + "600998.SH,2026-03-23 09:31:00,10.10,300\n"));
    QTest::keyClicks(child<QLineEdit>("name"), "abc");
    click("start");
    ASSERT_TRUE(waitUntilDone());
    EXPECT_TRUE(text("summary").contains("SH600998")) << qPrintable(text("summary"));
    EXPECT_TRUE(text("summary").contains(QStringLiteral("行/秒")));
    EXPECT_EQ(view().instrument(), "SH600998");
    EXPECT_EQ(view().day(), QDate(2026, 3, 23));
    EXPECT_EQ(mServices->store().catalogue()->find("SH600998")->name, "abc");
    EXPECT_EQ(mServices->search().exact("abc"), "SH600998");
    EXPECT_FALSE(child<QPushButton>("start")->isEnabled()) << "it is done";
}

TEST_F(ImportDialogTest, TheInstrumentCanBeCorrected) {
    typePath(write("a.csv", "datetime,price,volume\n2026-03-23 09:31:00,10.10,300\n"));
    EXPECT_FALSE(child<QPushButton>("start")->isEnabled()) << "nobody has told the instrument";
    auto *market = child<QComboBox>("market");
    market->setFocus();
    QTest::keyClick(market, Qt::Key_S); // SH
    QTest::keyClicks(child<QLineEdit>("code"), "600997");
    ASSERT_EQ(market->currentText(), "SH");
    ASSERT_TRUE(child<QPushButton>("start")->isEnabled());
    click("start");
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(view().instrument(), "SH600997") << qPrintable(text("summary"));
}

TEST_F(ImportDialogTest, AnInstrumentOfTheStoreKeepsItsName) {
    typePath(write("a.csv", kTrades + "600519.SH,2026-03-23 09:31:00,1400,300\n"));
    EXPECT_EQ(child<QLineEdit>("name")->text(), QStringLiteral("贵州茅台"));
    EXPECT_FALSE(child<QLineEdit>("name")->isEnabled());
}

TEST_F(ImportDialogTest, SeveralFilesAreImportedOneAfterTheOther) {
    typePath(write("a.csv", kTrades + "600996.SH,2026-03-23 09:31:00,10,1\n"));
    typePath(
        write("b.csv", kTrades + "600997.SH,2026-03-23 09:31:00,10,1\n600998.SH,2026-03-23 09:31:00,10,1\n"));
    EXPECT_FALSE(child<QLineEdit>("code")->isEnabled()) << "the second file has two instruments";
    EXPECT_EQ(child<QListWidget>("files")->count(), 2);
    click("start");
    ASSERT_TRUE(waitUntilDone());
    for (const char *key : {"SH600996", "SH600997", "SH600998"}) {
        EXPECT_TRUE(text("summary").contains(key)) << key;
        EXPECT_TRUE(mServices->store().catalogue()->find(key)) << key;
    }
}

TEST_F(ImportDialogTest, AFileThatIsNoneIsToldBeforeTheImport) {
    typePath(mFolder.path() + "/missing.csv");
    EXPECT_TRUE(text("info").contains("missing.csv")) << qPrintable(text("info"));
    EXPECT_FALSE(child<QPushButton>("start")->isEnabled());
    typePath(write("b.csv", "name,size\na,1\n"));
    EXPECT_TRUE(text("info").contains("b.csv:1:")) << qPrintable(text("info"));
    typePath(write("c.csv", kTrades + "600998.SH,2026-03-23 09:31:00,x,1\n"));
    EXPECT_TRUE(text("info").contains("c.csv:2:")) << qPrintable(text("info"));
    EXPECT_FALSE(child<QPushButton>("start")->isEnabled());
}

TEST_F(ImportDialogTest, ABrokenLineFarDownIsToldWithItsNumberAndTheNextFileGoesOn) {
    const int ticks = count("ticks");
    typePath(write("a.csv", manyTrades("600998.SH", 5000) + "600998.SH,2026-03-23 09:31:30,ten,1\n"));
    typePath(write("b.csv", kTrades + "600997.SH,2026-03-23 09:31:00,10,1\n"));
    click("start");
    ASSERT_TRUE(waitUntilDone());
    EXPECT_TRUE(text("summary").contains("a.csv:5002:")) << qPrintable(text("summary"));
    EXPECT_EQ(mServices->store().catalogue()->find("SH600998"), nullptr);
    EXPECT_EQ(count("ticks"), ticks + 1);
    EXPECT_EQ(view().instrument(), "SH600997");
}

TEST_F(ImportDialogTest, StoppedInTheMiddleTheStoreIsUnchanged) {
    const int days = count("days");
    const int instruments = count("instruments");
    typePath(write("a.csv", manyTrades("600998.SH", 400000)));
    click("start");
    auto *progress = child<QProgressBar>("progress");
    ASSERT_TRUE(QTest::qWaitFor([&] { return progress->value() > 300 || !mDialog->isImporting(); }, 30000));
    ASSERT_TRUE(mDialog->isImporting()) << "ticks are being stored";
    EXPECT_TRUE(text("rate").contains(QStringLiteral("行/秒")));
    QTest::keyClick(mDialog, Qt::Key_Escape);
    ASSERT_TRUE(waitUntilDone());
    EXPECT_TRUE(mDialog->isVisible()) << "the first escape stops, the next one closes";
    EXPECT_TRUE(text("summary").contains(QStringLiteral("已停止"))) << qPrintable(text("summary"));
    EXPECT_EQ(count("ticks"), 0);
    EXPECT_EQ(count("days"), days);
    EXPECT_EQ(count("instruments"), instruments);
    EXPECT_EQ(view().instrument(), "SH600000");
    EXPECT_TRUE(child<QPushButton>("start")->isEnabled()) << "it can be tried again";
    QTest::keyClick(mDialog, Qt::Key_Escape);
    EXPECT_FALSE(mDialog->isVisible());
}

TEST_F(ImportDialogTest, TheStopButtonStopsTheFilesThatFollowToo) {
    typePath(write("a.csv", manyTrades("600998.SH", 400000)));
    typePath(write("b.csv", kTrades + "600997.SH,2026-03-23 09:31:00,10,1\n"));
    click("start");
    auto *progress = child<QProgressBar>("progress");
    ASSERT_TRUE(QTest::qWaitFor([&] { return progress->value() > 0 || !mDialog->isImporting(); }, 30000));
    click("stop_import");
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(count("ticks"), 0);
    EXPECT_EQ(mServices->store().catalogue()->find("SH600997"), nullptr);
}

TEST_F(ImportDialogTest, TheWindowMayGoInTheMiddleOfAnImport) {
    typePath(write("a.csv", manyTrades("600998.SH", 400000)));
    click("start");
    ASSERT_TRUE(mDialog->isImporting());
    mWindow.reset();
    EXPECT_EQ(count("ticks"), 0);
}

TEST_F(ImportDialogTest, ItHasTheColoursOfTheWindow) {
    const QColor dark = mDialog->palette().color(QPalette::Window);
    EXPECT_EQ(dark, mWindow->palette().color(QPalette::Window));
    mWindow->setThemeName("light");
    EXPECT_EQ(mDialog->palette().color(QPalette::Window), mWindow->palette().color(QPalette::Window));
    EXPECT_NE(mDialog->palette().color(QPalette::Window), dark);
    mWindow->setThemeName("dark");
}
