#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

#include <mutex>

namespace terminal {

/// What was found wrong in a store, and set aside: one line for each row, however often it is read. The first lines
/// are also written as warnings. Any thread.
class StoreFaults {
public:
    static constexpr int kKept = 100; ///< lines; what comes after them is only counted

    /// Tells of a row. `row` names it by its key, `reason` says what is wrong with it.
    void tell(const QString &table, const QString &row, const QString &reason);

    QStringList lines() const;
    /// The lines that have not been taken yet.
    QStringList takeNew();
    /// Of all rows that were told, those without a line included.
    int count() const;

private:
    mutable std::mutex mLock; ///< guards the following
    QSet<QString> mKnown;
    QStringList mLines;
    int mTaken = 0; ///< lines
    int mOthers = 0; ///< told when no more lines were kept
};

} // namespace terminal
