#include "terminal/app/Translations.h"

#include "host/Translation.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

#include <memory>

/// A static library's resources are not taken in by themselves; the macro stands in no namespace.
static void initTranslations() {
    Q_INIT_RESOURCE(translations);
    Q_INIT_RESOURCE(terminal_texts);
}

namespace terminal {
namespace {

const QString kFolder = QStringLiteral(":/timeshare/translations");
const QString kQtTexts = QStringLiteral("qt_texts");

/// Qt's own texts are written in English.
bool installQtTexts(Language language) {
    QObject *application = QCoreApplication::instance();
    delete application->findChild<QTranslator *>(kQtTexts, Qt::FindDirectChildrenOnly);
    if (language == Language::English) {
        return true;
    }
    auto texts = std::make_unique<QTranslator>();
    if (!texts->load(QStringLiteral("qtbase_zh_CN.qm"), kFolder)) {
        return false;
    }
    texts->setObjectName(kQtTexts);
    texts->setParent(application);
    return QCoreApplication::installTranslator(texts.release());
}

} // namespace

Language languageOf(const QString &word, const QLocale &machine) {
    if (word == QLatin1String("zh") || word == QLatin1String("en")) {
        return word == QLatin1String("zh") ? Language::Chinese : Language::English;
    }
    const bool isChinese = machine.language() == QLocale::Chinese || machine.language() == QLocale::C;
    return isChinese ? Language::Chinese : Language::English;
}

QLocale machineLocale() {
    return QLocale(QLocale::system().uiLanguages().value(0, QStringLiteral("C")));
}

bool installLanguage(Language language) {
    initTranslations();
    const QLocale locale(language == Language::Chinese ? QLocale::Chinese : QLocale::English);
    QLocale::setDefault(locale); // the names of months and days in calendars
    const bool hasQtTexts = installQtTexts(language);
    const bool hasLibraryTexts = timeshare::installTranslation(locale);
    return timeshare::installTranslation(locale, kFolder, QStringLiteral("terminal")) && hasLibraryTexts &&
           hasQtTexts;
}

} // namespace terminal
