#include "terminal/formula/ModelRun.h"

namespace terminal {

ScriptModelOutcome ModelRun::run(const Body &body) {
    const auto process = std::make_shared<ScriptModelProcess>();
    ScriptModelOutcome outcome;
    {
        std::lock_guard<std::mutex> hold(mLock);
        if (mIsStopped) {
            outcome.stopped = true;
            return outcome;
        }
        mProcess = process;
        mState = "running";
    }
    outcome = body(*process, [this](const ScriptModelProgress &progress) {
        std::lock_guard<std::mutex> hold(mLock);
        mProgress = progress;
    });
    std::lock_guard<std::mutex> hold(mLock);
    mProcess = nullptr;
    mState = outcome.error ? "failed" : "finished";
    return outcome;
}

void ModelRun::stop() {
    std::lock_guard<std::mutex> hold(mLock);
    mIsStopped = true;
    if (mProcess) {
        mProcess->stop();
    }
}

bson::BSONObj ModelRun::progress() const {
    std::lock_guard<std::mutex> hold(mLock);
    bson::BSONObjBuilder builder;
    builder.append("done", mProgress.done);
    builder.append("total", mProgress.total);
    builder.append("text", mProgress.text.toStdString());
    builder.append("state", mState);
    return builder.obj();
}

} // namespace terminal
