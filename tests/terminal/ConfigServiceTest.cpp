#include "terminal/config/ConfigService.h"

#include "tests/support/BytesInUse.h"
#include "tests/support/FullDisk.h"
#include "tests/support/NoMoreFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <initializer_list>
#include <optional>
#include <sys/stat.h>
#include <utility>

using terminal::ConfigService;

namespace {

class ConfigServiceTest : public ::testing::Test {
protected:
    QString path() const { return mFolder.path() + "/sub/config.json"; }
    void writeFile(const QByteArray &text) { writeFile(path(), text); }
    void writeFile(const QString &name, const QByteArray &text) {
        QDir().mkpath(mFolder.path() + "/sub");
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    QByteArray readFile(const QString &name) {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
    }
    QStringList files() const { return QDir(mFolder.path() + "/sub").entryList(QDir::Files, QDir::Name); }

    QTemporaryDir mFolder;
};

} // namespace

TEST_F(ConfigServiceTest, WithoutAFileEverythingStandsAtItsDefault) {
    ConfigService service(path());
    EXPECT_FALSE(service.config()->conciseStyle());
    EXPECT_FALSE(service.config()->crossLineBelowTitle());
    EXPECT_EQ(service.userConfig()->subIndexRefresh(), 0);
    EXPECT_EQ(service.indexUserConfig().read().mShowGradient, 1);
    EXPECT_EQ(service.value("theme", "dark"), "dark");
    EXPECT_TRUE(service.messages().isEmpty());
    EXPECT_TRUE(files().isEmpty()) << "reading alone writes no file";
}

TEST_F(ConfigServiceTest, TextsThatWereReplacedTakeNoMemory) {
    constexpr int kChanges = 500;
    constexpr int kLength = 10000;
    ConfigService service; // without a file
    service.setValue("note", "kept");
    const qint64 before = tests::bytesInUse();
    for (int i = 0; i < kChanges; ++i) {
        const QString text(kLength, QLatin1Char(i % 2 ? 'a' : 'b'));
        service.changeSection("view", {{"document", text}, {"days", i}});
        service.setValue("instrument", text);
    }
    EXPECT_LT(tests::bytesInUse() - before, 20 * kLength) << "two texts, of some 2 * 500 that were set";
    EXPECT_EQ(service.section("view").value("days").toInt(), kChanges - 1);
    EXPECT_EQ(service.value("note"), "kept");
}

TEST_F(ConfigServiceTest, WhatIsWrittenIsReadByTheNextRun) {
    {
        ConfigService service(path());
        service.setValue("theme", "light");
        TC::UserConfigRecord record = service.indexUserConfig().read();
        record.mShowGradient = 0;
        record.mFilterStock = 2;
        record.mOverlaySector = true;
        service.indexUserConfig().write(record);
        service.userConfig()->setTableConfig(7, "a,b");
    }
    ConfigService next(path());
    EXPECT_EQ(next.value("theme"), "light");
    EXPECT_EQ(next.indexUserConfig().read().mShowGradient, 0);
    EXPECT_EQ(next.indexUserConfig().read().mFilterStock, 2);
    EXPECT_TRUE(next.indexUserConfig().read().mOverlaySector);
    EXPECT_EQ(next.userConfig()->tableConfig(7), "a,b");
    EXPECT_EQ(files(), QStringList({"config.json"})) << "no temporary file stays behind";
}

TEST_F(ConfigServiceTest, WhatChangesNothingIsNotWritten) {
    ConfigService service(path());
    service.setValue("theme", "light");
    ASSERT_TRUE(service.waitUntilWritten());
    ASSERT_TRUE(QFile::remove(path()));
    service.setValue("theme", "light");
    ASSERT_TRUE(service.waitUntilWritten());
    EXPECT_TRUE(files().isEmpty());
    service.setValue("theme", "dark");
    ASSERT_TRUE(service.waitUntilWritten());
    EXPECT_EQ(files(), QStringList("config.json"));
}

TEST_F(ConfigServiceTest, WhatAKilledProgramLeftWaitingIsNewerThanTheFile) {
    {
        ConfigService service(path());
        service.setValue("theme", "light");
        service.setValue("instrument", "SH600000");
    }
    writeFile(path() + ".next", R"({"theme": "dark"})");
    {
        ConfigService service(path());
        EXPECT_EQ(service.value("theme"), "dark");
        EXPECT_EQ(service.value("instrument"), "") << "it is a whole configuration";
        EXPECT_TRUE(service.messages().isEmpty());
        service.setValue("panes", "3");
    }
    EXPECT_EQ(files(), QStringList("config.json"));
    EXPECT_EQ(ConfigService(path()).value("theme"), "dark");
}

TEST_F(ConfigServiceTest, WhatWasCutOffWhileItWaitedIsPassedOver) {
    {
        ConfigService service(path());
        service.setValue("theme", "light");
    }
    for (const char *left : {"", "{\"theme\": \"da", "[1]"}) {
        writeFile(path() + ".next", left);
        ConfigService service(path());
        EXPECT_EQ(service.value("theme"), "light") << left;
        EXPECT_TRUE(service.messages().isEmpty()) << left;
    }
}

TEST_F(ConfigServiceTest, AChangeIsThereForTheNextReaderAtOnce) {
    ConfigService service(path());
    for (int i = 0; i < 20; ++i) {
        service.setValue("theme", QString::number(i));
        EXPECT_EQ(ConfigService(path()).value("theme"), QString::number(i));
    }
}

TEST_F(ConfigServiceTest, ADamagedFileIsKeptAsideAndTold) {
    writeFile("{\"theme\": \"li");
    ConfigService service(path());
    ASSERT_EQ(service.messages().size(), 1);
    EXPECT_TRUE(service.messages().first().contains("config.json.damaged"));
    EXPECT_EQ(service.value("theme", "dark"), "dark");
    EXPECT_EQ(readFile(path() + ".damaged"), "{\"theme\": \"li");
    service.setValue("theme", "light");
    ASSERT_TRUE(service.waitUntilWritten());
    EXPECT_EQ(ConfigService(path()).value("theme"), "light");
}

TEST_F(ConfigServiceTest, ASecondDamagedFileDoesNotReplaceTheFirst) {
    writeFile("first");
    { ConfigService service(path()); }
    writeFile("[1]");
    { ConfigService service(path()); }
    EXPECT_EQ(readFile(path() + ".damaged"), "first");
    EXPECT_EQ(readFile(path() + ".damaged2"), "[1]");
}

TEST_F(ConfigServiceTest, ValuesOfTheWrongKindStandAtTheirDefaults) {
    writeFile(R"({"theme": 3, "conciseStyle": "yes", "subIndexRefresh": {}, "showGradient": null})");
    ConfigService service(path());
    EXPECT_EQ(service.value("theme", "dark"), "dark");
    EXPECT_FALSE(service.config()->conciseStyle());
    EXPECT_EQ(service.userConfig()->subIndexRefresh(), 0);
    EXPECT_EQ(service.indexUserConfig().read().mShowGradient, 1);
    EXPECT_TRUE(service.messages().isEmpty());
}

TEST_F(ConfigServiceTest, FieldsOfOtherVersionsAreKept) {
    writeFile(R"({"later": [1, 2], "conciseStyle": true})");
    {
        ConfigService service(path());
        EXPECT_TRUE(service.config()->conciseStyle());
        service.setValue("theme", "light");
    }
    EXPECT_TRUE(readFile(path()).contains("later"));
}

TEST_F(ConfigServiceTest, AFileThatCannotBeWrittenIsTold) {
    QFile blocker(mFolder.path() + "/sub");
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly)); // a file where the folder should be
    blocker.close();
    ConfigService service(path());
    service.setValue("theme", "light");
    EXPECT_FALSE(service.waitUntilWritten());
    EXPECT_EQ(service.messages().size(), 1);
    EXPECT_EQ(service.value("theme"), "light") << "it holds for this run";
}

