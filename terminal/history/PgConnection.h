#pragma once

#include "terminal/history/HistoryServer.h"

#include <QByteArray>
#include <QVector>

#include <atomic>
#include <chrono>
#include <functional>
#include <libpq-fe.h>
#include <memory>

namespace terminal {

/// Rows of an answer. A value is read as what its column has been cast to.
class PgRows {
public:
    explicit PgRows(PGresult *result = nullptr) : mResult(result, &PQclear) {}

    int count() const { return mResult ? PQntuples(mResult.get()) : 0; }
    bool isNull(int row, int column) const { return PQgetisnull(mResult.get(), row, column) != 0; }
    int whole(int row, int column) const; ///< of an integer; 0 for null and other sizes
    qint64 wide(int row, int column) const; ///< of a bigint
    double number(int row, int column) const; ///< of a double precision
    QByteArray text(int row, int column) const;

private:
    template <class Number> Number take(int row, int column) const;

    std::unique_ptr<PGresult, void (*)(PGresult *)> mResult;
};

/// A connection to a PostgreSQL server that never waits for longer than its patience. One thread at a time, but for interrupt().
class PgConnection {
public:
    /// Parameters of a statement, as text.
    using Values = QVector<QByteArray>;
    /// Hands over the next bytes to send; empty at the end.
    using NextBytes = std::function<QByteArray()>;
    /// Of one answer; a server that sends more is left. The instruments of a market of 100 000 take a third of it.
    static constexpr qint64 kMostBytes = 64 * 1024 * 1024;

    /// `options` are settings of the session, as in "-c lock_timeout=5s".
    PgConnection(const HistoryAddress &address, QByteArray options, std::chrono::milliseconds patience);

    /// Goes to the first of the address's hosts that is there and is what is wanted; does nothing when that is done. `isNew` tells
    /// which. A host that answers and refuses is the last that is tried.
    HistoryFailure connect(bool &isNew);
    /// Runs one statement; the connection is given up when the server is gone or slow.
    HistoryFailure ask(const char *statement, const Values &values, PgRows &rows);
    HistoryFailure run(const char *statement, const Values &values = {});
    /// Runs a COPY ... FROM STDIN.
    HistoryFailure copy(const char *statement, const NextBytes &next);
    void close() { mConnection.reset(); }
    /// Every call ends at once from now on. Any thread.
    void interrupt() { mIsInterrupted = true; }

private:
    using Time = std::chrono::steady_clock::time_point;

    Time deadline() const { return std::chrono::steady_clock::now() + mPatience; }
    bool waitFor(short events, Time end) const;
    HistoryFailure tryHosts(const QByteArray &session, std::chrono::milliseconds wait);
    HistoryFailure tryHost(const HistoryAddress::Host &host, const QByteArray &session, Time end);
    HistoryFailure poll(Time end);
    HistoryFailure bound();
    HistoryFailure take();
    qint64 receivedBytes() const;
    HistoryFailure flush(Time end);
    HistoryFailure finish(PgRows *rows);
    HistoryFailure lost();
    HistoryFailure slow();

    const HistoryAddress mAddress;
    const QByteArray mOptions;
    const std::chrono::milliseconds mPatience;
    std::atomic<bool> mIsInterrupted{false};
    qint64 mReceivedBefore = 0; ///< bytes, in front of the answer under way
    std::unique_ptr<PGconn, void (*)(PGconn *)> mConnection{nullptr, &PQfinish};
};

} // namespace terminal
