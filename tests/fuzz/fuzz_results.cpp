// Whatever a formula service may answer: histories and points of any shape, in any order, between painting,
// resizing, overlays and clearing.

#include "tests/fuzz/FuzzInput.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/CGraphAxisWidget.h"
#include "tests/fakehost/FakeHost.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

namespace {

using fuzz::FuzzInput;

/// Adopts every range, as a pane does.
class Pane : public GZ::CEventDeliverer {
public:
    bool handleEvent(int event, int, int, QString, void *) override {
        if (event == 3151 && mData) {
            mStrip->setMaxMinMap(mData->getMaxMinMap());
            mData->adoptMaxMin(mData->getMaxMinMap(), false);
        }
        return true;
    }
    TC::CRealtimeData *mData = nullptr;
    TC::CGraphAxisWidget *mStrip = nullptr;
};

/// A time near the trading day, of another day, or any at all.
se::TimePosition timeOf(FuzzInput &input) {
    constexpr qint64 kDay = 1710432000000;
    switch (input.upTo(8)) {
    case 0:
        return {input.number(), input.number()};
    case 1:
        return {kDay - 86400000 + input.byte() * 60000LL, 0};
    case 2:
        return {kDay + 34200000 + input.byte() * 1000LL, input.upTo(3)};
    default:
        return {kDay + 34200000 + input.byte() * 60000LL, 0};
    }
}

TC::FormulaMetaPtr metaOf(FuzzInput &input) {
    if (input.upTo(16) == 0) {
        return nullptr;
    }
    auto meta = std::make_shared<se::RPCFormulaMetaResult>();
    meta->mLineCount = input.upTo(5) - 1;
    for (int i = input.upTo(6); i > 0; --i) {
        meta->mLineStyles.push_back(input.upTo(50) - 2);
        meta->mLineAxis.push_back(input.upTo(4));
        meta->mLineNames.push_back(input.upTo(8) == 0 ? "基金份额参考净值" : "线");
        meta->mLineColors.push_back(int(input.byte()) - 1);
    }
    meta->mLineFlags.resize(static_cast<std::size_t>(input.upTo(4)));
    return meta;
}

TC::FormulaResultPtr resultOf(FuzzInput &input) {
    if (input.upTo(16) == 0) {
        return nullptr;
    }
    auto result = std::make_shared<se::RPCFormulaResult>();
    for (int i = input.upTo(40); i > 0; --i) {
        result->mTimes.push_back(timeOf(input));
    }
    result->mValid.assign(static_cast<std::size_t>(input.upTo(45)), input.upTo(3));
    result->mValues.resize(static_cast<std::size_t>(input.upTo(5)));
    for (auto &line : result->mValues) {
        for (int i = input.upTo(45); i > 0; --i) {
            line.push_back(input.price());
        }
    }
    result->mTexts.resize(static_cast<std::size_t>(input.upTo(4)));
    for (auto &texts : result->mTexts) {
        texts.assign(static_cast<std::size_t>(input.upTo(45)), input.upTo(2) ? "文字" : "\xff\xfe");
    }
    result->mExtra1.resize(static_cast<std::size_t>(input.upTo(4)));
    for (auto &colors : result->mExtra1) {
        colors.assign(static_cast<std::size_t>(input.upTo(45)), int(input.byte()) - 1);
    }
    result->mExtra2.resize(static_cast<std::size_t>(input.upTo(4)));
    for (auto &values : result->mExtra2) {
        values.assign(static_cast<std::size_t>(input.upTo(45)), input.price());
    }
    return result;
}

TC::FormulaInstantPtr pointOf(FuzzInput &input) {
    if (input.upTo(16) == 0) {
        return nullptr;
    }
    auto point = std::make_shared<se::RPCFormulaInstantResult>();
    point->mTime = timeOf(input);
    for (int i = input.upTo(5); i > 0; --i) {
        point->mValues.push_back(input.price());
    }
    point->mTexts.resize(static_cast<std::size_t>(input.upTo(4)));
    point->mExtra1.resize(static_cast<std::size_t>(input.upTo(4)));
    point->mExtra2.resize(static_cast<std::size_t>(input.upTo(4)));
    return point;
}

/// One view of a live day with room for one overlay.
class View {
public:
    View() {
        mHost.mLog.setRecording(false);
        mHost.mStocks.add("SH", "600000");
        mHost.mStocks.add("SH", "600001");
        mHost.mStocks.mCloses[qMakePair(QStringLiteral("SH600000"), 0)] = 10.0;
        mHost.mCatalogue.add(QStringLiteral("REALTIME"), 2);
        mHost.mCatalogue.add(QStringLiteral("REALTIMEVOL"), 2);
        mParam.reset(new TC::CRealtimeUiParam(TC::EIndexViewType::Ordinary));
        mParam->setStock(QStringLiteral("SH600000"), false);
        mParam->mDayWidth = 300;
        mData.reset(new TC::CRealtimeData(mParam, TC::EIndexDisplayType::Main, &mPane));
        mStrip = std::make_unique<TC::CGraphAxisWidget>(mParam, mData, TC::CGraphAxisWidget::eLeft);
        mStrip->resize(50, 200);
        mPane.mData = mData.get();
        mPane.mStrip = mStrip.get();
        mData->setAxisWidget(mStrip.get());
        mData->addFormula(QStringLiteral("REALTIME"));
        mData->addFormula(QStringLiteral("REALTIMEVOL"));
        mData->setTradeDate(mHost.mStocks.mLastTradingDay);
        mData->setChartRect(QRect(0, 0, 300, 200));
        mData->setDrawEnabled(true);
        mData->request(corvane::ERunMode::Ordinary);
    }
    ~View() { mPane.mData = nullptr; }

