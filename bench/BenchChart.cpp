#include "bench/BenchChart.h"

#include "bench/BenchPane.h"
#include "bench/BenchResults.h"
#include "chartdata/CRealtimeData.h"
#include "chartview/CCrossLineWidget.h"
#include "chartview/CGraphAxisWidget.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "chartview/CRealtimeTimeWidget.h"
#include "viewmodel/CRealtimeUiParam.h"
#include "viewmodel/TradingSessions.h"

#include <QBackingStore>
#include <QCoreApplication>
#include <QMouseEvent>

#include <algorithm>
#include <functional>

namespace bench {
namespace {

constexpr int kStripWidth = 50; // pixels
const char *const kMarket = "SH";
const char *const kCode = "600000";

/// Every point of the first `count` minutes, with the given lines of a minute.
TC::FormulaResultPtr seriesOf(const std::vector<Minute> &minutes, int count,
                              const std::vector<double Minute::*> &lines,
                              const std::function<qint64(int)> &timeOf) {
    return resultOf(count, static_cast<int>(lines.size()), timeOf, [&](int line, int index) {
        return minutes[static_cast<std::size_t>(index)].*lines[static_cast<std::size_t>(line)];
    });
}

TC::FormulaInstantPtr pointOf(const Minute &minute, const std::vector<double Minute::*> &lines, qint64 time) {
    auto point = std::make_shared<se::RPCFormulaInstantResult>();
    point->mTime = {time, 0};
    for (const auto line : lines) {
        point->mValues.push_back(minute.*line);
    }
    point->mExtra1.assign(lines.size(), se::kDefaultColor);
    point->mTexts.resize(lines.size());
    point->mExtra2.assign(lines.size(), 0.0);
    return point;
}

const std::vector<double Minute::*> kPriceLines = {&Minute::price, &Minute::average};
const std::vector<double Minute::*> kVolumeLines = {&Minute::volume};

} // namespace

struct BenchChart::Day {
    boost::shared_ptr<TC::CRealtimeData> data;
    TC::CRealtimeGraphWidget *graph = nullptr;
    int date = 0;
    std::vector<qint64> times; ///< of every axis index, milliseconds since the epoch
    fakehost::LiveRequest price;
    fakehost::LiveRequest volume;
};

BenchChart::BenchChart(int points, int days, LineLook look) : mLook(look) {
    setAttribute(Qt::WA_OpaquePaintEvent, days == 1); // one graph and its strips cover everything
    mHost.mLog.setRecording(false);
    mHost.mStocks.add(kMarket, kCode, 10.0, 0.01);
    mHost.mCache.setKeeping(false);
    mHost.mConfig.mRecord.mShowGradient = 0;
    mHost.mCatalogue.add(QStringLiteral("REALTIME"), 2);
    mHost.mCatalogue.add(QStringLiteral("REALTIMEVOL"), 2);
    if (points != 241) {
        mHost.mTimes.mTables[QStringLiteral("SH600000")] = {{{300, 300 + points - 1}}, points};
    }
    mParam.reset(new TC::CRealtimeUiParam(TC::EIndexViewType::Ordinary));
    mParam->setStock(QStringLiteral("SH600000"), false);
    mParam->mLeftAxisWidth = mParam->mRightAxisWidth = kStripWidth;
    mParam->mDayCount = days;
    for (int day = 0; day < days; ++day) {
        auto item = std::make_unique<Day>();
        item->date = mHost.mStocks.mLastTradingDay - day * 86400;
        item->data.reset(new TC::CRealtimeData(mParam, TC::EIndexDisplayType::Main, this));
        for (int index = 0; index < points; ++index) {
            const int minute = TC::minuteOfIndex({mParam->mSessions, mParam->mPointCount}, index);
            item->times.push_back((item->date + qint64(minute) * 60) * 1000);
        }
        item->data->addFormula(QStringLiteral("REALTIME"));
        if (mLook.hasVolume) {
            item->data->addFormula(QStringLiteral("REALTIMEVOL"));
        }
        item->graph = new TC::CRealtimeGraphWidget(day, item->data, mParam, TC::EIndexDisplayType::Main,
                                                   TC::EIndexViewType::Ordinary, this, day == 0);
        mDays.push_back(std::move(item));
    }
    mLeft = new TC::CGraphAxisWidget(mParam, mDays[0]->data, TC::CGraphAxisWidget::eLeft, this);
    mRight = new TC::CGraphAxisWidget(mParam, mDays[0]->data, TC::CGraphAxisWidget::eRight, this);
    mRight
        ->lower(); // children hear of their size from the lowest up: the strips before the graphs that read them
    mLeft->lower();
    mParam->mLeftAxis = mLeft;
    mParam->mRightAxis = mRight;
    for (const auto &day : mDays) {
        day->data->setAxisWidget(mLeft);
    }
    setPreviousClose(10.0);
    restart();
}

BenchChart::~BenchChart() {
    mPanes.clear(); // while the host is there
    for (const auto &day : mDays) {
        delete day->graph;
        day->graph = nullptr;
    }
    delete mCrossLine;
    delete mTimeScale;
    delete mLeft;
    delete mRight;
    mDays.clear();
}

void BenchChart::setBottomMargin(int pixels, int timeHeight) {
    mBottom = pixels;
    mTimeHeight = timeHeight;
    layOut();
}

void BenchChart::setPreviousClose(double close) {
    mHost.mStocks.getInstrumentDetail(QStringLiteral("SH600000"))->mLastClose = close;
    mHost.mStocks.mCloses[qMakePair(QStringLiteral("SH600000"), 0)] = close;
}

void BenchChart::restart() {
    for (const auto &day : mDays) {
        day->data->unrequest();
        day->data->clearData();
        day->data->setTradeDate(day->date);
        day->data->request(corvane::ERunMode::Ordinary);
        day->price = mHost.mFormulas.mLive.find(QStringLiteral("REALTIME.lua"), QLatin1String(kCode));
        if (mLook.hasVolume) {
            day->volume = mHost.mFormulas.mLive.find(QStringLiteral("REALTIMEVOL.lua"), QLatin1String(kCode));
        }
    }
}

void BenchChart::clear() {
    for (const auto &day : mDays) {
        day->data->clearData();
    }
}

qint64 BenchChart::timeOf(int index) const {
    return mDays[0]->times[static_cast<std::size_t>(index)];
}

void BenchChart::deliverHistory(const std::vector<Minute> &minutes, int count, int day) {
    const Day &target = *mDays[static_cast<std::size_t>(day)];
    const auto at = [&](int index) { return target.times[static_cast<std::size_t>(index)]; };
    target.price.onHistory(metaOf({"价格", "均价"}, 0, {mLook.price, mLook.average}),
                           seriesOf(minutes, count, kPriceLines, at), target.price.id(), 1, QString(), true);
    if (!mLook.hasVolume) {
        return;
    }
    target.volume.onHistory(metaOf({"成交量"}, mLook.volumeStyle, {mLook.volume}),
                            seriesOf(minutes, count, kVolumeLines, at), target.volume.id(), 1, QString(), true);
}

void BenchChart::deliverPoint(int index, const Minute &minute) {
    const Day &target = *mDays[0];
    target.price.onRealtime(0, target.price.id(), pointOf(minute, kPriceLines, timeOf(index)));
    target.volume.onRealtime(0, target.volume.id(), pointOf(minute, kVolumeLines, timeOf(index)));
}

void BenchChart::addOverlay(const QString &code, const std::vector<Minute> &minutes, int count) {
    mHost.mStocks.add(kMarket, code.toStdString(), minutes.front().price, 0.01);
    mParam->addStock(QLatin1String(kMarket) + code, QString(), true);
    restart();
    deliverOverlayHistory(code, minutes, count);
}

void BenchChart::deliverOverlayHistory(const QString &code, const std::vector<Minute> &minutes, int count) {
    const fakehost::LiveRequest price = mHost.mFormulas.mLive.find(QStringLiteral("REALTIME.lua"), code);
    price.onHistory(metaOf({"价格", "均价"}, 0, {se::kDefaultColor, se::kDefaultColor}),
                    seriesOf(minutes, count, kPriceLines, [&](int index) { return timeOf(index); }), price.id(),
                    1, QString(), true);
}

void BenchChart::showCrossLine() {
    mParam->mCrossShown = true;
    mCrossLine = new TC::CCrossLineWidget(mParam, mDays[0]->data, this);
    showTimeScale();
    mCrossLine->show();
}

void BenchChart::showTimeScale() {
    mTimeScale = new TC::CRealtimeTimeWidget(mParam, nullptr);
    mTimeScale->setParent(this);
    layOut();
    mTimeScale->show();
}

BenchPane &BenchChart::addPane(const QString &name, const std::vector<qint32> &colors) {
    mPanes.push_back(std::make_unique<BenchPane>(mHost, mParam, name, mDays[0]->date, colors, this));
    return *mPanes.back();
}

const std::vector<qint64> &BenchChart::times() const {
    return mDays[0]->times;
}

void BenchChart::moveMouse(const QPoint &at) {
    QMouseEvent move(QEvent::MouseMove, at, at, at, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(mDays[0]->graph, &move);
}

/// What a view does when a graph tells where the mouse is.
void BenchChart::placeCrossLine(int index, int x) {
    mParam->mCrossIndex = index;
    mTimeScale->setCursor(index, x);
    mCrossLine->setPosition(x, mDays[0]->graph->getMouseY());
    mTimeScale->refreshFlag();
}

void BenchChart::drawHidden() {
    for (const auto &day : mDays) {
        day->data->setDrawEnabled(true);
    }
}

void BenchChart::updateAll() {
    for (const auto &day : mDays) {
        day->graph->update();
    }
    mLeft->update();
    mRight->update();
}

void BenchChart::redrawAll() {
    for (const auto &day : mDays) {
        day->data->setChartRect(day->graph->rect()); // new pixmaps
    }
    updateAll();
}

QImage BenchChart::screen() const {
    QBackingStore *store = backingStore();
    const auto *pixels = store ? dynamic_cast<const QImage *>(store->paintDevice()) : nullptr;
    return pixels ? pixels->copy() : QImage();
}

TC::CRealtimeData &BenchChart::data(int day) {
    return *mDays[static_cast<std::size_t>(day)]->data;
}

TC::CRealtimeGraphWidget &BenchChart::graph(int day) {
    return *mDays[static_cast<std::size_t>(day)]->graph;
}

bool BenchChart::handleEvent(int event, int first, int second, QString, void *) {
    if (event == 3031 && mCrossLine) {
        placeCrossLine(second, first);
    }
    if (event == 3151) {
        mergeRanges();
    }
    if (event == 3151 || event == 3029) {
        for (const auto &day : mDays) {
            day->graph->updateChanged();
        }
    }
    return true;
}

void BenchChart::mergeRanges() {
    TC::IndexBaseData::MaxMinMap merged;
    for (const auto &day : mDays) {
        const TC::IndexBaseData::MaxMinMap ranges = day->data->getMaxMinMap();
        for (auto it = ranges.constBegin(); it != ranges.constEnd(); ++it) {
            const auto present = merged.find(it.key());
            if (present == merged.end()) {
                merged.insert(it.key(), it.value());
            } else {
                present->first = std::max(present->first, it->first);
                present->second = std::min(present->second, it->second);
            }
        }
    }
    mLeft->setMaxMinMap(merged);
    mRight->setMaxMinMap(merged);
    for (const auto &day : mDays) {
        day->data->adoptMaxMin(merged, false);
    }
}

void BenchChart::resizeEvent(QResizeEvent *) {
    layOut();
}

void BenchChart::layOut() {
    if (!mLeft || mDays.empty()) {
        return;
    }
    const QRect all(0, 0, width(), height() - mBottom);
    mParam->resize(all);
    mLeft->setGeometry(0, 0, kStripWidth, all.height());
    mRight->setGeometry(width() - kStripWidth, 0, kStripWidth, all.height());
    if (mCrossLine) {
        mCrossLine->setFixedExtent(width(), all.height());
        mCrossLine->setGraphRect(QRect(0, 0, int(mParam->mDayWidth), all.height()), 0);
    }
    if (mTimeScale) {
        mTimeScale->setGeometry(0, height() - mTimeHeight, width(), mTimeHeight);
        mTimeScale->updateScale();
    }
    const int days = static_cast<int>(mDays.size());
    for (int day = 0; day < days; ++day) {
        const int x = kStripWidth + int(mParam->mDayWidth * (days - 1 - day));
        mDays[static_cast<std::size_t>(day)]->graph->setGeometry(x, 0, int(mParam->mDayWidth), all.height());
    }
}

} // namespace bench
