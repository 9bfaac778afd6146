#include "terminal/app/StageQuestion.h"

#include "terminal/market/StageRanking.h"

#include <QStringList>

namespace terminal {
namespace {

enum EField : int { eStart, eEnd, eCriterion = 4, eWords, kFields };

} // namespace

std::optional<StageQuestion> readStageQuestion(const QString &text) {
    const QStringList fields = text.split(QLatin1Char(','));
    if (fields.size() != kFields) {
        return std::nullopt;
    }
    StageQuestion question;
    bool hasStart = false;
    bool hasEnd = false;
    bool hasCriterion = false;
    question.start = fields[eStart].toLongLong(&hasStart);
    question.end = fields[eEnd].toLongLong(&hasEnd);
    question.criterion = fields[eCriterion].toInt(&hasCriterion);
    question.words = fields[eWords];
    const bool known = question.criterion >= 0 && question.criterion < kStageCriteria;
    return hasStart && hasEnd && hasCriterion && known ? std::make_optional(question) : std::nullopt;
}

} // namespace terminal
