#include "terminal/formula/ScriptModel.h"

#include "terminal/formula/ScriptModelCatalogue.h"
#include "tests/terminal/Samples.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <csignal>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

using namespace terminal;
using tests::kToday;

namespace {

const QString kScripts = QStringLiteral(TIMESHARE_SOURCE_DIR "/scripts/");

MinuteBars barsOf(const std::vector<double> &prices) {
    MinuteBars bars;
    for (const double price : prices) {
        MinuteBar bar;
        bar.time = kToday * 1000LL + (571 + static_cast<qint64>(bars.size())) * 60000;
        bar.open = bar.high = bar.low = bar.price = bar.average = price;
        bar.volume = 100;
        bars.push_back(bar);
    }
    return bars;
}

class ScriptModelTest : public ::testing::Test {
protected:
    ScriptModelTest() {
        mInput.key = "SH600000";
        mInput.day = kToday;
        mInput.bars = barsOf({10.0, 11.0});
        mSettings.limits.milliseconds = 30000;
    }

    /// Writes a model and makes it the one to run.
    void write(const QByteArray &text) {
        QFile file(mFolder.filePath("MODEL.py"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        mInput.file = file.fileName();
    }
    ScriptModelOutcome run() {
        ScriptModelProcess process;
        return runScriptModel(process, mInput, mSettings);
    }
    /// The number that the model has written into a file; 0 while there is none.
    qint64 numberIn(const char *name) const {
        QFile file(mFolder.filePath(QString::fromLatin1(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toLongLong() : 0;
    }
    static bool isGone(qint64 process) {
        QFile status(QStringLiteral("/proc/%1/stat").arg(process));
        // A zombie has gone, but for whoever has to note it.
        return !status.open(QIODevice::ReadOnly) || status.readAll().contains(") Z ");
    }

    QTemporaryDir mFolder;
    ScriptModelInput mInput;
    ScriptModelSettings mSettings;
};

} // namespace

TEST_F(ScriptModelTest, AModelReadsBarsAndArgumentsAndGivesLines) {
    write("import json, sys\n"
          "told = json.loads(sys.stdin.readline())\n"
          "factor = float(told['arguments']['F'])\n"
          "print(json.dumps({'line': told['instrument'] + ' ' + told['day'],\n"
          "                  'values': [p * factor for p in told['bars']['price']]}))\n");
    mInput.arguments["F"] = "2.5";
    const ScriptModelOutcome outcome = run();
    ASSERT_FALSE(outcome.error) << qPrintable(outcome.error->text);
    EXPECT_EQ(outcome.meta.mLineNames, (std::vector<std::string>{"SH600000 2025-11-21"}));
    EXPECT_EQ(outcome.result.mValues, (std::vector<std::vector<double>>{{25.0, 27.5}}));
    EXPECT_EQ(outcome.result.mTimes.front(), (se::TimePosition{kToday * 1000LL + 571 * 60000, 0}));
}

TEST_F(ScriptModelTest, AMissingFileIsToldByItsName) {
    mInput.file = mFolder.filePath("GONE.py");
    const ScriptModelOutcome outcome = run();
    ASSERT_TRUE(outcome.error);
    EXPECT_EQ(outcome.error->formula, "GONE");
    EXPECT_TRUE(outcome.error->text.contains(mInput.file));
    EXPECT_TRUE(outcome.result.mTimes.empty());
}

TEST_F(ScriptModelTest, AMissingInterpreterIsTold) {
    write("print()");
    mSettings.interpreter = "no-such-python";
    ASSERT_TRUE(run().error);
    EXPECT_TRUE(run().error->text.contains("no-such-python"));
    mSettings.interpreter = "/nowhere/python3";
    ASSERT_TRUE(run().error);
    EXPECT_TRUE(run().error->text.contains("/nowhere/python3"));
}

TEST_F(ScriptModelTest, AnExceptionIsToldWithItsLine) {
    write("import sys\n\ndef f():\n    raise ValueError('参数 N 太小')\n\nf()\n");
    const ScriptModelOutcome outcome = run();
    ASSERT_TRUE(outcome.error);
    EXPECT_EQ(outcome.error->formula, "MODEL");
    EXPECT_EQ(outcome.error->line, 4);
    EXPECT_EQ(outcome.error->text, "ValueError: 参数 N 太小");
}

TEST_F(ScriptModelTest, ASyntaxErrorIsToldWithItsLine) {
    write("x = 1\nif x\n    pass\n");
    const ScriptModelOutcome outcome = run();
    ASSERT_TRUE(outcome.error);
    EXPECT_EQ(outcome.error->line, 2);
    EXPECT_TRUE(outcome.error->text.contains("SyntaxError"));
}

TEST_F(ScriptModelTest, AnErrorThatTheModelTellsIsItsText) {
    write("import sys\nprint('{\"error\": \"今天没有数据\"}')\nsys.exit(1)\n");
    ASSERT_TRUE(run().error);
    EXPECT_EQ(run().error->text, "今天没有数据");
}

TEST_F(ScriptModelTest, OutputThatIsNoResultIsTold) {
    write("print('hello')\n");
    ASSERT_TRUE(run().error);
    EXPECT_TRUE(run().error->text.contains("hello"));
}

TEST_F(ScriptModelTest, AModelWithoutOutputIsTold) {
    write("pass\n");
    ASSERT_TRUE(run().error);
    EXPECT_FALSE(run().error->text.isEmpty());
}

TEST_F(ScriptModelTest, AModelThatDoesNotReadItsInputIsNoError) {
    mInput.bars = barsOf(std::vector<double>(20000, 10.0)); // more than a pipe holds
    write("print('{\"line\":\"a\",\"values\":[' + ','.join(['1'] * 20000) + ']}')\n");
    const ScriptModelOutcome outcome = run();
    ASSERT_FALSE(outcome.error) << qPrintable(outcome.error->text);
    EXPECT_EQ(outcome.result.mTimes.size(), 20000u);
}

TEST_F(ScriptModelTest, AModelThatNeverEndsIsStopped) {
    write("while True:\n    pass\n");
    mSettings.limits.milliseconds = 300;
    const ScriptModelOutcome outcome = run();
    ASSERT_TRUE(outcome.error);
    EXPECT_TRUE(outcome.error->text.contains("0.3 秒")) << qPrintable(outcome.error->text);
}

TEST_F(ScriptModelTest, AModelThatPrintsWithoutEndIsStopped) {
    write("while True:\n    print('{\"progress\": 0, \"total\": 1}' * 1, flush=False)\n");
    mSettings.limits.outputBytes = 1 << 20;
    const ScriptModelOutcome outcome = run();
    ASSERT_TRUE(outcome.error);
    EXPECT_TRUE(outcome.error->text.contains("1 MB")) << qPrintable(outcome.error->text);
}

TEST_F(ScriptModelTest, AModelThatPrintsNoLineEndIsStopped) {
    write("import sys\nwhile True:\n    sys.stdout.write('x' * 65536)\n");
    ASSERT_TRUE(run().error);
    EXPECT_TRUE(run().error->text.contains("4194304")) << qPrintable(run().error->text);
}

TEST_F(ScriptModelTest, AModelThatTakesMemoryWithoutEndGetsAnError) {
    write("held = []\nwhile True:\n    held.append(bytearray(1 << 20))\n");
    mSettings.limits.memoryBytes = 256 << 20;
    const ScriptModelOutcome outcome = run();
    ASSERT_TRUE(outcome.error);
    EXPECT_EQ(outcome.error->text, "MemoryError");
    EXPECT_EQ(outcome.error->line, 3);
}

TEST_F(ScriptModelTest, AModelThatWritesErrorsWithoutEndIsStopped) {
    write("import sys\nwhile True:\n    sys.stderr.write('x' * 65536)\n");
    mSettings.limits.milliseconds = 300;
    ASSERT_TRUE(run().error);
}

TEST_F(ScriptModelTest, ASignalThatEndsTheModelIsTold) {
    write("import os, signal\nos.kill(os.getpid(), signal.SIGSEGV)\n");
    ASSERT_TRUE(run().error);
    EXPECT_TRUE(run().error->text.contains(QString::number(SIGSEGV)));
}

TEST_F(ScriptModelTest, AStoppedRunGivesNothingAndLeavesNoProcess) {
    write("import os, subprocess, sys, time\n"
          "child = subprocess.Popen(['sleep', '1000'])\n"
          "open('child.tmp', 'w').write(str(child.pid))\nos.rename('child.tmp', 'child')\n"
          "open('own.tmp', 'w').write(str(os.getpid()))\nos.rename('own.tmp', 'own')\n"
          "time.sleep(1000)\n");
    ScriptModelProcess process;
    ScriptModelOutcome outcome;
    std::thread runner([&] { outcome = runScriptModel(process, mInput, mSettings); });
    const bool started = QTest::qWaitFor([this] { return numberIn("own") > 0; }, 20000);
    process.stop();
    runner.join();
    ASSERT_TRUE(started);
    EXPECT_TRUE(outcome.stopped);
    EXPECT_FALSE(outcome.error);
    EXPECT_TRUE(isGone(numberIn("own")));
    EXPECT_TRUE(QTest::qWaitFor([this] { return isGone(numberIn("child")); }, 20000));
}

TEST_F(ScriptModelTest, ARunThatIsStoppedBeforeItBeginsDoesNotBegin) {
    write("open('ran', 'w').write('1')\n");
    ScriptModelProcess process;
    process.stop();
    EXPECT_TRUE(runScriptModel(process, mInput, mSettings).stopped);
    EXPECT_EQ(numberIn("ran"), 0);
}

TEST_F(ScriptModelTest, WhatAModelLeavesRunningEndsWithItAndDoesNotHoldItUp) {
    write("import subprocess\n"
          "child = subprocess.Popen(['sleep', '1000'])\n" // holds the output open
          "open('child', 'w').write(str(child.pid))\n"
          "print('{\"line\":\"a\",\"values\":[1,2]}')\n");
    QElapsedTimer time;
    time.start();
    const ScriptModelOutcome outcome = run();
    EXPECT_LT(time.elapsed(), mSettings.limits.milliseconds);
    ASSERT_FALSE(outcome.error);
    EXPECT_EQ(outcome.meta.mLineCount, 1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return isGone(numberIn("child")); }, 20000));
}

namespace {

/// A daemon in a session of its own, twice forked, whose id goes to the file "daemon".
const QByteArray kDaemon = "import os, sys, time\n"
                           "if os.fork() == 0:\n"
                           "    os.setsid()\n"
                           "    if os.fork() == 0:\n"
                           "        open('daemon.tmp', 'w').write(str(os.getpid()))\n"
                           "        os.rename('daemon.tmp', 'daemon')\n"
                           "        time.sleep(1000)\n"
                           "    os._exit(0)\n"
                           "while not os.path.exists('daemon'):\n"
                           "    time.sleep(0.01)\n";

} // namespace

TEST_F(ScriptModelTest, ADaemonInASessionOfItsOwnEndsWithTheModel) {
    write(kDaemon + "print('{\"line\":\"a\",\"values\":[1,2]}')\n");
    const ScriptModelOutcome outcome = run();
    ASSERT_FALSE(outcome.error) << qPrintable(outcome.error->text);
    ASSERT_GT(numberIn("daemon"), 0);
    EXPECT_TRUE(isGone(numberIn("daemon")));
}

TEST_F(ScriptModelTest, ADaemonEndsWhenItsModelIsStoppedThoughItHoldsItsSupervisorUp) {
    write(kDaemon + "import signal\n"
                    "os.kill(os.getppid(), signal.SIGSTOP)\n"
                    "open('own.tmp', 'w').write(str(os.getpid()))\nos.rename('own.tmp', 'own')\n"
                    "time.sleep(1000)\n");
    ScriptModelProcess process;
    std::thread runner([&] { runScriptModel(process, mInput, mSettings); });
    const bool started = QTest::qWaitFor([this] { return numberIn("own") > 0; }, 20000);
    process.stop();
    runner.join();
    ASSERT_TRUE(started);
    EXPECT_TRUE(isGone(numberIn("daemon")));
    EXPECT_TRUE(isGone(numberIn("own")));
}

TEST_F(ScriptModelTest, NothingIsLeftWhenTheProgramIsKilled) {
    write(kDaemon + "open('own.tmp', 'w').write(str(os.getpid()))\nos.rename('own.tmp', 'own')\n"
                    "time.sleep(1000)\n");
    const pid_t program = fork();
    if (program == 0) {
        run();
        _exit(0);
    }
    const bool started = QTest::qWaitFor([this] { return numberIn("own") > 0; }, 20000);
    kill(program, SIGKILL);
    waitpid(program, nullptr, 0);
    ASSERT_TRUE(started);
    for (const char *name : {"own", "daemon"}) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return isGone(numberIn(name)); }, 20000)) << name;
    }
}

