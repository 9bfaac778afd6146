#pragma once

#include <QString>

#include <optional>

namespace terminal {

/// What a ranking is asked for with, in the text of its event.
struct StageQuestion {
    qint64 start = 0; ///< seconds since the epoch
    qint64 end = 0;
    int criterion = 0; ///< EStageCriterion
    QString words; ///< of the criterion
};

/// Reads the six fields, which commas part; nothing when numbers are missing or the criterion is none.
std::optional<StageQuestion> readStageQuestion(const QString &text);

} // namespace terminal
