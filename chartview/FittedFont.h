#pragma once

#include <QFont>
#include <QStringList>

namespace TC {

/// The font, or the largest smaller one in which every text has room in a width in pixels, but none below nine pixels.
QFont fittedFont(QFont font, const QStringList &texts, int width);

} // namespace TC
