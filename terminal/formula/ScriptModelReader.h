#pragma once

#include "host/records/RPCFormulaResult.h"
#include "terminal/formula/FormulaError.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <variant>
#include <vector>

namespace terminal {

/// One line of a series, as a script model wrote it.
struct ScriptModelLine {
    QString name;
    std::vector<double> values; ///< one a point; TC::kUnsetValue where there is none
    qint32 style = 0; ///< draw style, 0 a polyline
    qint32 color = se::kDefaultColor; ///< red | green << 8 | blue << 16
    qint32 axis = se::eLineShared; ///< se::ELineAxis
};

/// How far a script model has come.
struct ScriptModelProgress {
    int done = 0;
    int total = 0;
    QString text;
};

/// What a script model said is wrong, or what is wrong with what it said.
struct ScriptModelFailure {
    QString text;
};

using ScriptModelMessage = std::variant<ScriptModelLine, ScriptModelProgress, ScriptModelFailure>;

/// Reads one line of a script model's output, a JSON object in UTF-8: a line of a series with `points` values, a
/// progress, or an error. Anything else is a failure that says what was expected. Pure.
ScriptModelMessage readScriptModelMessage(const QByteArray &text, int points);

/// What a Python traceback says: the text of its last line, and the line of the deepest call inside `file` (a name
/// without folder), 0 when it names none. Text without a traceback gives its last line. Pure.
FormulaError readPythonError(const QByteArray &text, const QString &file);

/// Puts together what a script model writes, in pieces of any size. A line of a name that is there already takes its
/// place. The first failure ends the reading. Pure but for what it holds.
class ScriptModelReader {
public:
    static constexpr int kMostLines = 64; ///< lines of one series
    static constexpr int kLongestMessage = 4 << 20; ///< bytes of one line of output

    /// For a series of that many points.
    explicit ScriptModelReader(int points) : mPoints(points) {}

    /// Takes a piece of output; false once there is a failure.
    bool take(const QByteArray &piece);
    /// Takes the last line, which may lack its end; false when there is a failure.
    bool finish();

    const std::vector<ScriptModelLine> &lines() const { return mLines; }
    const ScriptModelProgress &progress() const { return mProgress; }
    const std::optional<ScriptModelFailure> &failure() const { return mFailure; }

    /// The lines as a series over these times; the vectors are as long as there are times.
    se::RPCFormulaMetaResult meta() const;
    se::RPCFormulaResult result(const std::vector<se::TimePosition> &times) const;

private:
    bool takeMessage(const QByteArray &text);
    void takeLine(ScriptModelLine line);

    const int mPoints;
    QByteArray mRest; ///< of a line that has not ended
    std::vector<ScriptModelLine> mLines;
    ScriptModelProgress mProgress;
    std::optional<ScriptModelFailure> mFailure;
};

} // namespace terminal
