#include "terminal/app/ChartTitle.h"

#include "host/records/Enumerations.h"
#include "host/toolkit/Text.h"

#include <QCoreApplication>
#include <QPainter>

namespace terminal {
namespace {

constexpr int kGap = 14; ///< pixels between two texts
const char kPlain[] = "ic_clr_realtime_axis_text";
const char kRise[] = "ic_clr_index_default_rise";
const char kFall[] = "ic_clr_index_default_fall";

QString tr(const char *text) {
    return QCoreApplication::translate("ChartTitle", text);
}

QString number(double value, int decimals, int flags = utils::eFormatPlain) {
    return GZ::formatDoubleNumber(value, decimals, flags, false, QStringLiteral("--"));
}

QString withSign(double value, const QString &text) {
    return value > 0.0 ? QLatin1Char('+') + text : text;
}

} // namespace

QVector<TitlePart> titleParts(const ChartTitleData &data) {
    QVector<TitlePart> parts{{data.name, kPlain}, {data.code, kPlain}};
    if (data.day.isValid()) {
        parts.append({data.day.toString(QStringLiteral("yyyy-MM-dd")), kPlain});
    }
    if (data.last > 0.0) {
        const bool known = data.lastClose > 0.0;
        const double change = known ? data.last - data.lastClose : 0.0;
        const char *color = change > TC::kValueTolerance    ? kRise
                            : change < -TC::kValueTolerance ? kFall
                                                            : kPlain;
        parts.append({number(data.last, data.decimals), color});
        if (known) {
            parts.append({withSign(change, number(change, data.decimals)), color});
            const double share = change / data.lastClose;
            parts.append({withSign(share, number(share, 2, utils::eFormatPercent)), color});
        }
    }
    if (data.average > 0.0) {
        parts.append({tr("均价 %1").arg(number(data.average, data.decimals)), kPlain});
    }
    if (!data.note.isEmpty()) {
        parts.append({data.note, kPlain});
    }
    return parts;
}

bool operator==(const ChartTitleData &a, const ChartTitleData &b) {
    return a.name == b.name && a.code == b.code && a.day == b.day && a.last == b.last &&
           a.average == b.average && a.lastClose == b.lastClose && a.decimals == b.decimals && a.note == b.note;
}

ChartTitle::ChartTitle(QWidget *parent) : CBaseWidget(parent) {
    setObjectName(QStringLiteral("chart_title"));
    setFixedHeight(kHeight);
}

void ChartTitle::setData(const ChartTitleData &data) {
    if (!(data == mData)) {
        mData = data;
        update();
    }
}

void ChartTitle::paintEvent(QPaintEvent *) {
    const GZ::CUiResource &theme = GZ::CUiResource::instance();
    QPainter painter(this);
    painter.fillRect(rect(), theme.getColor(QStringLiteral("ic_clr_realtime_axis_bg")));
    painter.setFont(theme.getFont(QStringLiteral("fnt_default_small_heavy")));
    int x = kGap;
    for (const TitlePart &part : titleParts(mData)) {
        painter.setPen(theme.getColor(part.color));
        painter.drawText(QRect(x, 0, width() - x, height()), Qt::AlignLeft | Qt::AlignVCenter, part.text);
        x += painter.fontMetrics().horizontalAdvance(part.text) + kGap;
    }
}

} // namespace terminal
