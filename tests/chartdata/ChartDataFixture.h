#pragma once

#include "chartdata/CRealtimeData.h"
#include "tests/fakehost/FakeHost.h"
#include "tests/support/Series.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QImage>
#include <QPainter>

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <mutex>
#include <vector>

namespace tests {

/// The top of an event chain: keeps what reaches it.
class EventRecorder : public GZ::CEventDeliverer {
public:
    struct Event {
        int number;
        QString text;
        void *data;
    };
    bool handleEvent(int event, int, int, QString text, void *data) override {
        std::lock_guard<std::mutex> hold(mLock);
        mEvents.push_back({event, text, data});
        return true;
    }
    std::vector<Event> all() const {
        std::lock_guard<std::mutex> hold(mLock);
        return mEvents;
    }
    /// Numbers in order of arrival.
    std::vector<int> numbers() const {
        std::vector<int> found;
        for (const Event &event : all()) {
            found.push_back(event.number);
        }
        return found;
    }
    void clear() {
        std::lock_guard<std::mutex> hold(mLock);
        mEvents.clear();
    }

private:
    mutable std::mutex mLock;
    std::vector<Event> mEvents;
};

/// A live view of SH600000 with the two main formulas and a sub-pane formula, MACD, in the catalogue. SH600001
/// and SZ000001 may be overlaid.
class ChartData : public ::testing::Test {
protected:
    ChartData() {
        for (const char *key : {"600000", "600001"}) {
            mHost.mStocks.add("SH", key);
            mHost.mStocks.mCloses[qMakePair(QStringLiteral("SH") + QLatin1String(key), 0)] = 10.0;
        }
        mHost.mStocks.add("SZ", "000001");
        mHost.mStocks.mCloses[qMakePair(QStringLiteral("SZ000001"), 0)] = 20.0;
        mHost.mCatalogue.add(QStringLiteral("REALTIME"), 2);
        mHost.mCatalogue.add(QStringLiteral("REALTIMEVOL"), 2);
        mHost.mCatalogue.add(QStringLiteral("MACD"), 0);
        mUi = boost::make_shared<TC::CRealtimeUiParam>(TC::EIndexViewType::Ordinary);
        mUi->mPanelInfo = boost::make_shared<TC::CPanelInfo>();
        mUi->mPanelInfo->mId = 7;
        mUi->setStock(QStringLiteral("SH600000"), false);
        mHost.mLog.clear();
    }

    boost::shared_ptr<TC::CRealtimeData> make(TC::EIndexDisplayType type, const QStringList &formulas) {
        auto data = boost::make_shared<TC::CRealtimeData>(mUi, type, &mEvents);
        for (const QString &formula : formulas) {
            data->addFormula(formula);
        }
        data->setTradeDate(kDay);
        return data;
    }
    boost::shared_ptr<TC::CRealtimeData> makeMain(const QStringList &formulas = {QStringLiteral("REALTIME")}) {
        return make(TC::EIndexDisplayType::Main, formulas);
    }
    boost::shared_ptr<TC::CRealtimeData> makeSub(const QStringList &formulas = {QStringLiteral("MACD")}) {
        return make(TC::EIndexDisplayType::Sub, formulas);
    }
    /// A main pane that has requested.
    boost::shared_ptr<TC::CRealtimeData> requested(const QStringList &formulas = {QStringLiteral("REALTIME")}) {
        auto data = makeMain(formulas);
        data->request(corvane::ERunMode::Ordinary);
        return data;
    }
    static TC::CFormulaKey key(const char *stock, const char *formula = "REALTIME") {
        return TC::CFormulaKey(QString::fromUtf8(stock), QString::fromUtf8(formula));
    }
    static int history(TC::CRealtimeData &data, const TC::CFormulaKey &series,
                       const TC::FormulaResultPtr &result, bool keepRange = true) {
        const int lines = result ? static_cast<int>(result->mValues.size()) : 0;
        return data.applyHistory(makeMeta(lines), result, data.getReqID(series), 1, QString(), keepRange);
    }
    static int point(TC::CRealtimeData &data, const TC::CFormulaKey &series,
                     const TC::FormulaInstantPtr &value) {
        return data.doRealtimeCallback(0, data.getReqID(series), value);
    }
    static const se::RPCFormulaResult &series(const TC::CRealtimeData &data, const TC::CFormulaKey &which) {
        return data.getData().constFind(which)->result;
    }
    /// The request of an instrument's code and a formula's file in the last list that went to the service.
    TC::CFormulaParam param(const QString &code, const QString &file) const {
        for (const TC::CFormulaParam &one : mHost.mFormulas.mLastParams) {
            if (one.mCode == code && one.mFormulaName == file) {
                return one;
            }
        }
        ADD_FAILURE() << "no request of " << code.toStdString() << ' ' << file.toStdString();
        return {};
    }
    /// Pixmaps and drawing on, with a drawn range that holds what is wanted now.
    static void startDrawing(TC::CRealtimeData &data) {
        data.setChartRect(QRect(0, 0, 300, 200));
        data.adoptMaxMin(data.getMaxMinMap(), true);
        data.setDrawEnabled(true);
    }
    /// What a pane of that size shows.
    static QImage painted(TC::CRealtimeData &data) {
        QImage image(300, 200, QImage::Format_RGB32);
        image.fill(Qt::magenta);
        QPainter painter(&image);
        data.paintTo(&painter, image.rect());
        return image;
    }

    fakehost::FakeHost mHost;
    EventRecorder mEvents;
    boost::shared_ptr<TC::CRealtimeUiParam> mUi;
};

} // namespace tests
