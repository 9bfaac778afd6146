#pragma once

/// \file
/// A chart of SH600000 (close before the day 10.00, tick 0.01) on a host of doubles.

#include "chartdata/CRealtimeData.h"
#include "chartview/CGraphAxisWidget.h"
#include "tests/fakehost/FakeHost.h"
#include "tests/support/Series.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QList>
#include <QPainter>

#include <boost/make_shared.hpp>

namespace tests {

/// Opens what the data object keeps for its base and for itself.
class ChartProbe : public TC::CRealtimeData {
public:
    using CRealtimeData::CRealtimeData;
    using CRealtimeData::mData;
    using CRealtimeData::mMaxMin;
    using CRealtimeData::mReq;
};

/// Keeps the events that a chart delivers.
class EventList : public GZ::CEventDeliverer {
public:
    struct Event {
        int number;
        int first;
        int second;
        QString text;
        void *data;
    };
    bool handleEvent(int event, int first, int second, QString text, void *data) override {
        mEvents.append({event, first, second, text, data});
        return true;
    }
    int count(int number) const {
        int found = 0;
        for (const Event &event : mEvents) {
            found += event.number == number;
        }
        return found;
    }
    QList<Event> mEvents;
};

class ProbeFixture : public ::testing::Test {
protected:
    ProbeFixture() {
        mHost.mStocks.add("SH", "600000", 10.0, 0.01);
        setClose("SH600000", 10.0);
        mHost.mCatalogue.add(QStringLiteral("REALTIME"), 2);
        mHost.mCatalogue.add(QStringLiteral("REALTIMEVOL"), 2);
        mUiParam = boost::make_shared<TC::CRealtimeUiParam>(TC::EIndexViewType::Ordinary);
        mUiParam->setStock(kStock, false);
        mData = makeData(TC::EIndexDisplayType::Main);
    }
    boost::shared_ptr<ChartProbe> makeData(TC::EIndexDisplayType displayType) {
        auto data = boost::make_shared<ChartProbe>(mUiParam, displayType, &mEvents);
        data->setTradeDate(kDay);
        return data;
    }
    void setClose(const QString &stock, double close) { mHost.mStocks.mCloses[qMakePair(stock, 0)] = close; }
    /// Puts a series into a chart, as a result would.
    static TC::CFormulaKey put(ChartProbe &data, const QString &stock, const QString &formula,
                               const TC::FormulaMetaPtr &meta, const TC::FormulaResultPtr &result) {
        const TC::CFormulaKey key(stock, formula);
        se::RPCFormulaResultCache entry;
        entry.meta = *meta;
        entry.result = *result;
        data.mData.insert(key, entry);
        return key;
    }
    /// One line of values from 09:30 on.
    TC::CFormulaKey put(const QString &stock, const QString &formula, std::vector<double> values,
                        qint32 style = 0) {
        const int count = static_cast<int>(values.size());
        return put(
            *mData, stock, formula, makeMeta(1, {style}),
            makeResult(minuteTimes(kDay, 570, count), std::vector<std::vector<double>>{std::move(values)}));
    }
    TC::CFormulaKey putPrice(std::vector<double> values) {
        return put(kStock, QStringLiteral("REALTIME"), std::move(values));
    }
    TC::CFormulaKey putVolume(std::vector<double> values) {
        return put(kStock, QStringLiteral("REALTIMEVOL"), std::move(values), 2);
    }
    void overlay(const std::string &market, const std::string &code, double close, bool hasAxis) {
        const auto detail = mHost.mStocks.add(market, code, close);
        setClose(TC::getDetailQsKey(detail), close);
        mUiParam->addStock(TC::getDetailQsKey(detail), QString(), hasAxis);
    }

    const QString kStock = QStringLiteral("SH600000");
    fakehost::FakeHost mHost;
    EventList mEvents;
    boost::shared_ptr<TC::CRealtimeUiParam> mUiParam;
    boost::shared_ptr<ChartProbe> mData;
};

} // namespace tests
