// A formula of the host's own in a pane beneath the chart: a MACD of the day's closes, for the whole day and point by point.

#include "Program.h"

#include <timeshare/host/drawing/DrawStyles.h>
#include <timeshare/host/services/CFormulaOperateManager.h>
#include <timeshare/host/services/DefaultServices.h>

#include <boost/make_shared.hpp>

namespace {

const QString kMacd = QStringLiteral("MACD");

/// The formulas that the view may show, by name.
class Formulas : public TC::CFormulaOperateManager {
public:
    Formulas() {
        add(QStringLiteral("REALTIME"), TC::eReplacingFormula);
        add(QStringLiteral("REALTIMEVOL"), TC::eReplacingFormula);
        add(kMacd, TC::eSubPaneFormula)->mPrecisions = {{0, 4}, {1, 4}, {2, 4}}; // decimals of its lines
    }
    TC::CFormulaDetailPtr getFormula(const QString &name) override { return mFormulas.value(name.toUpper()); }

private:
    TC::CFormulaDetailPtr add(const QString &name, TC::EFormulaType type) {
        const auto formula = boost::make_shared<TC::CFormulaDetail>();
        formula->mName = name;
        formula->mFileName = name; // what a request asks for
        formula->mType = type;
        mFormulas.insert(name, formula);
        return formula;
    }

    QMap<QString, TC::CFormulaDetailPtr> mFormulas;
};

/// Moving average that weighs the newest value by 2 / (length + 1).
class Average {
public:
    explicit Average(int length) : mWeight(2.0 / (length + 1)) {}
    double next(double value) {
        mValue = mIsFirst ? value : mValue + mWeight * (value - mValue);
        mIsFirst = false;
        return mValue;
    }

private:
    double mWeight;
    double mValue = 0.0;
    bool mIsFirst = true;
};

/// The three lines, DIF, DEA and their doubled distance.
std::vector<std::vector<double>> macdOf(const std::vector<TC::MinuteBar> &bars) {
    std::vector<std::vector<double>> lines(3);
    Average fast(12);
    Average slow(26);
    Average signal(9);
    for (const TC::MinuteBar &bar : bars) {
        const double dif = fast.next(bar.mClose) - slow.next(bar.mClose);
        const double dea = signal.next(dif);
        lines[0].push_back(dif);
        lines[1].push_back(dea);
        lines[2].push_back(2.0 * (dif - dea));
    }
    return lines;
}

class MacdSeries : public example::Series {
public:
    using Series::Series;

private:
    TC::FormulaMetaPtr meta(const QString &formula) override {
        if (formula != kMacd) {
            return Series::meta(formula);
        }
        const auto meta = std::make_shared<TC::RPCFormulaMetaResult>();
        meta->mLineCount = 3;
        meta->mLineNames = {"DIF", "DEA", "MACD"};
        meta->mLineStyles = {TC::eLineStyle, TC::eLineStyle, TC::eColorStickStyle};
        return meta; // colours and axes are the usual ones
    }
    TC::FormulaResultPtr result(const QString &formula, const TC::MainDay &day) override {
        if (formula != kMacd) {
            return Series::result(formula, day);
        }
        const auto result = std::make_shared<TC::RPCFormulaResult>();
        for (const TC::MinuteBar &bar : day.bars()) {
            result->mTimes.emplace_back(bar.mEnd, 0);
        }
        result->mValid.assign(day.bars().size(), 1);
        result->mValues = macdOf(day.bars());
        result->mExtra2 = result->mValues; // a stick is coloured by the sign of its second value
        return result;
    }
    TC::FormulaInstantPtr lastPoint(const QString &formula, const TC::MainDay &day) override {
        if (formula != kMacd) {
            return Series::lastPoint(formula, day);
        }
        const auto point = std::make_shared<TC::RPCFormulaInstantResult>();
        point->mTime = {day.bars().back().mEnd, 0};
        for (const std::vector<double> &line : macdOf(day.bars())) {
            point->mValues.push_back(line.back());
        }
        point->mExtra2 = point->mValues;
        return point;
    }
};

} // namespace

int main(int argc, char **argv) {
    qputenv("TZ", "Asia/Shanghai");
    tzset();
    QApplication application(argc, argv);
    example::Market market;
    example::Clock clock(market);
    example::Stocks stocks;
    MacdSeries series(market);
    Formulas formulas;
    TC::CSingletonT<TC::CHostClock>::install(&clock);
    TC::CSingletonT<TC::CStockManager>::install(&stocks);
    TC::CSingletonT<TC::CFormulaManager>::install(&series);
    TC::CSingletonT<TC::CFormulaOperateManager>::install(&formulas);
    const TC::DefaultServices defaults;

    TC::CRealtimeMainWidget view(nullptr, TC::EIndexViewType::Ordinary);
    view.setStock(QStringLiteral("SH600000"), false);
    view.addIndexWidget(); // a pane beneath the chart, which is selected then
    view.handleDoubleClickedFormula(kMacd);
    view.request(false);
    return example::run(view, market, [&] { series.tellNewest(); });
}
