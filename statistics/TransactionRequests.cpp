#include "statistics/TransactionRequests.h"

#include "host/services/CFormulaManager.h"
#include "host/services/CStockManager.h"
#include "host/services/ServiceContext.h"

#include <QPointer>
#include <QThread>

#include <deque>
#include <mutex>
#include <utility>

namespace TC {
namespace {

constexpr int kTransactions = 1806; ///< kind of the data

} // namespace

struct TransactionRequests::Answer {
    quint64 request = 0;
    QString stock;
    Records records;
};

/// What the callbacks hold of the requests: alive as long as one of them is.
struct TransactionRequests::Inbox {
    std::mutex lock;
    TransactionRequests *owner = nullptr; ///< null when it has gone; changed on its own thread
    QThread *thread = nullptr; ///< of the owner
    std::deque<Answer> answers; ///< from other threads
};

TransactionRequests::TransactionRequests(QObject *parent, const ServiceContext &services)
    : QObject(parent), mServices(services), mInbox(std::make_shared<Inbox>()) {
    mInbox->owner = this;
    mInbox->thread = thread();
}

TransactionRequests::~TransactionRequests() {
    const std::lock_guard<std::mutex> hold(mInbox->lock);
    mInbox->owner = nullptr;
}

void TransactionRequests::request(const QString &stock, qint64 start, qint64 end) {
    const CInstrumentDetailPtr detail = mServices.get<CStockManager>().getInstrumentDetail(stock);
    quoter::TSMetaInfo meta;
    meta.mMarket = getDetailMarket(detail);
    meta.mCode = getDetailCode(detail);
    meta.mDataKind = kTransactions;
    meta.mPeriod = 0;
    quoter::TRegionInfo region;
    region.mStart = start * 1000;
    region.mEnd = end * 1000;
    const auto callback = [inbox = mInbox, number = ++mAsked, stock](int, int, const Records &records,
                                                                     const QString &) {
        take(inbox, {number, stock, records});
    };
    mServices.get<CFormulaManager>().requestHistoryQuote(meta, region, callback);
}

/// On the thread of a service, or on the owner's.
void TransactionRequests::take(const std::shared_ptr<Inbox> &inbox, Answer answer) {
    TransactionRequests *here = nullptr;
    {
        const std::lock_guard<std::mutex> hold(inbox->lock);
        if (!inbox->owner) {
            return;
        }
        if (QThread::currentThread() != inbox->thread) {
            inbox->answers.push_back(std::move(answer));
            QMetaObject::invokeMethod(inbox->owner, "emptyInbox", Qt::QueuedConnection);
            return;
        }
        here = inbox->owner;
    }
    here->tell(answer);
}

void TransactionRequests::emptyInbox() {
    std::deque<Answer> answers;
    {
        const std::lock_guard<std::mutex> hold(mInbox->lock);
        answers.swap(mInbox->answers);
    }
    const QPointer<TransactionRequests> self = this; // whoever hears of an answer may end this object
    for (const Answer &answer : answers) {
        if (self) {
            tell(answer);
        }
    }
}

void TransactionRequests::tell(const Answer &answer) {
    if (answer.request >= mTold) {
        mTold = answer.request;
        Q_EMIT sigAnswered(answer.stock, answer.records);
    }
}

} // namespace TC
