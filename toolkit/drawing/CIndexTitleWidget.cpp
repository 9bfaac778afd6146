#include "host/drawing/CIndexTitleWidget.h"

#include "host/toolkit/CPushButton.h"
#include "host/toolkit/ThemeColor.h"
#include "toolkit/drawing/TitleContent.h"

#include <QHelpEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QToolTip>

#include <utility>

namespace TC {
namespace {

constexpr int kRowHeight = 16; ///< pixels; the graphs of a sub pane begin beneath it
constexpr int kConciseHeight = 26;
constexpr int kMargin = 6; ///< pixels left of the text, and between it and the buttons
constexpr int kButtonWidth = 16;

struct Tool {
    CIndexTitleWidget::EButton id;
    const char *image;
    const char *tip;
    bool onMain;
    bool onSub;
};

/// From the right edge inward.
constexpr Tool kTools[] = {
    {CIndexTitleWidget::eClose, "img_title_close", QT_TRANSLATE_NOOP("TC::CIndexTitleWidget", "关闭"), false,
     true},
    {CIndexTitleWidget::eMenu, "img_title_menu", QT_TRANSLATE_NOOP("TC::CIndexTitleWidget", "菜单"), true,
     true},
    {CIndexTitleWidget::eSettings, "img_title_settings", QT_TRANSLATE_NOOP("TC::CIndexTitleWidget", "设置"),
     true, true},
    {CIndexTitleWidget::eMoreDays, "img_title_more_days",
     QT_TRANSLATE_NOOP("TC::CIndexTitleWidget", "多看一日"), true, false},
    {CIndexTitleWidget::eFewerDays, "img_title_fewer_days",
     QT_TRANSLATE_NOOP("TC::CIndexTitleWidget", "少看一日"), true, false},
    {CIndexTitleWidget::eOneDay, "img_title_one_day", QT_TRANSLATE_NOOP("TC::CIndexTitleWidget", "回到单日"),
     true, false},
};

} // namespace

CIndexTitleWidget::CIndexTitleWidget(const boost::shared_ptr<IndexBaseData> &source,
                                     EIndexDisplayType displayType, EIndexViewType /*viewType*/, int /*period*/,
                                     int textWidth, int /*candleKind*/,
                                     const boost::shared_ptr<CKLineUiParam> & /*candleParam*/, QWidget *parent)
    : CBaseWidget(parent), mMainData(source), mData(source), mTextWidth(textWidth),
      mContent(std::make_unique<TitleContent>(displayType)), mText(QStringLiteral("fnt_index_title_text")) {
    setObjectName(QStringLiteral("index_title_widget"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    createButtons(displayType);
    updateTitleHeight();
}

CIndexTitleWidget::~CIndexTitleWidget() = default;

void CIndexTitleWidget::createButtons(EIndexDisplayType displayType) {
    for (const Tool &tool : kTools) {
        if (displayType == EIndexDisplayType::Main ? tool.onMain : tool.onSub) {
            auto *button = new GZ::CPushButton(QLatin1String(tool.image), tool.id, this);
            button->setAutoRaise(true);
            button->setToolTip(tr(tool.tip));
            button->setAccessibleName(tr(tool.tip));
            button->setFocusPolicy(Qt::TabFocus); // a click leaves the keys with the view
            button->setCursor(Qt::ArrowCursor);
            mButtons.append(button);
        }
    }
}

void CIndexTitleWidget::placeButtons() {
    int right = width();
    for (GZ::CPushButton *button : mButtons) {
        const bool wanted = button->id() == eClose || (mToolsVisible && !mSimple);
        const bool fits = right - kButtonWidth >= mTextWidth;
        button->setVisible(wanted && fits);
        if (wanted && fits) {
            right -= kButtonWidth;
            button->setGeometry(right, 0, kButtonWidth, height());
        }
    }
}

QRect CIndexTitleWidget::textRect() const {
    int right = width();
    for (const GZ::CPushButton *button : mButtons) {
        if (!button->isHidden()) {
            right = qMin(right, button->x());
        }
    }
    return {kMargin, 0, qMax(right - 2 * kMargin, 0), height()};
}

void CIndexTitleWidget::setRealtimeUiParam(TitleView view) {
    mContent->mView = std::move(view);
    updateView();
}

void CIndexTitleWidget::setGetTradeDateFunc(boost::function<int()> func) {
    mContent->mGetTradeDateFunc = std::move(func);
    updateView();
}

void CIndexTitleWidget::clear() {
    mContent->mIndex = -1;
    mContent->mShowIndex.clear();
    updateView();
}

void CIndexTitleWidget::clearStock() {
    mContent->mStock = nullptr;
    updateView();
}

void CIndexTitleWidget::setStock(const CInstrumentDetailPtr &detail, bool /*useUnderlying*/) {
    mContent->mStock = detail;
    updateView();
}

CInstrumentDetailPtr CIndexTitleWidget::getStock() const {
    return mContent->mStock;
}

void CIndexTitleWidget::setIndexData(const boost::shared_ptr<IndexBaseData> &source) {
    mData = source ? boost::weak_ptr<IndexBaseData>(source) : mMainData;
    updateView();
}

boost::shared_ptr<IndexBaseData> CIndexTitleWidget::current() const {
    const boost::shared_ptr<IndexBaseData> chosen = mData.lock();
    return chosen ? chosen : mMainData.lock();
}

void CIndexTitleWidget::updateIndexId(int index) {
    mContent->mIndex = index;
    updateView();
}

void CIndexTitleWidget::setShowIndex(const QString &formula) {
    mContent->mShowIndex = formula;
    updateView();
}

void CIndexTitleWidget::setAddStockList(const QList<CInstrumentDetailPtr> &stocks) {
    mContent->mAddStocks = stocks;
    updateView();
}

void CIndexTitleWidget::clearAddStockList() {
    setAddStockList({});
}

void CIndexTitleWidget::updateView() {
    CArrowColorSimpleText title(QStringLiteral("fnt_index_title_text"));
    if (mSimple) {
        title.append(mSimpleTitle, GZ::themeColor("ic_clr_index_title_name"));
    } else if (const boost::shared_ptr<IndexBaseData> source = current()) {
        mContent->write(title, *source);
    }
    if (title != mText) {
        update(title.changeFrom(mText, textRect()));
        mText = title;
    }
}

void CIndexTitleWidget::setShowSimpleTitle(bool simple) {
    mSimple = simple;
    placeButtons();
    updateView();
}

void CIndexTitleWidget::setSimpleTite(const QString &title) {
    mSimpleTitle = title;
    updateView();
}

void CIndexTitleWidget::setShowTitleBg(bool show) {
    if (mShowBg != show) {
        mShowBg = show;
        update();
    }
}

void CIndexTitleWidget::setBtnToolVisible(bool visible) {
    mToolsVisible = visible;
    placeButtons();
    update();
}

void CIndexTitleWidget::setConciseStyle(bool concise) {
    mConcise = concise;
    updateTitleHeight();
    update();
}

void CIndexTitleWidget::updateTitleHeight() {
    setFixedHeight(mConcise ? kConciseHeight : kRowHeight);
    placeButtons();
}

QPoint CIndexTitleWidget::getGlobalPoint() const {
    for (const GZ::CPushButton *button : mButtons) {
        if (button->id() == eMenu && !button->isHidden()) {
            return mapToGlobal(QPoint(button->x(), height()));
        }
    }
    return mapToGlobal(QPoint(0, height()));
}

QString CIndexTitleWidget::text() const {
    return mText.text();
}

void CIndexTitleWidget::onUiResourceChanged() {
    updateView();
    CBaseWidget::onUiResourceChanged();
}

void CIndexTitleWidget::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    const QColor ground = GZ::themeColor(mShowBg    ? "ic_clr_index_title_selected_bg"
                                         : mConcise ? "ic_clr_realtime_graph_bg"
                                                    : "ic_clr_index_title_bg");
    painter.fillRect(event->rect(), ground);
    mText.draw(painter, textRect(), event->rect(), ground);
}

void CIndexTitleWidget::resizeEvent(QResizeEvent *event) {
    CBaseWidget::resizeEvent(event);
    placeButtons();
}

bool CIndexTitleWidget::event(QEvent *event) {
    if (event->type() == QEvent::ToolTip) {
        const bool cut = mText.width() > textRect().width();
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), cut ? mText.text() : QString(), this);
        return true;
    }
    return CBaseWidget::event(event);
}

} // namespace TC
