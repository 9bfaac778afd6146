// The program itself, run as a child process.

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QMap>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct Outcome {
    int status = -1;
    QString errors;
    QString output;
};

/// One home folder for all tests, so that the store is filled once.
const QString &home() {
    static QTemporaryDir folder;
    static const QString path = folder.path();
    return path;
}

/// `locale` is what the environment says of it; none is that of the tests.
Outcome runProgram(const QStringList &arguments, const QMap<QString, QString> &locale = {}) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name :
         {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "QT_FONT_DPI"}) {
        environment.remove(name);
    }
    environment.insert("HOME", home());
    for (auto value = locale.begin(); value != locale.end(); ++value) {
        environment.insert(value.key(), *value);
    }
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(TIMESHARE_BINARY_DIR "/bin/timeshare-terminal", arguments);
    Outcome outcome;
    if (!process.waitForFinished(120000)) {
        process.kill();
        process.waitForFinished();
        return outcome;
    }
    outcome.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    outcome.errors = QString::fromUtf8(process.readAllStandardError());
    outcome.output = QString::fromUtf8(process.readAllStandardOutput());
    return outcome;
}

class ProgramTest : public ::testing::Test {
protected:
    QString file(const QString &name) const { return mFolder.path() + "/" + name; }
    void write(const QString &name, const QByteArray &text) {
        QFile out(file(name));
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(text);
    }
    /// Expects status 2 and one line on the standard error stream that has all of the texts in it.
    void expectRefusal(const QStringList &arguments, const QStringList &texts) {
        const Outcome outcome = runProgram(arguments);
        EXPECT_EQ(outcome.status, 2) << qPrintable(arguments.join(' '));
        const QString line = outcome.errors.section('\r', -1); // a first run tells its progress before it
        EXPECT_TRUE(line.endsWith('\n')) << qPrintable(outcome.errors);
        for (const QString &text : texts) {
            EXPECT_TRUE(line.contains(text)) << qPrintable(text) << " in " << qPrintable(outcome.errors);
        }
    }
    QTemporaryDir mFolder;
};

} // namespace

TEST_F(ProgramTest, ASnapshotNeedsNoDisplayAndHasTheSizeAskedFor) {
    const Outcome outcome = runProgram({"--snapshot", file("a.png"), "--size", "800x450"});
    ASSERT_EQ(outcome.status, 0) << qPrintable(outcome.errors);
    const QImage image(file("a.png"));
    EXPECT_EQ(image.size(), QSize(800, 450));
}

TEST_F(ProgramTest, TheRatioMultipliesThePixels) {
    ASSERT_EQ(runProgram({"--snapshot", file("a.png"), "--size", "640x400", "--ratio", "2"}).status, 0);
    EXPECT_EQ(QImage(file("a.png")).size(), QSize(1280, 800));
    ASSERT_EQ(runProgram({"--snapshot", file("b.png"), "--size", "640x400", "--ratio", "1.5"}).status, 0);
    EXPECT_EQ(QImage(file("b.png")).size(), QSize(960, 600));
}

TEST_F(ProgramTest, ThemesDiffer) {
    ASSERT_EQ(runProgram({"--snapshot", file("d.png"), "--theme", "dark"}).status, 0);
    ASSERT_EQ(runProgram({"--snapshot", file("l.png"), "--theme", "light"}).status, 0);
    EXPECT_LT(QImage(file("d.png")).pixelColor(3, 3).lightness(), 128);
    EXPECT_GT(QImage(file("l.png")).pixelColor(3, 3).lightness(), 128);
}

TEST_F(ProgramTest, APictureTellsThatItsPreviousCloseIsNotKnown) {
    const auto pictureOf = [this](const char *name, const QByteArray &heading, const QByteArray &field) {
        QByteArray text = "symbol,datetime,open,high,low,close,volume,amount" + heading + '\n';
        for (int minute = 31; minute < 60; ++minute) {
            text += "600998.SH,2026-03-24 09:" + QByteArray::number(minute) + ",20,20,20,20,1000,20000" +
                    field + '\n';
        }
        write("bars.csv", text);
        const QString picture = file(name);
        EXPECT_EQ(runProgram({"--import", file("bars.csv"), "--snapshot", picture, "--instrument", "SH600998",
                              "--date", "2026-03-24"})
                      .status,
                  0);
        return QImage(picture);
    };
    const QImage guessed = pictureOf("guessed.png", "", "");
    // The same minutes once more, with the close before.
    const QImage told = pictureOf("told.png", ",PreClosePx", ",20");
    ASSERT_EQ(guessed.size(), told.size());
    constexpr int kTop = 12; // rows
    EXPECT_NE(guessed.copy(0, 0, guessed.width(), kTop), told.copy(0, 0, told.width(), kTop));
}

