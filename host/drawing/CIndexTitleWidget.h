#pragma once

#include "host/Export.h"
#include "host/drawing/CArrowColorSimpleText.h"
#include "host/drawing/IndexBaseData.h"
#include "host/drawing/TitleView.h"
#include "host/records/CInstrumentDetail.h"
#include "host/records/Enumerations.h"
#include "host/toolkit/CBaseWidget.h"

#include <QList>
#include <QPoint>
#include <QString>
#include <QVector>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>
#include <boost/weak_ptr.hpp>

#include <memory>

namespace GZ {
class CPushButton;
} // namespace GZ

namespace TC {

class CKLineUiParam;
class TitleContent;

/// The strip above the graphs of a pane: the instrument, then each formula with the values of its lines at an axis
/// index, in the colours of the lines, and the overlays. A button's click travels up as eButtonClicked with one of the ids
/// below. User-interface thread only; the data may change on another thread meanwhile.
class TIMESHARE_EXPORT CIndexTitleWidget : public GZ::CBaseWidget {
    Q_OBJECT
public:
    /// Ids of the buttons.
    enum EButton : int {
        eClose = 100,
        eMenu = 500,
        eSettings = 501,
        eOneDay = 502,
        eFewerDays = 503,
        eMoreDays = 504,
    };

    /// The data whose series are told until setIndexData names another one; it is not kept alive. `textWidth` is
    /// what the text keeps, in pixels, the buttons giving way. The period in minutes, the kind of candles and the
    /// parameters of a candle chart are for views of such charts and mean nothing here.
    CIndexTitleWidget(const boost::shared_ptr<IndexBaseData> &source, EIndexDisplayType displayType,
                      EIndexViewType viewType, int period, int textWidth, int candleKind,
                      const boost::shared_ptr<CKLineUiParam> &candleParam, QWidget *parent);
    ~CIndexTitleWidget() override;

    /// The view that the strip belongs to; the view parameters are handed over as they are.
    void setRealtimeUiParam(TitleView view);
    /// When set, the view shows that past trading day: seconds since the epoch at its midnight.
    void setGetTradeDateFunc(boost::function<int()> func);

    /// Forgets the index and the name of the formula; the values are told again with the next change.
    void clear();
    void clearStock();
    /// The instrument to name. The flag is that of the view: its underlying has the axis.
    void setStock(const CInstrumentDetailPtr &detail, bool useUnderlying);
    CInstrumentDetailPtr getStock() const;
    /// The data whose values are told from now on; null means that of the constructor.
    void setIndexData(const boost::shared_ptr<IndexBaseData> &source);
    boost::shared_ptr<IndexBaseData> getIndexData() const { return current(); }
    /// The axis index whose values are told; below 0 the last one.
    void updateIndexId(int index);
    /// The formula asked for last, named until its series has come.
    void setShowIndex(const QString &formula);
    void setAddStockList(const QList<CInstrumentDetailPtr> &stocks);
    void clearAddStockList();
    /// Reads the values anew and repaints when something changed.
    void updateView();

    /// The simple form tells the name of a model and nothing else.
    void setShowSimpleTitle(bool simple);
    void setSimpleTite(const QString &title);
    void setShowTitleBg(bool show); ///< the ground of a selected pane
    void setBtnToolVisible(bool visible);
    void setConciseStyle(bool concise);
    /// Takes the height that style and rows ask for.
    void updateTitleHeight();
    /// Where a menu of the title opens, on the screen.
    QPoint getGlobalPoint() const;
    /// What is told, the runs joined by blanks.
    QString text() const;

    void onUiResourceChanged() override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;

private:
    boost::shared_ptr<IndexBaseData> current() const;
    void createButtons(EIndexDisplayType displayType);
    void placeButtons();
    QRect textRect() const;

    boost::weak_ptr<IndexBaseData> mMainData;
    boost::weak_ptr<IndexBaseData> mData;
    int mTextWidth;
    std::unique_ptr<TitleContent> mContent;
    bool mSimple = false;
    QString mSimpleTitle;
    bool mShowBg = false;
    bool mConcise = false;
    bool mToolsVisible = true;
    QVector<GZ::CPushButton *> mButtons; ///< from the right edge inward
    CArrowColorSimpleText mText;
};

} // namespace TC
