#include "tests/support/DocumentPictures.h"

#include <QPixmap>
#include <QWidget>

namespace tests {

bool keepDocumentPicture(QWidget &widget, const QString &name) {
    const QString folder = qEnvironmentVariable("TIMESHARE_PICTURES");
    return folder.isEmpty() || widget.grab().save(folder + QLatin1Char('/') + name + QStringLiteral(".png"));
}

} // namespace tests
