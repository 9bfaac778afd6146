// Orders and deals from files: which file is asked for, how it is read, and how a read ends.

#include "tests/linkage/SettingDialogFixture.h"

#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>

using namespace TC;

namespace {

constexpr int kOrders = 12;
constexpr int kDeals = 13;
constexpr int kClear = 21;

class SettingDialogImportTest : public tests::SettingDialogFixture {
protected:
    SettingDialogImportTest() {
        mHost.mClock.mNow = QDateTime(QDate(2024, 3, 15), QTime(14, 0), Qt::OffsetFromUTC, 8 * 3600);
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    }
    ~SettingDialogImportTest() override {
        qDeleteAll(tips());
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs, false);
    }

    QString write(const QString &name, const QByteArray &content = "a\n") {
        const QString path = mFolder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return path;
    }
    /// Presses a button and lets `use` deal with the file dialog that opens.
    void press(int id, const std::function<void(QFileDialog *)> &use) {
        bool asked = false;
        QTimer::singleShot(0, [&] {
            auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            asked = true;
            use(dialog);
        });
        click(button(id));
        EXPECT_TRUE(asked);
    }
    void choose(int id, const QString &path) {
        press(id, [&](QFileDialog *dialog) {
            dialog->findChild<QLineEdit *>("fileNameEdit")->setText(path);
            QMetaObject::invokeMethod(dialog, "accept");
        });
    }
    const fakehost::FakeFileClient::Read &read() { return mHost.mFiles.mReads.last(); }
    void finish(int seq, bool success) {
        emit mHost.mFiles.sigReadFinished(seq, success, "the service's words");
    }
    QList<bool> enabled() const {
        return {button(kOrders)->isEnabled(), button(kDeals)->isEnabled(), button(kClear)->isEnabled()};
    }
    static QList<QLabel *> tips() {
        QList<QLabel *> found;
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == QLatin1String("message_tip")) {
                found.append(static_cast<QLabel *>(widget));
            }
        }
        return found;
    }

    const QList<bool> kAllOn{true, true, true};
    const QList<bool> kReading{false, false, true};
    QTemporaryDir mFolder;
};

} // namespace

// One line

TEST_F(SettingDialogImportTest, LineGoesToTheServiceInItsOrder) {
    EXPECT_EQ(tests::SettingDialog::handleImportOrder("a,b,c,1.5,100,1433122200,1", ","), 2);
    EXPECT_EQ(tests::SettingDialog::handleImportDeal("a,b,c,1.5,100,1433122200,1", ","), 2);
    EXPECT_EQ(calls(), (Names{"CLinkageManager::importOrder a b c 1.5 100 1433122200 1",
                              "CLinkageManager::importDeal a b c 1.5 100 1433122200 1"}));
}

TEST_F(SettingDialogImportTest, TimeOfDayIsOfTheMarketsDate) {
    tests::SettingDialog::handleImportOrder("a,b,c,1.5,100,09:31:05,1", ",");
    // 2024-03-15 09:31:05 at UTC+8
    EXPECT_EQ(calls(), Names("CLinkageManager::importOrder a b c 1.5 100 1710466265 1"));
}

TEST_F(SettingDialogImportTest, ShortLineIsDroppedAndAnsweredAllTheSame) {
    EXPECT_EQ(tests::SettingDialog::handleImportOrder("a,b,c,1.5,100,09:31:05", ","), 2);
    EXPECT_EQ(tests::SettingDialog::handleImportDeal("", "\t"), 2);
    EXPECT_TRUE(calls().isEmpty());
}

TEST_F(SettingDialogImportTest, UnreadableLineGoesToTheServiceAllTheSame) {
    EXPECT_EQ(tests::SettingDialog::handleImportDeal("a,b,c,,,,", ","), 2);
    EXPECT_EQ(tests::SettingDialog::handleImportDeal(",,,,,,", ","), 2);
    EXPECT_EQ(tests::SettingDialog::handleImportDeal("a,b,c,x,y,25:00:00,z", ","), 2);
    EXPECT_EQ(calls(),
              (Names{"CLinkageManager::importDeal a b c 0 0 0 0", "CLinkageManager::importDeal    0 0 0 0",
                     "CLinkageManager::importDeal a b c 0 0 4294967295 0"}));
}

// The file

TEST_F(SettingDialogImportTest, FileIsAskedForInItsOwnWords) {
    show();
    const QList<QPair<int, QString>> captions = {{kOrders, "导入委托数据"}, {kDeals, "导入成交数据"}};
    for (const auto &[id, caption] : captions) {
        press(id, [&, wanted = caption](QFileDialog *dialog) {
            EXPECT_EQ(dialog->windowTitle(), wanted);
            EXPECT_EQ(dialog->nameFilters(), (Names{"Excel Files(*.csv)", "Excel Files(*.xls)"}));
            EXPECT_EQ(dialog->directory(), QDir("."));
            EXPECT_EQ(dialog->acceptMode(), QFileDialog::AcceptOpen);
            EXPECT_EQ(dialog->parentWidget(), mDialog.get());
            dialog->reject();
        });
        EXPECT_EQ(enabled(), kAllOn) << "nothing chosen, nothing changed";
    }
    EXPECT_TRUE(mHost.mFiles.mReads.isEmpty());
}

