#include "terminal/formula/ScriptModelReader.h"

#include <QColor>
#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <utility>

namespace terminal {
namespace {

constexpr int kLongestText = 200; ///< characters of a name, a progress text or an error
constexpr int kShownOutput = 60; ///< characters of a line that is told back
constexpr int kLastStyle = 255;

struct Words {
    Q_DECLARE_TR_FUNCTIONS(ScriptModel)
};

QString shortened(const QString &text, int length = kLongestText) {
    return text.size() <= length ? text : text.left(length) + QStringLiteral("…");
}

ScriptModelFailure failed(const QString &text) {
    return {shortened(text)};
}

/// A whole number of a field within a range, or nothing.
std::optional<int> wholeNumber(const QJsonValue &value, int least, int most) {
    const double number = value.toDouble(least - 1.0);
    if (!value.isDouble() || number < least || number > most || number != std::floor(number)) {
        return std::nullopt;
    }
    return static_cast<int>(number);
}

std::optional<qint32> readAxis(const QJsonValue &value) {
    const QString name = value.toString();
    if (value.isUndefined() || name == QLatin1String("shared")) {
        return se::eLineShared;
    }
    if (name == QLatin1String("own")) {
        return se::eLineOwn;
    }
    return name == QLatin1String("hidden") ? std::optional<qint32>(se::eLineHidden) : std::nullopt;
}

std::optional<qint32> readColor(const QJsonValue &value) {
    static const QRegularExpression shape(QStringLiteral("^#[0-9a-fA-F]{6}$"));
    if (value.isUndefined()) {
        return se::kDefaultColor;
    }
    if (!shape.match(value.toString()).hasMatch()) {
        return std::nullopt;
    }
    const QColor color(value.toString());
    return color.red() | color.green() << 8 | color.blue() << 16;
}

ScriptModelMessage readLine(const QJsonObject &object, int points) {
    ScriptModelLine line;
    line.name = object[QStringLiteral("line")].toString();
    if (line.name.isEmpty() || line.name.size() > kLongestText) {
        return failed(Words::tr("线的名称应为 1 到 200 个字符"));
    }
    const QJsonValue style = object[QStringLiteral("style")];
    const std::optional<int> styleNumber =
        style.isUndefined() ? std::optional<int>(0) : wholeNumber(style, 0, kLastStyle);
    const std::optional<qint32> color = readColor(object[QStringLiteral("color")]);
    const std::optional<qint32> axis = readAxis(object[QStringLiteral("axis")]);
    if (!styleNumber) {
        return failed(Words::tr("线“%1”的 style 应为 0 到 255 的整数").arg(line.name));
    }
    if (!color) {
        return failed(Words::tr("线“%1”的 color 应为 #rrggbb").arg(line.name));
    }
    if (!axis) {
        return failed(Words::tr("线“%1”的 axis 应为 shared、own 或 hidden").arg(line.name));
    }
    line.style = *styleNumber;
    line.color = *color;
    line.axis = *axis;
    const QJsonArray values = object[QStringLiteral("values")].toArray();
    if (!object[QStringLiteral("values")].isArray() || values.size() != points) {
        return failed(Words::tr("线“%1”有 %2 个值，应为每分钟一个，共 %3 个")
                          .arg(line.name, QString::number(values.size()), QString::number(points)));
    }
    line.values.reserve(static_cast<size_t>(points));
    for (int i = 0; i < points; ++i) {
        const QJsonValue value = values.at(i);
        if (!value.isNull() && !value.isDouble()) {
            return failed(Words::tr("线“%1”的第 %2 个值不是数，也不是 null").arg(line.name).arg(i + 1));
        }
        line.values.push_back(value.toDouble(TC::kUnsetValue));
    }
    return line;
}

ScriptModelMessage readProgress(const QJsonObject &object) {
    constexpr int kMost = 1000000000;
    const std::optional<int> done = wholeNumber(object[QStringLiteral("progress")], 0, kMost);
    const std::optional<int> total = wholeNumber(object[QStringLiteral("total")], 0, kMost);
    if (!done || !total || *done > *total) {
        return failed(Words::tr("进度应为 0 到 total 的整数"));
    }
    return ScriptModelProgress{*done, *total, shortened(object[QStringLiteral("text")].toString())};
}

/// The line number of a traceback's `File "...", line N, in ...` inside a file; 0 for another line of text.
int lineOfFrame(const QString &text, const QString &file) {
    static const QRegularExpression frame(QStringLiteral("^\\s*File \"([^\"]*)\", line (\\d{1,9})"));
    const QRegularExpressionMatch match = frame.match(text);
    const QString path = match.captured(1);
    const bool inFile = path == file || path.endsWith(QLatin1Char('/') + file);
    return match.hasMatch() && inFile ? match.captured(2).toInt() : 0;
}

} // namespace

ScriptModelMessage readScriptModelMessage(const QByteArray &text, int points) {
    const QJsonObject object = QJsonDocument::fromJson(text).object();
    if (object.contains(QStringLiteral("line"))) {
        return readLine(object, points);
    }
    if (object.contains(QStringLiteral("progress"))) {
        return readProgress(object);
    }
    const QString error = object[QStringLiteral("error")].toString();
    if (!error.isEmpty()) {
        return failed(error);
    }
    return failed(Words::tr("输出不是结果：“%1”，应为含 line、progress 或 error 的 JSON")
                      .arg(shortened(QString::fromUtf8(text), kShownOutput)));
}

FormulaError readPythonError(const QByteArray &text, const QString &file) {
    FormulaError error;
    for (const QString &line : QString::fromUtf8(text).split(QLatin1Char('\n'))) {
        if (const int number = lineOfFrame(line, file)) {
            error.line = number;
        }
        if (!line.trimmed().isEmpty()) {
            error.text = shortened(line.trimmed());
        }
    }
    return error;
}

bool ScriptModelReader::take(const QByteArray &piece) {
    int start = 0;
    while (!mFailure && start < piece.size()) {
        const int end = piece.indexOf('\n', start);
        const int length = (end < 0 ? piece.size() : end) - start;
        if (mRest.size() + length > kLongestMessage) {
            mFailure = failed(Words::tr("一行输出超过了 %1 字节").arg(int(kLongestMessage)));
            break;
        }
        mRest.append(piece.constData() + start, length);
        if (end < 0) {
            break;
        }
        takeMessage(std::exchange(mRest, {}));
        start = end + 1;
    }
    return !mFailure;
}

bool ScriptModelReader::finish() {
    return !mFailure && takeMessage(std::exchange(mRest, {}));
}

bool ScriptModelReader::takeMessage(const QByteArray &text) {
    if (text.trimmed().isEmpty()) {
        return true;
    }
    ScriptModelMessage message = readScriptModelMessage(text, mPoints);
    if (auto *line = std::get_if<ScriptModelLine>(&message)) {
        takeLine(std::move(*line));
    } else if (auto *progress = std::get_if<ScriptModelProgress>(&message)) {
        mProgress = std::move(*progress);
    } else {
        mFailure = std::get<ScriptModelFailure>(message);
    }
    return !mFailure;
}

void ScriptModelReader::takeLine(ScriptModelLine line) {
    const auto known = std::find_if(mLines.begin(), mLines.end(),
                                    [&line](const ScriptModelLine &other) { return other.name == line.name; });
    if (known != mLines.end()) {
        *known = std::move(line);
    } else if (mLines.size() < size_t(kMostLines)) {
        mLines.push_back(std::move(line));
    } else {
        mFailure = failed(Words::tr("超过了 %1 条线").arg(int(kMostLines)));
    }
}

se::RPCFormulaMetaResult ScriptModelReader::meta() const {
    se::RPCFormulaMetaResult meta;
    meta.mLineCount = static_cast<qint32>(mLines.size());
    for (const ScriptModelLine &line : mLines) {
        meta.mLineNames.push_back(line.name.toStdString());
        meta.mLineStyles.push_back(line.style);
        meta.mLineColors.push_back(line.color);
        meta.mLineFlags.push_back(0);
        meta.mLineAxis.push_back(line.axis);
    }
    return meta;
}

se::RPCFormulaResult ScriptModelReader::result(const std::vector<se::TimePosition> &times) const {
    const size_t points = times.size();
    se::RPCFormulaResult result;
    if (mLines.empty()) {
        return result;
    }
    result.mTimes = times;
    result.mValid.assign(points, 1);
    result.mPointTags.assign(points, 0);
    for (const ScriptModelLine &line : mLines) {
        result.mValues.push_back(line.values);
        result.mValues.back().resize(points, TC::kUnsetValue);
        result.mExtra1.emplace_back(points, line.color);
        result.mTexts.emplace_back(points);
        result.mExtra2.emplace_back(points, 0.0);
    }
    return result;
}

} // namespace terminal
