#pragma once

#include "host/toolkit/CUiResource.h"
#include "terminal/app/Heartbeat.h"

#include <QDate>
#include <QHash>
#include <QStringList>
#include <QVector>
#include <QWidget>

namespace terminal {

class ChartView;
class StatusLine;
class TerminalServices;

/// A wall of whole views on the running day, row by row, each of another instrument with two formula panes. Where there is no
/// running market each shows its newest day. A line beneath them tells what is missing, while something is.
class WallWindow : public QWidget, public GZ::CUiResourceChangeHandler {
    Q_OBJECT
public:
    /// A wall of 1 to kMostWallViews views, which show nothing yet.
    WallWindow(TerminalServices &services, int count, QWidget *parent = nullptr);

    /// Shows the instruments that the exchange runs, in the order of the catalogue from `first` on. Where they are fewer than
    /// the views, they begin again; the first one is shown whatever it is.
    void showFrom(const QString &first);
    const QVector<ChartView *> &views() const { return mViews; }

    void onUiResourceChanged() override;

private:
    QStringList instrumentsFrom(const QString &first) const;
    void showLatest(ChartView &view, const QString &key);
    void onBeat();

    TerminalServices &mServices;
    QVector<ChartView *> mViews;
    QHash<const ChartView *, QDate> mRunningDays;
    StatusLine *mStatus;
    Heartbeat mHeartbeat; ///< notices a new trading day and what is missing
};

} // namespace terminal
