#include "statistics/RegionFigure.h"

#include <QCoreApplication>

#include <array>

namespace TC {
namespace {

enum EPosition { eHigh = 1, eLow = 2, eMarketChange = 10 };

constexpr std::array<const char *, kRegionFigures> kLabels = {
    QT_TRANSLATE_NOOP("TC::RegionFigure", "起始价:"),     QT_TRANSLATE_NOOP("TC::RegionFigure", "最高价:"),
    QT_TRANSLATE_NOOP("TC::RegionFigure", "最低价:"),     QT_TRANSLATE_NOOP("TC::RegionFigure", "最终价:"),
    QT_TRANSLATE_NOOP("TC::RegionFigure", "总手:"),       QT_TRANSLATE_NOOP("TC::RegionFigure", "涨跌幅:"),
    QT_TRANSLATE_NOOP("TC::RegionFigure", "均价:"),       QT_TRANSLATE_NOOP("TC::RegionFigure", "振幅:"),
    QT_TRANSLATE_NOOP("TC::RegionFigure", "换手率:"),     QT_TRANSLATE_NOOP("TC::RegionFigure", "金额:"),
    QT_TRANSLATE_NOOP("TC::RegionFigure", "大盘涨跌幅:"),
};

} // namespace

QString figureLabel(int position) {
    return position >= 0 && position < kRegionFigures
               ? QCoreApplication::translate("TC::RegionFigure", kLabels[static_cast<size_t>(position)])
               : QString();
}

QString figureColorKey(int position, const QString &text) {
    if (position == eHigh || position == eLow) {
        return QStringLiteral("ic_clr_index_default_rise"); // the low as well
    }
    if (position != eMarketChange || text == QLatin1String("0.00%")) {
        return QStringLiteral("clr_text_light_default");
    }
    return text.contains(QLatin1Char('-')) ? QStringLiteral("ic_clr_index_default_fall")
                                           : QStringLiteral("ic_clr_index_default_rise");
}

} // namespace TC