TEST_F(ProgramTest, AnImportedDayIsDrawn) {
    QByteArray text = "symbol,exchange,datetime,open,high,low,close,volume,amount\n";
    for (int minute = 571; minute <= 690; ++minute) {
        text += QStringLiteral("600998,SSE,2026-03-24 %1:%2:00,20.00,20.00,20.00,20.00,1000,20000\n")
                    .arg(minute / 60, 2, 10, QLatin1Char('0'))
                    .arg(minute % 60, 2, 10, QLatin1Char('0'))
                    .toUtf8();
    }
    write("bars.csv", text);
    const Outcome outcome = runProgram({"--import", file("bars.csv"), "--snapshot", file("i.png")});
    ASSERT_EQ(outcome.status, 0) << qPrintable(outcome.errors);
    EXPECT_TRUE(outcome.errors.contains("SH600998")) << qPrintable(outcome.errors);
    EXPECT_FALSE(QImage(file("i.png")).isNull());
    EXPECT_EQ(
        runProgram({"--instrument", "600998", "--date", "2026-03-24", "--snapshot", file("j.png")}).status, 0);
}

TEST_F(ProgramTest, HelpGoesToTheStandardOutput) {
    const Outcome outcome = runProgram({"--help"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.output.contains("--snapshot"));
    EXPECT_TRUE(outcome.errors.isEmpty());
}

TEST_F(ProgramTest, TheLanguageIsTheMachinesOrTheOneGiven) {
    const QString chinese = QStringLiteral("用法");
    const auto helpWith = [](const QStringList &arguments, const QMap<QString, QString> &locale) {
        return runProgram(QStringList("--help") + arguments, locale).output.section(':', 0, 0);
    };
    EXPECT_EQ(helpWith({}, {}), chinese);
    EXPECT_EQ(helpWith({"--language", "en"}, {}), "Usage");
    // Locales of which this machine may have no files.
    EXPECT_EQ(helpWith({}, {{"LC_ALL", "en_US.UTF-8"}}), "Usage");
    EXPECT_EQ(helpWith({}, {{"LC_ALL", ""}, {"LANG", "de_DE.UTF-8"}}), "Usage");
    EXPECT_EQ(helpWith({}, {{"LC_ALL", ""}, {"LANG", "zh_CN.UTF-8"}}), chinese);
    EXPECT_EQ(helpWith({}, {{"LC_ALL", ""}, {"LANG", "zh_CN.GB18030"}}), chinese);
    EXPECT_EQ(helpWith({}, {{"LANGUAGE", "en_GB:en"}, {"LC_ALL", ""}, {"LANG", "zh_CN.UTF-8"}}), "Usage");
    EXPECT_EQ(helpWith({"--language", "zh"}, {{"LC_ALL", "en_US.UTF-8"}}), chinese);
}

TEST_F(ProgramTest, BadInputGetsOneLineAndStatusTwo) {
    const QStringList picture{"--snapshot", file("p.png")};
    expectRefusal({"--sizes", "1x1"}, {"--sizes", "--size", "--help"});
    expectRefusal({"--size", "1x1"}, {"--size 1x1", "1200x700"});
    expectRefusal(QStringList{"--instrument", "SH60000"} + picture, {"SH60000", "SH600000"});
    expectRefusal(QStringList{"--instrument", "SH600000", "--date", "2026-11-15"} + picture,
                  {"2026-11-15", "no trading day", "2026-11-"}); // a Sunday
    expectRefusal({"--snapshot", file("no/such/folder.png")}, {"no/such/folder.png", "written"});
    expectRefusal({"--snapshot", mFolder.path()}, {"it is a folder"});
    write("broken.db", QByteArray(5000, 'x'));
    expectRefusal(QStringList{"--store", file("broken.db")} + picture, {"broken.db"});
    write("bad.csv", "symbol,exchange,datetime,open,high,low,close,volume,amount\n"
                     "600000,SSE,2026-03-24 09:31:00,1,1,1,abc,1,1\n");
    expectRefusal(QStringList{"--import", file("bad.csv")} + picture, {"bad.csv:2:"});
    EXPECT_FALSE(QFile::exists(file("p.png")));
}

TEST_F(ProgramTest, AFirstStartLooksAtItsDateWhenTheDaysAreMadeBehindTheWindow) {
    const QStringList start{"--store", file("new.db"), "--instrument", "SH600000", "--date", "2026-11-22"};
    const QStringList told{"--date 2026-11-22: no trading day of SH600000: the nearest are 20"};
    expectRefusal(start, told); // the nearest are those that have just been made
    expectRefusal(start, told);
}

TEST_F(ProgramTest, TheScriptModelsThatComeWithItAreInTheUsersFolder) {
    ASSERT_EQ(runProgram({"--snapshot", file("a.png")}).status, 0);
    QStringList found;
    QDirIterator files(home() + "/.local/share", {"*.py"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        found << QFileInfo(files.next()).fileName();
    }
    found.sort();
    EXPECT_EQ(found, (QStringList{"GROUPRANK.py", "MEANBAND.py", "timeshare_model.py"}));
}