TEST_F(ConfigServiceTest, NumbersOfAnEntryAreKeptBesideThoseOfOthers) {
    {
        ConfigService service(path());
        service.setNumbers("formulas", "MACD", {{"SHORT", 10.0}, {"LONG", 26.5}});
        service.setNumbers("formulas", "KDJ", {{"N", 9.0}});
        service.setNumbers("formulas", "MACD", {{"SHORT", 12.0}});
    }
    const ConfigService next(path());
    EXPECT_EQ(next.numbers("formulas", "MACD"), (QMap<QString, double>{{"SHORT", 12.0}, {"LONG", 26.5}}));
    EXPECT_EQ(next.numbers("formulas", "KDJ"), (QMap<QString, double>{{"N", 9.0}}));
    EXPECT_TRUE(next.numbers("formulas", "RSI").isEmpty());
    EXPECT_TRUE(next.numbers("others", "MACD").isEmpty());
}

TEST_F(ConfigServiceTest, WhatIsNoNumberIsPassedOverAndStaysInTheFile) {
    writeFile(R"({"formulas": {"MACD": {"SHORT": "x", "LONG": 26}, "KDJ": 5, "later": {"a": [1]}}})");
    ConfigService service(path());
    EXPECT_EQ(service.numbers("formulas", "MACD"), (QMap<QString, double>{{"LONG", 26.0}}));
    EXPECT_TRUE(service.numbers("formulas", "KDJ").isEmpty());
    service.setNumbers("formulas", "MACD", {{"LONG", 30.0}, {"MID", qQNaN()}});
    ASSERT_TRUE(service.waitUntilWritten());
    const QJsonObject formulas = ConfigService(path()).section("formulas");
    EXPECT_EQ(formulas["MACD"].toObject(), (QJsonObject{{"SHORT", "x"}, {"LONG", 30.0}}));
    EXPECT_EQ(formulas["later"].toObject(), (QJsonObject{{"a", QJsonArray{1}}}));
}

