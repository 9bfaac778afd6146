#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace TC {

/// Where everything stands in the dialog of statistics, in its pixels.
class StatisticLayout {
public:
    static constexpr QSize kDialog{360, 500};
    static constexpr QSize kTabs{120, 24};
    static constexpr QSize kTimeEdit{80, 24};
    static constexpr QSize kLiveCheck{60, 21};
    static constexpr QSize kOrderCombo{100, 24};
    static constexpr QSize kButton{65, 21};
    static constexpr QSize kPlate{310, 250};
    static constexpr int kTabWidth = 60;

    /// `countWidth` is that of the text of the count. In a replay the two tabs stand above everything else.
    StatisticLayout(bool isReplay, int countWidth);

    QPoint tabs() const;
    QRect startLabel() const; ///< or the label of the orders, in their tab
    QPoint startEdit() const; ///< or the combo box of the orders
    QRect endLabel() const;
    QPoint endEdit() const;
    QPoint liveCheck() const;
    QRect count() const;
    QPoint button(int number) const; ///< the shown buttons, counted from 0
    /// Label and figure of a position together.
    QRect figure(int position) const;
    QPoint plate() const;

private:
    int mTop; ///< of the line with the times
    int mCountWidth;
};

} // namespace TC
