#pragma once

#include <QRegularExpression>
#include <QString>
#include <QStringList>

namespace tests {

/// From now on a warning or worse of Qt fails the test that runs, unless it is expected.
void installMessageGuard();

/// Expects messages that match a pattern while it lives, and keeps them.
class ExpectMessages {
public:
    explicit ExpectMessages(const QString &pattern);
    ~ExpectMessages();
    ExpectMessages(const ExpectMessages &) = delete;
    ExpectMessages &operator=(const ExpectMessages &) = delete;
    /// The matching messages so far.
    QStringList seen() const;

private:
    friend bool takeExpected(const QString &message);
    QRegularExpression mPattern;
    QStringList mSeen;
};

} // namespace tests
