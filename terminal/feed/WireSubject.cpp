#include "terminal/feed/WireSubject.h"

namespace terminal {
namespace {

const QByteArray kChangePrefix = QByteArrayLiteral("md.tick.");
const QByteArray kMinutePrefix = QByteArrayLiteral("md.min.");

bool isPlain(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' || c == '_';
}

QByteArray wordOf(const QString &key) {
    QByteArray word;
    for (const char c : key.toUtf8()) {
        if (isPlain(c)) {
            word.append(c);
        } else {
            word.append('=').append(QByteArray(1, c).toHex().toUpper());
        }
    }
    return word;
}

} // namespace

QByteArray changeSubject(const QString &key) {
    return kChangePrefix + wordOf(key);
}

QByteArray minuteSubject(const QString &key) {
    return kMinutePrefix + wordOf(key);
}

QByteArray clockSubject() {
    return QByteArrayLiteral("md.clock");
}

QByteArray minuteSubjects() {
    return kMinutePrefix + '>';
}

QByteArray minuteStream() {
    return QByteArrayLiteral("MINUTES");
}

QString keyOfSubject(const QByteArray &subject) {
    QByteArray word;
    for (const QByteArray &prefix : {kChangePrefix, kMinutePrefix}) {
        if (subject.startsWith(prefix)) {
            word = subject.mid(prefix.size());
        }
    }
    QByteArray key;
    for (int i = 0; i < word.size(); ++i) {
        if (word[i] == '=') {
            key.append(QByteArray::fromHex(word.mid(i + 1, 2)));
            i += 2;
        } else {
            key.append(word[i]);
        }
    }
    const QString text = QString::fromUtf8(key);
    return wordOf(text) == word ? text : QString();
}

} // namespace terminal
