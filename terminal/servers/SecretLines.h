#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <utility>

namespace terminal {

/// Reads a file of credentials, of at most 64 KiB. Answers an empty text or why it cannot be read; a pipe or a device is
/// none, and is not waited for.
QString readSecretFile(const QString &path, QByteArray &content);

/// What is wrong with a file that a library is going to open by itself: it is a pipe, a device or a folder. One that is not
/// there is left to the library. Empty for a good one, and for no path.
QString certificateFault(const QString &path);

/// Takes the values of lines such as password=...; empty lines and those that begin with # count for nothing. Answers an empty
/// text, or which line is none of these names, without any value.
QString takeSecretLines(const QString &path, const QByteArray &content,
                        const QVector<std::pair<QByteArray, QByteArray *>> &values);

} // namespace terminal
