#pragma once

/// \file
/// The parts of a pane's data, put together by a test without the data themselves.

#include "chartdata/ChartPicture.h"
#include "chartdata/PaneAxis.h"
#include "chartdata/PaneRanges.h"
#include "chartdata/PaneSeries.h"
#include "chartdata/SceneSource.h"
#include "chartdata/ShownDay.h"
#include "tests/fakehost/FakeHost.h"
#include "tests/support/Series.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <gtest/gtest.h>

#include <memory>

namespace tests {

inline const QRect kPane(0, 0, 300, 200); ///< the rectangle of the pane

/// The main pane of SH600000, close before the day 10.00, on the live day, with SZ000001 (close 20.00) to overlay.
class PartsFixture : public ::testing::Test {
protected:
    PartsFixture() {
        mHost.mStocks.add("SH", "600000", 10.0, 0.01);
        mHost.mStocks.add("SZ", "000001", 20.0, 0.01);
        mHost.mStocks.mCloses[qMakePair(QStringLiteral("SH600000"), 0)] = 10.0;
        mHost.mStocks.mCloses[qMakePair(QStringLiteral("SZ000001"), 0)] = 20.0;
        for (const char *name : {"REALTIME", "REALTIMEVOL"}) {
            mHost.mCatalogue.add(QString::fromLatin1(name), TC::eReplacingFormula);
        }
        mHost.mCatalogue.add(QStringLiteral("MACD"), TC::eSubPaneFormula);
        mView.setStock(QStringLiteral("SH600000"), false);
        mDay.set(kDay, mView);
        mHost.mLog.clear();
    }
    static TC::CFormulaKey key(const char *stock, const char *formula = "REALTIME") {
        return TC::CFormulaKey(QString::fromLatin1(stock), QString::fromLatin1(formula));
    }
    /// A series of one line from 09:30 on, as a result would bring it.
    void store(const TC::CFormulaKey &of, std::vector<double> values, qint32 style = 0) {
        const int count = static_cast<int>(values.size());
        mSeries.store(
            of, mSeries.roleOf(of), makeMeta(1, {style}),
            makeResult(minuteTimes(kDay, 570, count), std::vector<std::vector<double>>{std::move(values)}));
    }

    fakehost::FakeHost mHost;
    TC::CRealtimeUiParam mView{TC::EIndexViewType::Ordinary};
    QList<QString> mFormulas{QStringLiteral("REALTIME")};
    TC::PaneSeries::Map mShown;
    TC::IndexBaseData::MaxMinMap mWanted;
    TC::ShownDay mDay;
    TC::PaneAxis mAxis;
    TC::PaneSeries mSeries{mView, TC::EIndexDisplayType::Main, mFormulas, mDay, mShown};
    TC::PaneRanges mRanges{mView, TC::EIndexDisplayType::Main, mDay, mShown, mWanted};
    TC::SceneSource mScene{mView, TC::EIndexDisplayType::Main, mDay, mSeries, mRanges, mAxis};
};

} // namespace tests
