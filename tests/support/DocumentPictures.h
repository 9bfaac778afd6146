#pragma once

#include <QString>

class QWidget;

namespace tests {

/// Keeps a picture of a widget under a name in the folder that TIMESHARE_PICTURES in the environment names, and nothing without
/// it: so docs/pictures.py takes the pictures of the documents from running programs. False when it could not be written.
bool keepDocumentPicture(QWidget &widget, const QString &name);

} // namespace tests
