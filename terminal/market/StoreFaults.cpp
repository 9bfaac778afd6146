#include "terminal/market/StoreFaults.h"

namespace terminal {
namespace {

constexpr int kWritten = 20; ///< lines

} // namespace

void StoreFaults::tell(const QString &table, const QString &row, const QString &reason) {
    const QString name = table + QLatin1Char(' ') + row;
    std::lock_guard<std::mutex> hold(mLock);
    if (mKnown.contains(name)) {
        return;
    }
    if (mLines.size() >= kKept) {
        ++mOthers;
        return;
    }
    mKnown.insert(name);
    mLines.append(QStringLiteral("%1: %2, set aside").arg(name, reason));
    if (mLines.size() <= kWritten) {
        qWarning("market store: %s", mLines.last().toUtf8().constData());
    }
}

QStringList StoreFaults::lines() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mLines;
}

QStringList StoreFaults::takeNew() {
    std::lock_guard<std::mutex> hold(mLock);
    const QStringList fresh = mLines.mid(mTaken);
    mTaken = mLines.size();
    return fresh;
}

int StoreFaults::count() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mLines.size() + mOthers;
}

} // namespace terminal
