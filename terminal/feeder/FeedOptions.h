#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <QTime>

#include <variant>

namespace terminal {

/// What the feed was asked for.
struct FeedOptions {
    bool help = false;
    QString server = QStringLiteral("nats://127.0.0.1:4222");
    QString store; ///< file of the market store; empty for the feed's own
    QString log; ///< empty for none
    QDate recorded; ///< stored day to play; null for the simulated exchange
    QTime start; ///< clock time at which the market starts; null for the opening auction
    int copies = 1; ///< of the stream, in a cluster of servers
    double pace = 1.0; ///< market seconds a second
};

/// Reads the arguments behind the program's name. A text is one line that says what is wrong, without any secret.
std::variant<FeedOptions, QString> parseFeedOptions(const QStringList &arguments);
QString feedHelp();

} // namespace terminal