TEST_F(ConfigServiceTest, FieldsOfASectionAreChangedOneByOne) {
    {
        ConfigService service(path());
        service.changeSection("window", {{"width", 800}, {"names", QJsonArray{"a", "b"}}});
        service.changeSection("window", {{"width", QJsonValue::Null}, {"height", 600}});
    }
    EXPECT_EQ(ConfigService(path()).section("window"),
              (QJsonObject{{"height", 600}, {"names", QJsonArray{"a", "b"}}}));
    EXPECT_TRUE(ConfigService(path()).section("elsewhere").isEmpty());
}

TEST_F(ConfigServiceTest, APipeInPlaceOfTheFileIsNotWaitedFor) {
    ASSERT_TRUE(QDir().mkpath(mFolder.path() + "/sub"));
    ASSERT_EQ(::mkfifo(path().toLocal8Bit().constData(), 0600), 0);
    ConfigService service(path());
    ASSERT_EQ(service.messages().size(), 1);
    EXPECT_TRUE(service.messages().first().contains("it is a pipe or a device, no file"));
    service.setValue("theme", "light");
    ASSERT_TRUE(service.waitUntilWritten());
    EXPECT_EQ(ConfigService(path()).value("theme"), "light");
}

TEST_F(ConfigServiceTest, AFileOverTheBoundIsKeptAside) {
    ASSERT_TRUE(QDir().mkpath(mFolder.path() + "/sub"));
    QFile huge(path());
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly));
    ASSERT_TRUE(huge.resize(64000001)); // takes no room
    ConfigService service(path());
    ASSERT_EQ(service.messages().size(), 1);
    EXPECT_TRUE(service.messages().first().contains("it is larger than 64000000 bytes"));
    EXPECT_TRUE(QFileInfo::exists(path() + ".damaged"));
}

TEST_F(ConfigServiceTest, WhatCannotBeReadIsKeptAside) {
    ASSERT_TRUE(QDir().mkpath(path() + "/inner")); // a folder in place of the file
    ConfigService service(path());
    ASSERT_EQ(service.messages().size(), 1);
    EXPECT_TRUE(QFileInfo::exists(path() + ".damaged/inner"));
    service.setValue("theme", "light");
    ASSERT_TRUE(service.waitUntilWritten());
    EXPECT_EQ(ConfigService(path()).value("theme"), "light");
}

TEST_F(ConfigServiceTest, AFileThatIsNotOpenedForWantOfFilesIsReadLater) {
    writeFile(R"({"theme": "light", "formulas": {"MACD": {"SHORT": 5}}})");
    std::optional<tests::NoMoreFiles> shortage(std::in_place);
    ConfigService service(path());
    EXPECT_EQ(service.messages().size(), 1);
    service.setValue("instrument", "SH600000");
    shortage.reset();
    EXPECT_EQ(files(), QStringList("config.json")) << "nothing is set aside";
    EXPECT_EQ(ConfigService(path()).value("theme"), "light") << "nor written over";

    service.changeSection("formulas", {{"KDJ", 1.0}});
    ASSERT_TRUE(service.waitUntilWritten());
    const ConfigService again(path());
    for (const ConfigService *known : std::initializer_list<const ConfigService *>{&service, &again}) {
        EXPECT_EQ(known->value("theme"), "light");
        EXPECT_EQ(known->value("instrument"), "SH600000");
        EXPECT_EQ(known->numbers("formulas", "MACD").value("SHORT"), 5.0);
        EXPECT_EQ(known->section("formulas").value("KDJ").toDouble(), 1.0);
    }
}

TEST_F(ConfigServiceTest, AFullDiskLeavesTheFileAsItWasAndIsTold) {
    writeFile(R"({"theme": "light"})");
    ConfigService service(path());
    {
        const tests::FullDisk full;
        service.setValue("instrument", "SH600000");
        EXPECT_FALSE(service.waitUntilWritten());
    }
    EXPECT_EQ(service.messages().size(), 1);
    EXPECT_EQ(readFile(path()), R"({"theme": "light"})");
    EXPECT_EQ(files(), QStringList("config.json"));
    service.setValue("other", "x");
    ASSERT_TRUE(service.waitUntilWritten());
    EXPECT_EQ(ConfigService(path()).value("instrument"), "SH600000") << "written with the next change";
}

TEST_F(ConfigServiceTest, ATroubleThatLastsIsToldOnce) {
    QFile blocker(mFolder.path() + "/sub");
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    ConfigService service(path());
    service.setValue("theme", "light");
    EXPECT_FALSE(service.waitUntilWritten());
    service.setValue("theme", "dark");
    EXPECT_FALSE(service.waitUntilWritten());
    EXPECT_EQ(service.messages().size(), 1);
}
