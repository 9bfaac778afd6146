#include "terminal/formula/LuaFormula.h"

#include "terminal/formula/FormulaRun.h"
#include "terminal/formula/LuaSandbox.h"
#include "terminal/formula/ResultLists.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

namespace terminal {
namespace {

constexpr qint64 kNever = std::numeric_limits<qint64>::max();

/// Time of the first bar that one series has and the other has not, or not like this.
qint64 firstChangedTime(const MinuteBars &before, const MinuteBars &now) {
    const auto [one, other] = std::mismatch(before.begin(), before.end(), now.begin(), now.end());
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
        mUnderlyingFrom = std::min(mUnderlyingFrom, firstChangedTime(mInputs.underlyingBars, bars));
        mInputs.underlyingBars = bars;
        mRun->inputs.underlyingBars = bars;
    }

    se::RPCFormulaResult evaluate(const MinuteBars &bars) const override {
        if (isReady(bars)) {
            ResultLists lists(bars, mRun->lines, mParts);
            if (bring(bars, &VectorGraph::firstChange, [&lists](std::size_t end) { lists.writeTo(end); })) {
                return lists.take();
            }
        }
        const std::vector<FormulaDrawing> blank = blankLines();
        return ResultLists(bars, blank, mParts).take();
    }

    se::RPCFormulaInstantResult evaluateLast(const MinuteBars &bars) const override {
        const bool isBrought = isReady(bars) && bring(bars, &VectorGraph::firstOfLastChanges, {});
        if (bars.empty()) {
            return {};
        }
        return isBrought ? lastPointOf(bars, mRun->lines, mParts) : lastPointOf(bars, blankLines(), mParts);
    }

private:
    void start(const MinuteBars &bars) const {
        mRun = FormulaRun::of(mFile, mInputs, mLimits, bars, RunDepth::Compute);
        mParts = DrawnParts(mRun->lines, mRun->readsValues);
    }

    /// Whether the run has lines for these bars: it is made anew when it has read values of others.
    bool isReady(const MinuteBars &bars) const {
        if (mRun->overLimit || (mRun->error && !mRun->readsValues)) {
            return false;
        }
        if (mRun->readsValues) {
            start(bars);
            takeStyles();
            tell(mRun->error);
        }
        return !mRun->error;
    }

    /// Has the vectors stand at these bars. False when that takes too long.
    bool bring(const MinuteBars &bars, std::size_t (VectorGraph::*firstOf)(const MinuteBars &) const,
               const VectorGraph::Progress &progress) const {
        VectorGraph &graph = mRun->graph;
        const std::size_t own = mRun->readsValues ? bars.size() : (graph.*firstOf)(bars);
        const std::size_t from = std::min(own, firstOfUnderlying(bars));
        mUnderlyingFrom = kNever;
        if (!graph.evaluate(bars, from, mLimits.milliseconds, progress)) {
            mRun->error = FormulaError{mFile.name, 0, QCoreApplication::translate("LuaSandbox", "运行超时")};
            mRun->overLimit = true;
        }
        tell(mRun->error);
        return !mRun->error;
    }

    /// First bar that a change of the underlying concerns.
    std::size_t firstOfUnderlying(const MinuteBars &bars) const {
        if (mUnderlyingFrom == kNever) {
            return bars.size();
        }
        const auto first = std::partition_point(
            bars.begin(), bars.end(), [this](const MinuteBar &bar) { return bar.time < mUnderlyingFrom; });
        return static_cast<std::size_t>(first - bars.begin());
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

    /// What is drawn after an error.
    std::vector<FormulaDrawing> blankLines() const {
        return std::vector<FormulaDrawing>(static_cast<std::size_t>(mDescription.lines.size()),
                                           FormulaDrawing(kNoValue));
    }

    const LuaFormulaFile mFile;
    FormulaInputs mInputs;
    const FormulaErrorSink mSink;
    const FormulaLimits mLimits;
    mutable std::unique_ptr<FormulaRun> mRun; ///< never null
    mutable DrawnParts mParts; ///< of its lines
    mutable qint64 mUnderlyingFrom = kNever; ///< time from which on the underlying is another one
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