TEST_F(SettingDialogImportTest, CsvIsReadAsTextBetweenCommas) {
    show();
    const QString path = write("orders.csv");
    choose(kOrders, path);
    ASSERT_EQ(mHost.mFiles.mReads.size(), 1);
    EXPECT_EQ(read().type, EFileType::CommaSeparated);
    EXPECT_EQ(read().path, path);
    EXPECT_EQ(enabled(), kReading);
    forget();
    EXPECT_EQ(read().handler("a,b,c,1.5,100,1433122200,1"), 2);
    EXPECT_EQ(read().handler("a\tb\tc\t1.5\t100\t1433122200\t1"), 2);
    EXPECT_EQ(calls(), Names("CLinkageManager::importOrder a b c 1.5 100 1433122200 1"));
}

TEST_F(SettingDialogImportTest, EveryOtherFileIsReadAsASpreadsheetBetweenTabs) {
    show();
    for (const char *name : {"deals.xls", "a.b.csv", "plain", "deals.txt"}) {
        const QString path = write(name);
        choose(kDeals, path);
        EXPECT_EQ(read().type, EFileType::Spreadsheet) << name;
        EXPECT_EQ(read().path, path);
        forget();
        read().handler("a\tb\tc\t1.5\t100\t1433122200\t1");
        read().handler("a,b,c,1.5,100,1433122200,1");
        EXPECT_EQ(calls(), Names("CLinkageManager::importDeal a b c 1.5 100 1433122200 1")) << name;
        finish(read().seq, true);
    }
    EXPECT_EQ(mHost.mFiles.mReads.size(), 4);
}

TEST_F(SettingDialogImportTest, CommasOfAFileInCapitalsYieldNothing) {
    show();
    choose(kOrders, write("orders.CSV"));
    EXPECT_EQ(read().type, EFileType::Spreadsheet);
    forget();
    EXPECT_EQ(read().handler("a,b,c,1.5,100,1433122200,1"), 2);
    EXPECT_TRUE(calls().isEmpty());
}

// The end

TEST_F(SettingDialogImportTest, GoodEndEnablesTheButtonsAndSaysNothing) {
    show();
    choose(kOrders, write("orders.csv"));
    EXPECT_EQ(enabled(), kReading);
    finish(read().seq, true);
    EXPECT_EQ(enabled(), kAllOn);
    EXPECT_TRUE(tips().isEmpty());
}

TEST_F(SettingDialogImportTest, EndOfAnotherReadChangesNothing) {
    show();
    choose(kDeals, write("deals.csv"));
    for (const int seq : {0, read().seq - 1, read().seq + 1}) {
        finish(seq, false);
        EXPECT_EQ(enabled(), kReading);
        EXPECT_TRUE(tips().isEmpty());
    }
}

TEST_F(SettingDialogImportTest, FailedOrdersAreToldAtTheirButton) {
    show();
    choose(kOrders, write("orders.csv"));
    finish(read().seq, false);
    ASSERT_EQ(tips().size(), 1);
    EXPECT_EQ(tips().first()->text(), "委托导入失败, 请检查导入文件和本机Excel安装情况");
    EXPECT_EQ(tips().first()->x(), button(kOrders)->mapToGlobal(QPoint()).x());
    EXPECT_GE(tips().first()->y(), button(kOrders)->mapToGlobal(QPoint(0, 22)).y());
    EXPECT_EQ(enabled(), kAllOn);
}

TEST_F(SettingDialogImportTest, FailedDealsAreToldAtTheirButtonAndBothCanBePressedAgain) {
    show();
    choose(kDeals, write("deals.xls"));
    finish(read().seq, false);
    ASSERT_EQ(tips().size(), 1);
    EXPECT_EQ(tips().first()->text(), "成交导入失败, 请检查导入文件和本机Excel安装情况");
    EXPECT_EQ(tips().first()->x(), button(kDeals)->mapToGlobal(QPoint()).x());
    EXPECT_EQ(enabled(), kAllOn);
}

TEST_F(SettingDialogImportTest, FailureWithNoImportUnderWayShowsNoTip) {
    show();
    finish(0, false); // the number that no read has had yet
    EXPECT_TRUE(tips().isEmpty());
    choose(kDeals, write("deals.xls"));
    finish(read().seq, true);
    finish(read().seq, false); // told once more
    EXPECT_TRUE(tips().isEmpty());
    EXPECT_EQ(enabled(), kAllOn);
}

TEST_F(SettingDialogImportTest, ClearingForgetsWhatWasImportedAlsoDuringARead) {
    show();
    choose(kOrders, write("orders.csv"));
    forget();
    click(button(kClear));
    EXPECT_EQ(calls(), Names("CLinkageManager::clearImportData"));
    EXPECT_EQ(enabled(), kReading);
    mDialog->clearImportData();
    EXPECT_EQ(calls(), Names("CLinkageManager::clearImportData"));
}

// The dialog goes meanwhile

TEST_F(SettingDialogImportTest, LinesGoOnWhenTheDialogHasGone) {
    show();
    choose(kOrders, write("orders.csv"));
    mDialog.reset();
    forget();
    read().handler("a,b,c,1.5,100,1433122200,1");
    finish(read().seq, false);
    EXPECT_EQ(calls(), Names("CLinkageManager::importOrder a b c 1.5 100 1433122200 1"));
    EXPECT_TRUE(tips().isEmpty());
}

TEST_F(SettingDialogImportTest, DialogMayGoWhileTheFileIsAskedFor) {
    show();
    QPointer<QFileDialog> asked;
    press(kOrders, [&](QFileDialog *dialog) {
        asked = dialog;
        QTimer::singleShot(0, [this] { mDialog.reset(); });
        dialog->setFocus();
    });
    EXPECT_FALSE(mDialog);
    EXPECT_FALSE(asked);
    EXPECT_TRUE(mHost.mFiles.mReads.isEmpty());
}
