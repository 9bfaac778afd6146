#include "terminal/feeder/FeedLog.h"

#include <algorithm>

namespace terminal {
namespace {

constexpr qint64 kLongestTail = 4 * 1024 * 1024; ///< bytes: more than the sums of all instruments

} // namespace

std::optional<FeedLog::Place> lastPlace(const QByteArray &text) {
    std::optional<FeedLog::Place> place;
    const QList<QByteArray> lines = text.split('\n');
    for (int i = 0; i + 1 < lines.size(); ++i) {
        const QList<QByteArray> words = lines[i].split(' ');
        if (words.size() != 5 || words[0] != "at") {
            continue;
        }
        bool isRun = false;
        bool isMarket = false;
        const FeedLog::Place told{words[1].toULongLong(&isRun), words[2].toLongLong(&isMarket)};
        if (isRun && isMarket && told.market > 0) {
            place = told;
        }
    }
    return place;
}

QString FeedLog::open(const QString &path) {
    mFile.setFileName(path);
    if (!mFile.open(QIODevice::ReadWrite)) {
        return QStringLiteral("%1: the log cannot be written: %2").arg(path, mFile.errorString());
    }
    mFile.seek(std::max<qint64>(0, mFile.size() - kLongestTail));
    const QByteArray tail = mFile.readAll();
    mPlace = lastPlace(tail);
    mFile.seek(mFile.size());
    if (!tail.isEmpty() && !tail.endsWith('\n')) {
        mFile.write("\n"); // what was cut off stays a line by itself
    }
    return {};
}

bool FeedLog::write(const QString &line) {
    return mFile.write(line.toUtf8()) >= 0 && mFile.flush();
}

bool FeedLog::writePlace(const Place &place, quint64 changes, quint64 minutes) {
    return write(QStringLiteral("at %1 %2 %3 %4\n").arg(place.run).arg(place.market).arg(changes).arg(minutes));
}

bool FeedLog::writeSums(quint64 run, const QString &key, const DaySums &sums) {
    return write(QStringLiteral("sum %1 %2 %3 %4 %5 %6 %7\n")
                     .arg(run)
                     .arg(sums.day)
                     .arg(key)
                     .arg(sums.minutes)
                     .arg(sums.volume, 0, 'g', 17)
                     .arg(sums.amount, 0, 'g', 17)
                     .arg(sums.price, 0, 'g', 17));
}

} // namespace terminal
