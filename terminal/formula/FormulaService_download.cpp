// Downloads of history.

#include "terminal/formula/FormulaService.h"

#include <QCoreApplication>
#include <QVector>

#include <algorithm>
#include <utility>

namespace terminal {
namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(FormulaService)
};

/// A day to fetch; 0 ends an instrument.
struct Step {
    QString market;
    QString code;
    int day = 0;
};

/// Every missing day is a step, and the end of each instrument is one more: whoever shows the instrument is called with
/// steps left when its last day is there.
QVector<Step> stepsOf(const TC::CHistoryDataParam &param, HistorySource *source) {
    QVector<Step> steps;
    const int count = std::min(param.mMarkets.size(), param.mCodes.size());
    for (int i = 0; i < count; ++i) {
        const QString &market = param.mMarkets[i];
        const QString &code = param.mCodes[i];
        if (source) {
            for (const int day : source->missingDays(market + code, param.mStart, param.mEnd)) {
                steps.append({market, code, day});
            }
        }
        steps.append({market, code, 0});
    }
    return steps;
}

} // namespace

void FormulaService::setHistorySource(HistorySource *source) {
    mHistory = source;
}

void FormulaService::setDownloadListener(DownloadListener listener) {
    mOnDownload = std::move(listener);
}

void FormulaService::stopDownloads() {
    ++mDownloadsStopped;
}

void FormulaService::suppleDataFromServer(const QString &, TC::CHistoryDataParam &param,
                                          TC::SuppleProgressCallback onProgress) {
    ++mDownloadsUnderWay;
    // The callback never becomes the worker's: it would be released there.
    auto callback = std::make_shared<TC::SuppleProgressCallback>(std::move(onProgress));
    mDownloads.post([this, param, callback, stopped = mDownloadsStopped.load()]() mutable {
        const auto tell = [this, &callback](int done, int total, const Step &step) {
            mQueue.post([this, callback, done, total, step] {
                mDownloadsUnderWay -= done == -1 || done == total ? 1 : 0;
                if (*callback) {
                    (*callback)(done, total, step.market, step.code);
                }
                if (mOnDownload) {
                    mOnDownload(step.market + step.code, done, total);
                }
            });
        };
        const QVector<Step> steps = stepsOf(param, mHistory);
        for (int i = 0; i < steps.size() && !mEnding; ++i) {
            const Step &step = steps[i];
            QString error;
            if (stopped != mDownloadsStopped) {
                error = Words::tr("下载已停止");
            } else if (step.day != 0) {
                error = mHistory->fetchDay(step.market + step.code, step.day);
            }
            if (!error.isEmpty()) {
                if (mOnError) {
                    mOnError({step.market + step.code, 0, error});
                }
                tell(-1, steps.size(), step);
                break;
            }
            tell(i + 1, steps.size(), step);
        }
        mQueue.post([this, callback = std::move(callback), none = steps.isEmpty()] {
            mDownloadsUnderWay -= none ? 1 : 0;
        });
    });
}

} // namespace terminal