TEST_F(ScriptModelTest, TooManyProcessesEndTheModelAndAllOfThem) {
    write("import subprocess, time\n"
          "for i in range(40):\n"
          "    child = subprocess.Popen(['sleep', '1000'])\n"
          "    open('child', 'w').write(str(child.pid))\n"
          "time.sleep(1000)\n");
    mSettings.limits.processes = 20;
    const ScriptModelOutcome outcome = run();
    ASSERT_TRUE(outcome.error);
    // Where the system counts them for the user, the model hears of it itself.
    EXPECT_TRUE(outcome.error->text.contains("20 个") || outcome.error->text.contains("BlockingIOError"))
        << qPrintable(outcome.error->text);
    EXPECT_TRUE(isGone(numberIn("child")));
}

TEST_F(ScriptModelTest, TheMemoryOfAllProcessesIsLimited) {
    write("import os, time\n"
          "for i in range(5):\n"
          "    if os.fork() == 0:\n"
          "        held = bytearray(os.urandom(1 << 20)) * 100\n"
          "        time.sleep(1000)\n"
          "time.sleep(1000)\n");
    mSettings.limits.memoryBytes = 300 << 20; // enough for each of them
    const ScriptModelOutcome outcome = run();
    ASSERT_TRUE(outcome.error);
    EXPECT_TRUE(outcome.error->text.contains("300 MB")) << qPrintable(outcome.error->text);
}

