#include "terminal/app/ImportDialog.h"
#include "terminal/app/ColumnDialog.h"
#include "tests/integration/TerminalFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QSqlQuery>
#include <QTableWidget>
#include <QTimer>

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

TEST_F(ImportDialogTest, TheUserSaysWhichColumnIsWhat) {
    EXPECT_FALSE(child<QPushButton>("columns")->isEnabled()) << "there is no file";
    typePath(write("odd.csv", "when,A,B,C,D,v\n2026-03-23 09:31:00,10,12,9,11,100\n"));
    EXPECT_FALSE(child<QPushButton>("start")->isEnabled());
    bool before = true;
    bool after = false;
    QTimer::singleShot(0, mDialog, [&] {
        auto *dialog = mDialog->findChild<terminal::ColumnDialog *>();
        ASSERT_TRUE(dialog);
        auto *table = dialog->findChild<QTableWidget *>();
        EXPECT_EQ(table->item(1, 4)->text(), "11");
        auto *take = dialog->findChild<QPushButton *>();
        before = take->isEnabled();
        int column = 0;
        for (const char *word : {"datetime", "open", "high", "low", "close", "volume"}) {
            auto *roles = qobject_cast<QComboBox *>(table->cellWidget(0, column++));
            roles->setCurrentIndex(roles->findData(word));
        }
        after = take->isEnabled();
        dialog->accept();
    });
    click("columns");
    EXPECT_FALSE(before);
    EXPECT_TRUE(after);
    EXPECT_EQ(child<QTableWidget>("preview")->item(0, 4)->text(), "11");
    child<QLineEdit>("code")->clear();
    QTest::keyClicks(child<QLineEdit>("code"), "600996.SH");
    ASSERT_TRUE(child<QPushButton>("start")->isEnabled());
    click("start");
    ASSERT_TRUE(waitUntilDone());
    EXPECT_NE(mServices->store().catalogue()->find("SH600996"), nullptr) << text("summary").toStdString();
    // The next file of the same headings is read alike.
    typePath(write("odd2.csv", "when,A,B,C,D,v\n2026-03-24 09:31:00,10,12,9,11,100\n"));
    EXPECT_EQ(child<QTableWidget>("preview")->rowCount(), 1);
}

TEST_F(ImportDialogTest, TheFileTellsItsSessionsWhenTheUserSaysSo) {
    typePath(write("600995.SH.csv", "datetime,open,high,low,close,volume\n2026-03-23 12:15:00,10,12,9,11,100\n"
                                    "datetime,open,high,low,close,volume\n"));
    click("start");
    ASSERT_TRUE(waitUntilDone());
    EXPECT_TRUE(text("summary").contains("12:15 is outside the sessions")) << text("summary").toStdString();
    EXPECT_FALSE(child<QPushButton>("start")->isEnabled()) << "nothing has changed";
    child<QCheckBox>("sessions")->setChecked(true);
    ASSERT_TRUE(child<QPushButton>("start")->isEnabled());
    click("start");
    ASSERT_TRUE(waitUntilDone());
    EXPECT_TRUE(text("summary").contains("第 3 行：the headings over again")) << text("summary").toStdString();
    const terminal::Instrument *made = mServices->store().catalogue()->find("SH600995");
    ASSERT_TRUE(made);
    EXPECT_EQ(mServices->store().days(made->id).size(), 1);
    EXPECT_EQ(count("day_sessions"), 1);
    // The close before is not known, and the title says so.
    EXPECT_TRUE(mServices->titleOf("SH600995", QDate(2026, 3, 23)).contains("昨收未知"));
    EXPECT_FALSE(mServices->titleOf("SH600000", QDate()).contains("昨收未知"));
}
