#include "terminal/app/PastDays.h"

#include "terminal/market/MarketFill.h"

namespace terminal {

QString PastDays::follow(const QString &url, const HistoryDesk::ReasonSink &sink) {
    HistoryAddress address;
    const QString wrong = readHistoryAddress(url, address);
    if (!wrong.isEmpty()) {
        return QStringLiteral("history: %1").arg(wrong);
    }
    std::unique_ptr<HistoryServer> server = makePgHistoryServer(address);
    if (!server) {
        return QStringLiteral(
            "history: this program was built without PostgreSQL: install libpq-dev and build it again");
    }
    const QString unfit = keepServedDays(mStore);
    if (unfit.isEmpty()) {
        mDesk = std::make_unique<HistoryDesk>(mStore, std::move(server));
        mDesk->setReasonSink(sink);
    }
    return unfit;
}

void PastDays::start() {
    if (mDesk) {
        mDesk->start();
    }
}

void PastDays::stop() {
    if (mDesk) {
        mDesk->stop();
    }
}

HistorySource &PastDays::source() {
    if (mDesk) {
        return mDesk->source();
    }
    return mSimulated;
}

void PastDays::want(const QString &key, int day) {
    for (const QString &part : mDesk ? partsOf(*mStore.catalogue(), key) : QStringList()) {
        mDesk->want(part, day);
    }
}

void PastDays::await(std::chrono::milliseconds atMost) {
    if (mDesk) {
        mDesk->settle(atMost);
    }
}

QVector<int> PastDays::knownDays(const QString &key) {
    return mDesk ? mDesk->source().knownDays(key) : QVector<int>();
}

QString PastDays::trouble() const {
    return mDesk ? historyText(mDesk->report()) : QString();
}

void PastDays::setListener(const HistoryDesk::Listener &listener) {
    if (mDesk) {
        mDesk->setListener(listener);
    }
}

QStringList partsOf(const Catalogue &catalogue, const QString &key) {
    QStringList parts;
    for (const QString &member : catalogue.indexes.value(key).detail.mMembers) {
        parts.append(member);
    }
    for (const PortfolioPosition &position : catalogue.portfolios.value(key).positions) {
        parts.append(position.key);
    }
    return parts.isEmpty() ? QStringList{key} : parts;
}

} // namespace terminal