TEST_F(ScriptModelTest, FilesAreLimitedInNumberAndSize) {
    write("held = [open('/dev/null') for i in range(300)]\n");
    ASSERT_TRUE(run().error);
    EXPECT_TRUE(run().error->text.contains("Too many open files")) << qPrintable(run().error->text);
    write("open('large', 'wb').write(bytes(2 << 20))\n");
    mSettings.limits.fileBytes = 1 << 20;
    ASSERT_TRUE(run().error);
    EXPECT_TRUE(run().error->text.contains("File too large")) << qPrintable(run().error->text);
    EXPECT_LE(QFileInfo(mFolder.filePath("large")).size(), 1 << 20);
}

TEST(ScriptModelEnvironment, OnlyWhatIsListedIsLetThrough) {
    const char *const given[] = {"PATH=/usr/bin", "SECRET_TOKEN=1", "LC_ALL=C.UTF-8",   "LD_PRELOAD=x.so",
                                 "HOME=/home/u",  "PATHS=no",       "SSH_AUTH_SOCK=/s", nullptr};
    EXPECT_EQ(modelEnvironment(given),
              (std::vector<std::string>{"PATH=/usr/bin", "LC_ALL=C.UTF-8", "HOME=/home/u", "PYTHONUTF8=1"}));
    EXPECT_EQ(modelEnvironment(nullptr), (std::vector<std::string>{"PYTHONUTF8=1"}));
}

