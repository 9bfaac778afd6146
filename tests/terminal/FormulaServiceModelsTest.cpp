#include "tests/terminal/FormulaServiceFixture.h"

#include <QFile>
#include <QTemporaryDir>

#include <atomic>
#include <mutex>

using namespace terminal;
using namespace tests;

namespace {

const QByteArray kEcho = "import json, sys\n"
                         "told = json.loads(sys.stdin.readline())\n"
                         "print(json.dumps({'line': 'p', 'values': told['bars']['price']}))\n";

class FormulaServiceModelsTest : public FormulaServiceFixture {
protected:
    FormulaServiceModelsTest() {
        ScriptModelSettings settings;
        settings.pauseMilliseconds = 1;
        mService->setScriptModels(settings, [this](const FormulaError &error) {
            std::lock_guard<std::mutex> hold(mLock);
            mErrors.append(error);
        });
    }
    ~FormulaServiceModelsTest() override { mService.reset(); }

    void write(const QString &name, const QByteArray &text) {
        QFile file(mFolder.filePath(name + ".py"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    TC::CFormulaParam model(const QString &id, const QString &name, int demand = 1) {
        TC::CFormulaParam made = param(id, mFolder.path() + "\\" + name + ".py", demand);
        made.mLanguage = 1;
        return made;
    }
    QList<FormulaError> errors() {
        std::lock_guard<std::mutex> hold(mLock);
        return mErrors;
    }
    std::string progressOf(const std::string &id, const char *field) {
        bson::BSONObj progress;
        return corvaneProgress(id, progress) ? progress.getString(field) : "unknown";
    }
    bool corvaneProgress(const std::string &id, bson::BSONObj &progress) {
        return mService->groupRunProgress(id, progress);
    }
    bool exists(const char *name) { return QFile::exists(mFolder.filePath(QString::fromLatin1(name))); }

    QTemporaryDir mFolder;
    std::mutex mLock;
    QList<FormulaError> mErrors;
};

} // namespace

TEST_F(FormulaServiceModelsTest, AModelGivesASeriesOverTheDay) {
    write("ECHO", kEcho);
    request({model("m", "ECHO")});
    ASSERT_TRUE(waitForResults(1));
    EXPECT_EQ(mReceived[0].id, "m");
    EXPECT_EQ(mReceived[0].meta->mLineNames, (std::vector<std::string>{"p"}));
    EXPECT_EQ(mReceived[0].result->mValues, (std::vector<std::vector<double>>{{10.0, 10.2}}));
    EXPECT_TRUE(errors().isEmpty());
}

TEST_F(FormulaServiceModelsTest, ItRunsAgainWhenAMinuteIsAddedAndNotWhenTheLastOneChanges) {
    write("ECHO", kEcho);
    request({model("m", "ECHO", 3)});
    ASSERT_TRUE(waitForResults(1));
    mFeed.change("SH600000", bar(kOpen + kMinute, 10.3, 10.1, 400));
    mFeed.change("SH600000", bar(kOpen + 2 * kMinute, 10.4, 10.1, 1));
    ASSERT_TRUE(waitForResults(2));
    EXPECT_EQ(mReceived[1].result->mValues, (std::vector<std::vector<double>>{{10.0, 10.3, 10.4}}))
        << "one run for both changes";
    EXPECT_TRUE(mReceived[1].keepRange);
}

TEST_F(FormulaServiceModelsTest, AnErrorIsToldWithNameAndLineAndGivesAnEmptySeries) {
    write("BAD", "x = 1\nraise ValueError('no')\n");
    request({model("m", "BAD"), model("n", "GONE")});
    ASSERT_TRUE(waitForResults(2));
    EXPECT_TRUE(mReceived[0].result->mTimes.empty());
    EXPECT_TRUE(mReceived[1].result->mTimes.empty());
    ASSERT_EQ(errors().size(), 2);
    QStringList names;
    for (const FormulaError &error : errors()) {
        names << QString("%1:%2").arg(error.formula).arg(error.line);
    }
    names.sort();
    EXPECT_EQ(names, (QStringList{"BAD:2", "GONE:0"}));
    EXPECT_EQ(progressOf("m", "state"), "failed");
}

TEST_F(FormulaServiceModelsTest, AnErrorLaterInTheDayLeavesTheSeriesAsItWas) {
    write("LATE", kEcho + "assert len(told['bars']['price']) < 3\n");
    request({model("m", "LATE", 3)});
    ASSERT_TRUE(waitForResults(1));
    mFeed.change("SH600000", bar(kOpen + 2 * kMinute, 10.4, 10.1, 1));
    ASSERT_TRUE(QTest::qWaitFor([this] { return errors().size() == 1; }, 20000));
    mService->unrequestFormula("m");
    ASSERT_TRUE(QTest::qWaitFor([this] { return mService->pendingResults() == 0; }, 10000));
    EXPECT_EQ(mReceived.size(), 1);
}

TEST_F(FormulaServiceModelsTest, AWithdrawnModelIsEnded) {
    write("SLOW", "import time\nopen('begun', 'w').close()\ntime.sleep(1000)\n");
    request({model("m", "SLOW")});
    ASSERT_TRUE(QTest::qWaitFor([this] { return exists("begun"); }, 20000));
    EXPECT_EQ(progressOf("m", "state"), "running");
    mService->unrequestFormula("m");
    EXPECT_EQ(progressOf("m", "state"), "unknown");
    // Two more at once find both places free.
    write("ECHO", kEcho);
    request({model("a", "ECHO"), model("b", "ECHO")});
    ASSERT_TRUE(waitForResults(2));
    EXPECT_TRUE(errors().isEmpty()) << "being withdrawn is no error";
}

TEST_F(FormulaServiceModelsTest, TheServiceEndsAtOnceWhileModelsRunAndWait) {
    write("SLOW", "import time\nopen('begun', 'w').close()\ntime.sleep(1000)\n");
    for (int i = 0; i < 5; ++i) {
        request({model(QString::number(i), "SLOW")});
    }
    ASSERT_TRUE(QTest::qWaitFor([this] { return exists("begun"); }, 20000));
    mService.reset();
    EXPECT_TRUE(mReceived.isEmpty());
}

TEST_F(FormulaServiceModelsTest, AGroupModelGetsTheBarsOfItsGroupAndTellsItsProgress) {
    mFeed.setBars("SZ000001", kToday, {bar(kOpen, 20.0, 20.0, 5)});
    write("GROUP",
          "import json, sys\n"
          "told = json.loads(sys.stdin.readline())\n"
          "for i, member in enumerate(told['group']):\n"
          "    print(json.dumps({'progress': i + 1, 'total': len(told['group']),"
          " 'text': member['instrument']}))\n"
          "print(json.dumps({'line': 'g', 'values': [m['bars']['price'][0] for m in told['group']]}))\n");
    TC::CFormulaParam group = model("g", "GROUP");
    group.mArguments["group"] = "SH600000,SZ000001,SZ999999"; // the last one is unknown
    request({group});
    ASSERT_TRUE(waitForResults(1));
    EXPECT_EQ(mReceived[0].result->mValues, (std::vector<std::vector<double>>{{10.0, 20.0}}));
    bson::BSONObj progress;
    ASSERT_TRUE(corvaneProgress("g", progress));
    EXPECT_EQ(progress.getNumber("done"), 2);
    EXPECT_EQ(progress.getNumber("total"), 2);
    EXPECT_EQ(progress.getString("text"), "SZ000001");
    EXPECT_EQ(progress.getString("state"), "finished");
    EXPECT_FALSE(corvaneProgress("unknown", progress));
}

TEST_F(FormulaServiceModelsTest, FormulasThatAreNoModelsHaveNoProgress) {
    request({param("a")});
    ASSERT_TRUE(waitForResults(1));
    bson::BSONObj progress;
    EXPECT_FALSE(corvaneProgress("a", progress));
}

TEST_F(FormulaServiceModelsTest, SyncRunsModelsToo) {
    write("ECHO", kEcho);
    QVector<TC::CFormulaParam> params{model("m", "ECHO"), model("n", "GONE"), param("a")};
    std::vector<TC::FormulaMetaPtr> metas;
    std::vector<TC::FormulaResultPtr> results;
    mService->requestFormulasSync(params, metas, results);
    ASSERT_EQ(results.size(), 3u);
    EXPECT_EQ(results[0]->mValues, (std::vector<std::vector<double>>{{10.0, 10.2}}));
    EXPECT_TRUE(results[1]->mTimes.empty());
    EXPECT_EQ(results[2]->mValues[0], (std::vector<double>{10.0, 10.2}));
    EXPECT_EQ(errors().size(), 1);
}

TEST_F(FormulaServiceModelsTest, HiddenLinesAreAskedForByTheIndexOfAPoint) {
    write("HIDE", "import json, sys\n"
                  "told = json.loads(sys.stdin.readline())\n"
                  "price = told['bars']['price']\n"
                  "print(json.dumps({'line': 'shown', 'values': price}))\n"
                  "print(json.dumps({'line': 'half', 'values': [p / 2 for p in price], 'axis': 'hidden'}))\n");
    request({model("m", "HIDE")});
    ASSERT_TRUE(waitForResults(1));
    EXPECT_EQ(mService->lookHideVar("m", 1), "half:5.1");
    EXPECT_EQ(mService->lookHideVar("m", 2), "");
    EXPECT_EQ(mService->lookHideVar("n", 0), "");
}
