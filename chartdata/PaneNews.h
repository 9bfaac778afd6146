#pragma once

#include "chartdata/PaneSeries.h"
#include "host/records/CInstrumentDetail.h"
#include "host/toolkit/CEventDeliverer.h"

namespace TC {

class ChartPicture;
class IndexBaseData;
class PaneDrawing;
class PaneRanges;
class ShownDay;
struct Intake;

/// What the data of a pane tell the view, and what they draw before that.
///
/// While a moment of a replay is being told none is told: what follows it may draw the pane anew, and ends there.
class PaneNews {
public:
    PaneNews(IndexBaseData &from, const PaneRanges &ranges, ChartPicture &picture, PaneDrawing &drawing,
             ShownDay &day)
        : mFrom(from), mRanges(ranges), mPicture(picture), mDrawing(drawing), mDay(day) {}

    /// Tells the newest average price, if a result brought one; its EChangeFlag bits.
    int tellAverage(const Intake &intake);
    /// Draws and tells what EChangeFlag bits ask for. A range that is outgrown is all that is told: the drawing follows
    /// when the view has another.
    void react(int flags, void *sender) { react(flags, sender, false); }
    /// The same where all that changed was a point, of which the picture has been told.
    void reactToPoint(int flags, void *sender) { react(flags, sender, true); }
    /// In a replay, takes the newest moment of the last of the series and tells it; whether it did.
    bool tellReplayTime(const PaneSeries::Map &series);
    /// Asks the host for the chart of an instrument.
    void askForChart(const CInstrumentDetailPtr &detail);

private:
    void react(int flags, void *sender, bool isPoint);

    IndexBaseData &mFrom;
    const PaneRanges &mRanges;
    ChartPicture &mPicture;
    PaneDrawing &mDrawing;
    ShownDay &mDay;
    bool mIsTellingReplay = false;
};

} // namespace TC
