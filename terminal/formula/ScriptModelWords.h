#pragma once

#include <QCoreApplication>

namespace terminal {

/// What is told of a script model, whether of its run or of its output.
struct ScriptModelWords {
    Q_DECLARE_TR_FUNCTIONS(ScriptModel)
};

} // namespace terminal