    void step(FuzzInput &input) {
        switch (input.upTo(12)) {
        case 0:
        case 1:
        case 2:
            mData->onHistoryCallback(metaOf(input), resultOf(input), idOf(input), 1, QString(),
                                     input.upTo(2) == 0);
            break;
        case 3:
        case 4:
        case 5:
        case 6:
            mData->onRealtimeCallback(0, idOf(input), pointOf(input));
            break;
        case 7:
            mData->applyPushedResult(metaOf(input), resultOf(input), QStringLiteral("REALTIME"));
            break;
        case 8:
            toggleOverlay();
            break;
        case 9:
            reshape(input);
            break;
        case 10:
            mData->unrequest();
            mData->clearData();
            mData->request(corvane::ERunMode::Ordinary);
            break;
        default:
            look(input);
        }
    }

private:
    QString idOf(FuzzInput &input) {
        const auto requests = mHost.mFormulas.mLive.all();
        return requests.isEmpty() ? QString() : requests[input.byte() % requests.size()].id();
    }

    void toggleOverlay() {
        if (mParam->getAllAddStockList().isEmpty()) {
            mParam->addStock(QStringLiteral("SH600001"), QString(), true);
        } else {
            mData->removeOverlayData();
            mParam->delAllStock();
        }
        mData->unrequest();
        mData->request(corvane::ERunMode::Ordinary);
    }

    void reshape(FuzzInput &input) {
        mData->setFillGaps(input.upTo(2) == 0);
        mParam->mShowVolume = input.upTo(2) == 0;
        mParam->mDayWidth = input.byte() * 4;
        mData->setChartRect(QRect(0, 0, input.byte() * 4, input.byte()));
    }

    void look(FuzzInput &input) {
        QImage image(320, 220, QImage::Format_RGB32);
        QPainter painter(&image);
        const QRect rect(0, 0, 300, 200);
        mData->paintTo(&painter, rect);
        bool valid = true;
        const int at = int(input.byte()) - 10;
        mData->valueAtIndex(at);
        mData->valueAtY(at, rect, &valid);
        mData->yAtIndex(at, rect);
        mData->yOfValue(input.price(), rect);
        mData->takeDirtyRect();
        mData->getResultText();
    }

    fakehost::FakeHost mHost;
    Pane mPane;
    boost::shared_ptr<TC::CRealtimeUiParam> mParam;
    boost::shared_ptr<TC::CRealtimeData> mData;
    std::unique_ptr<TC::CGraphAxisWidget> mStrip;
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication app(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    FuzzInput input(data, size);
    View view;
    for (int steps = 0; steps < 64 && !input.isEmpty(); ++steps) {
        view.step(input);
    }
    return 0;
}
