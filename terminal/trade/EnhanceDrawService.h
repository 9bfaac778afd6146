#pragma once

#include "host/services/CEnhanceDrawManager.h"

namespace terminal {

/// Drawings of the terminal's own on top of a chart: it makes none.
class EnhanceDrawService : public TC::CEnhanceDrawManager {
public:
    void drawGraph(int, const std::string &, QPainter *, const QRect &,
                   const boost::function<QPointF(const QPointF &)> &) override {}
};

} // namespace terminal
