// A drawing that is carried out later shows what it would have shown at once.

#include "tests/chartdata/ChartDataFixture.h"

#include <functional>

using namespace TC;

namespace tests {
namespace {

class DueDrawing : public ChartData {
protected:
    using Change = std::function<void(CRealtimeData &)>;

    static FormulaResultPtr prices(double first) {
        return makeResult(minuteTimes(kDay, 570, 6), {{first, 10.5, 9.6, 10.1, 10.3, 9.9}});
    }
    boost::shared_ptr<CRealtimeData> drawn() {
        mUi->mShowVolume = true;
        auto data = requested();
        history(*data, key("SH600000"), prices(10.0));
        startDrawing(*data);
        data->redraw();
        return data;
    }
    /// A change that asks for no drawing leaves the picture as it is, painted before or not.
    void expectUntouched(const Change &change) {
        const auto painted = drawn();
        const QImage before = ChartData::painted(*painted);
        change(*painted);
        const auto due = drawn();
        change(*due);
        const QImage seen = ChartData::painted(*due);
        EXPECT_EQ(seen, ChartData::painted(*painted));
        due->redraw();
        EXPECT_NE(ChartData::painted(*due), seen) << "the change is one that is seen";
    }
};

TEST_F(DueDrawing, BeforeTheSeriesAreForgotten) {
    expectUntouched([](CRealtimeData &data) { data.clearData(); });
}

TEST_F(DueDrawing, BeforeAFormulaIsTakenOff) {
    expectUntouched([](CRealtimeData &data) { data.removeFormula(QStringLiteral("REALTIME"), false); });
}

TEST_F(DueDrawing, BeforeAnotherHistoryComes) {
    expectUntouched([](CRealtimeData &data) { history(data, key("SH600000"), prices(9.7)); });
}

TEST_F(DueDrawing, BeforeAnOlderPointChanges) {
    expectUntouched([](CRealtimeData &data) {
        point(data, key("SH600000"), makePoint(minuteTimes(kDay, 570, 1).front(), {9.7}));
    });
}

TEST_F(DueDrawing, WhateverTheViewShowsMeanwhile) {
    expectUntouched([this](CRealtimeData &) { mUi->mShowVolume = false; });
}

TEST_F(DueDrawing, SeveralResultsOfOneGoAreThoseOfOneDrawingEach) {
    const auto at = [this](bool paintsBetween) {
        auto data = requested({QStringLiteral("REALTIME"), QStringLiteral("REALTIMEVOL")});
        startDrawing(*data);
        for (const char *formula : {"REALTIME", "REALTIMEVOL"}) {
            history(*data, key("SH600000", formula), prices(10.0));
            data->adoptMaxMin(data->getMaxMinMap(), false);
            if (paintsBetween) {
                painted(*data);
            }
        }
        return painted(*data);
    };
    EXPECT_EQ(at(false), at(true));
}

} // namespace
} // namespace tests
