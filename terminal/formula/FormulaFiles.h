#pragma once

#include "terminal/formula/FormulaError.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

namespace terminal {

/// A formula file of a folder.
struct FormulaFile {
    QString path;
    QStringList folders; ///< folders that it is in, from the outermost, without the numbers that order them
    QByteArray text;
};

/// All formula files below a folder, "*.lua", folders first and then files, both in the order of their names. A number
/// before a folder's name gives its place and is no part of it. A file that cannot be read, or has more than a
/// mebibyte, is told and left out. Empty for a folder that is not there.
QVector<FormulaFile> readFormulaFiles(const QString &root, const FormulaErrorSink &sink);

/// The text of a formula file whose name is written in capitals, as `name`, where it is written in other letters;
/// otherwise the text as it is.
QByteArray withNameInCapitals(const QByteArray &text, const QString &name);

/// Writes a file whole or not at all; the reason when it cannot be.
QString writeFormulaFile(const QString &path, const QByteArray &text);

} // namespace terminal
