#pragma once

#include "host/records/Enumerations.h"

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <functional>

namespace TC {

/// What a title strip asks of the view that it belongs to. It is made from the view parameters where these are known,
/// keeps them alive and reads their public members at each question.
class TitleView {
public:
    /// No view: neither of a past day nor of an ordinary instrument.
    TitleView() = default;
    TitleView(std::nullptr_t) {}
    /// The view of these parameters, which may be null. Implicit, so that the parameters are handed over as they are.
    template <class Param> TitleView(const boost::shared_ptr<Param> &param) {
        if (param) {
            mIsPast = [param] { return bool(param->mGetTradeDateFunc); };
            mIsInstrument = [param] { return param->mStockKind == eInstrument; };
        }
    }

    /// Whether the view shows a past trading day.
    bool isPast() const { return mIsPast && mIsPast(); }
    /// Whether the view shows an ordinary instrument, not an index of the user or a portfolio.
    bool isInstrument() const { return mIsInstrument && mIsInstrument(); }

private:
    std::function<bool()> mIsPast;
    std::function<bool()> mIsInstrument;
};

} // namespace TC
