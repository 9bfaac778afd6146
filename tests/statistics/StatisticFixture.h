#pragma once

#include "host/records/Quotes.h"
#include "host/toolkit/CCheckBox.h"
#include "host/toolkit/CComboBox.h"
#include "host/toolkit/CMediumNormalButton.h"
#include "host/toolkit/CPushButtonGroup.h"
#include "host/toolkit/CRadioButton.h"
#include "host/toolkit/Events.h"
#include "host/windows/CWatchPlateWidget.h"
#include "statistics/CRealtimeStageDialog.h"
#include "statistics/CRealtimeStatisticDialog.h"
#include "tests/chartview/ChartFixture.h"
#include "tests/linkage/TradeRecords.h"

#include <QAbstractButton>
#include <QTimeEdit>
#include <QtTest>

namespace tests {

/// Keeps events, and the times that moved bounds carry, which do not outlive the event.
class BoundKeeper : public EventKeeper {
public:
    bool handleEvent(int event, int first, int second, QString text, void *payload) override {
        if (event == TC::eRegionBoundMoved) {
            mBounds.append({first, *static_cast<QTime *>(payload)});
        }
        if (mOnPayload) {
            mOnPayload(event);
        }
        return EventKeeper::handleEvent(event, first, second, text, payload);
    }
    QList<QPair<int, QTime>> mBounds; ///< which one, and where to
    std::function<void(int)> mOnPayload;
};

/// The dialog of statistics below a keeper, with the stretch of 2024-03-15 from 09:30 to 10:00 of SH600000 when told so.
class StatisticFixture : public ChartFixture {
protected:
    static const QDate kDate;

    StatisticFixture() {
        mBus = std::make_unique<BoundKeeper>();
        makeDialog(false);
    }
    ~StatisticFixture() override {
        mDialog.reset();
        mBus.reset();
    }

    void makeDialog(bool isReplay) {
        mDialog = std::make_unique<TC::CRealtimeStatisticDialog>(mBus.get(), isReplay);
    }
    static qint64 at(int hour, int minute, int second = 0, int day = 15) {
        return QDateTime(QDate(2024, 3, day), QTime(hour, minute, second)).toSecsSinceEpoch();
    }
    void setRange(qint64 start, qint64 end) {
        mDialog->setRange(static_cast<quint64>(start), static_cast<quint64>(end));
    }
    /// 09:30 to 10:00 of SH600000, the requests of which are forgotten.
    void takeStretch() {
        mDialog->setStock(QStringLiteral("SH600000"), true);
        setRange(at(9, 30), at(10, 0));
        mHost.mFormulas.mQuoteRequests.clear();
        mHost.mLog.clear();
    }
    void show() {
        mBus->show();
        mDialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(mDialog.get()));
    }
    void forget() {
        mBus->mEvents.clear();
        mBus->mBounds.clear();
    }
    /// Numbers of the events that reached the view, in order.
    std::vector<int> numbers() const {
        std::vector<int> found;
        for (const Event &event : mBus->mEvents) {
            found.push_back(event.number);
        }
        return found;
    }

    template <class Widget> Widget *child(int number = 0) const {
        return mDialog->findChildren<Widget *>().value(number);
    }
    QTimeEdit *startEdit() const { return child<QTimeEdit>(0); }
    QTimeEdit *endEdit() const { return child<QTimeEdit>(1); }
    GZ::CPushButton *stageButton() const { return button(603); }
    GZ::CPushButton *quoteButton() const { return button(602); }
    GZ::CPushButton *button(int id) const {
        for (GZ::CPushButton *found : mDialog->findChildren<GZ::CPushButton *>()) {
            if (found->id() == id) {
                return found;
            }
        }
        return nullptr;
    }
    GZ::CComboBox *orders() const { return child<GZ::CComboBox>(); }
    TC::CWatchPlateWidget *plate() const { return child<TC::CWatchPlateWidget>(); }

    void addOrder(const std::string &account, const std::string &key, const std::string &date,
                  const std::string &time) {
        const auto order = makeOrder(key, 10.0, time);
        order->mDate = date;
        mHost.mLinkage.mOrders["SH600000"][account][key] = order;
    }
    void addAccount(const std::string &key) {
        auto account = boost::make_shared<TC::CAccount>();
        account->mKey = key;
        mHost.mConfig.mUserConfig.mAccounts.append(account);
    }
    static std::shared_ptr<quoter::QuoterBase> transaction(qint64 second, double price, double volume = 100.0) {
        auto record = std::make_shared<quoter::QuoterTransaction>();
        record->mTime = second * 1000;
        record->mPrice = price;
        record->mVolume = volume;
        return record;
    }
    /// Answers the newest request, or the one before by that many.
    void answerQuotes(const TC::CWatchPlateWidget::Records &records, size_t before = 0) {
        auto &requests = mHost.mFormulas.mQuoteRequests;
        ASSERT_GT(requests.size(), before);
        requests[requests.size() - 1 - before].onQuotes(0, 0, records, QString());
    }

    std::unique_ptr<BoundKeeper> mBus;
    std::unique_ptr<TC::CRealtimeStatisticDialog> mDialog;
};

inline const QDate StatisticFixture::kDate{2024, 3, 15};

} // namespace tests
