#pragma once

#include "terminal/history/PgConnection.h"

namespace terminal {

/// History in PostgreSQL, read with a role that can do nothing else.
class PgHistoryServer : public HistoryServer {
public:
    PgHistoryServer(const HistoryAddress &address, std::chrono::milliseconds patience);

    HistoryFailure instruments(QString &stamp, QVector<Instrument> &instruments) override;
    HistoryFailure days(const QString &key, QVector<ListedDay> &days) override;
    HistoryFailure read(const QString &key, const QVector<int> &days, QVector<ServedDay> &served) override;
    void interrupt() override { mConnection.interrupt(); }

private:
    HistoryFailure ask(const char *statement, const PgConnection::Values &values, PgRows &rows);

    PgConnection mConnection;
};

} // namespace terminal
