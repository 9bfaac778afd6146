#include "terminal/files/FileLines.h"

#include "terminal/files/ForeignFile.h"
#include "tests/support/MutatedSheet.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <string>
#include <sys/stat.h>
#include <unistd.h>

using TC::EFileType;

namespace {

class FileLinesTest : public testing::Test {
protected:
    QString write(const QString &name, const QByteArray &content) {
        const QString path = mFolder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return path;
    }
    /// The lines of a file, or what was said about it.
    QStringList read(const QString &path, EFileType type) {
        QStringList lines;
        const QString trouble = terminal::readFileLines(path, type, [&](const QString &line) {
            lines.append(line);
            return true;
        });
        return trouble.isEmpty() ? lines : lines + QStringList("! " + trouble);
    }
    QStringList lines(const QByteArray &content, EFileType type = EFileType::CommaSeparated) {
        return read(write("a.csv", content), type);
    }
    static QString sheet() { return QStringLiteral(TIMESHARE_SOURCE_DIR "/tests/terminal/data/orders.xls"); }

    QTemporaryDir mFolder;
};

} // namespace

TEST_F(FileLinesTest, EveryLineIsALineHoweverItEnds) {
    EXPECT_EQ(lines("a,b\nc\n"), (QStringList{"a,b", "c"}));
    EXPECT_EQ(lines("a,b\r\nc\r\n"), (QStringList{"a,b", "c"}));
    EXPECT_EQ(lines("a\n\n \nb"), (QStringList{"a", "", " ", "b"}));
    EXPECT_EQ(lines("\r\n"), QStringList(""));
    EXPECT_EQ(lines("a\rb\n"), QStringList("a\rb"));
    EXPECT_EQ(lines(""), QStringList());
}

TEST_F(FileLinesTest, ChineseIsReadInEveryEncodingThatOfficesWrite) {
    const QString text = QStringLiteral("账号,中国银行");
    const QByteArray utf8 = text.toUtf8() + "\nb";
    EXPECT_EQ(lines(utf8), (QStringList{text, "b"}));
    EXPECT_EQ(lines("\xef\xbb\xbf" + utf8), (QStringList{text, "b"})) << "the mark is no text";
    // GB18030, as iconv -t GB18030 writes it.
    EXPECT_EQ(lines("\xd5\xcb\xba\xc5,\xd6\xd0\xb9\xfa\xd2\xf8\xd0\xd0\nb"), (QStringList{text, "b"}));
    EXPECT_EQ(lines(QByteArray("\xff\xfe"
                               "a\0,\0-\x4e\n\0b\0",
                               12)),
              (QStringList{QStringLiteral("a,中"), "b"}));
    EXPECT_EQ(lines(QByteArray("\xfe\xff\0a\0,\x4e-\0\n\0b", 12)), (QStringList{QStringLiteral("a,中"), "b"}));
}

TEST_F(FileLinesTest, ReadingEndsWhenTheTakerHasEnough) {
    QStringList taken;
    const QString path = write("a.csv", "a\nb\nc\n");
    EXPECT_EQ(terminal::readFileLines(path, EFileType::CommaSeparated,
                                      [&](const QString &line) {
                                          taken.append(line);
                                          return taken.size() < 2;
                                      }),
              QString());
    EXPECT_EQ(taken, (QStringList{"a", "b"}));
}

TEST_F(FileLinesTest, FirstSheetOfAnExcelFileComesAsRowsOfTabs) {
    EXPECT_EQ(
        read(sheet(), EFileType::Spreadsheet),
        (QStringList{QStringLiteral("账号\t证券\t编号\t价格\t数量\t时间\t方向\t备注"),
                     QStringLiteral("80010001\tSH600000\to1\t9.87\t300\t09:31:05\t49\t手工"),
                     QStringLiteral("80010001\tSH600000\t多 行 格\t10\t1000000\t2026-11-20 10:15:07\t48\t"),
                     QStringLiteral("out\tSZ000001\t\t0.3\t100\t1433122200\t48\t1")}));
}

