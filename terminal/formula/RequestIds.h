#pragma once

#include "host/services/IdGenerator.h"

#include <atomic>

namespace terminal {

/// Ids that count up from 1 and never repeat in one run. Any thread.
class RequestIds : public se::IdGenerator {
public:
    std::string formulaRequestId(int panel, const QString &formula, const QString &code) override {
        return QStringLiteral("%1_%2_%3_%4").arg(panel).arg(formula, code).arg(++mLastRequest).toStdString();
    }
    int requestRoundId() override { return ++mLastRound; }

private:
    std::atomic<qint64> mLastRequest{0};
    std::atomic<int> mLastRound{0};
};

} // namespace terminal
