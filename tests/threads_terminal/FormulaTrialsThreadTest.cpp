// Formula files are tried on one thread and handed over on another, and their owner may go at any moment.

#include "terminal/formula/FormulaTrials.h"

#include <QCoreApplication>
#include <QThread>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

using namespace terminal;

namespace {

constexpr int kFiles = 12;

/// Small formulas, every third of them wrong.
QVector<FormulaFile> smallFiles() {
    QVector<FormulaFile> files;
    for (int i = 0; i < kFiles; ++i) {
        const QByteArray name = "F" + QByteArray::number(i);
        files.append({QString::fromLatin1(name + ".lua"),
                      {},
                      "formula { name = '" + name + "', lines = {{'X'}} }\nfunction run() return " +
                          (i % 3 == 0 ? "nil .. 1" : "CLOSE") + " end\n"});
    }
    return files;
}

} // namespace

TEST(FormulaTrialsThreads, TheirOwnerMayGoAtAnyMoment) {
    constexpr int kRounds = 60;
    int most = 0;
    for (int round = 0; round < kRounds; ++round) {
        int taken = 0;
        {
            FormulaTrials trials(smallFiles(), [&](const FormulaFile &, const LuaFormulaTrial &) { ++taken; });
            trials.wait(round % 6);
            if (round % 2 == 0) {
                QCoreApplication::processEvents();
            }
        }
        const int atItsEnd = taken;
        EXPECT_LE(taken, kFiles);
        QCoreApplication::processEvents();
        EXPECT_EQ(taken, atItsEnd) << "nothing comes afterwards";
        most = std::max(most, taken);
    }
    EXPECT_GT(most, 0) << "every round ended before its first file";
}

TEST(FormulaTrialsThreads, EveryFileIsHandedOverOnceToTheThreadOfTheOwner) {
    std::map<QString, int> taken;
    QThread *thread = QThread::create([&taken] {
        for (int round = 0; round < 10; ++round) {
            FormulaTrials trials(smallFiles(), [&taken, owner = QThread::currentThread()](
                                                   const FormulaFile &file, const LuaFormulaTrial &trial) {
                EXPECT_EQ(QThread::currentThread(), owner);
                const bool isWrong = file.path.mid(1).section('.', 0, 0).toInt() % 3 == 0;
                EXPECT_EQ(trial.description.has_value(), !isWrong) << qPrintable(file.path);
                ++taken[file.path];
            });
            EXPECT_TRUE(trials.wait(60000));
        }
    });
    thread->start();
    ASSERT_TRUE(thread->wait(120000));
    delete thread;
    ASSERT_EQ(taken.size(), static_cast<size_t>(kFiles));
    for (const auto &[path, times] : taken) {
        EXPECT_EQ(times, 10) << qPrintable(path);
    }
}
