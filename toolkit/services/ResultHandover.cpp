#include "host/services/ResultHandover.h"

#include "toolkit/services/ResultQueue.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QObject>
#include <QThread>
#include <QTimer>

#include <utility>

namespace TC {
namespace {

constexpr int kHandoverSlice = 4; ///< milliseconds of delivering between two turns of the event loop

/// Keeps a callback until the last copy of this has gone, and has it released by the queue.
template <class Callback>
std::shared_ptr<Callback> keptFor(const std::shared_ptr<ResultQueue> &queue, Callback callback) {
    return {new Callback(std::move(callback)), [queue](Callback *kept) {
                const std::shared_ptr<Callback> owned(kept);
                queue->postTask([owned] {});
            }};
}

} // namespace

/// Delivers what waits, in slices, on the thread that it was made on.
class ResultHandover::Pump : public QObject {
public:
    explicit Pump(const std::shared_ptr<ResultQueue> &queue) : mQueue(queue) {
        mNextSlice.setSingleShot(true);
        mNextSlice.setInterval(0);
        connect(&mNextSlice, &QTimer::timeout, this, [this] { deliver(); });
    }
    void wake() { QCoreApplication::postEvent(this, new QEvent(QEvent::User)); }

protected:
    void customEvent(QEvent *) override { deliver(); }

private:
    void deliver() {
        QElapsedTimer slice;
        slice.start();
        do {
            mNextSlice.start(); // an event loop inside a callback goes on with what follows
            if (!mQueue->deliverOne()) {
                mNextSlice.stop();
                return;
            }
        } while (slice.elapsed() < kHandoverSlice);
    }

    const std::shared_ptr<ResultQueue> &mQueue; ///< of the handover, made after this
    QTimer mNextSlice;
};

ResultHandover::ResultHandover() : mPump(std::make_unique<Pump>(mQueue)) {
    mQueue = std::make_shared<ResultQueue>([pump = mPump.get()] { pump->wake(); });
}

ResultHandover::~ResultHandover() {
    mQueue->end();
}

void ResultHandover::take(const QVector<CFormulaParam> &params, FormulaHistoryCallback &onHistory,
                          FormulaRealtimeCallback &onRealtime) {
    const auto callbacks = std::make_shared<const ResultQueue::Callbacks>(
        ResultQueue::Callbacks{std::move(onHistory), std::move(onRealtime)});
    const quint64 round = mQueue->nextRound();
    for (const CFormulaParam &param : params) {
        mQueue->open(QString::fromStdString(param.mRequestId), round, callbacks);
    }
    onHistory = [queue = mQueue, round](const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                        const QString &id, int type, const QString &formula, bool keepRange) {
        queue->postHistory(id, round, {meta, result, type, formula, keepRange});
    };
    onRealtime = [queue = mQueue, round](int number, const QString &id, const FormulaInstantPtr &point) {
        queue->postPoint(id, round, {number, point});
    };
}

void ResultHandover::take(HistoryQuoteCallback &onQuotes) {
    const auto kept = keptFor(mQueue, std::move(onQuotes));
    onQuotes = [queue = mQueue, kept](int first, int second,
                                      const std::vector<std::shared_ptr<quoter::QuoterBase>> &records,
                                      const QString &text) {
        queue->postTask([kept, first, second, records, text] {
            if (*kept) {
                (*kept)(first, second, records, text);
            }
        });
    };
}

void ResultHandover::take(SuppleProgressCallback &onProgress) {
    const auto kept = keptFor(mQueue, std::move(onProgress));
    onProgress = [queue = mQueue, kept](int done, int total, const QString &market, const QString &code) {
        queue->postTask([kept, done, total, market, code] {
            if (*kept) {
                (*kept)(done, total, market, code);
            }
        });
    };
}

void ResultHandover::withdraw(const QString &requestId) {
    ResultQueue::CallbacksPtr callbacks = mQueue->close(requestId);
    if (callbacks && QThread::currentThread() != mPump->thread()) {
        mQueue->postTask([callbacks = std::move(callbacks)] {}); // a chart's data may go with them
    }
}

int ResultHandover::pending() const {
    return mQueue->pending();
}

void UiThreadFormulas::requestFormulas(QVector<CFormulaParam> &params, FormulaHistoryCallback onHistory,
                                       FormulaRealtimeCallback onRealtime) {
    mHandover.take(params, onHistory, onRealtime);
    mService.requestFormulas(params, std::move(onHistory), std::move(onRealtime));
}

void UiThreadFormulas::requestFormulasSync(QVector<CFormulaParam> &params, std::vector<FormulaMetaPtr> &metas,
                                           std::vector<FormulaResultPtr> &results) {
    mService.requestFormulasSync(params, metas, results);
}

void UiThreadFormulas::unrequestFormula(const QString &requestId) {
    mHandover.withdraw(requestId);
    mService.unrequestFormula(requestId);
}

void UiThreadFormulas::unrequestFormulas(const QVector<QString> &requestIds) {
    for (const QString &id : requestIds) {
        mHandover.withdraw(id);
    }
    mService.unrequestFormulas(requestIds);
}

void UiThreadFormulas::fetchCacheData(se::RPCFetchCacheDataParam &param,
                                      std::vector<std::shared_ptr<quoter::QuoterBase>> &records) {
    mService.fetchCacheData(param, records);
}

void UiThreadFormulas::requestHistoryQuote(const quoter::TSMetaInfo &meta, const quoter::TRegionInfo &region,
                                           HistoryQuoteCallback onQuotes) {
    mHandover.take(onQuotes);
    mService.requestHistoryQuote(meta, region, std::move(onQuotes));
}

QString UiThreadFormulas::lookHideVar(const QString &requestId, int index) {
    return mService.lookHideVar(requestId, index);
}

void UiThreadFormulas::suppleDataFromServer(const QString &name, CHistoryDataParam &param,
                                            SuppleProgressCallback onProgress) {
    mHandover.take(onProgress);
    mService.suppleDataFromServer(name, param, std::move(onProgress));
}

bool UiThreadFormulas::groupRunProgress(const std::string &requestId, bson::BSONObj &progress) {
    return mService.groupRunProgress(requestId, progress);
}

} // namespace TC
