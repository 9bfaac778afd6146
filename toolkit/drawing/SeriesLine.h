#pragma once

#include "host/drawing/LineColor.h"
#include "host/records/RPCFormulaResult.h"
#include "toolkit/drawing/SeriesGeometry.h"

#include <QColor>

namespace TC {

/// Reads one line of a series, whatever is short or missing in it. Refers to the series and must not outlive it.
class SeriesLine {
public:
    SeriesLine(const se::RPCFormulaResultCache &series, int line);

    /// Number of points of the line; 0 for a line that is not there.
    int size() const { return mSize; }
    /// Whether point `i` is drawn: it is there, flagged valid, finite and set.
    bool has(int i) const {
        return i >= 0 && i < mSize && i < mValidSize && mValid[i] == 1 && isPlaceable(mValues[i]);
    }
    /// The last point that has() holds for; -1 when there is none.
    int lastPoint() const;
    /// Whether point `i` has a value, valid or not.
    bool hasValue(int i) const { return i >= 0 && i < mSize && isPlaceable(mValues[i]); }
    /// Value of a point that has one.
    double value(int i) const { return mValues[i]; }
    /// Whether a point has a second value to draw with.
    bool hasSecond(int i) const { return i >= 0 && i < mSecondSize && isPlaceable(mSeconds[i]); }
    double second(int i) const { return mSeconds[i]; }
    /// Text of a point, UTF-8; empty when there is none.
    const std::string &text(int i) const;

    /// Draw style; -1 for a line that is not described.
    int style() const { return mStyle; }
    bool isHidden() const { return mAxis == se::eLineHidden; }
    bool isOnSharedAxis() const { return mAxis == se::eLineShared; }

    /// The colour that the point or the line asks for, else the given one of the theme. Below 0 there is no point.
    QRgb color(int i, QRgb ofTheme) const {
        if (i >= 0 && i < mColorSize && mColors[i] != se::kDefaultColor) {
            return colorOfLine(mColors[i]);
        }
        return mLineColor != se::kDefaultColor ? colorOfLine(mLineColor) : ofTheme;
    }

private:
    const double *mValues = nullptr;
    const qint32 *mValid = nullptr;
    const double *mSeconds = nullptr;
    const qint32 *mColors = nullptr; ///< of the points; null when the line keeps its colour
    const std::vector<std::string> *mTexts = nullptr;
    int mSize = 0;
    int mValidSize = 0;
    int mSecondSize = 0;
    int mColorSize = 0;
    qint32 mLineColor = se::kDefaultColor;
    int mStyle = -1;
    int mAxis = se::eLineShared;
};

} // namespace TC
