// The ranges of random charts against an independent program.

#include "tests/chartdata/ProbeFixture.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <random>

using namespace tests;
using namespace TC;

namespace {

constexpr int kCases = 400;
constexpr int kRangeSteps = 25;

class RangeReference : public ProbeFixture {
protected:
    int below(int limit) { return int(mRandom() % unsigned(limit)); }
    double unit() { return double(below(100001)) / 100000.0; }

    void setUpChart(QJsonObject &config);
    QJsonObject randomStep(const QStringList &stocks, const QStringList &formulas);
    QJsonObject answerOf(bool changed) const;

    std::mt19937 mRandom{20240315};
};

QJsonValue orNull(double value) {
    return value == kUnsetValue ? QJsonValue() : QJsonValue(value);
}

void RangeReference::setUpChart(QJsonObject &config) {
    mUiParam = boost::make_shared<CRealtimeUiParam>(EIndexViewType::Ordinary);
    const int kind = below(3);
    const double tick = below(6) == 0 ? kUnsetValue : below(2) ? 0.01 : 0.5;
    const double closes[] = {10.0, 12.34, 0.0, kUnsetValue, -3.0};
    const double dayClose = closes[below(3) ? below(2) : below(5)];
    mHost.mStocks.add("SH", "600000", dayClose, tick);
    setClose(kStock, dayClose);
    mHost.mIndexes.add(QStringLiteral("CDX"));
    mHost.mIndexes.mStored["CDX"] = 11.5;
    mHost.mStocks.mPortfolios.insert(QStringLiteral("7"));
    mUiParam->setStock(kind == 0 ? kStock : kind == 1 ? QStringLiteral("CDX") : QStringLiteral("7"), false);
    const bool mainPane = below(6) != 0;
    if (below(2)) {
        mUiParam->mGetTradeDateFunc = [] { return kDay; };
    }
    QJsonArray overlays;
    QJsonObject overlayClose;
    for (int i = 0; i < (below(2) ? below(4) : 0); ++i) {
        const bool hasAxis = below(2);
        const std::string code = "00000" + std::to_string(i + 1);
        const double overlayCloses[] = {20.0, 7.5, 10.0, 0.0, kUnsetValue};
        const double close = overlayCloses[below(5)];
        overlay("SZ", code, close, hasAxis);
        const QString key = QStringLiteral("SZ") + QString::fromStdString(code);
        overlays.append(QJsonObject{{QStringLiteral("key"), key}, {QStringLiteral("axis"), hasAxis}});
        // Without a past day the view knows no close of an overlay: 0, or what the catalogue lists.
        overlayClose[key] =
            close == kUnsetValue && !mUiParam->mGetTradeDateFunc ? QJsonValue(0.0) : orNull(close);
    }
    mUiParam->mLinkageFlags = below(3) == 0 ? 4 + 2 * below(2) : below(2) + 1;
    mUiParam->mLinkageShow[0] = below(2);
    mUiParam->mLinkageShow[1] = below(2);
    mHost.mLinkage.mOrderAmplitude = unit() * 0.1;
    mHost.mLinkage.mDealAmplitude = unit() * 0.1;
    mData = makeData(mainPane ? EIndexDisplayType::Main : EIndexDisplayType::Sub);
    config = QJsonObject{{QStringLiteral("main"), mainPane},
                         {QStringLiteral("kind"), kind},
                         {QStringLiteral("stock"), mUiParam->getStock()},
                         {QStringLiteral("dayClose"), orNull(dayClose)},
                         {QStringLiteral("lastClose"), kind == 1 ? QJsonValue(11.5) : QJsonValue()},
                         {QStringLiteral("tick"), tick},
                         {QStringLiteral("points"), mUiParam->mPointCount},
                         {QStringLiteral("flags"), mUiParam->mLinkageFlags},
                         {QStringLiteral("orders"), mUiParam->mLinkageShow[0]},
                         {QStringLiteral("deals"), mUiParam->mLinkageShow[1]},
                         {QStringLiteral("orderAmplitude"), mHost.mLinkage.mOrderAmplitude},
                         {QStringLiteral("dealAmplitude"), mHost.mLinkage.mDealAmplitude},
                         {QStringLiteral("overlays"), overlays},
                         {QStringLiteral("overlayClose"), overlayClose},
                         {QStringLiteral("basic"), mUiParam->getBasicFormula()},
                         {QStringLiteral("volume"), mUiParam->getVolFormula()},
                         {QStringLiteral("types"), QJsonObject{{QStringLiteral("REALTIME"), 2},
                                                               {QStringLiteral("REALTIMEVOL"), 2},
                                                               {QStringLiteral("BOLL"), 1},
                                                               {QStringLiteral("TWICE"), 2}}}};
}

/// Puts a series in, or only points further, and tells the other program the same.
QJsonObject RangeReference::randomStep(const QStringList &stocks, const QStringList &formulas) {
    const QString stock = stocks[below(2) ? 0 : below(stocks.size())];
    const CFormulaKey key(stock, formulas[below(formulas.size())]);
    QJsonObject step{{QStringLiteral("key"), QJsonArray{key.mStock, key.mFormula}}};
    if (below(12) != 0) {
        const bool fresh = below(8) == 0 || !mData->mData.contains(key);
        std::vector<double> values =
            fresh ? std::vector<double>() : mData->mData.value(key).result.mValues.front();
        const double middle = below(5) == 0 ? 0.0 : 10.0;
        const double spread = below(10) == 0 ? 0.0 : unit() * (below(4) == 0 ? 5.0 : 0.5);
        for (int i = below(4); i >= 0; --i) {
            values.push_back(below(25) == 0 ? kUnsetValue : middle + (unit() - 0.5) * spread);
        }
        QJsonArray list;
        for (const double value : values) {
            list.append(orNull(value));
        }
        const se::RPCFormulaResultCache before = mData->mData.value(key);
        const int count = int(values.size());
        put(*mData, key.mStock, key.mFormula, makeMeta(1),
            makeResult(minuteTimes(kDay, 570, count), std::vector<std::vector<double>>{std::move(values)}));
        if (!fresh) {
            mData->mData[key].max = before.max;
            mData->mData[key].min = before.min;
        }
        step[QStringLiteral("values")] = list;
        step[QStringLiteral("fresh")] = fresh;
    }
    step[QStringLiteral("first")] = below(2) ? 0 : below(10);
    return step;
}

QJsonObject RangeReference::answerOf(bool changed) const {
    QJsonArray ranges;
    for (auto range = mData->mMaxMin.constBegin(); range != mData->mMaxMin.constEnd(); ++range) {
        ranges.append(QJsonArray{range.key().mStock, range.key().mFormula, range->first, range->second});
    }
    return QJsonObject{{QStringLiteral("changed"), changed}, {QStringLiteral("ranges"), ranges}};
}

bool areSame(const QJsonArray &a, const QJsonArray &b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (int i = 0; i < a.size(); ++i) {
        const QJsonArray left = a[i].toArray();
        const QJsonArray right = b[i].toArray();
        if (left[0] != right[0] || left[1] != right[1] ||
            std::abs(left[2].toDouble() - right[2].toDouble()) > 1e-9 ||
            std::abs(left[3].toDouble() - right[3].toDouble()) > 1e-9) {
            return false;
        }
    }
    return true;
}

std::string textOf(const QJsonValue &value) {
    return QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).toStdString();
}

} // namespace

