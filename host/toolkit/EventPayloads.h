#pragma once

/// \file
/// What events carry, as values with names: each is read from the arguments of handleEvent(), and is nothing when the
/// event is another one.
///
///     if (const auto closing = TC::PaneClosing::of(event, first, second, text)) {
///         forget(closing->pane);
///     }

#include "host/Export.h"
#include "host/toolkit/Events.h"

#include <QDateTime>
#include <QString>
#include <QTime>

#include <optional>

namespace TC {

/// eLeftSelected: a stretch that was selected with the left button, by axis index.
struct TIMESHARE_EXPORT SelectedStretch {
    int start = 0;
    int end = 0;
    static std::optional<SelectedStretch> of(int event, int first, int second);
};

/// eStatisticAsked: a stretch whose statistics are asked for.
struct TIMESHARE_EXPORT StatisticStretch {
    int graph = 0; ///< id
    int startIndex = 0;
    int endIndex = 0;
    QDateTime start; ///< invalid where the index has no time
    QDateTime end;
    /// Nothing as well when the text is not one of a stretch.
    static std::optional<StatisticStretch> of(int event, int first, int second, const QString &text);
};

/// eRegionQuotesAsked: a stretch whose quotes are asked for.
struct TIMESHARE_EXPORT QuotesStretch {
    QDateTime start;
    QDateTime end;
    static std::optional<QuotesStretch> of(int event, int first, int second);
};

/// eReplayRangeAsked: a stretch that is to be replayed.
struct TIMESHARE_EXPORT ReplayStretch {
    QDateTime start;
    QDateTime end;
    QString instrument; ///< key
    static std::optional<ReplayStretch> of(int event, int first, int second, const QString &text);
};

/// eRegionBoundMoved: a bound of the stretch under statistics, or the newest time of the replay.
struct TIMESHARE_EXPORT MovedBound {
    ERegionBound bound = eRegionStart;
    QTime time;
    /// Nothing as well without a time.
    static std::optional<MovedBound> of(int event, int first, const void *data);
};

/// ePaneCloseAsked: a pane that is closed.
struct TIMESHARE_EXPORT PaneClosing {
    int pane = 0; ///< id, of the graph where one asks
    EPaneCloser closer = eClosedByUser;
    QString formula; ///< the first one of the pane
    static std::optional<PaneClosing> of(int event, int first, int second, const QString &text);
};

/// eLastValueChanged: the newest average price.
struct TIMESHARE_EXPORT LastValue {
    double value = 0.0;
    /// Nothing as well when the text is no number.
    static std::optional<LastValue> of(int event, const QString &text);
};

/// eInstrumentChartAsked: an instrument whose chart is asked for.
struct TIMESHARE_EXPORT AskedChart {
    QString code;
    QString market;
    /// Nothing as well when the text is not a code, a point and a market.
    static std::optional<AskedChart> of(int event, const QString &text);
};

/// eFilterChanged: whether suspended instruments are left out from now on.
struct TIMESHARE_EXPORT ChangedFilter {
    bool isOn = false;
    static std::optional<ChangedFilter> of(int event, int second);
};

} // namespace TC
