#pragma once

class QWidget;

namespace terminal {

/// Whether a widget that has the keyboard takes what is typed for itself: a field, a box or a list. What it has no use for
/// is not meant for anything else either. None is no field.
bool isInputField(const QWidget *widget);

} // namespace terminal
