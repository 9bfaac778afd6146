#pragma once

#include "host/toolkit/CUiResource.h"

#include <QDialog>
#include <QString>
#include <QTimer>

class QComboBox;
class QLabel;
class QPushButton;

namespace terminal {

class ReplayService;

/// The controls of a replay: pause, pace, once more, and its end. Not modal; closing it leaves the replay going.
class ReplayPanel : public QDialog, public GZ::CUiResourceChangeHandler {
    Q_OBJECT
public:
    explicit ReplayPanel(ReplayService &replay, QWidget *parent = nullptr);

    /// Another replay begins: of an instrument, between two times in seconds since the epoch.
    void begin(const QString &instrument, qint64 start, qint64 end);

    void onUiResourceChanged() override;

Q_SIGNALS:
    /// The user leaves the replay.
    void endAsked();

private:
    void setPaused(bool paused);
    void tellTime();

    ReplayService &mReplay;
    QString mInstrument;
    qint64 mStart = 0; ///< seconds since the epoch
    qint64 mEnd = 0;
    bool mFinished = false;
    QLabel *mTime;
    QPushButton *mPause;
    QComboBox *mPace;
    QTimer mTimer; ///< shows the time of the replay
};

} // namespace terminal
