#pragma once

#include <QCoreApplication>

namespace GZ {

/// What is told of a theme file that cannot be taken.
struct ThemeWords {
    Q_DECLARE_TR_FUNCTIONS(GZ::Theme)
};

} // namespace GZ
