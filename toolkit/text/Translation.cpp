#include "host/Translation.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

#include <memory>

/// A static library's resources are not taken in by themselves; the macro stands in no namespace.
static void initLibraryTexts() {
    Q_INIT_RESOURCE(timeshare_texts);
}

namespace timeshare {
namespace {

/// The translator of a set of texts that is installed, or null.
QTranslator *installedTexts(const QString &name) {
    return QCoreApplication::instance()->findChild<QTranslator *>(name, Qt::FindDirectChildrenOnly);
}

} // namespace

bool installTranslation(const QLocale &locale, const QString &folder, const QString &name) {
    const bool asWritten = locale.language() == QLocale::Chinese || locale.language() == QLocale::C;
    if (!QCoreApplication::instance() || (!asWritten && locale.language() != QLocale::English)) {
        return false;
    }
    std::unique_ptr<QTranslator> texts;
    if (!asWritten) {
        texts = std::make_unique<QTranslator>();
        if (!texts->load(name + QStringLiteral("_en.qm"), folder)) {
            return false;
        }
    }
    delete installedTexts(name); // it withdraws itself
    if (texts) {
        texts->setObjectName(name);
        texts->setParent(QCoreApplication::instance());
        QCoreApplication::installTranslator(texts.release());
    }
    return true;
}

bool installTranslation(const QLocale &locale) {
    initLibraryTexts();
    return installTranslation(locale, QStringLiteral(":/timeshare/translations"), QStringLiteral("timeshare"));
}

} // namespace timeshare
