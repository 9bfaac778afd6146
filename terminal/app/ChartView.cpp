#include "terminal/app/ChartView.h"

#include "chartdata/CRealtimeData.h"
#include "chartdata/LinkageScope.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "containers/CRealtimeMainWidget.h"
#include "containers/CRealtimeWidget.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/CIndexManager.h"
#include "host/services/CLinkageManager.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/Events.h"
#include "terminal/app/TradeWatch.h"
#include "terminal/market/MarketDate.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QPointer>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace terminal {
namespace {

const QString kPortfolioMarket = QStringLiteral("TZZH");
constexpr int kAccountsShown = 2; ///< bits of mLinkageFlags
constexpr int kSelectedDataShown = 4;

bool isKnown(const QString &key) {
    TC::CStockManager &stocks = TC::CSingletonT<TC::CStockManager>::instance();
    return stocks.getInstrumentDetail(key) || stocks.isPortfolio(key) ||
           TC::CSingletonT<TC::CIndexManager>::instance().getIndex(key);
}

bool isComplete(const TC::CRealtimeGraphWidget &graph, const QString &instrument) {
    const boost::shared_ptr<TC::CRealtimeData> data = graph.getData();
    const QList<QString> formulas = data->getFormulas();
    TC::CFormulaOperateManager &catalogue = TC::CSingletonT<TC::CFormulaOperateManager>::instance();
    return std::all_of(formulas.begin(), formulas.end(), [&](const QString &formula) {
        return !catalogue.getFormula(formula) ||
               data->getData().contains(TC::CFormulaKey(instrument, data->getShowName(formula)));
    });
}

/// While it lives the graphs that it has taken draw nothing, whatever is done to them; then each draws once.
class DrawingHold {
public:
    explicit DrawingHold(TC::CRealtimeMainWidget &main) : mMain(main) { take(); }
    ~DrawingHold() {
        for (const QPointer<TC::CRealtimeGraphWidget> &graph : mGraphs) {
            if (graph && graph->isVisible()) {
                graph->getData()->setDrawEnabled(true);
            }
        }
    }
    DrawingHold(const DrawingHold &) = delete;
    DrawingHold &operator=(const DrawingHold &) = delete;

    /// Takes the graphs that are to be seen and were not taken yet.
    void take() {
        QVector<TC::CRealtimeWidget *> panes = mMain.getSubIndexWidgets();
        panes.prepend(mMain.getRealTimeWidget());
        for (const TC::CRealtimeWidget *pane : panes) {
            for (TC::CRealtimeGraphWidget *graph : pane->getGraphWidgets()) {
                if (graph->isVisible() && !mGraphs.contains(graph)) {
                    graph->getData()->setDrawEnabled(false);
                    mGraphs.append(graph);
                }
            }
        }
    }

private:
    TC::CRealtimeMainWidget &mMain;
    QVector<QPointer<TC::CRealtimeGraphWidget>> mGraphs;
};

QList<QString> accountsOf(int type) {
    QList<QString> names;
    for (const std::string &id : TC::CSingletonT<TC::CLinkageManager>::instance().getAccountIds(type)) {
        names.append(QString::fromStdString(id));
    }
    return names;
}

/// The account whose trades the formula of trades goes by: the first one for the instrument's kind.
QString accountOf(const QString &key) {
    const TC::CInstrumentDetailPtr detail =
        TC::CSingletonT<TC::CStockManager>::instance().getInstrumentDetail(key);
    return accountsOf(TC::isFuturesMarket(TC::getDetailQsMarket(detail)) ? TC::CLinkageManager::kFutureAccounts
                                                                         : TC::CLinkageManager::kStockAccounts)
        .value(0);
}

} // namespace

ChartView::ChartView(ChartSources sources, QWidget *parent)
    : CBaseWidget(parent), mSources(std::move(sources)),
      mMain(new TC::CRealtimeMainWidget(this, TC::EIndexViewType::Ordinary)) {
    setObjectName(QStringLiteral("chart_view"));
    setFocusProxy(mMain);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(mMain);
    mMain->setCreateNewWorkShow(false); // there is one window
    connect(new TradeWatch(this), &TradeWatch::changed, this, &ChartView::onTradesChanged);
}

