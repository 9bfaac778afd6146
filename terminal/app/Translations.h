#pragma once

#include <QString>

class QLocale;

namespace terminal {

enum class Language { Chinese, English };

/// A language by its word, "zh" or "en"; for every other word that of the machine: Chinese where its locale is Chinese or tells
/// no language, English elsewhere.
Language languageOf(const QString &word, const QLocale &machine);

/// The language of the machine's messages.
QLocale machineLocale();

/// Gives the program a language: its own texts, the library's, and those of the dialogs and buttons that Qt makes. False
/// when some could not be read.
bool installLanguage(Language language);

} // namespace terminal