TEST_F(FileLinesTest, TextThatIsCalledASpreadsheetGivesItsLines) {
    EXPECT_EQ(lines("a\tb\nc,d\n", EFileType::Spreadsheet), (QStringList{"a\tb", "c,d"}));
}

TEST_F(FileLinesTest, SpreadsheetReadAsTextIsRefused) {
    EXPECT_EQ(read(sheet(), EFileType::CommaSeparated),
              QStringList("! " + sheet() + ": a binary file, no text: save it as comma-separated text"));
}

TEST_F(FileLinesTest, WhatIsNoSpreadsheetIsRefused) {
    QFile whole(sheet());
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const QByteArray content = whole.readAll();
    const QByteArray newer("PK\x03\x04\x14\0\x06\0 a file of a newer Excel", 33);
    for (const QByteArray &broken : {content.left(600), content.left(100), newer, QByteArray(3, '\0')}) {
        const QString path = write("b.xls", broken);
        EXPECT_EQ(read(path, EFileType::Spreadsheet),
                  QStringList("! " + path +
                              ": neither a spreadsheet of Excel 97-2003 (.xls) nor a text: save it as one"));
    }
}

TEST_F(FileLinesTest, DamagedSpreadsheetIsReadOrRefusedAndNeverHarmful) {
    QFile whole(sheet());
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const QByteArray content = whole.readAll();
    for (int at = 0; at < content.size(); at += 97) {
        QByteArray damaged = content;
        damaged[at] = char(damaged[at] ^ 0x5a);
        read(write("d.xls", damaged), EFileType::Spreadsheet);
    }
    EXPECT_EQ(read(write("d.xls", content), EFileType::Spreadsheet).size(), 4);
}

/// Many more are tried by tests/sheets.
TEST_F(FileLinesTest, AMutatedSpreadsheetEndsInRowsOrOneLine) {
    QFile whole(sheet());
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const std::string content = whole.readAll().toStdString();
    for (unsigned number = 0; number < 400; ++number) {
        const QByteArray damaged = QByteArray::fromStdString(tests::mutated(content, number));
        const terminal::ForeignText text = terminal::readForeign(QStringLiteral("sheet"), damaged);
        ASSERT_TRUE(text.error.isEmpty() || (text.text.isEmpty() && !text.error.contains('\n'))) << number;
    }
}

TEST_F(FileLinesTest, AParserThatIsNotKnownReadsNothing) {
    EXPECT_EQ(terminal::readForeign(QStringLiteral("other"), "x").error,
              QStringLiteral("its content cannot be read"));
}

TEST_F(FileLinesTest, WhatCannotBeOpenedIsSaid) {
    for (const EFileType type : {EFileType::CommaSeparated, EFileType::Spreadsheet}) {
        const QString none = mFolder.filePath("none.csv");
        EXPECT_EQ(read(none, type), QStringList("! " + none + ": cannot be read: there is no such file"));
        EXPECT_EQ(read(mFolder.path(), type),
                  QStringList("! " + mFolder.path() + ": cannot be read: it is a folder"));
        const QString pipe = mFolder.filePath("pipe.csv");
        ::mkfifo(pipe.toLocal8Bit().constData(), 0600);
        for (const QString &endless : {QStringLiteral("/dev/zero"), pipe}) {
            EXPECT_EQ(read(endless, type),
                      QStringList("! " + endless + ": cannot be read: it is a pipe or a device, no file"));
        }
    }
    if (geteuid() != 0) { // who may read everything
        const QString locked = write("locked.csv", "a");
        QFile::setPermissions(locked, QFile::Permissions());
        EXPECT_EQ(read(locked, EFileType::CommaSeparated).size(), 1);
    }
    QFile huge(mFolder.filePath("huge.csv"));
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly));
    ASSERT_TRUE(huge.resize(100000001)); // takes no room
    EXPECT_EQ(read(huge.fileName(), EFileType::CommaSeparated),
              QStringList("! " + huge.fileName() + ": larger than 100 MB: split it"));
}
