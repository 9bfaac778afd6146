#pragma once

#include "host/records/CFormulaDetail.h"

#include <QByteArray>
#include <QString>
#include <QVector>

namespace terminal {

/// Reads the record of a script model from the comments at the head of its file, up to the first line that is none:
///
///     # type: 1
///     # parameter N: 20
///     # parameter group: "SH600000,SZ000001"
///
/// A value in double quotes makes a text parameter, a number a numeric one; other comments are passed over. The name
/// is the file's in upper case, the type 0 when none is given, or no number of 0 to 2.
TC::CFormulaDetail readScriptModelHeader(const QString &name, const QByteArray &text);

/// The records of all models of a folder, by name: its files of upper-case names that end with ".py".
QVector<TC::CFormulaDetailPtr> readScriptModels(const QString &folder);

/// The folder, among the program's resources, of the models that come with it.
QString builtInScripts();

/// Copies the files of a folder that another one lacks; those that are there stay as the user has them. False when
/// the folder cannot be made or a file cannot be copied.
bool copyMissingFiles(const QString &from, const QString &to);

} // namespace terminal
