#include "terminal/formula/HistoryDownloads.h"

#include <QCoreApplication>
#include <QVector>

#include <algorithm>
#include <utility>

namespace terminal {
namespace {

struct DownloadWords {
    Q_DECLARE_TR_FUNCTIONS(HistoryDownloads)
};

} // namespace

/// A day to fetch; 0 ends an instrument.
struct HistoryDownloads::Step {
    QString market;
    QString code;
    int day = 0;
};

/// Every missing day is a step, and the end of each instrument is one more: whoever shows the instrument is called with
/// steps left when its last day is there.
QVector<HistoryDownloads::Step> HistoryDownloads::stepsOf(const TC::CHistoryDataParam &param) const {
    QVector<Step> steps;
    const int count = std::min(param.mMarkets.size(), param.mCodes.size());
    for (int i = 0; i < count; ++i) {
        const QString &market = param.mMarkets[i];
        const QString &code = param.mCodes[i];
        if (mSource) {
            for (const int day : mSource->missingDays(market + code, param.mStart, param.mEnd)) {
                steps.append({market, code, day});
            }
        }
        steps.append({market, code, 0});
    }
    return steps;
}

void HistoryDownloads::start(const TC::CHistoryDataParam &param, TC::SuppleProgressCallback onProgress) {
    ++mUnderWay;
    // The callback never becomes the worker's: it would be released there.
    auto callback = std::make_shared<TC::SuppleProgressCallback>(std::move(onProgress));
    mWorker.post([this, param, callback, stops = mStops.load()]() mutable {
        const QVector<Step> steps = stepsOf(param);
        run(steps, stops, callback);
        mQueue.post(
            [this, callback = std::move(callback), none = steps.isEmpty()] { mUnderWay -= none ? 1 : 0; });
    });
}

void HistoryDownloads::run(const QVector<Step> &steps, int stops, const Callback &callback) {
    for (int i = 0; i < steps.size() && !mIsEnding; ++i) {
        const Step &step = steps[i];
        const QString error = fetch(step, stops);
        if (!error.isEmpty()) {
            if (mOnError) {
                mOnError({step.market + step.code, 0, error});
            }
            tell(callback, -1, steps.size(), step);
            return;
        }
        tell(callback, i + 1, steps.size(), step);
    }
}

/// Answers an empty text or what went wrong.
QString HistoryDownloads::fetch(const Step &step, int stops) const {
    if (stops != mStops) {
        return DownloadWords::tr("下载已停止");
    }
    return step.day == 0 ? QString() : mSource->fetchDay(step.market + step.code, step.day);
}

void HistoryDownloads::tell(const Callback &callback, int done, int total, const Step &step) {
    mQueue.post([this, callback, done, total, step] {
        mUnderWay -= done == -1 || done == total ? 1 : 0;
        if (*callback) {
            (*callback)(done, total, step.market, step.code);
        }
        if (mListener) {
            mListener(step.market + step.code, done, total);
        }
    });
}

void HistoryDownloads::finish() {
    mIsEnding = true;
    mWorker.finish();
}

} // namespace terminal
