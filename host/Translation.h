#pragma once

#include "host/Export.h"

#include <QString>

/// \file
/// The language of what the library shows. Its texts are written in Chinese; English comes with it.

class QLocale;

namespace timeshare {

/// Lets all texts of the library follow a locale's language from now on, and answers whether they do: Chinese for every
/// locale of Chinese and for QLocale::c(), English for every locale of English. For other languages it changes nothing and answers
/// false, so that a host chooses: `installTranslation(locale) || installTranslation(QLocale::English)`.
///
/// Call it on the thread of the application object, after that is made and before the first window: what is shown already
/// keeps its texts. What is stored is not translated: names of formulas, of lists and of columns stay as they are, so that what was
/// saved in one language loads in the other. The catalogue is part of the library; no file has to be found.
TIMESHARE_EXPORT bool installTranslation(const QLocale &locale);

/// Does the same for another set of texts: the resource or file "<folder>/<name>_en.qm". For hosts that keep their own texts in
/// Chinese as well.
TIMESHARE_EXPORT bool installTranslation(const QLocale &locale, const QString &folder, const QString &name);

} // namespace timeshare
