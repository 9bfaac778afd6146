#pragma once

#include "chartdata/CRealtimeData.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "containers/CRealtimeMainWidget.h"
#include "host/services/ServiceContext.h"
#include "tests/fakehost/FakeHost.h"
#include "tests/support/Series.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

#include <memory>
#include <string>
#include <vector>

namespace tests {

/// A source of data with services and a view of its own. It knows SH600000, by a name and with a close of its own, and the
/// formulas that a view begins with.
class Source {
public:
    Source(const std::string &name, double close) {
        mHost.installInto(mContext);
        mDetail = mHost.mStocks.add("SH", "600000", close, 0.01);
        mDetail->mName = name;
        mHost.mStocks.mCloses[qMakePair(QStringLiteral("SH600000"), 0)] = close;
        for (const char *formula : {"REALTIME", "REALTIMEVOL", "MACD", "KDJ", "VOL"}) {
            mHost.mCatalogue.add(QString::fromLatin1(formula));
        }
        mHost.mCatalogue.add("MA", 1);
    }
    /// Its view of SH600000 below a widget, with a formula pane, all requested.
    void makeView(QWidget *parent) {
        mView = std::make_unique<TC::CRealtimeMainWidget>(parent, TC::EIndexViewType::Ordinary, mContext);
        mView->setStock(QStringLiteral("SH600000"), false);
        mView->addIndexWidget();
        mView->getSubIndexWidgets().first()->addIndex(QStringLiteral("MACD"));
        mView->request(false);
    }
    fakehost::LiveRequest requestOf(const QString &formula) const {
        return mHost.mFormulas.mLive.find(mHost.mCatalogue.mFormulas.value(formula)->mFileName,
                                          QStringLiteral("600000"));
    }
    /// Answers a formula with one price for a number of minutes from 09:30 on.
    void answer(const QString &formula, int points, double price) const {
        const fakehost::LiveRequest request = requestOf(formula);
        const std::vector<double> values(static_cast<std::size_t>(points), price);
        request.onHistory(makeMeta(2), makeResult(minuteTimes(kDay, 570, points), values, values), request.id(),
                          1, QString(), false);
    }
    /// One more point of it.
    void stream(const QString &formula, int minute, double price) const {
        const fakehost::LiveRequest request = requestOf(formula);
        request.onRealtime(0, request.id(), makePoint(minuteTime(kDay, minute), {price, price}));
    }
    /// The prices that the main pane of its view holds.
    std::vector<double> prices() const {
        std::vector<double> found;
        mView->getRealTimeWidget()->getGraphWidgets().first()->getData()->readData([&found](const auto &data) {
            for (auto entry = data.begin(); entry != data.end(); ++entry) {
                if (entry.key().mFormula == QLatin1String("REALTIME")) {
                    found = entry->result.mValues.front();
                }
            }
        });
        return found;
    }

    fakehost::FakeServices mHost;
    TC::ServiceContext mContext;
    TC::CInstrumentDetailPtr mDetail;
    std::unique_ptr<TC::CRealtimeMainWidget> mView;
};

/// Takes turns of the event loop until nothing waits.
inline void takeTurns() {
    for (int turn = 0; turn < 3; ++turn) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

} // namespace tests
