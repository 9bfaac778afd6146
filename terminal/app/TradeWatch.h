#pragma once

#include <QObject>
#include <QSet>
#include <QString>
#include <boost/signals2/connection.hpp>

#include <memory>
#include <string>
#include <vector>

namespace terminal {

/// Hears on whatever thread that the user's orders, deals or tasks have changed, and tells so on the thread that it
/// lives on: what comes together is told once.
class TradeWatch : public QObject {
    Q_OBJECT
public:
    /// Needs the trade service; hears nothing of it once it or this has gone.
    explicit TradeWatch(QObject *parent = nullptr);
    ~TradeWatch() override;

Q_SIGNALS:
    /// Records of the instruments with these keys have changed.
    void changed(const QSet<QString> &instruments);

private:
    struct Bond;

    Q_INVOKABLE void tell();

    std::shared_ptr<Bond> mBond;
    boost::signals2::scoped_connection mLinkage;
    boost::signals2::scoped_connection mTasks;
};

} // namespace terminal