TEST_F(ScriptModelTest, AModelSeesNoOtherEnvironment) {
    qputenv("TIMESHARE_SECRET", "1");
    write("import os\nprint('{\"error\": \"%s\"}' % ('TIMESHARE_SECRET' in os.environ))\n");
    const ScriptModelOutcome outcome = run();
    qunsetenv("TIMESHARE_SECRET");
    ASSERT_TRUE(outcome.error);
    EXPECT_EQ(outcome.error->text, "False");
}

TEST_F(ScriptModelTest, ProgressIsToldWhileItRuns) {
    write("for i in range(4):\n    print('{\"progress\": %d, \"total\": 3, \"text\": \"s%d\"}' % (i, i))\n"
          "print('{\"line\":\"a\",\"values\":[1,2]}')\n");
    ScriptModelProcess process;
    QStringList told;
    runScriptModel(process, mInput, mSettings, [&told](const ScriptModelProgress &progress) {
        told << QString("%1/%2 %3").arg(progress.done).arg(progress.total).arg(progress.text);
    });
    ASSERT_FALSE(told.isEmpty());
    EXPECT_EQ(told.last(), "3/3 s3");
}

TEST(ScriptModelNames, APathMayHaveABackslash) {
    EXPECT_EQ(scriptModelPath("/home/u/scripts\\ABC.py"), "/home/u/scripts/ABC.py");
    EXPECT_EQ(scriptModelName("/home/u/scripts/ABC.py"), "ABC");
}

