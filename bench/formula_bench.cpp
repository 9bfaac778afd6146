// What formulas in Lua cost: opening one on a day of 241 minutes, a whole series, a tick, and a service with 80 series.
#include "terminal/formula/FormulaService.h"
#include "terminal/formula/LuaFormula.h"
#include "tests/terminal/ScriptedFeed.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

using namespace terminal;

constexpr int kMinutes = 241;
constexpr int kSeries = 80;
constexpr int kDay = 1583683200; // 9 March 2020 at UTC+8

const char kMacd[] = R"(
formula { name = "MACD", lines = {{"DIF"}, {"DEA"}, {"MACD", style = "COLORSTICK"}} }
function run()
  local dif = EMA(CLOSE, 12) - EMA(CLOSE, 26)
  local dea = EMA(dif, 9)
  return dif, dea, 2 * (dif - dea)
end)";
const char kKdj[] = R"(
formula { name = "KDJ", lines = {{"K"}, {"D"}, {"J"}} }
function run()
  local low = LLV(LOW, 9)
  local rsv = (CLOSE - low) / (HHV(HIGH, 9) - low) * 100
  local k = SMA(rsv, 3, 1)
  local d = SMA(k, 3, 1)
  return k, d, 3 * k - 2 * d
end)";
const char kBoll[] = R"(
formula { name = "BOLL", lines = {{"MID"}, {"UPPER"}, {"LOWER"}} }
function run()
  local mid, width = MA(CLOSE, 20), 2 * STD(CLOSE, 20)
  return mid, mid + width, mid - width
end)";
const char kRsi[] = R"(
formula { name = "RSI", lines = {{"RSI"}} }
function run()
  local change = CLOSE - REF(CLOSE, 1)
  return SMA(MAX(change, 0), 6, 1) / SMA(ABS(change), 6, 1) * 100
end)";
/// A loop over single values, which is run whole with every tick.
const char kLoop[] = R"(
formula { name = "LOOP", lines = {{"A"}} }
function run()
  local total, out = 0, {}
  for i = 1, #CLOSE do total = total + CLOSE[i] * VOL[i] out[i] = total end
  return out
end)";

const char *const kTexts[] = {kMacd, kKdj, kBoll, kLoop, kRsi};
const char *const kNames[] = {"MACD", "KDJ", "BOLL", "LOOP", "RSI"};

LuaFormulaFile fileOf(int which) {
    return {QLatin1String(kNames[which]), kTexts[which], {}};
}

MinuteBar barOf(int minute, double shift = 0.0) {
    const double price = 10.0 + 0.5 * std::sin(minute * 0.37) + shift;
    return {(kDay + 34260 + minute * 60) * 1000LL,
            price,
            price + 0.02,
            price - 0.02,
            price + 0.01,
            price,
            100.0,
            1000.0};
}

MinuteBars dayOf(double shift = 0.0, int minutes = kMinutes) {
    MinuteBars bars;
    for (int i = 0; i < minutes; ++i) {
        bars.push_back(barOf(i, shift));
    }
    return bars;
}

/// The file read, run, and a whole series.
void openFormula(benchmark::State &state) {
    const LuaFormulaFile file = fileOf(static_cast<int>(state.range(0)));
    const MinuteBars bars = dayOf();
    for (auto _ : state) {
        benchmark::DoNotOptimize(makeLuaFormula(file)->evaluate(bars));
    }
    state.SetLabel(kNames[state.range(0)]);
}
BENCHMARK(openFormula)->DenseRange(0, 3)->Unit(benchmark::kMicrosecond);

/// A whole series of a program at work: every bar is another.
void wholeSeries(benchmark::State &state) {
    const auto program = makeLuaFormula(fileOf(static_cast<int>(state.range(0))));
    const MinuteBars bars[] = {dayOf(), dayOf(0.5)};
    int turn = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(program->evaluate(bars[++turn % 2]));
    }
    state.SetLabel(kNames[state.range(0)]);
}
BENCHMARK(wholeSeries)->DenseRange(0, 3)->Unit(benchmark::kMicrosecond);

/// A trade in the last minute.
void tick(benchmark::State &state) {
    const auto program = makeLuaFormula(fileOf(static_cast<int>(state.range(0))));
    MinuteBars bars = dayOf();
    program->evaluate(bars);
    int turn = 0;
    for (auto _ : state) {
        bars.back() = barOf(kMinutes - 1, ++turn % 2 * 0.01);
        benchmark::DoNotOptimize(program->evaluateLast(bars));
    }
    state.SetLabel(kNames[state.range(0)]);
}
BENCHMARK(tick)->DenseRange(0, 3)->Unit(benchmark::kMicrosecond);

