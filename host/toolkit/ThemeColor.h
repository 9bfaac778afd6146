#pragma once

#include "host/toolkit/CUiResource.h"

namespace GZ {

/// A colour of the current theme; magenta for a key that it does not have. Any thread.
inline QColor themeColor(const QString &key) {
    return CUiResource::instance().getColor(key);
}

inline QColor themeColor(const char *key) {
    return themeColor(QString::fromLatin1(key));
}

} // namespace GZ
