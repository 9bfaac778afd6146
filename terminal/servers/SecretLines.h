#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <utility>

namespace terminal {

/// Reads a file of credentials, of at most 64 KiB. Answers an empty text or why it cannot be read.
QString readSecretFile(const QString &path, QByteArray &content);

/// Takes the values of lines such as password=...; empty lines and those that begin with # count for nothing. Answers an empty
/// text, or which line is none of these names, without any value.
QString takeSecretLines(const QString &path, const QByteArray &content,
                        const QVector<std::pair<QByteArray, QByteArray *>> &values);

} // namespace terminal