/// What numpy_formulas.py computes as well: whole series of a length.
void longSeries(benchmark::State &state) {
    const auto program = makeLuaFormula(fileOf(static_cast<int>(state.range(0))));
    const int minutes = static_cast<int>(state.range(1));
    const MinuteBars bars[] = {dayOf(0.0, minutes), dayOf(0.5, minutes)};
    int turn = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(program->evaluate(bars[++turn % 2]));
    }
    state.SetLabel(kNames[state.range(0)]);
}
BENCHMARK(longSeries)->ArgsProduct({{0, 1, 2, 4}, {1440, 1000000}})->Unit(benchmark::kMicrosecond);

/// One more point of such a series; the room for it was made with the point before.
void onePoint(benchmark::State &state) {
    const auto program = makeLuaFormula(fileOf(static_cast<int>(state.range(0))));
    MinuteBars bars = dayOf(0.0, static_cast<int>(state.range(1)));
    bars.reserve(bars.size() + 40000);
    program->evaluate(bars);
    bars.push_back(barOf(static_cast<int>(bars.size())));
    program->evaluateLast(bars);
    for (auto _ : state) {
        bars.push_back(barOf(static_cast<int>(bars.size())));
        benchmark::DoNotOptimize(program->evaluateLast(bars));
    }
    state.SetLabel(kNames[state.range(0)]);
}
BENCHMARK(onePoint)
    ->ArgsProduct({{0, 1, 2, 4}, {1440, 1000000}})
    ->Unit(benchmark::kMicrosecond)
    ->Iterations(1000);

/// Functions of the last points over a long day: the time is to depend on the points, not on the window.
void longWindow(benchmark::State &state) {
    const char *const functions[] = {"HHV", "MA", "STD", "AVEDEV"};
    const QString call =
        QStringLiteral("%1(CLOSE, %2)").arg(QLatin1String(functions[state.range(0)])).arg(state.range(1));
    const QString text =
        QStringLiteral("formula { name = \"W\", lines = {{\"A\"}} } function run() return %1 end").arg(call);
    const auto program = makeLuaFormula({QStringLiteral("W"), text.toUtf8(), {}});
    MinuteBars days[2];
    for (int i = 0; i < 1440; ++i) {
        days[0].push_back(barOf(i));
        days[1].push_back(barOf(i, 0.5));
    }
    int turn = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(program->evaluate(days[++turn % 2]));
    }
    state.SetLabel(call.toStdString());
}
BENCHMARK(longWindow)->ArgsProduct({{0, 1, 2, 3}, {5, 60, 700}})->Unit(benchmark::kMicrosecond);

/// A trade in the last minute of each of 80 series, from the feed to the callbacks. The processor's time is that of
/// all threads.
void serviceTick(benchmark::State &state) {
    tests::ScriptedFeed feed;
    feed.setRunningDay(kDay);
    const LuaFormulaLookup lookup = [](const TC::CFormulaParam &param) -> std::optional<LuaFormulaFile> {
        return fileOf(param.mFormulaName.toInt());
    };
    FormulaService service(feed, luaFormulaMaker(lookup), [](const TC::CFormulaParam &) { return kDay; });
    int histories = 0;
    int points = 0;
    QVector<TC::CFormulaParam> params;
    for (int i = 0; i < kSeries; ++i) {
        TC::CFormulaParam param;
        param.mCode = QString::number(i);
        param.mFormulaName = QString::number(i % 3);
        param.mDataMode = 1;
        param.mDataDemand = 3;
        param.mRequestId = std::to_string(i);
        feed.setBars(param.mCode, kDay, dayOf());
        params.append(param);
    }
    service.requestFormulas(
        params, [&](auto &&...) { ++histories; }, [&](auto &&...) { ++points; });
    while (histories < kSeries) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    int turn = 0;
    for (auto _ : state) {
        const MinuteBar bar = barOf(kMinutes - 1, ++turn % 2 * 0.01);
        for (int i = 0; i < kSeries; ++i) {
            feed.change(QString::number(i), bar);
        }
        while (points < turn * kSeries) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }
    state.counters["series"] = kSeries;
}
BENCHMARK(serviceTick)->Unit(benchmark::kMicrosecond)->MeasureProcessCPUTime()->UseRealTime();

} // namespace

int main(int argc, char **argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
