#pragma once

#include "chartdata/CRealtimeData.h"
#include "host/toolkit/CBaseWidget.h"
#include "host/toolkit/CUiResource.h"
#include "tests/fakehost/FakeHost.h"
#include "tests/support/Series.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QFontMetrics>
#include <QImage>
#include <QPainter>

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

namespace tests {

/// One event of the bus.
struct Event {
    int number = 0;
    int first = 0;
    int second = 0;
    QString text;
    void *data = nullptr;
};

/// Stands above the widgets under test: keeps every event that reaches it, and consumes it.
class EventKeeper : public GZ::CBaseWidget {
public:
    bool handleEvent(int event, int first, int second, QString text, void *payload) override {
        mEvents.push_back({event, first, second, text, payload});
        if (mOnEvent) {
            mOnEvent(event);
        }
        return true;
    }
    std::vector<Event> of(int number) const {
        std::vector<Event> found;
        for (const Event &event : mEvents) {
            if (event.number == number) {
                found.push_back(event);
            }
        }
        return found;
    }
    std::vector<Event> mEvents;
    std::function<void(int)> mOnEvent; ///< hears the number of every event
};

/// A view of the stock SH600000, last close 10.00, step 0.01, on 2024-03-15.
class ChartFixture : public ::testing::Test {
protected:
    ChartFixture() {
        GZ::CUiResource::instance().setTheme(QStringLiteral("dark"));
        mDetail = mHost.mStocks.add("SH", "600000", 10.0, 0.01);
        mHost.mStocks.mCloses[qMakePair(QStringLiteral("SH600000"), 0)] = 10.0;
        for (const char *name : {"REALTIME", "REALTIMEVOL", "MACD", "KDJ"}) {
            mHost.mCatalogue.add(QString::fromLatin1(name));
        }
        mUi = boost::make_shared<TC::CRealtimeUiParam>(TC::EIndexViewType::Ordinary);
        mUi->setStock(QStringLiteral("SH600000"), false);
        mKeeper = std::make_unique<EventKeeper>();
    }
    ~ChartFixture() override {
        GZ::CUiResource::instance().setTheme(QStringLiteral("dark"));
        // What requests still hold goes while the host is there.
        for (fakehost::LiveRequests *live : {&mHost.mFormulas.mLive, &mHost.mReplay.mLive}) {
            for (const fakehost::LiveRequest &request : live->all()) {
                live->remove(request.id());
            }
        }
    }

    boost::shared_ptr<TC::CRealtimeData> makeData(TC::EIndexDisplayType type,
                                                  const QStringList &formulas) const {
        auto data = boost::make_shared<TC::CRealtimeData>(mUi, type, mKeeper.get());
        data->setTradeDate(kDay);
        for (const QString &formula : formulas) {
            data->addFormula(formula);
        }
        return data;
    }
    /// Answers the newest request of a formula with a whole series of one line from 09:30 on.
    void answer(const QString &formula, const std::vector<double> &values, int style = 0,
                const std::string &code = "600000") {
        const fakehost::LiveRequest request = mHost.mFormulas.mLive.find(
            mHost.mCatalogue.getFormula(formula)->mFileName, QString::fromStdString(code));
        ASSERT_TRUE(request.onHistory) << formula.toStdString();
        request.onHistory(makeMeta(1, {style}),
                          makeResult(minuteTimes(kDay, 570, static_cast<int>(values.size())), values),
                          request.id(), 1, QString(), false);
    }
    /// Sends one point to the newest request of a formula.
    void stream(const QString &formula, int minute, double value) {
        const fakehost::LiveRequest request = mHost.mFormulas.mLive.find(
            mHost.mCatalogue.getFormula(formula)->mFileName, QStringLiteral("600000"));
        ASSERT_TRUE(request.onRealtime) << formula.toStdString();
        request.onRealtime(0, request.id(), makePoint(minuteTime(kDay, minute), {value}));
    }

    static QColor color(const char *key) { return GZ::CUiResource::instance().getColor(QLatin1String(key)); }
    static QFont axisFont() {
        return GZ::CUiResource::instance().getFont(QStringLiteral("fnt_graph_axis_text"));
    }
    static int axisFontHeight() { return QFontMetrics(axisFont()).height(); }
    static TC::CFormulaKey key(const char *formula) {
        return {QStringLiteral("SH600000"), QString::fromLatin1(formula)};
    }

    /// What a widget paints, itself alone, over an unmistakable ground.
    static QImage painted(QWidget &widget, double ratio = 1.0) {
        QImage image((QSizeF(widget.size()) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::magenta);
        widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
        return image;
    }

    fakehost::FakeHost mHost;
    TC::CInstrumentDetailPtr mDetail;
    boost::shared_ptr<TC::CRealtimeUiParam> mUi;
    std::unique_ptr<EventKeeper> mKeeper; ///< above all widgets and data
};

} // namespace tests
