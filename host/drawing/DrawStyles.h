#pragma once

/// \file
/// Numbers of the draw styles, as the description of a series' lines carries them.

namespace TC {

enum EDrawStyle : int {
    eLineStyle = 0, ///< the average's and the price's; the latter may have a gradient beneath
    eDotStyle = 1,
    eColorStickStyle = 2, ///< from the zero row, or from the bottom of a volume
    eNoStyle = 3, ///< not drawn
    eDottedLineStyle = 4,
    eDashDotLineStyle = 5,
    eSecondDottedLineStyle = 6,
    eThirdDottedLineStyle = 8,
    eVolStickStyle = 10, ///< one pixel wide
    eKLineStyle = 12,
    eTextStyle = 13,
    eVertLineStyle = 14, ///< the first of the lines of full height
    eVertDotStyle = 15,
    eSecondVertDotStyle = 16,
    eVertDashDotStyle = 17,
    eVertDashDotDotStyle = 18,
    eSecondVertLineStyle = 19, ///< the last of the lines of full height
    eIconStyle = 26,
    ePlainLineStyle = 27, ///< never with a gradient
    eNumberStyle = 28,
    eTextExStyle = 31, ///< at fixed places, drawn as a whole whatever points are asked for
    eStickKlineStyle = 36,
    eBoolLineStyle = 37,
    eWideVolStickStyle = 40, ///< as wide as a minute
    eSegmentLineStyle = 41, ///< gaps are bridged
    eStackVolStickStyle = 42, ///< the last number that is a style
};

} // namespace TC
