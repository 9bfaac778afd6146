#include "terminal/formula/LuaFormula.h"

#include "terminal/formula/FormulaRun.h"
#include "terminal/formula/LuaSandbox.h"

#include <QCoreApplication>

#include <boost/iterator/transform_iterator.hpp>

#include <algorithm>
#include <utility>

namespace terminal {
namespace {

double shown(double value) {
    return std::isfinite(value) ? value : TC::kUnsetValue;
}

/// As a list of a result has them: numbers, or unset.
std::vector<double> shownValues(const Operand &values, std::size_t count) {
    if (values.isNumber()) {
        return std::vector<double>(count, shown(values.number));
    }
    const double *const first = values.node->values().data();
    return {boost::make_transform_iterator(first, shown), boost::make_transform_iterator(first + count, shown)};
}

/// First bar from which on bars differ from those before.
std::size_t firstChange(const MinuteBars &before, const MinuteBars &now) {
    const auto place = std::mismatch(before.begin(), before.end(), now.begin(), now.end()).second;
    return static_cast<std::size_t>(place - now.begin());
}

/// The same when only the last bars can differ.
std::size_t firstOfLastChanges(const MinuteBars &before, const MinuteBars &now) {
    std::size_t first = now.empty() ? 0 : now.size() - 1;
    while (first > 0 && (first > before.size() || before[first - 1] != now[first - 1])) {
        --first;
    }
    return first;
}

/// Time of the first bar that one series has and the other has not, or not like this.
qint64 firstChangedTime(const MinuteBars &before, const MinuteBars &now) {
    const auto [one, other] = std::mismatch(before.begin(), before.end(), now.begin(), now.end());
    constexpr qint64 kNever = std::numeric_limits<qint64>::max();
    return std::min(one == before.end() ? kNever : one->time, other == now.end() ? kNever : other->time);
}

class LuaProgram : public FormulaProgram {
public:
    LuaProgram(LuaFormulaFile file, const FormulaInputs &inputs, FormulaErrorSink sink,
               const FormulaLimits &limits)
        : mFile(std::move(file)), mInputs(inputs), mSink(std::move(sink)), mLimits(limits) {
        start({});
        if (mRun->readsValues && !mRun->overLimit) {
            mRun->error.reset(); // it has asked for values that are not there yet
        }
        mDescription = mRun->description;
        takeStyles();
        tell(mRun->error);
    }

    se::RPCFormulaMetaResult describe() const override { return mDescription.meta(); }
    bool isOverLimit() const { return mRun->overLimit; }

    QString underlying() const override {
        // A file that reads single values may not have come to the underlying's yet.
        const bool mayRead = mRun->readsValues && mFile.text.contains("UCLOSE");
        const bool reads = mRun->underlying && mRun->underlying->isUsed();
        return reads || mayRead ? mInputs.underlying : QString();
    }

    void setUnderlying(const MinuteBars &bars) override {
        const qint64 time = firstChangedTime(mInputs.underlyingBars, bars);
        const MinuteBars &own = mRun->graph.bars();
        const auto first = std::partition_point(own.begin(), own.end(),
                                                [time](const MinuteBar &bar) { return bar.time < time; });
        mUnderlyingFrom = std::min(mUnderlyingFrom, static_cast<std::size_t>(first - own.begin()));
        mInputs.underlyingBars = bars;
        mRun->inputs.underlyingBars = bars;
    }

    se::RPCFormulaResult evaluate(const MinuteBars &bars) const override {
        bring(bars, firstChange(mRun->graph.bars(), bars));
        return result(bars);
    }

    se::RPCFormulaInstantResult evaluateLast(const MinuteBars &bars) const override {
        bring(bars, firstOfLastChanges(mRun->graph.bars(), bars));
        return point(bars);
    }

private:
    static constexpr std::size_t kUnchanged = std::numeric_limits<std::size_t>::max();

    void start(const MinuteBars &bars) const {
        mRun = FormulaRun::of(mFile, mInputs, mLimits, bars, RunDepth::Compute);
    }

