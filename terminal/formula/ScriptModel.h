#pragma once

#include "terminal/formula/FormulaError.h"
#include "terminal/formula/MinuteSeries.h"
#include "terminal/formula/ScriptModelProcess.h"
#include "terminal/formula/ScriptModelReader.h"

#include <QMap>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace terminal {

/// How script models are run.
struct ScriptModelSettings {
    QString interpreter; ///< program or path; empty for defaultPython()
    ScriptModelLimits limits;
    int pauseMilliseconds =
        3000; ///< of real time between the end of a run and the next one of the same request
};

/// The bars of a day of one more instrument, for a group model.
struct ScriptModelMember {
    QString key;
    MinuteBars bars;
};

/// What a script model is run with.
struct ScriptModelInput {
    QString file; ///< path of the Python file
    QString key; ///< of the instrument
    int day = 0; ///< trading day, seconds since the epoch at its midnight (UTC+8)
    QMap<QString, QString> arguments;
    MinuteBars bars;
    std::vector<ScriptModelMember> group;
};

/// What came of a run: a series, or an error, or nothing when it was stopped.
struct ScriptModelOutcome {
    se::RPCFormulaMetaResult meta;
    se::RPCFormulaResult result; ///< a point a bar; empty on an error
    std::optional<FormulaError> error;
    bool stopped = false;
};

/// The file that a request names, as a path of this system: a folder, a backslash or a slash, and the file.
QString scriptModelPath(const QString &formulaName);
/// The name of the model of a file: the file's name without ".py".
QString scriptModelName(const QString &file);
/// The keys that a group model walks, from its argument "group": separated by commas, blanks or semicolons.
QStringList scriptModelGroup(const QMap<QString, QString> &arguments);
/// What a model reads from its standard input: one line of JSON. See docs/scripts.md.
QByteArray scriptModelInput(const ScriptModelInput &input);

/// Runs a script model on the calling thread. `onProgress` hears of the progress that the model tells.
ScriptModelOutcome runScriptModel(ScriptModelProcess &process, const ScriptModelInput &input,
                                  const ScriptModelSettings &settings,
                                  const std::function<void(const ScriptModelProgress &)> &onProgress = {});

} // namespace terminal
