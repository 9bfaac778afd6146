#include "terminal/formula/VectorFunctions.h"

#include "terminal/formula/AveDevNode.h"
#include "terminal/formula/PointNodes.h"
#include "terminal/formula/WindowNode.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace terminal {
namespace {

using Arguments = std::vector<Operand>;

// Point by point.

double add(double a, double b) {
    return a + b;
}
double subtract(double a, double b) {
    return a - b;
}
double multiply(double a, double b) {
    return a * b;
}
double divide(double a, double b) {
    return a / b;
}
double negate(double a) {
    return -a;
}
double power(double a, double b) {
    return std::pow(a, b);
}
double remainderOf(double a, double b) {
    const double rest = std::fmod(a, b);
    return rest != 0.0 && (rest < 0.0) != (b < 0.0) ? rest + b : rest;
}
double magnitude(double a) {
    return std::fabs(a);
}
double signOf(double a) {
    return a > 0.0 ? 1.0 : a < 0.0 ? -1.0 : 0.0;
}
double squareRoot(double a) {
    return std::sqrt(a);
}
double naturalLogarithm(double a) {
    return std::log(a);
}
double decimalLogarithm(double a) {
    return std::log10(a);
}
double exponential(double a) {
    return std::exp(a);
}
double lower(double a) {
    return std::floor(a);
}
double upper(double a) {
    return std::ceil(a);
}
double whole(double a) {
    return std::trunc(a);
}
double nearest(double a) {
    return std::round(a);
}
double larger(double a, double b) {
    return std::max(a, b);
}
double smaller(double a, double b) {
    return std::min(a, b);
}
double between(double x, double a, double b) {
    return x >= std::min(a, b) && x <= std::max(a, b) ? 1.0 : 0.0;
}
double equal(double a, double b) {
    return a == b ? 1.0 : 0.0;
}
double notEqual(double a, double b) {
    return a != b ? 1.0 : 0.0;
}
double greater(double a, double b) {
    return a > b ? 1.0 : 0.0;
}
double greaterEqual(double a, double b) {
    return a >= b ? 1.0 : 0.0;
}
double less(double a, double b) {
    return a < b ? 1.0 : 0.0;
}
double lessEqual(double a, double b) {
    return a <= b ? 1.0 : 0.0;
}
double both(double a, double b) {
    return a != 0.0 && b != 0.0 ? 1.0 : 0.0;
}
double either(double a, double b) {
    return a != 0.0 || b != 0.0 ? 1.0 : 0.0;
}
double isFalse(double a) {
    return a == 0.0 ? 1.0 : 0.0;
}
double choose(double c, double a, double b) {
    return std::isnan(c) ? kNoValue : c != 0.0 ? a : b;
}
double valid(double a) {
    return std::isnan(a) ? 0.0 : 1.0;
}
double orElse(double a, double b) {
    return std::isnan(a) ? b : a;
}

template <auto Function, std::size_t Count, bool TakesMissing, std::size_t... I>
Operand pointsOf(VectorGraph &graph, const Operand *x, std::index_sequence<I...>) {
    using Node = PointNode<Function, Count, TakesMissing>;
    if ((x[I].isNumber() && ...)) {
        return Node::apply({x[I].number...});
    }
    return graph.add<Node>(std::array<Argument, Count>{Argument(x[I])...});
}

template <auto Function, std::size_t Count, bool TakesMissing = false>
Operand points(VectorGraph &graph, const Arguments &x) {
    return pointsOf<Function, Count, TakesMissing>(graph, x.data(), std::make_index_sequence<Count>());
}

/// A function of two, taken over any number of arguments from the first on.
template <auto Function> Operand folded(VectorGraph &graph, const Arguments &x) {
    Operand result = x[0];
    for (std::size_t i = 1; i < x.size(); ++i) {
        result = points<Function, 2>(graph, {result, x[i]});
    }
    return result;
}

// Over the last points.

template <class Kind> Operand window(VectorGraph &graph, const Arguments &x, Kind kind) {
    return graph.add<WindowNode<Kind>>(x[0], static_cast<std::size_t>(x[1].number), kind);
}

Operand movingAverage(VectorGraph &graph, const Arguments &x) {
    return window(graph, x, MeanKind{{}, x[1].number});
}
Operand weightedAverage(VectorGraph &graph, const Arguments &x) {
    return window(graph, x, WeightedMeanKind{{}, x[1].number});
}
template <bool Sample, bool Root> Operand deviation(VectorGraph &graph, const Arguments &x) {
    const double length = x[1].number;
    return window(graph, x, DeviationKind{{}, length, Sample ? length - 1.0 : length, Root});
}
Operand squaredDeviations(VectorGraph &graph, const Arguments &x) {
    return window(graph, x, DeviationKind{{}, x[1].number, 1.0, false});
}
Operand averageDeviation(VectorGraph &graph, const Arguments &x) {
    return graph.add<AveDevNode>(x[0], static_cast<std::size_t>(x[1].number));
}
Operand slope(VectorGraph &graph, const Arguments &x) {
    return window(graph, x, SlopeKind{{}, x[1].number});
}
Operand total(VectorGraph &graph, const Arguments &x) {
    return window(graph, x, TotalKind{});
}
template <int Sign, bool Distance> Operand extreme(VectorGraph &graph, const Arguments &x) {
    return window(graph, x, ExtremeKind{Sign, Distance});
}
Operand count(VectorGraph &graph, const Arguments &x) {
    return window(graph, x, CountKind{});
}
Operand every(VectorGraph &graph, const Arguments &x) {
    return window(graph, x, EveryKind{{}, x[1].number});
}
Operand exist(VectorGraph &graph, const Arguments &x) {
    return window(graph, x, ExistKind{});
}

// Running on.

using StateAndValue = std::pair<double, double>;

bool isTrue(double x) {
    return hasValue(x) && x != 0.0;
}

StateAndValue smooth(double before, double x, double weight, double) {
    if (std::isnan(x) || std::isnan(weight)) {
        return {before, kNoValue};
    }
    const double next = std::isnan(before) ? x : before + weight * (x - before);
    // A jump that is foreseen: choosing without one would have every point wait for the look at the point before.
    if (Q_UNLIKELY(!std::isfinite(next))) {
        return {kNoValue, kNoValue};
    }
    return {next, next};
}
StateAndValue sinceLast(double before, double condition, double, double) {
    const double next = isTrue(condition) ? 0.0 : before + 1.0;
    return {next, next};
}
StateAndValue sinceFirst(double before, double condition, double, double) {
    const double next = std::isnan(before) && isTrue(condition) ? 0.0 : before + 1.0;
    return {next, next};
}
StateAndValue pointsFromFirst(double before, double x, double, double) {
    const double next = std::isnan(before) && hasValue(x) ? 1.0 : before + 1.0;
    return {next, next};
}
StateAndValue valueWhen(double before, double condition, double x, double) {
    const double next = isTrue(condition) ? x : before;
    return {next, next};
}
/// The state is the number of points since the last one that passed.
StateAndValue filtered(double before, double condition, double, double length) {
    const bool passes = isTrue(condition) && !(before + 1.0 <= length);
    return {passes ? 0.0 : before + 1.0, passes ? 1.0 : 0.0};
}
/// The state is the number of points without a break, up to this one, at which `A` was below `B`.
StateAndValue longCross(double before, double a, double b, double length) {
    const double below = std::isnan(before) ? 0.0 : before;
    return {a < b ? below + 1.0 : 0.0, a > b && below >= length ? 1.0 : 0.0};
}

template <auto Step>
Operand running(VectorGraph &graph, const Operand &x, const Operand &y, double setting = 0.0) {
    return graph.add<RunningNode<Step>>(x, y, setting);
}

Operand exponentialAverage(VectorGraph &graph, const Arguments &x) {
    return running<smooth>(graph, x[0], 2.0 / (x[1].number + 1.0));
}
Operand smoothedAverage(VectorGraph &graph, const Arguments &x) {
    return running<smooth>(graph, x[0], x[2].number / x[1].number);
}
Operand dynamicAverage(VectorGraph &graph, const Arguments &x) {
    return running<smooth>(graph, x[0], x[1]);
}
template <auto Step> Operand ofOne(VectorGraph &graph, const Arguments &x) {
    return running<Step>(graph, x[0], 0.0);
}
Operand valueAt(VectorGraph &graph, const Arguments &x) {
    return running<valueWhen>(graph, x[0], x[1]);
}
Operand filter(VectorGraph &graph, const Arguments &x) {
    return running<filtered>(graph, x[0], 0.0, x[1].number);
}
Operand longCrossing(VectorGraph &graph, const Arguments &x) {
    return running<longCross>(graph, x[0], x[1], x[2].number);
}

// Other points.

Operand reference(VectorGraph &graph, const Arguments &x) {
    return graph.add<RefNode>(x[0], x[1]);
}
Operand crossing(VectorGraph &graph, const Arguments &x) {
    return graph.add<CrossNode>(x[0], x[1]);
}

// The bars.

double openOf(const MinuteBar &bar, std::size_t) {
    return bar.open == 0.0 ? kNoValue : bar.open;
}
double highOf(const MinuteBar &bar, std::size_t) {
    return bar.high;
}
double lowOf(const MinuteBar &bar, std::size_t) {
    return bar.low;
}
double closeOf(const MinuteBar &bar, std::size_t) {
    return bar.price;
}
double averageOf(const MinuteBar &bar, std::size_t) {
    return bar.average;
}
double volumeOf(const MinuteBar &bar, std::size_t) {
    return bar.volume;
}
double amountOf(const MinuteBar &bar, std::size_t) {
    return bar.amount == 0.0 && bar.volume != 0.0 ? kNoValue : bar.amount;
}
double clockOf(const MinuteBar &bar, std::size_t) {
    constexpr qint64 kMinutesOfDay = 24 * 60;
    constexpr qint64 kExchangeOffset = 8 * 60; // UTC+8
    const qint64 minute = (bar.time / 60000 + kExchangeOffset) % kMinutesOfDay;
    return static_cast<double>(minute / 60 * 100 + minute % 60);
}
double barNumberOf(const MinuteBar &, std::size_t i) {
    return static_cast<double>(i) + 1.0;
}

template <double (*Field)(const MinuteBar &, std::size_t)> VectorNode *barColumn(VectorGraph &graph) {
    return graph.add<BarNode<Field>>(graph);
}

/// Each value from those of one point.
const std::vector<VectorFunction> &pointFunctions() {
    static const std::vector<VectorFunction> functions = {
        {"+", "vv", points<add, 2>},
        {"-", "vv", points<subtract, 2>},
        {"*", "vv", points<multiply, 2>},
        {"/", "vv", points<divide, 2>},
        {"-x", "v", points<negate, 1>},
        {"POW", "vv", points<power, 2>},
        {"MOD", "vv", points<remainderOf, 2>},
        {"ABS", "v", points<magnitude, 1>},
        {"SGN", "v", points<signOf, 1>},
        {"SQRT", "v", points<squareRoot, 1>},
        {"LN", "v", points<naturalLogarithm, 1>},
        {"LOG", "v", points<decimalLogarithm, 1>},
        {"EXP", "v", points<exponential, 1>},
        {"FLOOR", "v", points<lower, 1>},
        {"CEILING", "v", points<upper, 1>},
        {"INTPART", "v", points<whole, 1>},
        {"ROUND", "v", points<nearest, 1>},
        {"MAX", "vv+", folded<larger>},
        {"MIN", "vv+", folded<smaller>},
        {"BETWEEN", "vvv", points<between, 3>},
        {"EQ", "vv", points<equal, 2>},
        {"NE", "vv", points<notEqual, 2>},
        {"GT", "vv", points<greater, 2>},
        {"GE", "vv", points<greaterEqual, 2>},
        {"LT", "vv", points<less, 2>},
        {"LE", "vv", points<lessEqual, 2>},
        {"AND", "vv+", folded<both>},
        {"OR", "vv+", folded<either>},
        {"NOT", "v", points<isFalse, 1>},
        {"IF", "vvv", points<choose, 3, true>},
        {"VALID", "v", points<valid, 1, true>},
        {"DEFAULT", "vv", points<orElse, 2, true>},
    };
    return functions;
}

/// Each value from those of a window of points, or of all points so far.
const std::vector<VectorFunction> &windowFunctions() {
    static const std::vector<VectorFunction> functions = {
        {"MA", "vn", movingAverage},
        {"WMA", "vn", weightedAverage},
        {"STD", "vt", deviation<true, true>},
        {"VAR", "vt", deviation<true, false>},
        {"STDP", "vn", deviation<false, true>},
        {"VARP", "vn", deviation<false, false>},
        {"DEVSQ", "vn", squaredDeviations},
        {"AVEDEV", "vn", averageDeviation},
        {"SLOPE", "vt", slope},
        {"SUM", "vz", total},
        {"HHV", "vz", extreme<1, false>},
        {"LLV", "vz", extreme<-1, false>},
        {"HHVBARS", "vz", extreme<1, true>},
        {"LLVBARS", "vz", extreme<-1, true>},
        {"COUNT", "vz", count},
        {"EVERY", "vn", every},
        {"EXIST", "vn", exist},
        {"EMA", "vn", exponentialAverage},
        {"SMA", "vnm", smoothedAverage},
        {"DMA", "vv", dynamicAverage},
        {"REF", "vv", reference},
        {"CROSS", "vv", crossing},
        {"LONGCROSS", "vvn", longCrossing},
        {"BARSLAST", "v", ofOne<sinceLast>},
        {"BARSSINCE", "v", ofOne<sinceFirst>},
        {"BARSCOUNT", "v", ofOne<pointsFromFirst>},
        {"VALUEWHEN", "vv", valueAt},
        {"FILTER", "vn", filter},
    };
    return functions;
}

std::vector<VectorFunction> allFunctions() {
    std::vector<VectorFunction> all = pointFunctions();
    all.insert(all.end(), windowFunctions().begin(), windowFunctions().end());
    return all;
}

} // namespace

const std::vector<VectorFunction> &vectorFunctions() {
    static const std::vector<VectorFunction> functions = allFunctions();
    return functions;
}

const VectorFunction *vectorFunction(const char *name) {
    const std::vector<VectorFunction> &all = vectorFunctions();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [name](const VectorFunction &f) { return std::strcmp(f.name, name) == 0; });
    return found == all.end() ? nullptr : &*found;
}

const std::vector<BarSeries> &barSeries() {
    static const std::vector<BarSeries> series = {
        {"OPEN", barColumn<openOf>},       {"HIGH", barColumn<highOf>},  {"LOW", barColumn<lowOf>},
        {"CLOSE", barColumn<closeOf>},     {"VOL", barColumn<volumeOf>}, {"AMOUNT", barColumn<amountOf>},
        {"AVERAGE", barColumn<averageOf>}, {"TIME", barColumn<clockOf>}, {"BARPOS", barColumn<barNumberOf>},
    };
    return series;
}

} // namespace terminal
