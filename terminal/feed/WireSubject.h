#pragma once

#include <QByteArray>
#include <QString>

namespace terminal {

// Under which subjects a feed sends its records. An instrument is one word of a subject: letters, digits, - and _ stand
// for themselves, every other byte of its key (UTF-8) is written as = and two hexadecimal digits.

/// Changes of an instrument as they happen.
QByteArray changeSubject(const QString &key);
/// Minutes of an instrument that are over; kept in the stream.
QByteArray minuteSubject(const QString &key);
/// The feed's beat.
QByteArray clockSubject();
/// All subjects that the stream keeps.
QByteArray minuteSubjects();
/// Name of the stream of minutes.
QByteArray minuteStream();

/// The instrument of one of the first two; empty for any other subject.
QString keyOfSubject(const QByteArray &subject);

} // namespace terminal
