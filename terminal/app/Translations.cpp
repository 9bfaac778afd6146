#include "terminal/app/Translations.h"

#include <QCoreApplication>
#include <QTranslator>

/// A static library's resources are not taken in by themselves; the macro stands in no namespace.
static void initTranslations() {
    Q_INIT_RESOURCE(translations);
}

namespace terminal {

bool installTranslation() {
    initTranslations();
    auto *texts = new QTranslator(QCoreApplication::instance());
    return texts->load(QStringLiteral(":/timeshare/translations/qtbase_zh_CN.qm")) &&
           QCoreApplication::installTranslator(texts);
}

} // namespace terminal
