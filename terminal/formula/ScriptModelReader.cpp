#include "terminal/formula/ScriptModelReader.h"

#include "host/drawing/LineColor.h"
#include "terminal/formula/ScriptModelWords.h"
#include "terminal/formula/ShortText.h"

#include <QColor>
#include <QRegularExpression>

#include <bson/bson.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace terminal {
namespace {

constexpr int kShownOutput = 60; ///< characters of a line that is told back
constexpr int kLastStyle = 255;

ScriptModelFailure failureOf(const QString &text) {
    return {shortened(text)};
}

/// A value of a JSON object; absent without the field.
class JsonValue {
public:
    JsonValue() = default;
    explicit JsonValue(const bson_iter_t &place) : mPlace(place), mIsPresent(true) {}

    bool isAbsent() const { return !mIsPresent; }
    bool isNull() const { return mIsPresent && BSON_ITER_HOLDS_NULL(&mPlace); }
    std::optional<double> number() const {
        return mIsPresent && BSON_ITER_HOLDS_NUMBER(&mPlace)
                   ? std::optional<double>(bson_iter_as_double(&mPlace))
                   : std::nullopt;
    }
    /// Empty for what is no text.
    QString text() const {
        uint32_t length = 0;
        const char *utf8 =
            mIsPresent && BSON_ITER_HOLDS_UTF8(&mPlace) ? bson_iter_utf8(&mPlace, &length) : nullptr;
        return QString::fromUtf8(utf8, static_cast<int>(length));
    }
    /// The elements of an array; nothing for what is none.
    std::optional<std::vector<JsonValue>> elements() const {
        bson_iter_t element;
        if (!mIsPresent || !BSON_ITER_HOLDS_ARRAY(&mPlace) || !bson_iter_recurse(&mPlace, &element)) {
            return std::nullopt;
        }
        std::vector<JsonValue> values;
        while (bson_iter_next(&element)) {
            values.emplace_back(element);
        }
        return values;
    }

private:
    bson_iter_t mPlace{};
    bool mIsPresent = false;
};

/// A JSON object; one without fields for any other text.
class JsonObject {
public:
    explicit JsonObject(const QByteArray &text)
        : mDocument(
              bson_new_from_json(reinterpret_cast<const uint8_t *>(text.constData()), text.size(), nullptr),
              &bson_destroy) {}

    JsonValue operator[](const char *field) const {
        bson_iter_t place;
        return mDocument && bson_iter_init_find(&place, mDocument.get(), field) ? JsonValue(place)
                                                                                : JsonValue();
    }

private:
    std::unique_ptr<bson_t, void (*)(bson_t *)> mDocument;
};

/// A whole number of a field within a range, or nothing.
std::optional<int> wholeNumber(const JsonValue &value, int least, int most) {
    const std::optional<double> number = value.number();
    if (!number || !(*number >= least && *number <= most) || *number != std::floor(*number)) {
        return std::nullopt;
    }
    return static_cast<int>(*number);
}

std::optional<qint32> readAxis(const JsonValue &value) {
    const QString name = value.text();
    if (value.isAbsent() || name == QLatin1String("shared")) {
        return se::eLineShared;
    }
    if (name == QLatin1String("own")) {
        return se::eLineOwn;
    }
    return name == QLatin1String("hidden") ? std::optional<qint32>(se::eLineHidden) : std::nullopt;
}

std::optional<qint32> readColor(const JsonValue &value) {
    static const QRegularExpression shape(QStringLiteral("^#[0-9a-fA-F]{6}$"));
    if (value.isAbsent()) {
        return se::kDefaultColor;
    }
    if (!shape.match(value.text()).hasMatch()) {
        return std::nullopt;
    }
    return TC::lineColor(QColor(value.text()));
}

ScriptModelMessage readLine(const JsonObject &object, int points) {
    ScriptModelLine line;
    line.name = object["line"].text();
    if (line.name.isEmpty() || line.name.size() > kLongestShortText) {
        return failureOf(ScriptModelWords::tr("线的名称应为 1 到 200 个字符"));
    }
    const JsonValue style = object["style"];
    const std::optional<int> styleNumber =
        style.isAbsent() ? std::optional<int>(0) : wholeNumber(style, 0, kLastStyle);
    const std::optional<qint32> color = readColor(object["color"]);
    const std::optional<qint32> axis = readAxis(object["axis"]);
    if (!styleNumber) {
        return failureOf(ScriptModelWords::tr("线“%1”的 style 应为 0 到 255 的整数").arg(line.name));
    }
    if (!color) {
        return failureOf(ScriptModelWords::tr("线“%1”的 color 应为 #rrggbb").arg(line.name));
    }
    if (!axis) {
        return failureOf(ScriptModelWords::tr("线“%1”的 axis 应为 shared、own 或 hidden").arg(line.name));
    }
    line.style = *styleNumber;
    line.color = *color;
    line.axis = *axis;
    const std::optional<std::vector<JsonValue>> values = object["values"].elements();
    if (!values || values->size() != static_cast<size_t>(points)) {
        return failureOf(
            ScriptModelWords::tr("线“%1”有 %2 个值，应为每分钟一个，共 %3 个")
                .arg(line.name, QString::number(values ? values->size() : 0), QString::number(points)));
    }
    line.values.reserve(values->size());
    for (size_t i = 0; i < values->size(); ++i) {
        const std::optional<double> value = (*values)[i].number();
        if (!(value && std::isfinite(*value)) && !(*values)[i].isNull()) {
            return failureOf(
                ScriptModelWords::tr("线“%1”的第 %2 个值不是数，也不是 null").arg(line.name).arg(i + 1));
        }
        line.values.push_back(value.value_or(TC::kUnsetValue));
    }
    return line;
}

ScriptModelMessage readProgress(const JsonObject &object) {
    constexpr int kMost = 1000000000;
    const std::optional<int> done = wholeNumber(object["progress"], 0, kMost);
    const std::optional<int> total = wholeNumber(object["total"], 0, kMost);
    if (!done || !total || *done > *total) {
        return failureOf(ScriptModelWords::tr("进度应为 0 到 total 的整数"));
    }
    return ScriptModelProgress{*done, *total, shortened(object["text"].text())};
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
    const JsonObject object(text);
    if (!object["line"].isAbsent()) {
        return readLine(object, points);
    }
    if (!object["progress"].isAbsent()) {
        return readProgress(object);
    }
    const QString error = object["error"].text();
    if (!error.isEmpty()) {
        return failureOf(error);
    }
    return failureOf(ScriptModelWords::tr("输出不是结果：“%1”，应为含 line、progress 或 error 的 JSON")
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
            mFailure = failureOf(ScriptModelWords::tr("一行输出超过了 %1 字节").arg(int(kLongestMessage)));
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
        mFailure = failureOf(ScriptModelWords::tr("超过了 %1 条线").arg(int(kMostLines)));
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
