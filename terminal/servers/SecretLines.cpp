#include "terminal/servers/SecretLines.h"

#include "toolkit/files/RegularFile.h"

#include <QStringList>

#include <algorithm>

namespace terminal {
namespace {

constexpr qint64 kLargestSecret = 64 * 1024; ///< bytes

/// "user=, password= or token="
QString namesOf(const QVector<std::pair<QByteArray, QByteArray *>> &values) {
    QStringList names;
    for (const auto &value : values) {
        names.append(QString::fromLatin1(value.first) + QLatin1Char('='));
    }
    const QString last = names.takeLast();
    return names.isEmpty() ? last : names.join(QStringLiteral(", ")) + QStringLiteral(" or ") + last;
}

} // namespace

QString readSecretFile(const QString &path, QByteArray &content) {
    GZ::RegularFile file(path);
    content = file.whole(kLargestSecret);
    return file.isGood()
               ? QString()
               : QStringLiteral("%1: the file of credentials cannot be read: %2").arg(path, file.reason());
}

QString certificateFault(const QString &path) {
    if (path.isEmpty()) {
        return {};
    }
    const GZ::RegularFile file(path);
    return file.fault() == GZ::RegularFile::eNotRegular
               ? QStringLiteral("%1: the file of certificates cannot be read: %2").arg(path, file.reason())
               : QString();
}

QString takeSecretLines(const QString &path, const QByteArray &content,
                        const QVector<std::pair<QByteArray, QByteArray *>> &values) {
    int number = 0;
    for (const QByteArray &text : content.split('\n')) {
        ++number;
        const QByteArray line = text.trimmed();
        if (line.isEmpty() || line.startsWith('#')) {
            continue;
        }
        const int equals = line.indexOf('=');
        const QByteArray name = line.left(std::max(0, equals)).trimmed();
        const auto found = std::find_if(values.begin(), values.end(),
                                        [&name](const auto &value) { return value.first == name; });
        if (found == values.end()) {
            return QStringLiteral("%1:%2: no line of credentials: give %3")
                .arg(path)
                .arg(number)
                .arg(namesOf(values));
        }
        *found->second = line.mid(equals + 1).trimmed();
    }
    return {};
}

} // namespace terminal
