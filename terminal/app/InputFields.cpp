#include "terminal/app/InputFields.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace terminal {
namespace {

template <class... Kinds> bool isOneOf(const QWidget *widget) {
    return (qobject_cast<const Kinds *>(widget) || ...);
}

} // namespace

bool isInputField(const QWidget *widget) {
    return isOneOf<QLineEdit, QAbstractSpinBox, QComboBox, QAbstractItemView, QTextEdit, QPlainTextEdit>(
        widget);
}

} // namespace terminal
