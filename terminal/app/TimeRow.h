#pragma once

#include "host/toolkit/CBaseWidget.h"

#include <QDate>
#include <boost/shared_ptr.hpp>

namespace TC {
class CRealtimeUiParam;
}

namespace terminal {

/// The clock times beneath a chart of one day.
class TimeRow : public GZ::CBaseWidget {
    Q_OBJECT
public:
    static constexpr int kHeight = 20; ///< pixels

    explicit TimeRow(boost::shared_ptr<TC::CRealtimeUiParam> uiParam, QWidget *parent = nullptr);
    /// The day shown; its date stands in front where there is room.
    void setDay(const QDate &day);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    boost::shared_ptr<TC::CRealtimeUiParam> mUiParam;
    QDate mDay;
};

} // namespace terminal
