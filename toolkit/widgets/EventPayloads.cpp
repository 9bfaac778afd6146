#include "host/toolkit/EventPayloads.h"

#include <QStringList>

namespace TC {
namespace {

constexpr qint64 kNoSecond = 0xFFFFFFFF; ///< stands for a time that is none

QDateTime momentOf(qint64 second) {
    return second == kNoSecond ? QDateTime() : QDateTime::fromSecsSinceEpoch(second);
}

} // namespace

std::optional<SelectedStretch> SelectedStretch::of(int event, int first, int second) {
    return event == eLeftSelected ? std::make_optional(SelectedStretch{first, second}) : std::nullopt;
}

std::optional<StatisticStretch> StatisticStretch::of(int event, int first, int second, const QString &text) {
    const QStringList fields = text.split(QLatin1Char(','));
    if (event != eStatisticAsked || fields.size() != 3) {
        return std::nullopt;
    }
    bool isIndex = false;
    bool isStart = false;
    bool isEnd = false;
    StatisticStretch stretch;
    stretch.graph = second;
    stretch.startIndex = first;
    stretch.endIndex = fields[0].toInt(&isIndex);
    stretch.start = momentOf(fields[1].toLongLong(&isStart));
    stretch.end = momentOf(fields[2].toLongLong(&isEnd));
    return isIndex && isStart && isEnd ? std::make_optional(stretch) : std::nullopt;
}

std::optional<QuotesStretch> QuotesStretch::of(int event, int first, int second) {
    if (event != eRegionQuotesAsked) {
        return std::nullopt;
    }
    return QuotesStretch{momentOf(first), momentOf(second)};
}

std::optional<ReplayStretch> ReplayStretch::of(int event, int first, int second, const QString &text) {
    if (event != eReplayRangeAsked) {
        return std::nullopt;
    }
    return ReplayStretch{momentOf(first), momentOf(second), text};
}

std::optional<MovedBound> MovedBound::of(int event, int first, const void *data) {
    if (event != eRegionBoundMoved || !data) {
        return std::nullopt;
    }
    return MovedBound{static_cast<ERegionBound>(first), *static_cast<const RegionBoundTime *>(data)};
}

std::optional<PaneClosing> PaneClosing::of(int event, int first, int second, const QString &text) {
    if (event != ePaneCloseAsked) {
        return std::nullopt;
    }
    return PaneClosing{first, static_cast<EPaneCloser>(second), text};
}

std::optional<LastValue> LastValue::of(int event, const QString &text) {
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    return event == eLastValueChanged && isNumber ? std::make_optional(LastValue{value}) : std::nullopt;
}

std::optional<AskedChart> AskedChart::of(int event, const QString &text) {
    const auto point = static_cast<int>(text.lastIndexOf(QLatin1Char('.')));
    if (event != eInstrumentChartAsked || point < 1) {
        return std::nullopt;
    }
    return AskedChart{text.left(point), text.mid(point + 1)};
}

std::optional<ChangedFilter> ChangedFilter::of(int event, int second) {
    return event == eFilterChanged ? std::make_optional(ChangedFilter{second != 0}) : std::nullopt;
}

} // namespace TC
