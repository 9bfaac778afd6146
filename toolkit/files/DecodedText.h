#pragma once

#include "host/Export.h"

#include <QByteArray>
#include <QString>

namespace GZ {

/// A text in UTF-8, UTF-16 or UTF-32 with its mark, which is no part of the text; else unmarkedText(). What is no
/// character in the encoding comes as U+FFFD.
TIMESHARE_EXPORT QString decodedText(const QByteArray &content);

/// A text in UTF-8, or else in GB18030.
TIMESHARE_EXPORT QString unmarkedText(const QByteArray &content);

} // namespace GZ