bool ChartView::show(const QString &key, const QDate &day) {
    if (!isKnown(key)) {
        return false;
    }
    mMain->unrequest();
    mMain->clear(false);
    mInstrument = key;
    mPastDay = day;
    if (day.isValid()) {
        mMain->setGetTradeDateFunc([date = dayOf(day)] { return date; });
    } else {
        mMain->setGetTradeDateFunc({});
    }
    mSources.announce(key, day); // before the axis is asked for
    // A portfolio is set by its number.
    const bool isPortfolio = TC::CSingletonT<TC::CStockManager>::instance().isPortfolio(key);
    mMain->setFormulaAccount(accountOf(key));
    mMain->setStock(isPortfolio ? key.mid(kPortfolioMarket.size()) : key, false);
    if (isPortfolio) {
        mMain->subPortfolioCallBack(mSources.positions(key)); // its futures tell the axis
    }
    mMain->beHistory(day.isValid());
    mMain->request(false);
    mMain->updateWidgetsView();
    Q_EMIT changed();
    return true;
}

void ChartView::reload() {
    if (!mInstrument.isEmpty()) {
        show(QString(mInstrument), mPastDay);
    }
}

QDate ChartView::day() const {
    return mInstrument.isEmpty() ? QDate() : dateOf(data()->getTradeDate());
}

bool ChartView::isComplete() const {
    if (mInstrument.isEmpty() || mIsReloadDue) {
        return false;
    }
    QVector<TC::CRealtimeWidget *> panes = mMain->getSubIndexWidgets();
    panes.prepend(mMain->getRealTimeWidget());
    return std::all_of(panes.begin(), panes.end(), [this](const TC::CRealtimeWidget *pane) {
        const QList<TC::CRealtimeGraphWidget *> graphs = pane->getGraphWidgets();
        return std::all_of(graphs.begin(), graphs.end(), [this](const TC::CRealtimeGraphWidget *graph) {
            return terminal::isComplete(*graph, mInstrument);
        });
    });
}

int ChartView::pointCount() const {
    const auto series = data()->getData().constFind(TC::CFormulaKey(mInstrument, uiParam()->getBasicFormula()));
    return series == data()->getData().constEnd() ? 0 : static_cast<int>(series->result.mTimes.size());
}

void ChartView::showTrades(bool shown) {
    TC::CRealtimeUiParam &param = *uiParam();
    param.mStockAccounts = shown ? accountsOf(TC::CLinkageManager::kStockAccounts) : QList<QString>();
    param.mFutureAccounts = shown ? accountsOf(TC::CLinkageManager::kFutureAccounts) : QList<QString>();
    const bool any = !param.mStockAccounts.isEmpty() || !param.mFutureAccounts.isEmpty();
    param.mLinkageFlags = any ? param.mLinkageFlags | kAccountsShown : param.mLinkageFlags & ~kAccountsShown;
    mMain->getRealTimeWidget()->updateView();
    mMain->getRealTimeWidget()->update();
}

void ChartView::spreadReplacedFormula() {
    for (TC::CRealtimeWidget *pane : mMain->getSubIndexWidgets()) {
        for (const TC::CRealtimeGraphWidget *graph : pane->getGraphWidgets()) {
            const QList<QString> formulas = graph->getIndexes();
            if (formulas.size() == 1 && formulas.first() != pane->gePretIndex().toUpper()) {
                pane->updateIndex(formulas.first());
                pane->request(corvane::ERunMode::Ordinary);
                break;
            }
        }
    }
    // Only the newest day of the main pane has a menu that replaces its formula.
    TC::CRealtimeWidget *main = mMain->getRealTimeWidget();
    const QString attached = data()->getSubFormulas().value(0);
    for (const TC::CRealtimeGraphWidget *graph : main->getGraphWidgets()) {
        if (!attached.isEmpty() && !graph->findIndex(attached)) {
            main->updateIndex(TC::ePutFormulaOn, attached);
            break;
        }
    }
}

bool ChartView::areTradesShown() const {
    return (uiParam()->mLinkageFlags & kAccountsShown) != 0;
}

void ChartView::setReplay(bool replay) {
    mReplay = replay;
    mMain->unrequest();
    mMain->beReplay(replay);
    reload();
}

