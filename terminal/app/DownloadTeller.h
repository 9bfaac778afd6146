#pragma once

#include <QDate>
#include <QObject>
#include <QString>

namespace terminal {

class ChartView;
class TerminalServices;

/// Downloads history for the chart and tells how it goes. While downloads are under way, asking again stops them.
class DownloadTeller : public QObject {
    Q_OBJECT
public:
    DownloadTeller(TerminalServices &services, ChartView &view, QObject *parent = nullptr);
    ~DownloadTeller() override;

    /// Downloads what is missing of the day shown, and the twenty trading days in front of those that are stored.
    void startOrStop();

Q_SIGNALS:
    void told(const QString &text, bool isError);
    /// Downloads have begun, or all of them have ended.
    void underWayChanged(bool underWay);

private:
    void onStep(const QString &key, int done, int total);
    void tellEnd(const QString &key, bool failed);

    TerminalServices &mServices;
    ChartView &mView;
    int mDays = 0; ///< downloaded since the downloads under way began
};

} // namespace terminal
