#pragma once

#include "terminal/feeder/InstrumentTape.h"

#include <QFile>

#include <optional>

namespace terminal {

/// What a feed writes of itself, a line each: "at RUN MARKET CHANGES MINUTES" when all up to that time of the market was
/// confirmed by the server, and "sum RUN DAY KEY MINUTES VOLUME AMOUNT PRICE" of each instrument. A feed that is started
/// again goes on from the last such time.
class FeedLog {
public:
    struct Place {
        quint64 run = 0;
        qint64 market = 0;
    };

    /// Answers an empty text or what went wrong.
    QString open(const QString &path);
    /// The last place of the file as it was opened; none in a new one.
    std::optional<Place> place() const { return mPlace; }

    /// Each answers whether the line was written.
    bool writePlace(const Place &place, quint64 changes, quint64 minutes);
    bool writeSums(quint64 run, const QString &key, const DaySums &sums);

private:
    bool write(const QString &line);

    QFile mFile;
    std::optional<Place> mPlace;
};

/// The last place that a text of the log tells; a line without its end counts for nothing.
std::optional<FeedLog::Place> lastPlace(const QByteArray &text);

} // namespace terminal