TEST(ScriptModelNames, AGroupIsSeparatedByCommasAndBlanks) {
    EXPECT_EQ(scriptModelGroup({{"group", "SH600000, SZ000001，SZ300750;HK02318"}}),
              (QStringList{"SH600000", "SZ000001", "SZ300750", "HK02318"}));
    EXPECT_TRUE(scriptModelGroup({}).isEmpty());
}

TEST(ScriptModelCatalogue, ARecordStandsInTheHeadOfTheFile) {
    const TC::CFormulaDetail detail =
        readScriptModelHeader("abc", "# type: 1\n#parameter N : 20\n# parameter K: -2.5\n# words\n"
                                     "# parameter group: \"SH600000,SZ000001\"\n# parameter bad: x\n"
                                     "import os\n# parameter late: 3\n");
    EXPECT_EQ(detail.mName, "ABC");
    EXPECT_EQ(detail.mLanguage, TC::EFormulaLanguage::Python);
    EXPECT_EQ(detail.mType, 1);
    EXPECT_EQ(detail.mParamNames, (QVector<QString>{"N", "K"}));
    EXPECT_EQ(detail.mParamValues, (QVector<double>{20, -2.5}));
    EXPECT_EQ(detail.mStrParamNames, (QVector<QString>{"group"}));
    EXPECT_EQ(detail.mStrParamValues, (QVector<QString>{"SH600000,SZ000001"}));
    EXPECT_EQ(readScriptModelHeader("a", "# type: 7\n").mType, 0);
}

TEST(ScriptModelCatalogue, TheModelsOfAFolderAreItsFilesOfUpperCaseNames) {
    QStringList names;
    for (const TC::CFormulaDetailPtr &model : readScriptModels(kScripts)) {
        names << model->mName;
    }
    EXPECT_EQ(names, (QStringList{"GROUPRANK", "MEANBAND"}));
    EXPECT_TRUE(readScriptModels("/nowhere").isEmpty());
}

