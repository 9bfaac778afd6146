#pragma once

#include "host/Export.h"
#include "host/records/Quotes.h"
#include "host/services/ServiceContext.h"

#include <QObject>
#include <QString>

#include <memory>
#include <vector>

namespace TC {

/// The requests for the transactions of stretches. The service may answer at once, later, never, on any thread and after
/// this object has gone; here the answers come out on the user-interface thread, and never one of an earlier request
/// after that of a later one.
class TIMESHARE_EXPORT TransactionRequests : public QObject {
    Q_OBJECT
public:
    using Records = std::vector<std::shared_ptr<quoter::QuoterBase>>;

    explicit TransactionRequests(QObject *parent = nullptr,
                                 const ServiceContext &services = ServiceContext::processWide());
    ~TransactionRequests() override;

    /// Asks for the transactions of an instrument, by its key, from `start` to `end`, in seconds since the epoch.
    void request(const QString &stock, qint64 start, qint64 end);

Q_SIGNALS:
    /// What came for an instrument.
    void sigAnswered(const QString &stock, const TC::TransactionRequests::Records &records);

private:
    struct Answer;
    struct Inbox;
    static void take(const std::shared_ptr<Inbox> &inbox, Answer answer);
    Q_INVOKABLE void emptyInbox();
    void tell(const Answer &answer);

    const ServiceContext &mServices;
    std::shared_ptr<Inbox> mInbox; ///< shared with the callbacks
    quint64 mAsked = 0; ///< number of the newest request
    quint64 mTold = 0; ///< of the newest that was answered
};

} // namespace TC
