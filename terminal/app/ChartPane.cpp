#include "terminal/app/ChartPane.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/CGraphAxisWidget.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/PriceDecimals.h"
#include "terminal/app/ChartTitle.h"
#include "terminal/app/TimeRow.h"
#include "terminal/market/MarketDate.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <boost/make_shared.hpp>

#include <algorithm>

namespace terminal {
namespace {

constexpr int kAxisWidth = 50; ///< pixels
constexpr int kMidnightRest = 57600; ///< seconds of midnight at UTC+8 past midnight at UTC
constexpr int kSecondsOfDay = 86400;
constexpr int kZone = 28800;

enum EEvent : int {
    eDataChanged = 3029,
    eAverageChanged = 3072,
    eRangeOutgrown = 3151,
};

TC::CStockManager &stocks() {
    return TC::CSingletonT<TC::CStockManager>::instance();
}

/// A time in seconds brought to midnight at UTC+8.
int normalDate(int date) {
    return date % kSecondsOfDay == kMidnightRest ? date : date / kSecondsOfDay * kSecondsOfDay - kZone;
}

double lastValue(const se::RPCFormulaResult &result, size_t line) {
    return line < result.mValues.size() && !result.mValues[line].empty() ? result.mValues[line].back() : 0.0;
}

double known(double value) {
    return value < TC::kUnsetValue ? value : 0.0;
}

} // namespace

ChartPane::ChartPane(QWidget *parent)
    : CBaseWidget(parent), mUiParam(boost::make_shared<TC::CRealtimeUiParam>(TC::EIndexViewType::Ordinary)),
      mData(boost::make_shared<TC::CRealtimeData>(mUiParam, TC::EIndexDisplayType::Main, this)),
      mLeftAxis(new TC::CGraphAxisWidget(mUiParam, mData, TC::CGraphAxisWidget::eLeft, this)),
      mRightAxis(new TC::CGraphAxisWidget(mUiParam, mData, TC::CGraphAxisWidget::eRight, this)),
      mGraph(new TC::CRealtimeGraphWidget(0, mData, mUiParam, TC::EIndexDisplayType::Main,
                                          TC::EIndexViewType::Ordinary, this, true)),
      mTitle(new ChartTitle(this)), mTimeRow(new TimeRow(mUiParam, this)) {
    setObjectName(QStringLiteral("chart_pane"));
    for (TC::CGraphAxisWidget *axis : {mLeftAxis, mRightAxis}) {
        axis->setDisplayType(TC::EIndexDisplayType::Main);
        axis->setFixedWidth(kAxisWidth);
    }
    mData->setAxisWidget(mLeftAxis);
    mUiParam->mLeftAxis = mLeftAxis;
    mUiParam->mRightAxis = mRightAxis;
    mUiParam->mLeftAxisWidth = kAxisWidth;
    mUiParam->mRightAxisWidth = kAxisWidth;

    auto *row = new QHBoxLayout;
    row->addWidget(mLeftAxis);
    row->addWidget(mGraph, 1);
    row->addWidget(mRightAxis);
    auto *column = new QVBoxLayout(this);
    column->addWidget(mTitle);
    column->addLayout(row, 1);
    column->addWidget(mTimeRow);
    for (QBoxLayout *layout : {static_cast<QBoxLayout *>(row), static_cast<QBoxLayout *>(column)}) {
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
    }
}

ChartPane::~ChartPane() {
    // Before the strips, which the view parameters and the data point to.
    delete mGraph;
    mData->setAxisWidget(nullptr);
}

bool ChartPane::show(const QString &key, const QDate &day) {
    if (!stocks().getInstrumentDetail(key)) {
        return false;
    }
    mGraph->unrequest();
    mData->clearData();
    mInstrument = key;
    mPastDay = day;
    if (day.isValid()) {
        mUiParam->mGetTradeDateFunc = [date = dayOf(day)] { return date; };
    } else {
        mUiParam->mGetTradeDateFunc.clear();
    }
    mUiParam->mDataCount = 0;
    mUiParam->setStock(key, false);
    mUiParam->resize(rect());
    mGraph->delAllIndex();
    for (const QString &formula : mUiParam->getMainFormula()) {
        mGraph->addIndex(formula);
    }
    mGraph->beHistory(day.isValid());
    request();
    return true;
}

void ChartPane::reload() {
    if (!mInstrument.isEmpty()) {
        show(QString(mInstrument), mPastDay);
    }
}

int ChartPane::askedDate() const {
    const QString market = TC::getDetailQsMarket(mUiParam->getStockDetail());
    const int base =
        mUiParam->mGetTradeDateFunc ? mUiParam->mGetTradeDateFunc() : stocks().getLastTradingDay(market);
    return stocks().getShiftTradeDate(market, normalDate(base), 0);
}

QDate ChartPane::day() const {
    return mInstrument.isEmpty() ? QDate() : dateOf(mTradeDate);
}

void ChartPane::request() {
    mTradeDate = askedDate();
    mData->setTradeDate(mTradeDate);
    mGraph->request(corvane::ERunMode::Ordinary);
    updateAxis(true);
    mGraph->updateView();
    mGraph->update();
    mTimeRow->setDay(day());
    updateTitle();
}

void ChartPane::updateAxis(bool overwrite) {
    // The pane has one graph: its ranges are the merged ones.
    const TC::IndexBaseData::MaxMinMap ranges = mData->getMaxMinMap();
    mLeftAxis->setMaxMinMap(ranges);
    mRightAxis->setMaxMinMap(ranges);
    mGraph->updateAxis(ranges, overwrite);
}

bool ChartPane::isComplete() const {
    const QList<QString> formulas = mData->getFormulas();
    return !formulas.isEmpty() && std::all_of(formulas.begin(), formulas.end(), [this](const QString &formula) {
        return mData->getData().contains(TC::CFormulaKey(mInstrument, formula));
    });
}

int ChartPane::pointCount() const {
    const auto series = mData->getData().constFind(TC::CFormulaKey(mInstrument, mUiParam->getBasicFormula()));
    return series == mData->getData().constEnd() ? 0 : static_cast<int>(series->result.mTimes.size());
}

void ChartPane::updateTitle() {
    const TC::CInstrumentDetailPtr detail = mUiParam->getStockDetail();
    ChartTitleData title;
    title.name = TC::getDetailQsName(detail);
    title.code = mInstrument;
    title.day = day();
    title.decimals = TC::decimals(TC::getDetailPriceTick(detail));
    title.lastClose = known(mUiParam->getLastClose());
    const auto series = mData->getData().constFind(TC::CFormulaKey(mInstrument, mUiParam->getBasicFormula()));
    if (series != mData->getData().constEnd()) {
        title.last = known(lastValue(series->result, 0));
        title.average = known(lastValue(series->result, 1));
        if (series->result.mTimes.empty()) {
            title.note = mPastDay.isValid() ? tr("当日没有行情数据") : tr("尚未开盘，等待行情");
        }
    }
    mTitle->setData(title);
    emit changed();
}

bool ChartPane::handleEvent(int event, int first, int second, QString text, void *data) {
    switch (event) {
    case eRangeOutgrown:
        updateAxis(false);
        mGraph->updateChanged();
        updateTitle();
        return true;
    case eDataChanged:
        mGraph->updateChanged();
        updateTitle();
        return true;
    case eAverageChanged:
        return true; // the title takes it from the series
    default:
        return CBaseWidget::handleEvent(event, first, second, text, data);
    }
}

void ChartPane::onUiResourceChanged() {
    CBaseWidget::onUiResourceChanged();
    reload(); // the colours of points are the theme's
}

void ChartPane::resizeEvent(QResizeEvent *event) {
    CBaseWidget::resizeEvent(event);
    // The layout has resized the strips and the graph already, with the day width of before.
    mUiParam->resize(rect());
    updateAxis(false);
    mGraph->updateView();
    mGraph->update();
}

} // namespace terminal