    /// Has the run stand at these bars, of which those before `from` are as they were.
    void bring(const MinuteBars &bars, std::size_t from) const {
        if (mRun->overLimit || (mRun->error && !mRun->readsValues)) {
            return;
        }
        if (mRun->readsValues) {
            start(bars);
            takeStyles();
        }
        from = std::min(from, std::exchange(mUnderlyingFrom, kUnchanged));
        if (!mRun->error &&
            !mRun->graph.evaluate(bars, mRun->readsValues ? bars.size() : from, mLimits.milliseconds)) {
            mRun->error = FormulaError{mFile.name, 0, QCoreApplication::translate("LuaSandbox", "运行超时")};
            mRun->overLimit = true;
        }
        tell(mRun->error);
    }

    void tell(const std::optional<FormulaError> &error) const {
        if (error && error != mTold && mSink) {
            mSink(*error);
        }
        mTold = error;
    }

    /// What the file's run says of styles goes before its description.
    void takeStyles() const {
        for (std::size_t i = 0; i < mRun->lines.size(); ++i) {
            if (mRun->lines[i].style >= 0) {
                mDescription.lines[static_cast<int>(i)].style = mRun->lines[i].style;
            }
        }
    }

    std::size_t lineCount() const { return static_cast<std::size_t>(mDescription.lines.size()); }

    se::RPCFormulaResult result(const MinuteBars &bars) const {
        se::RPCFormulaResult result;
        const std::size_t count = bars.size();
        result.mTimes.reserve(count);
        for (const MinuteBar &bar : bars) {
            result.mTimes.emplace_back(bar.time, 0);
        }
        result.mValid.assign(count, 1);
        result.mPointTags.assign(count, 0);
        for (std::size_t line = 0; line < lineCount(); ++line) {
            if (mRun->error) {
                addLine(result, FormulaDrawing(kNoValue), count);
            } else {
                addLine(result, mRun->lines[line], count);
            }
        }
        return result;
    }

    /// Whether a line has texts now or at another time: a file that reads values may draw others with the next bar.
    bool mayHaveTexts(const FormulaDrawing &drawing) const {
        return mRun->readsValues || !drawing.texts.empty();
    }

    /// A line that never has texts has no list of them, which would take more than all else of its points.
    void addLine(se::RPCFormulaResult &result, const FormulaDrawing &drawing, std::size_t count) const {
        result.mValues.push_back(shownValues(drawing.values, count));
        result.mExtra2.push_back(shownValues(drawing.second.value_or(kNoValue), count));
        std::vector<qint32> &colors = result.mExtra1.emplace_back(count, se::kDefaultColor);
        for (std::size_t i = 0; i < count && !drawing.colors.empty(); ++i) {
            colors[i] = drawing.colorAt(i);
        }
        std::vector<std::string> &texts = result.mTexts.emplace_back(mayHaveTexts(drawing) ? count : 0);
        for (std::size_t i = 0; i < texts.size() && !drawing.texts.empty(); ++i) {
            texts[i] = drawing.textAt(i);
        }
    }

    se::RPCFormulaInstantResult point(const MinuteBars &bars) const {
        se::RPCFormulaInstantResult point;
        if (bars.empty()) {
            return point;
        }
        const std::size_t last = bars.size() - 1;
        point.mTime = {bars[last].time, 0};
        point.mValues.assign(lineCount(), TC::kUnsetValue);
        point.mExtra1.assign(lineCount(), se::kDefaultColor);
        const bool hasTexts =
            mRun->error || std::any_of(mRun->lines.begin(), mRun->lines.end(),
                                       [this](const auto &line) { return mayHaveTexts(line); });
        point.mTexts.resize(hasTexts ? lineCount() : 0);
        point.mExtra2.assign(lineCount(), TC::kUnsetValue);
        for (std::size_t line = 0; line < lineCount() && !mRun->error; ++line) {
            const FormulaDrawing &drawing = mRun->lines[line];
            point.mValues[line] = shown(drawing.values.at(last));
            point.mExtra1[line] = drawing.colorAt(last);
            if (hasTexts) {
                point.mTexts[line] = drawing.textAt(last);
            }
            point.mExtra2[line] = drawing.second ? shown(drawing.second->at(last)) : TC::kUnsetValue;
        }
        return point;
    }

