#pragma once

#include "terminal/history/HistoryAddress.h"
#include "terminal/market/Instrument.h"
#include "terminal/market/MinuteBar.h"

#include <QString>
#include <QVector>

#include <chrono>
#include <memory>

namespace terminal {

/// What keeps history from coming.
enum class HistoryTrouble {
    None,
    Gone, ///< no server, or none any more
    Slow, ///< it does not answer in time
    Refused, ///< it does not take the credentials, or the role may not read
    Unprepared, ///< it is there and has no tables of history
    Newer, ///< its tables are of a later version than this program's
    Failed, ///< it says that it cannot
    BadDay, ///< a day of it holds what is no bar
    Cache, ///< the store here cannot be written
};

/// Why something was not had.
struct HistoryFailure {
    HistoryTrouble trouble = HistoryTrouble::None;
    QString reason; ///< one line, without any secret

    bool isNone() const { return trouble == HistoryTrouble::None; }
};

/// A day that a server has of an instrument.
struct ListedDay {
    int day = 0; ///< seconds since the epoch at its midnight (UTC+8)
    int bars = 0;
};

/// One of them, whole.
struct ServedDay {
    int day = 0;
    int count = 0; ///< bars that it has by its own account
    double previousClose = 0.0; ///< 0 when it is not told
    DaySessions sessions; ///< empty for those of the instrument
    MinuteBars bars;
};

/// Sessions as numbers of first and last minutes in turn; no sessions when these are none.
DaySessions sessionsOf(const QVector<int> &minutes);
/// What is wrong with a day: a row that is no bar, or a count that is not that of its bars; empty when nothing is.
QString faultOf(const ServedDay &day);

/// A server of history. Each call takes one way there and back; it goes to the server first where that is lost. Blocks, for no
/// longer than its patience; one thread at a time, but for interrupt().
class HistoryServer {
public:
    virtual ~HistoryServer() = default;

    /// Instruments that it has, when they are others than those of `stamp`, which is then that of the new ones.
    virtual HistoryFailure instruments(QString &stamp, QVector<Instrument> &instruments) = 0;
    /// Days of an instrument, ascending; none for an unknown one.
    virtual HistoryFailure days(const QString &key, QVector<ListedDay> &days) = 0;
    /// Some of them as they stand, ascending; what the server lacks is left out.
    virtual HistoryFailure read(const QString &key, const QVector<int> &days, QVector<ServedDay> &served) = 0;
    /// Ends the call that is under way, and all further ones. Any thread.
    virtual void interrupt() = 0;
};

/// How long a server may take to answer one call.
constexpr std::chrono::milliseconds kHistoryPatience{8000};

/// A server that runs PostgreSQL; null when the program was built without its library.
std::unique_ptr<HistoryServer> makePgHistoryServer(const HistoryAddress &address,
                                                   std::chrono::milliseconds patience = kHistoryPatience);

} // namespace terminal