TEST_F(RangeReference, RandomChartsWantTheRangesOfTheReference) {
    mHost.mCatalogue.add(QStringLiteral("BOLL"), 1);
    mHost.mCatalogue.add(QStringLiteral("TWICE"), 2);
    QJsonArray cases;
    QVector<QJsonArray> answers;
    for (int number = 0; number < kCases; ++number) {
        QJsonObject config;
        setUpChart(config);
        QStringList stocks{mUiParam->getStock()};
        for (const CInstrumentDetailPtr &detail : mUiParam->getAllAddStockList()) {
            stocks.append(getDetailQsKey(detail));
        }
        stocks.append(QStringLiteral("HK09999")); // shown by nobody
        const QStringList formulas{mUiParam->getBasicFormula(), mUiParam->getBasicFormula(),
                                   mUiParam->getVolFormula(), QStringLiteral("BOLL"), QStringLiteral("TWICE")};
        QJsonArray steps;
        QJsonArray own;
        for (int i = 0; i < kRangeSteps; ++i) {
            const QJsonObject step = randomStep(stocks, formulas);
            steps.append(step);
            const QJsonArray key = step[QStringLiteral("key")].toArray();
            own.append(answerOf(mData->updateMaxMin(CFormulaKey(key[0].toString(), key[1].toString()),
                                                    step[QStringLiteral("first")].toInt())));
        }
        config[QStringLiteral("steps")] = steps;
        cases.append(config);
        answers.append(own);
    }
    QTemporaryDir dir;
    QFile file(dir.filePath(QStringLiteral("cases.json")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QJsonDocument(cases).toJson());
    file.close();
    QProcess python;
    python.start(QStringLiteral("/usr/bin/env"),
                 {QStringLiteral("python3"),
                  QStringLiteral(TIMESHARE_SOURCE_DIR "/tests/chartdata/range_reference.py"), file.fileName()});
    ASSERT_TRUE(python.waitForFinished(120000));
    ASSERT_EQ(python.exitCode(), 0) << python.readAllStandardError().toStdString();
    const QJsonArray expected = QJsonDocument::fromJson(python.readAllStandardOutput()).array();
    ASSERT_EQ(expected.size(), kCases);
    int changes = 0;
    for (int number = 0; number < kCases; ++number) {
        const QJsonArray steps = expected[number].toArray();
        for (int i = 0; i < kRangeSteps; ++i) {
            const QJsonObject want = steps[i].toObject();
            const QJsonObject have = answers[number][i].toObject();
            changes += want[QStringLiteral("changed")].toBool();
            ASSERT_EQ(have[QStringLiteral("changed")], want[QStringLiteral("changed")])
                << "case " << number << " step " << i << "\n"
                << textOf(cases[number]);
            ASSERT_TRUE(
                areSame(have[QStringLiteral("ranges")].toArray(), want[QStringLiteral("ranges")].toArray()))
                << "case " << number << " step " << i << "\nhave " << textOf(have) << "\nwant " << textOf(want)
                << "\n"
                << textOf(cases[number]);
        }
    }
    EXPECT_GT(changes, kCases); // the walk is not idle
}
