#include "terminal/formula/FormulaTrials.h"

#include "terminal/threads/BehindWindow.h"
#include "terminal/threads/ThreadStart.h"

#include <QFileInfo>

#include <chrono>
#include <system_error>

namespace terminal {
namespace {

constexpr int kShortTrial = 100; ///< milliseconds of a processor; far more than a formula needs

LuaFormulaTrial tryFile(const FormulaFile &file, const FormulaLimits &limits) {
    return tryLuaFormula({QFileInfo(file.path).completeBaseName(), file.text, {}}, limits);
}

} // namespace

FormulaTrials::FormulaTrials(const QVector<FormulaFile> &files, Take take)
    : mTake(std::move(take)), mLeft(files.size()) {
    try {
        mThread = std::thread([this, files] { run(files); });
    } catch (const std::system_error &) {
        failAll(files);
    }
}

FormulaTrials::~FormulaTrials() {
    mStop = true;
    if (mThread.joinable()) {
        mThread.join();
    }
}

void FormulaTrials::run(const QVector<FormulaFile> &files) {
    leaveProcessor();
    FormulaLimits little;
    little.milliseconds = kShortTrial;
    QVector<FormulaFile> later;
    for (const FormulaFile &file : files) {
        if (mStop) {
            return;
        }
        LuaFormulaTrial trial = tryFile(file, little);
        if (trial.isOverLimit) {
            later.append(file);
        } else {
            done({file, std::move(trial)});
        }
    }
    for (const FormulaFile &file : later) {
        if (mStop) {
            return;
        }
        done({file, tryFile(file, {})});
    }
}

void FormulaTrials::failAll(const QVector<FormulaFile> &files) {
    for (const FormulaFile &file : files) {
        LuaFormulaTrial trial;
        trial.error = {QFileInfo(file.path).completeBaseName(), 0, noThreadText()};
        done({file, std::move(trial)});
    }
}

void FormulaTrials::done(Outcome outcome) {
    {
        std::lock_guard<std::mutex> hold(mLock);
        mDone.push_back(std::move(outcome));
    }
    mNews.notify_all();
    QMetaObject::invokeMethod(
        &mHome, [this] { handOver(); }, Qt::QueuedConnection);
}

void FormulaTrials::handOver() {
    std::vector<Outcome> taken;
    {
        std::lock_guard<std::mutex> hold(mLock);
        taken.swap(mDone);
    }
    for (const auto &[file, trial] : taken) {
        --mLeft;
        mTake(file, trial);
    }
}

bool FormulaTrials::wait(int milliseconds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (mLeft > 0) {
        {
            std::unique_lock<std::mutex> hold(mLock);
            if (!mNews.wait_until(hold, end, [this] { return !mDone.empty(); })) {
                return false;
            }
        }
        handOver();
    }
    return true;
}

} // namespace terminal
