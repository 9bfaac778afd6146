#pragma once

#include <QObject>
#include <QVector>

#include <functional>

namespace terminal {

class ChartView;
class TerminalServices;

/// Has charts show the days of a server when they have come, and those that follow the latest day go on to it. One at a time.
class PastDaysWatch : public QObject {
    Q_OBJECT
public:
    /// Whether a view shows the latest day because no other one was chosen.
    using FollowsLatest = std::function<bool(const ChartView &view)>;

    /// The views outlive it.
    PastDaysWatch(TerminalServices &services, QVector<ChartView *> views, FollowsLatest followsLatest,
                  QObject *parent = nullptr);
    ~PastDaysWatch() override;

Q_SIGNALS:
    /// There are more instruments.
    void instrumentsCame();
    /// The days of a view's instrument are others.
    void daysChanged();

private:
    void onDays(const QString &key, bool hasDays);
    void showDays(ChartView &view, bool hasDays);

    TerminalServices &mServices;
    const QVector<ChartView *> mViews;
    const FollowsLatest mFollowsLatest;
};

} // namespace terminal
