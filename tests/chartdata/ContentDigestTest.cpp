#include "chartdata/ContentDigest.h"

#include "tests/support/Series.h"

#include <gtest/gtest.h>

#include <functional>

namespace TC {
namespace {

se::RPCFormulaResultCache someSeries() {
    se::RPCFormulaResultCache series;
    series.meta = *tests::makeMeta(2);
    series.result = *tests::makeResult(tests::minuteTimes(tests::kDay, 570, 3),
                                       std::vector<std::vector<double>>{{1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}});
    return series;
}

quint64 digestOf(const se::RPCFormulaResultCache &series) {
    ContentDigest digest;
    digest.add(series);
    return digest.value();
}

TEST(ContentDigest, IsTheSameForEqualSeries) {
    EXPECT_EQ(digestOf(someSeries()), digestOf(someSeries()));
}

TEST(ContentDigest, DiffersWithEverythingThatADrawingDependsOn) {
    const std::vector<std::function<void(se::RPCFormulaResultCache &)>> changes = {
        [](auto &series) { series.result.mValues[1][2] += 1e-9; },
        [](auto &series) { std::swap(series.result.mValues[0][0], series.result.mValues[0][1]); },
        [](auto &series) { std::swap(series.result.mValues[0], series.result.mValues[1]); },
        [](auto &series) { series.result.mValues[0].pop_back(); },
        [](auto &series) { series.result.mValid[1] = 0; },
        [](auto &series) { series.result.mExtra1[0][0] = 255; },
        [](auto &series) { series.result.mExtra2[1][1] = 0.5; },
        [](auto &series) { series.result.mTexts[0][2] = "买"; },
        [](auto &series) { series.meta.mLineStyles[0] = 5; },
        [](auto &series) { series.meta.mLineColors[1] = 255; },
        [](auto &series) { series.meta.mLineAxis[1] = se::eLineHidden; },
        [](auto &series) { series.meta.mLineCount = 1; },
    };
    for (std::size_t i = 0; i < changes.size(); ++i) {
        se::RPCFormulaResultCache changed = someSeries();
        changes[i](changed);
        EXPECT_NE(digestOf(changed), digestOf(someSeries())) << "change " << i;
    }
}

TEST(ContentDigest, TimesDoNotCountButTheirNumberDoes) {
    se::RPCFormulaResultCache later = someSeries();
    later.result.mTimes[2].first += 60000;
    EXPECT_EQ(digestOf(later), digestOf(someSeries()));
    later.result.mTimes.pop_back();
    EXPECT_NE(digestOf(later), digestOf(someSeries()));
}

} // namespace
} // namespace TC