    const LuaFormulaFile mFile;
    FormulaInputs mInputs;
    const FormulaErrorSink mSink;
    const FormulaLimits mLimits;
    mutable std::unique_ptr<FormulaRun> mRun; ///< never null
    mutable std::size_t mUnderlyingFrom =
        kUnchanged; ///< first own bar that a change of the underlying concerns
    mutable FormulaDescription mDescription; ///< with the styles of the last run
    mutable std::optional<FormulaError> mTold; ///< the error of the last evaluation
};

/// A few minutes to try a formula on.
MinuteBars sampleBars() {
    constexpr int kCount = 60;
    constexpr qint64 kMorning = 1583717460000; // 09:31 of a Monday at UTC+8
    MinuteBars bars;
    for (int i = 0; i < kCount; ++i) {
        const double price = 10.0 + (i * 7 % 13) * 0.01;
        bars.push_back({kMorning + i * 60000, price, price + 0.02, price - 0.02, price + 0.01, 10.05, 100.0 + i,
                        1000.0 + 10 * i});
    }
    return bars;
}

/// The first error of a file over a few bars.
std::optional<FormulaError> runOverSample(const LuaFormulaFile &file, const FormulaLimits &limits,
                                          bool &isOverLimit) {
    FormulaInputs inputs;
    inputs.previousClose = 10.0;
    inputs.priceTick = 0.01;
    inputs.floatShares = 1e8;
    inputs.previousNetValue = 10.0;
    inputs.underlying = QStringLiteral("X");
    inputs.underlyingClose = 10.0;
    inputs.underlyingBars = sampleBars();
    std::optional<FormulaError> first;
    const FormulaErrorSink keepFirst = [&first](const FormulaError &error) {
        if (!first) {
            first = error;
        }
    };
    const LuaProgram program(file, inputs, keepFirst, limits);
    program.evaluate(sampleBars());
    isOverLimit = program.isOverLimit();
    return first;
}

} // namespace

std::optional<FormulaDescription> describeLuaFormula(const LuaFormulaFile &file, FormulaError *error) {
    const auto run = FormulaRun::of(file, {}, {}, {}, RunDepth::Describe);
    if (run->error) {
        if (error) {
            *error = *run->error;
        }
        return std::nullopt;
    }
    return run->description;
}

std::optional<FormulaError> checkLuaFormula(const LuaFormulaFile &file) {
    bool isOverLimit = false;
    return runOverSample(file, {}, isOverLimit);
}

LuaFormulaTrial tryLuaFormula(const LuaFormulaFile &file, const FormulaLimits &limits) {
    LuaFormulaTrial trial;
    const auto run = FormulaRun::of(file, {}, limits, {}, RunDepth::Describe);
    trial.isOverLimit = run->overLimit;
    std::optional<FormulaError> error = run->error;
    if (!error) {
        error = runOverSample(file, limits, trial.isOverLimit);
    }
    if (error) {
        trial.error = *error;
    } else {
        trial.description = run->description;
    }
    return trial;
}

std::unique_ptr<FormulaProgram> makeLuaFormula(const LuaFormulaFile &file, const FormulaInputs &inputs,
                                               FormulaErrorSink sink, const FormulaLimits &limits) {
    return std::make_unique<LuaProgram>(file, inputs, std::move(sink), limits);
}

FormulaProgramMaker luaFormulaMaker(LuaFormulaLookup lookup, FormulaInputsOf inputs, FormulaErrorSink sink,
                                    const FormulaLimits &limits) {
    return [lookup = std::move(lookup), inputs = std::move(inputs), sink = std::move(sink),
            limits](const TC::CFormulaParam &param) -> std::unique_ptr<FormulaProgram> {
        std::optional<LuaFormulaFile> file = lookup(param);
        if (!file) {
            return nullptr;
        }
        for (auto each = param.mArguments.begin(); each != param.mArguments.end(); ++each) {
            file->arguments.insert(each.key(), each.value());
        }
        return makeLuaFormula(*file, inputs ? inputs(param) : FormulaInputs(), sink, limits);
    };
}

} // namespace terminal
