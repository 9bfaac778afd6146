#pragma once

#include "host/Export.h"
#include "host/toolkit/CCommonDialog.h"

#include <QDate>
#include <QList>
#include <QString>

class QTimeEdit;

namespace GZ {
class CRadioButton;
} // namespace GZ

namespace TC {

/// Asks for a span of time and for what instruments are ranked by over it, and hands both to the host by event 3180 as a
/// text of six fields: start and end in seconds since the epoch, the type and the parameter of setRange(), the number of
/// the criterion and its words. Run with exec(), which answers kConfirmed after that and kCloseButton otherwise.
class TIMESHARE_EXPORT CRealtimeStageDialog : public GZ::CCommonDialog {
    Q_OBJECT
public:
    static constexpr int kConfirmed = 0;

    explicit CRealtimeStageDialog(QWidget *parent = nullptr);

    /// Takes the span, in seconds since the epoch; both edits mean the date of its start.
    void setRange(quint64 startTime, quint64 endTime, int stageType, quint64 stageParam);

    bool handleEvent(int event, int first, int second, QString text, void *data) override;

private:
    void createUi();
    QWidget *newTimes();
    QWidget *newCriteria();
    QWidget *newButtons();
    void confirm();

    QTimeEdit *mStartEdit = nullptr;
    QTimeEdit *mEndEdit = nullptr;
    QList<GZ::CRadioButton *> mRadios; ///< by criterion
    int mStageType = 0;
    quint64 mStageParam = 0;
    QDate mDate; ///< of both edits
};

} // namespace TC
