#pragma once

#include "terminal/history/PgConnection.h"

namespace terminal {

// How the tables of history say what the program has.

/// The trading day of a number of days since 1970-01-01, and a calendar date as PostgreSQL writes it.
int dayOfPgDate(int days);
QByteArray pgDate(int day);
/// An array of dates.
QByteArray pgDates(const QVector<int> &days);
/// Sessions of a text of minutes with commas between.
DaySessions pgSessions(const QByteArray &text);
/// The seven figures and, in front of them, the time, from a column on.
MinuteBar pgBar(const PgRows &rows, int row, int column);
/// Stamp and instruments, when the stamp is none of the parameter; a later change of any instrument has another one.
extern const char *const kPgInstruments;
/// The instruments of that statement; those that no instrument can be are left out.
QVector<Instrument> pgInstruments(const PgRows &rows);

} // namespace terminal