void ChartView::askPaneSettings(int pane) {
    QVector<TC::CRealtimeWidget *> panes = mMain->getSubIndexWidgets();
    panes.prepend(mMain->getRealTimeWidget());
    const auto asked = std::find_if(panes.begin(), panes.end(),
                                    [pane](const TC::CRealtimeWidget *each) { return each->getId() == pane; });
    if (asked == panes.end()) {
        return;
    }
    TC::CFormulaOperateManager &catalogue = TC::CSingletonT<TC::CFormulaOperateManager>::instance();
    for (const QString &formula : (*asked)->getGraphWidgets().first()->getData()->getFormulas()) {
        const TC::CFormulaDetailPtr detail = catalogue.getFormula(formula);
        if (detail && !TC::formulaParamText(*detail).isEmpty()) {
            Q_EMIT parametersAsked(formula);
            return;
        }
    }
    if (*asked == panes.first()) {
        Q_EMIT tradeSettingsAsked();
    } else {
        Q_EMIT noSettings();
    }
}

void ChartView::onTradesChanged(const QSet<QString> &instruments) {
    const TC::CRealtimeUiParam &param = *uiParam();
    const auto isOfThem = [&](const std::string &key) {
        return instruments.contains(QString::fromStdString(key));
    };
    const bool selected = (param.mLinkageFlags & kSelectedDataShown) != 0;
    if (instruments.contains(mInstrument) ||
        (selected && std::any_of(param.mLinkageStocks.begin(), param.mLinkageStocks.end(), isOfThem))) {
        mMain->updateLinkageDatas();
    }
}

/// One by one, since each lays all others out anew.
void ChartView::setFormulaPanes(int count) {
    DrawingHold hold(*mMain);
    for (int panes = formulaPanes() + 1; panes < count; ++panes) {
        mMain->adjustIndexWidgetSize(panes + 1);
        hold.take();
    }
    mMain->adjustIndexWidgetSize(count + 1);
}

int ChartView::formulaPanes() const {
    return mMain->getSubIndexWidgets().size();
}

void ChartView::moveCursor(bool left) {
    mMain->moveCursor(left);
}

void ChartView::moveToHome() {
    mMain->moveToHome();
}

void ChartView::moveToEnd() {
    mMain->moveToEnd();
}

bool ChartView::hideCrossLine() {
    if (!mMain->isShowCrossline()) {
        return false;
    }
    mMain->switchCrossline();
    return true;
}

boost::shared_ptr<TC::CRealtimeUiParam> ChartView::uiParam() const {
    return mMain->getUiParam();
}

TC::CRealtimeGraphWidget *ChartView::graph() const {
    return mMain->getRealTimeWidget()->getGraphWidgets().first();
}

boost::shared_ptr<TC::CRealtimeData> ChartView::data() const {
    return graph()->getData();
}

bool ChartView::handleEvent(int event, int first, int second, QString text, void *payload) {
    switch (event) {
    case TC::eLastValueChanged:
        Q_EMIT changed();
        return true;
    case TC::eFormulaReplaced:
        spreadReplacedFormula();
        return true;
    case TC::eFilterChanged:
        Q_EMIT filterChanged(second != 0);
        return true;
    case TC::ePaneSettingsAsked:
        askPaneSettings(first);
        return true;
    case TC::eInstrumentChartAsked:
        Q_EMIT downloadAsked();
        return true;
    case TC::eReplayControlAsked:
        Q_EMIT replayControlAsked();
        return true;
    case TC::eReplayRangeAsked:
        Q_EMIT replayAsked(first, second);
        return true;
    case TC::eRegionQuotesAsked:
        Q_EMIT stretchQuotesAsked(first, second);
        return true;
    case TC::eStageRankingAsked:
        Q_EMIT rankingAsked(text);
        return true;
    default:
        return CBaseWidget::handleEvent(event, first, second, text, payload);
    }
}

void ChartView::onUiResourceChanged() {
    CBaseWidget::onUiResourceChanged();
    if (std::exchange(mIsReloadDue, true)) {
        return;
    }
    // The colours of points are the theme's. Whatever else hears of the theme has its turn, and the pictures are shown
    // in the new colours, before everything is asked for anew.
    QMetaObject::invokeMethod(
        this,
        [this] {
            mIsReloadDue = false;
            reload();
        },
        Qt::QueuedConnection);
}

} // namespace terminal
