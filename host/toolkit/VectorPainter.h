#pragma once

#include <QPaintEngine>
#include <QPainter>

namespace GZ {

/// Whether a painter keeps what it is told as lines, shapes and texts, as one does for print, PDF and SVG: pictures that are kept
/// to be quick on a screen are not for it.
inline bool drawsVectors(const QPainter &painter) {
    const QPaintEngine *engine = painter.paintEngine();
    if (!engine) {
        return false;
    }
    const QPaintEngine::Type type = engine->type();
    return type == QPaintEngine::Picture || type == QPaintEngine::SVG || type == QPaintEngine::Pdf;
}

} // namespace GZ
