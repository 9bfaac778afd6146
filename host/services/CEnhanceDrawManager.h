#pragma once

#include "host/Export.h"
#include "host/services/CSingletonT.h"

#include <QPointF>
#include <boost/function.hpp>

#include <string>

class QPainter;
class QRect;

namespace TC {

/// The host's own drawings on top of a chart.
class TIMESHARE_EXPORT CEnhanceDrawManager {
public:
    virtual ~CEnhanceDrawManager() = default;
    /// Draws what belongs to the instrument; `toPixel` turns (time in milliseconds, value) into a pixel.
    virtual void drawGraph(int kind, const std::string &key, QPainter *painter, const QRect &rect,
                           const boost::function<QPointF(const QPointF &)> &toPixel) = 0;
};

} // namespace TC
