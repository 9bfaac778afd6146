#pragma once

#include "host/Export.h"

#include <QString>
#include <QStringList>

/// \file
/// How days, times, counts and lists are written wherever somebody reads them, in the language of the day (host/Translation.h).
/// Prices and amounts: host/toolkit/Text.h.

namespace GZ {

// Formats of QDate, QTime and QDateTime, the same in every language.
inline const QString kDateFormat = QStringLiteral("yyyy-MM-dd");
inline const QString kShortDateFormat = QStringLiteral("MM-dd");
inline const QString kMinuteFormat = QStringLiteral("hh:mm");
inline const QString kSecondFormat = QStringLiteral("hh:mm:ss");

/// A count with commas between groups of three digits.
TIMESHARE_EXPORT QString countText(qint64 count);

/// Names one after the other, as in "MA、VOL" or "MA, VOL".
TIMESHARE_EXPORT QString namesText(const QStringList &names);

/// What belongs together one after the other, with a comma, as in "平安银行，万科A".
TIMESHARE_EXPORT QString listText(const QStringList &entries);

/// Phrases and sentences one after the other, as in "…；…" or "…; …".
TIMESHARE_EXPORT QString phrasesText(const QStringList &phrases);

/// The name of a formula's line as it is shown: those of the main chart (价格, 均价, 成交量) follow the language, every other one
/// stays as its formula gives it.
TIMESHARE_EXPORT QString lineText(const QString &name);

} // namespace GZ
