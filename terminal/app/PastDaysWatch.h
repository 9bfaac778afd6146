#pragma once

#include <QObject>
#include <QVector>

namespace terminal {

class ChartView;
class TerminalServices;

/// Has charts show the days of a server when they have come. One at a time.
class PastDaysWatch : public QObject {
    Q_OBJECT
public:
    /// The views outlive it.
    PastDaysWatch(TerminalServices &services, QVector<ChartView *> views, QObject *parent = nullptr);
    ~PastDaysWatch() override;

Q_SIGNALS:
    /// There are more instruments.
    void instrumentsCame();
    /// The days of a view's instrument are others.
    void daysChanged();

private:
    void onDays(const QString &key, bool hasDays);

    TerminalServices &mServices;
    const QVector<ChartView *> mViews;
};

} // namespace terminal
