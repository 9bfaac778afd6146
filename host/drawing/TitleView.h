#pragma once

#include "host/Export.h"
#include "host/records/Enumerations.h"
#include "host/records/ValueComparison.h"

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <functional>
#include <iterator>

namespace TC {

/// What the curves of the user's trading stand at; kUnsetValue for what is not drawn.
struct TitleCurves {
    double bought = kUnsetValue; ///< amount so far
    double sold = kUnsetValue;
    double net = kUnsetValue; ///< bought less sold
    double profit = kUnsetValue;
    double balance = kUnsetValue;
};

/// What a title strip asks of the view that it belongs to. It is made from the view parameters where these are known,
/// keeps them alive and reads their public members at each question.
class TIMESHARE_EXPORT TitleView {
public:
    /// No view: neither of a past day nor of an ordinary instrument.
    TitleView() = default;
    TitleView(std::nullptr_t) {}
    /// The view of these parameters, which may be null. Implicit, so that the parameters are handed over as they are.
    template <class Param> TitleView(const boost::shared_ptr<Param> &param) {
        if (param) {
            mIsPast = [param] { return bool(param->mGetTradeDateFunc); };
            mIsInstrument = [param] { return param->mStockKind == eInstrument; };
            mCurves = [param](int index) { return curvesOf(*param, index); };
        }
    }

    /// Whether the view shows a past trading day.
    bool isPast() const { return mIsPast && mIsPast(); }
    /// Whether the view shows an ordinary instrument, not an index of the user or a portfolio.
    bool isInstrument() const { return mIsInstrument && mIsInstrument(); }
    /// The curves at an axis index, where they were drawn last; below 0 the newest.
    TitleCurves curves(int index) const { return mCurves ? mCurves(index) : TitleCurves(); }

private:
    /// The places of what mLinkageShow switches, and the value of mLinkageFlags at which the curves are drawn.
    static constexpr std::size_t kTotals = 3;
    static constexpr std::size_t kNet = 4;
    static constexpr std::size_t kProfit = 5;
    static constexpr std::size_t kBalance = 6;
    static constexpr int kSelectedData = 4;

    template <class Map> static const typename Map::mapped_type *lastUpTo(const Map &values, int index) {
        const auto after = index < 0 ? values.end() : values.upper_bound(index);
        return after == values.begin() ? nullptr : &std::prev(after)->second;
    }
    template <class Param> static TitleCurves curvesOf(const Param &param, int index) {
        TitleCurves curves;
        if (!(param.mLinkageFlags & kSelectedData) || param.mDayCount != 1) {
            return curves;
        }
        const auto *amounts = lastUpTo(param.mLinkageAmounts, index);
        const double *profit = param.mLinkageShow[kProfit] ? lastUpTo(param.mLinkageProfits, index) : nullptr;
        const double *balance =
            param.mLinkageShow[kBalance] ? lastUpTo(param.mLinkageBalances, index) : nullptr;
        if (amounts && param.mLinkageShow[kTotals]) {
            curves.bought = amounts->first;
            curves.sold = amounts->second;
        }
        if (amounts && param.mLinkageShow[kNet]) {
            curves.net = amounts->first - amounts->second;
        }
        curves.profit = profit ? *profit : kUnsetValue;
        curves.balance = balance ? *balance : kUnsetValue;
        return curves;
    }

    std::function<bool()> mIsPast;
    std::function<bool()> mIsInstrument;
    std::function<TitleCurves(int)> mCurves;
};

} // namespace TC
