#pragma once

#include <QCoreApplication>

namespace TC {

/// Where the words that only a screen reader tells are translated.
class AccessibleWords {
    Q_DECLARE_TR_FUNCTIONS(TC::AccessibleWords)
};

} // namespace TC
