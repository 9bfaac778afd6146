#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <map>
#include <mutex>
#include <set>

namespace terminal {

/// What became of the lines of an import of orders or deals, until it is told. Any thread.
class TradeImportNotes {
public:
    static constexpr int kTold = 10; ///< lines with their reasons

    /// Where the number of the line that is read comes from; without it records are numbered.
    void setLineSource(std::function<int()> source);
    void take();
    void refuse(const char *reason);

    /// Tells what came of a file of so many lines, in a line of text, then one for each of the first lines that were left
    /// out, and forgets it.
    QStringList tell(int lines);

private:
    int nextLine();

    std::mutex mLock; ///< guards the following
    std::function<int()> mSource;
    int mRecords = 0;
    std::set<int> mTaken;
    std::map<int, QString> mRefused; ///< reasons by line
};

} // namespace terminal
