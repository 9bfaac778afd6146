#pragma once

#include "host/toolkit/CBaseWidget.h"

#include <QDate>
#include <QString>
#include <QVector>

namespace terminal {

/// What the line over a chart tells.
struct ChartTitleData {
    QString name;
    QString code;
    QDate day;
    double last = 0.0; ///< last price; 0 before the first one
    double average = 0.0; ///< average price of the day; 0 when unknown
    double lastClose = 0.0; ///< close of the day before; 0 when unknown
    int decimals = 2;
    QString note; ///< said behind the rest, as that the day has no data
};

bool operator==(const ChartTitleData &a, const ChartTitleData &b);

/// One text of the line and the key of its colour.
struct TitlePart {
    QString text;
    QString color;
};

/// The texts of the line, left to right: name, code, date, last price, change, change in percent, average.
QVector<TitlePart> titleParts(const ChartTitleData &data);

/// The line over a chart.
class ChartTitle : public GZ::CBaseWidget {
    Q_OBJECT
public:
    static constexpr int kHeight = 26; ///< pixels

    explicit ChartTitle(QWidget *parent = nullptr);
    void setData(const ChartTitleData &data);
    const ChartTitleData &data() const { return mData; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    ChartTitleData mData;
};

} // namespace terminal
