#pragma once

#include "terminal/formula/FormulaFiles.h"
#include "terminal/formula/LuaFormula.h"

#include <QObject>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace terminal {

/// Tries formula files on a thread of its own, in their order. One that takes long is tried again behind all others, so
/// that it holds nobody up. Where the system has no thread for it, every file fails with that as its error.
///
/// What came of each file is handed over on the thread that made this object, from wait() or from the event loop.
class FormulaTrials {
public:
    using Take = std::function<void(const FormulaFile &, const LuaFormulaTrial &)>;

    FormulaTrials(const QVector<FormulaFile> &files, Take take);
    /// Waits for the trial that is under way.
    ~FormulaTrials();
    FormulaTrials(const FormulaTrials &) = delete;
    FormulaTrials &operator=(const FormulaTrials &) = delete;

    /// Hands over what is done, until all is or the time is over; whether all is.
    bool wait(int milliseconds);

private:
    using Outcome = std::pair<FormulaFile, LuaFormulaTrial>;

    void run(const QVector<FormulaFile> &files);
    void failAll(const QVector<FormulaFile> &files);
    void done(Outcome outcome);
    void handOver();

    const Take mTake;
    QObject mHome; ///< lives on the thread that is handed over to
    int mLeft; ///< files not handed over yet
    std::atomic<bool> mStop{false};
    std::mutex mLock; ///< guards what follows
    std::condition_variable mNews;
    std::vector<Outcome> mDone;
    std::thread mThread; ///< uses what is above
};

} // namespace terminal
