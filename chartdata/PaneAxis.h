#pragma once

#include "viewmodel/AxisScale.h"

#include <memory>

namespace TC {

/// The axis that a pane is drawn and looked up by: that of its strip, while the strip lives. Without one there are no
/// ranges and no grid.
class PaneAxis {
public:
    void set(const StripScales::Scale &scale) { mScale = scale; }
    bool isNull() const { return mScale.expired(); }
    AxisShown shown() const {
        const StripScales::Scale scale = mScale.lock();
        return scale ? scale->shown() : AxisShown();
    }

private:
    std::weak_ptr<const AxisScale> mScale;
};

} // namespace TC
