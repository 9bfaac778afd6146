#include "terminal/market/SqlConnections.h"

#include "terminal/market/PreparedQueries.h"

#include <QSqlQuery>

#include <atomic>
#include <map>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include <sqlite3.h>

namespace terminal {
namespace {

/// SQLite counts its memory under one lock, which every allocation of every thread takes: the user-interface thread would wait
/// for a worker that has lost its processor meanwhile. Nobody asks for the count. Heard only before the first connection.
bool stopCountingMemory() {
    return sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0) == SQLITE_OK;
}

void open(QSqlDatabase &database) {
    if (!database.open()) {
        return;
    }
    QSqlQuery query(database);
    query.exec(QStringLiteral("PRAGMA foreign_keys = ON"));
    query.exec(QStringLiteral("PRAGMA synchronous = NORMAL")); // a crash of the program loses nothing
    query.exec(QStringLiteral("PRAGMA journal_size_limit = 4194304"));
    keepPages(database, kReadersPages);
}

} // namespace

void keepPages(const QSqlDatabase &database, int kilobytes) {
    QSqlQuery(database).exec(QStringLiteral("PRAGMA cache_size = -%1").arg(kilobytes));
}

struct SqlConnections::State {
    explicit State(const QString &file) : path(file) {}

    void close(std::thread::id thread) {
        std::lock_guard<std::mutex> hold(lock);
        const auto found = names.find(thread);
        if (found != names.end()) {
            QSqlDatabase::removeDatabase(found->second);
            names.erase(found);
        }
    }

    const QString path;
    std::mutex lock;
    std::map<std::thread::id, QString> names;
    std::set<std::thread::id> broken; ///< whose connections have to be opened anew
};

/// Closes the connections of a thread when it ends.
struct SqlConnections::ThreadEnd {
    ThreadEnd() { PreparedQueries::ofThisThread(); } // made before, they are there until the end
    ~ThreadEnd() {
        PreparedQueries::ofThisThread().forget();
        for (const std::weak_ptr<State> &state : states) {
            if (const std::shared_ptr<State> alive = state.lock()) {
                alive->close(std::this_thread::get_id());
            }
        }
    }
    std::vector<std::weak_ptr<State>> states;
};

SqlConnections::SqlConnections(const QString &path) : mState(std::make_shared<State>(path)) {
    [[maybe_unused]] static const bool isHeard = stopCountingMemory();
}

SqlConnections::~SqlConnections() {
    PreparedQueries::ofThisThread().forget();
    std::lock_guard<std::mutex> hold(mState->lock);
    for (const auto &entry : mState->names) {
        QSqlDatabase::removeDatabase(entry.second);
    }
    mState->names.clear();
}

QSqlDatabase SqlConnections::forThisThread() {
    static std::atomic<int> sequence{0};
    static thread_local ThreadEnd threadEnd;

    QString name;
    bool isSound = false;
    {
        std::lock_guard<std::mutex> hold(mState->lock);
        QString &mine = mState->names[std::this_thread::get_id()];
        if (mine.isEmpty()) {
            mine = QStringLiteral("market-store-%1").arg(++sequence);
            threadEnd.states.push_back(mState);
        }
        name = mine;
        isSound = mState->broken.erase(std::this_thread::get_id()) == 0;
    }
    if (!QSqlDatabase::contains(name)) {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        database.setDatabaseName(mState->path);
        database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(kForeignPatience));
    }
    QSqlDatabase database = QSqlDatabase::database(name, false);
    if (!isSound) {
        PreparedQueries::ofThisThread().forget();
        database.close();
    }
    if (!database.isOpen()) {
        open(database);
    }
    return database;
}

void SqlConnections::reopenForThisThread() {
    std::lock_guard<std::mutex> hold(mState->lock);
    mState->broken.insert(std::this_thread::get_id());
}

} // namespace terminal
