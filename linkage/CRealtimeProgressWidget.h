#pragma once

#include "host/Export.h"
#include "host/toolkit/CBaseWidget.h"

#include <QColor>

namespace TC {

/// How much of a task's item is done: a text over a bar.
class TIMESHARE_EXPORT CRealtimeProgressWidget : public GZ::CBaseWidget {
    Q_OBJECT
    Q_PROPERTY(QString text READ text)
public:
    explicit CRealtimeProgressWidget(QWidget *parent = nullptr);

    /// What is to be done and what is done; of nothing to be done the bar is full and tells no numbers.
    void setProgress(int total, int finished);
    /// "finished/total"; empty of nothing to be done.
    QString text() const;

    void onUiResourceChanged() override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int barWidth() const;

    int mTotal = 0;
    int mFinished = 0;
    QColor mBarColor;
    QColor mTextColor;
};

} // namespace TC
