#include "statistics/StatisticLayout.h"

namespace TC {
namespace {

constexpr int kLeft = 23;
constexpr int kFirstLine = 50;
constexpr int kRow = 24; ///< height of a row
constexpr int kControlGap = 5;
constexpr int kLine = kRow + kControlGap; ///< from one line of controls to the next
constexpr int kLabel = 55;
constexpr int kFigureColumns = 3;
constexpr int kFigureWidth = 104; ///< of a label and its figure
constexpr int kFigureRows = 4;

} // namespace

StatisticLayout::StatisticLayout(bool isReplay, int countWidth)
    : mTop(isReplay ? kFirstLine + kLine : kFirstLine), mCountWidth(countWidth) {}

QPoint StatisticLayout::tabs() const {
    return {kLeft, kFirstLine};
}

QRect StatisticLayout::startLabel() const {
    return {kLeft, mTop, kLabel, kRow};
}

QPoint StatisticLayout::startEdit() const {
    return {kLeft + kLabel, mTop};
}

QRect StatisticLayout::endLabel() const {
    return {startEdit().x() + kTimeEdit.width() + kControlGap, mTop, kLabel, kRow};
}

QPoint StatisticLayout::endEdit() const {
    return {endLabel().x() + kLabel, mTop};
}

QPoint StatisticLayout::liveCheck() const {
    return {endEdit().x() + kTimeEdit.width() + kControlGap, mTop + 1};
}

QRect StatisticLayout::count() const {
    return {kLeft, mTop + kLine, mCountWidth, kRow};
}

QPoint StatisticLayout::button(int number) const {
    return {kLeft + mCountWidth + kControlGap + number * (kButton.width() + kControlGap), mTop + kLine + 1};
}

QRect StatisticLayout::figure(int position) const {
    return {kLeft + position % kFigureColumns * kFigureWidth,
            mTop + 2 * kLine + position / kFigureColumns * kRow, kFigureWidth, kRow};
}

QPoint StatisticLayout::plate() const {
    return {kLeft, mTop + 2 * kLine + (kFigureRows - 1) * kRow + kLine};
}

} // namespace TC
