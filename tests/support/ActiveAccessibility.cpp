#include "tests/support/ActiveAccessibility.h"

#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

namespace tests {

namespace {

/// Qt's own way is told by the bus alone.
void setAccessibilityActive(bool active) {
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(active);
}

} // namespace

ActiveAccessibility::ActiveAccessibility() {
    setAccessibilityActive(true);
}

ActiveAccessibility::~ActiveAccessibility() {
    setAccessibilityActive(false);
}

} // namespace tests
