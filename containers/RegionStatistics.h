#pragma once

#include "host/toolkit/Events.h"

#include <QDateTime>
#include <QPair>
#include <QString>
#include <boost/shared_ptr.hpp>

#include <functional>

namespace TC {

class CRealtimeStatisticDialog;
class CRealtimeUiParam;
class PaneRow;

/// The statistics of a stretch of axis indices of the main pane: the dialog that shows them, made when it is first needed,
/// and the lines that bound the stretch in the graphs. While the dialog is open it shows the stretch taken last.
class RegionStatistics {
public:
    RegionStatistics(QWidget *view, const PaneRow &panes, boost::shared_ptr<const CRealtimeUiParam> uiParam);
    ~RegionStatistics();
    RegionStatistics(const RegionStatistics &) = delete;
    RegionStatistics &operator=(const RegionStatistics &) = delete;

    /// `changed` hears of another stretch, its start and end; they are invalid when it is over.
    void setChanged(std::function<void(const QDateTime &, const QDateTime &)> changed) {
        mChanged = std::move(changed);
    }

    /// Takes a stretch and shows its statistics: its first index, and its text, which is the last index, start and end in
    /// seconds since the epoch, joined by commas; what is no number counts as 0. Of an empty stretch the lines go, and the
    /// dialog stays as it is.
    void select(int start, const QString &text);
    /// A stretch of one moment.
    void select(const QDateTime &moment);
    /// Another time of the first or the last index, or of the replay, which the end follows when the user wants it to.
    void moveBound(ERegionBound bound, const RegionBoundTime &time);
    /// The series have changed: the statistics of an open dialog are made anew.
    void refresh();
    void hideDialog();
    /// Takes the lines off all graphs.
    void hideLines();
    /// The stretch is over, with dialog and lines: another instrument, other days, or the user has had enough.
    void end();
    /// As the view goes.
    void deleteDialog();

private:
    void show(int start, int end, const QString &text);
    void tell(const QDateTime &start, const QDateTime &end);

    QWidget *mView;
    const PaneRow &mPanes;
    boost::shared_ptr<const CRealtimeUiParam> mUiParam;
    CRealtimeStatisticDialog *mDialog = nullptr;
    int mStart = 0; ///< first index of the last stretch
    QString mText; ///< the last stretch as text
    std::function<void(const QDateTime &, const QDateTime &)> mChanged = [](const QDateTime &,
                                                                            const QDateTime &) {};
    QPair<QDateTime, QDateTime> mTold; ///< what mChanged has heard last
};

} // namespace TC