TEST(ScriptModelCatalogue, CopyingLeavesTheUsersFilesAlone) {
    QTemporaryDir folder;
    const QString target = folder.filePath("a/b");
    ASSERT_TRUE(QDir().mkpath(target));
    QFile own(target + "/MEANBAND.py");
    ASSERT_TRUE(own.open(QIODevice::WriteOnly));
    own.write("mine");
    own.close();
    EXPECT_TRUE(copyMissingFiles(builtInScripts(), target));
    EXPECT_EQ(QFileInfo(own).size(), 4);
    for (const QString name : {"/GROUPRANK.py", "/timeshare_model.py"}) {
        QFile copied(target + name);
        QFile source(kScripts + name);
        ASSERT_TRUE(copied.open(QIODevice::ReadOnly) && source.open(QIODevice::ReadOnly)) << qPrintable(name);
        EXPECT_EQ(copied.readAll(), source.readAll());
        EXPECT_TRUE(copied.permissions() & QFile::WriteOwner) << "the user may change it";
    }
}

namespace {

/// The models that come with the terminal.
class SampleModelTest : public ScriptModelTest {
protected:
    ScriptModelOutcome runSample(const QString &name) {
        mInput.file = kScripts + name + ".py";
        return run();
    }
};

} // namespace

TEST_F(SampleModelTest, TheBandLiesAroundTheAverageOfTheLastPrices) {
    mInput.bars = barsOf({2, 4, 4, 4, 5, 5, 7, 9});
    mInput.arguments = {{"N", "8"}, {"K", "2"}};
    const ScriptModelOutcome outcome = runSample("MEANBAND");
    ASSERT_FALSE(outcome.error) << qPrintable(outcome.error->text);
    // The eight numbers have the mean 5 and the standard deviation 2.
    ASSERT_EQ(outcome.result.mValues.size(), 3u);
    EXPECT_EQ(outcome.result.mValues[0][6], TC::kUnsetValue);
    EXPECT_DOUBLE_EQ(outcome.result.mValues[0][7], 5.0);
    EXPECT_DOUBLE_EQ(outcome.result.mValues[1][7], 9.0);
    EXPECT_DOUBLE_EQ(outcome.result.mValues[2][7], 1.0);
}

TEST_F(SampleModelTest, ABadArgumentIsToldInWords) {
    mInput.arguments = {{"N", "x"}, {"K", "2"}};
    ASSERT_TRUE(runSample("MEANBAND").error);
    EXPECT_TRUE(runSample("MEANBAND").error->text.contains("参数 N 不是数：x"));
    EXPECT_GT(runSample("MEANBAND").error->line, 0);
    mInput.arguments = {{"K", "2"}};
    EXPECT_TRUE(runSample("MEANBAND").error->text.contains("缺少参数 N"));
}

TEST_F(SampleModelTest, TheRankIsThatOfTheReturnWithinTheGroup) {
    mInput.bars = barsOf({10.0, 11.0}); // +10 %
    mInput.group = {{"A", barsOf({10.0, 12.0})},
                    {"B", barsOf({10.0, 11.0})},
                    {"C", barsOf({20.0, 19.0})},
                    {"D", barsOf({50.0, 50.0})}}; // +20, +10, -5, 0 %
    const ScriptModelOutcome outcome = runSample("GROUPRANK");
    ASSERT_FALSE(outcome.error) << qPrintable(outcome.error->text);
    ASSERT_EQ(outcome.result.mValues.size(), 3u);
    EXPECT_NEAR(outcome.result.mValues[0][1], 10.0, 1e-9);
    EXPECT_NEAR(outcome.result.mValues[1][1], 6.25, 1e-9);
    EXPECT_NEAR(outcome.result.mValues[2][0], 50.0, 1e-9); // all are equal
    EXPECT_NEAR(outcome.result.mValues[2][1], 62.5, 1e-9); // two of four below, one equal
}

TEST_F(SampleModelTest, AGroupWithoutInstrumentsIsTold) {
    ASSERT_TRUE(runSample("GROUPRANK").error);
    EXPECT_TRUE(runSample("GROUPRANK").error->text.contains("group"));
}
