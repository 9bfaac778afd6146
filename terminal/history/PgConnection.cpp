#include "terminal/history/PgConnection.h"

#include <QStringList>
#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <linux/tcp.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <utility>
#include <vector>

namespace terminal {
namespace {

constexpr int kSocketLook = 100; ///< milliseconds between looks whether to go on
constexpr std::chrono::milliseconds kConnectPatience{
    30000}; ///< with all hosts, however long a statement may take

void passOver(void *, const PGresult *) {}

QString libpqLine(const char *text) {
    return QString::fromUtf8(text ? text : "").simplified();
}

/// What a state of the SQL standard says of the server.
HistoryTrouble troubleOf(const QByteArray &state) {
    if (state.startsWith("28") || state == "42501") {
        return HistoryTrouble::Refused;
    }
    if (state == "42P01" || state == "3F000" || state == "42703") {
        return HistoryTrouble::Unprepared;
    }
    if (state == "57014" || state == "55P03") {
        return HistoryTrouble::Slow;
    }
    return state.isEmpty() || state.startsWith("57P") || state.startsWith("08") ? HistoryTrouble::Gone
                                                                                : HistoryTrouble::Failed;
}

/// A failed connection tells the state at the front of a line, as in "FATAL:  28P01: password authentication failed".
HistoryTrouble connectTrouble(const QString &message) {
    for (const QString &word : message.split(QLatin1Char(' '))) {
        if (word.size() == 6 && word.endsWith(QLatin1Char(':')) && word[0].isDigit()) {
            return troubleOf(word.left(5).toLatin1());
        }
    }
    return HistoryTrouble::Gone;
}

/// Whether a host is not there, or is not what is wanted: another may be.
bool isAway(const HistoryFailure &failure) {
    return failure.trouble == HistoryTrouble::Gone || failure.trouble == HistoryTrouble::Slow;
}

} // namespace

template <class Number> Number PgRows::take(int row, int column) const {
    if (isNull(row, column) || PQgetlength(mResult.get(), row, column) != static_cast<int>(sizeof(Number))) {
        return 0;
    }
    return qFromBigEndian<Number>(PQgetvalue(mResult.get(), row, column));
}

int PgRows::whole(int row, int column) const {
    return take<qint32>(row, column);
}

qint64 PgRows::wide(int row, int column) const {
    return take<qint64>(row, column);
}

double PgRows::number(int row, int column) const {
    const auto bits = take<quint64>(row, column);
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

QByteArray PgRows::text(int row, int column) const {
    return QByteArray(PQgetvalue(mResult.get(), row, column), PQgetlength(mResult.get(), row, column));
}

PgConnection::PgConnection(const HistoryAddress &address, QByteArray options,
                           std::chrono::milliseconds patience)
    : mAddress(address), mOptions(std::move(options)), mPatience(patience) {}

/// Whether the socket is ready for what is wanted before a time.
bool PgConnection::waitFor(short events, Time end) const {
    pollfd socket{PQsocket(mConnection.get()), events, 0};
    while (!mIsInterrupted && std::chrono::steady_clock::now() < end) {
        if (::poll(&socket, 1, kSocketLook) > 0) {
            return true;
        }
    }
    return false;
}

HistoryFailure PgConnection::slow() {
    close();
    return {HistoryTrouble::Slow, QStringLiteral("no answer in time")};
}

HistoryFailure PgConnection::lost() {
    HistoryFailure failure{HistoryTrouble::Gone, libpqLine(PQerrorMessage(mConnection.get()))};
    close();
    return failure;
}

HistoryFailure PgConnection::connect(bool &isNew) {
    isNew = !mConnection || PQstatus(mConnection.get()) != CONNECTION_OK;
    if (!isNew) {
        return {};
    }
    const bool prefersStandby = mAddress.session == "prefer-standby";
    const int tries = std::max(1, static_cast<int>(mAddress.hosts.size()) * (prefersStandby ? 2 : 1));
    const std::chrono::milliseconds wait =
        mAddress.connectWait.count() > 0 ? std::min<std::chrono::milliseconds>(mAddress.connectWait, mPatience)
                                         : std::min(mPatience, kConnectPatience) / tries;
    HistoryFailure failure = tryHosts(prefersStandby ? "standby" : mAddress.session, wait);
    return prefersStandby && isAway(failure) ? tryHosts("any", wait) : failure;
}

HistoryFailure PgConnection::tryHosts(const QByteArray &session, std::chrono::milliseconds wait) {
    HistoryFailure failure{HistoryTrouble::Gone, {}};
    QStringList reasons;
    for (const HistoryAddress::Host &host : mAddress.hosts) {
        failure = tryHost(host, session, std::chrono::steady_clock::now() + wait);
        if (!isAway(failure)) {
            return failure;
        }
        reasons.append(failure.reason);
    }
    failure.reason = reasons.join(QStringLiteral("; "));
    return failure;
}

HistoryFailure PgConnection::tryHost(const HistoryAddress::Host &host, const QByteArray &session, Time end) {
    QVector<std::pair<QByteArray, QByteArray>> settings = mAddress.settings;
    settings << std::make_pair("host", host.name) << std::make_pair("client_encoding", "UTF8")
             << std::make_pair("fallback_application_name", "timeshare") << std::make_pair("options", mOptions);
    if (host.port > 0) {
        settings << std::make_pair("port", QByteArray::number(host.port));
    }
    if (!session.isEmpty()) {
        settings << std::make_pair("target_session_attrs", session);
    }
    if (!mAddress.password.isEmpty()) {
        settings << std::make_pair("password", mAddress.password);
    }
    std::vector<const char *> names;
    std::vector<const char *> values;
    for (const auto &setting : settings) {
        names.push_back(setting.first.constData());
        values.push_back(setting.second.constData());
    }
    names.push_back(nullptr);
    values.push_back(nullptr);
    mConnection.reset(PQconnectStartParams(names.data(), values.data(), 0));
    if (!mConnection) {
        return {HistoryTrouble::Gone, QStringLiteral("no memory for a connection")};
    }
    PQsetErrorVerbosity(mConnection.get(), PQERRORS_VERBOSE); // which tells the state
    PQsetNoticeReceiver(mConnection.get(), &passOver, nullptr);
    HistoryFailure failure = poll(end);
    if (failure.isNone()) {
        PQsetErrorVerbosity(mConnection.get(), PQERRORS_TERSE);
        PQsetnonblocking(mConnection.get(), 1);
    }
    return failure;
}

/// Goes on with a connection that was begun, to its end.
HistoryFailure PgConnection::poll(Time end) {
    PostgresPollingStatusType state =
        PQstatus(mConnection.get()) == CONNECTION_BAD ? PGRES_POLLING_FAILED : PGRES_POLLING_WRITING;
    while (state == PGRES_POLLING_READING || state == PGRES_POLLING_WRITING) {
        if (!waitFor(state == PGRES_POLLING_READING ? POLLIN : POLLOUT, end)) {
            return slow();
        }
        state = PQconnectPoll(mConnection.get());
    }
    if (state == PGRES_POLLING_OK) {
        return {};
    }
    HistoryFailure failure = lost();
    failure.trouble = connectTrouble(failure.reason);
    return failure;
}

/// Since the beginning of the connection; 0 for one that is none of TCP.
qint64 PgConnection::receivedBytes() const {
    tcp_info info{};
    socklen_t size = sizeof info;
    return getsockopt(PQsocket(mConnection.get()), IPPROTO_TCP, TCP_INFO, &info, &size) == 0
               ? static_cast<qint64>(info.tcpi_bytes_received)
               : 0;
}

/// Nothing while the answer is no larger than one may be.
HistoryFailure PgConnection::bound() {
    if (receivedBytes() - mReceivedBefore <= kMostBytes) {
        return {};
    }
    close();
    return {HistoryTrouble::Failed,
            QStringLiteral("an answer of more than %1 MB").arg(kMostBytes / 1024 / 1024)};
}

/// Takes what the server has sent, as long as that is no more than an answer may have. The library would keep all of it, and
/// takes a large value whole at once when it comes quickly.
HistoryFailure PgConnection::take() {
    HistoryFailure failure = bound();
    if (failure.isNone()) {
        failure = PQconsumeInput(mConnection.get()) ? bound() : lost();
    }
    return failure;
}

HistoryFailure PgConnection::flush(Time end) {
    for (int left = PQflush(mConnection.get()); left != 0; left = PQflush(mConnection.get())) {
        if (left < 0) {
            return lost();
        }
        if (!waitFor(POLLIN | POLLOUT, end)) {
            return slow();
        }
        HistoryFailure failure = take(); // the server may wait for that
        if (!failure.isNone()) {
            return failure;
        }
    }
    return {};
}

/// Takes the answer to what was sent; rows where they are wanted.
HistoryFailure PgConnection::finish(PgRows *rows) {
    const Time end = deadline();
    HistoryFailure failure = flush(end);
    if (!failure.isNone()) {
        return failure;
    }
    for (;;) {
        while (PQisBusy(mConnection.get())) {
            HistoryFailure ended = waitFor(POLLIN, end) ? take() : slow();
            if (!ended.isNone()) {
                return ended;
            }
        }
        PGresult *result = PQgetResult(mConnection.get());
        if (!result) {
            break;
        }
        PgRows taken(result);
        const ExecStatusType status = PQresultStatus(result);
        if (status == PGRES_COPY_IN) {
            return {};
        }
        if (status == PGRES_COPY_OUT || status == PGRES_COPY_BOTH) { // would be answered again and again
            close();
            return {HistoryTrouble::Failed, QStringLiteral("the server copies what was not asked for")};
        }
        if (status != PGRES_TUPLES_OK && status != PGRES_COMMAND_OK) {
            failure.trouble = troubleOf(PQresultErrorField(result, PG_DIAG_SQLSTATE));
            failure.reason = libpqLine(PQresultErrorMessage(result));
        } else if (rows) {
            *rows = std::move(taken);
        }
    }
    if (failure.isNone() && PQstatus(mConnection.get()) != CONNECTION_OK) {
        return lost();
    }
    if (failure.trouble == HistoryTrouble::Gone) {
        close();
    }
    return failure;
}

HistoryFailure PgConnection::ask(const char *statement, const Values &values, PgRows &rows) {
    if (!mConnection) {
        return {HistoryTrouble::Gone, QStringLiteral("not connected")};
    }
    std::vector<const char *> texts;
    for (const QByteArray &value : values) {
        texts.push_back(value.isNull() ? nullptr : value.constData());
    }
    mReceivedBefore = receivedBytes();
    constexpr int kBinary = 1;
    if (!PQsendQueryParams(mConnection.get(), statement, static_cast<int>(texts.size()), nullptr, texts.data(),
                           nullptr, nullptr, kBinary)) {
        return lost();
    }
    return finish(&rows);
}

HistoryFailure PgConnection::run(const char *statement, const Values &values) {
    PgRows rows;
    return ask(statement, values, rows);
}

HistoryFailure PgConnection::copy(const char *statement, const NextBytes &next) {
    HistoryFailure failure = run(statement);
    while (failure.isNone()) {
        const QByteArray bytes = next();
        if (bytes.isEmpty()) {
            break;
        }
        int sent = 0;
        while ((sent = PQputCopyData(mConnection.get(), bytes.constData(), bytes.size())) == 0) {
            failure = flush(deadline());
            if (!failure.isNone()) {
                return failure;
            }
        }
        failure = sent < 0 ? lost() : flush(deadline());
    }
    if (!failure.isNone()) {
        return failure;
    }
    int ended = 0;
    while ((ended = PQputCopyEnd(mConnection.get(), nullptr)) == 0) {
        failure = flush(deadline());
        if (!failure.isNone()) {
            return failure;
        }
    }
    return ended < 0 ? lost() : finish(nullptr);
}

} // namespace terminal
