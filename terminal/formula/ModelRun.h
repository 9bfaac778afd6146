#pragma once

#include "host/records/BSONObj.h"
#include "terminal/formula/ScriptModel.h"

#include <functional>
#include <memory>
#include <mutex>

namespace terminal {

/// The runs of one request's script model, one after the other, as other threads see them.
///
/// stop() ends the process that runs, and none is started afterwards. Any thread; run() on one.
class ModelRun {
public:
    using Progress = std::function<void(const ScriptModelProgress &)>;
    using Body = std::function<ScriptModelOutcome(ScriptModelProcess &process, const Progress &onProgress)>;

    /// Calls `body` with a process of its own and answers its outcome; a stopped one without a call after stop().
    ScriptModelOutcome run(const Body &body);
    void stop();
    /// The fields "done", "total", "text" and "state" ("waiting", "running", "finished" or "failed") of the last run.
    bson::BSONObj progress() const;

private:
    mutable std::mutex mLock; ///< guards what follows
    bool mIsStopped = false;
    std::shared_ptr<ScriptModelProcess> mProcess; ///< that runs
    ScriptModelProgress mProgress;
    const char *mState = "waiting";
};

} // namespace terminal
