#pragma once

#include "host/Export.h"
#include "host/records/CFormulaDetail.h"
#include "host/records/CFormulaParam.h"
#include "host/records/CIndexDetail.h"
#include "host/records/CInstrumentDetail.h"
#include "host/records/CPanelInfo.h"
#include "host/records/Enumerations.h"
#include "host/services/ServiceContext.h"
#include "viewmodel/AxisScale.h"
#include "viewmodel/SharedCount.h"

#include <QDateTime>
#include <QList>
#include <QMap>
#include <QPair>
#include <QRect>
#include <QSet>
#include <QString>
#include <QTime>
#include <QVector>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <array>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>

namespace TC {

class CRealtimeBaseFormulaAxis;
class CRealTimeNomalAxis;
class CRealTimeCustomIndexAxis;
class CRealTimePortfolioAxis;
struct TradingDay;

/// Bits of CRealtimeUiParam::mAddStockFlags.
enum EAddStockFlag : int {
    eConvertibleOverlay = 1, ///< what the instrument converts to or from is overlaid
};

/// The shared state of one intraday view: the instrument shown and its kind, the overlays, the roles of
/// formulas, the cross line and the trading-time axis. One object is shared by all panes of a view; its members
/// are public and read and written by them directly. User-interface thread only, mDataCount aside.
///
/// A minute is a count of whole minutes since midnight (570 is 09:30). An axis index is the position of a
/// trading minute, 0 to mPointCount - 1; breaks between sessions take no room.
class TIMESHARE_EXPORT CRealtimeUiParam {
public:
    /// `services` is what the view asks for its data; it outlives the parameters.
    explicit CRealtimeUiParam(EIndexViewType viewType,
                              const ServiceContext &services = ServiceContext::processWide());
    /// Copies all members; the copy has axis strategies of its own, with the same state and the same one current.
    CRealtimeUiParam(const CRealtimeUiParam &other);
    ~CRealtimeUiParam();

    const ServiceContext &services() const { return *mServices; }
    /// A service of the view.
    template <class T> T &service() const { return mServices->get<T>(); }

    // Instrument and kind

    /// Classifies a key (user-defined index, instrument, portfolio), takes its kind and its axis. An unknown key
    /// leaves the view invalid. `useUnderlying` takes the axis of the underlying of a SH, SZ, SSE or SZSE one.
    void setStock(const QString &key, bool useUnderlying);
    void clearStock();
    void clear();
    QString getStock() const;
    CInstrumentDetailPtr getStockDetail() const;
    bool isValid() const;
    bool isMainStock(const QString &key) const;
    int getMainPanelID() const;
    bool isShowGroupIndexGraph() const;
    void setFormulaAccount(const QString &account);

    // Overlays

    bool canAddStock() const;
    /// Overlays an instrument, a sector by its name or a user-defined index. Does not check the limit.
    void addStock(const QString &key, const QString &name, bool hasAxis);
    void delAllStock();
    QList<CInstrumentDetailPtr> getAllAddStockList() const;
    /// Whether the key of an overlay contains `key`, in any letter case.
    bool isOverlayStock(const QString &key) const;
    bool isNoAxisOverlayStock(const QString &key) const;
    bool isOverlayIndex(const QString &key) const;
    void setSector(const QString &sector, const QString &name);
    void setAddSwBkzsLevel(int level);
    void updateAddSwBkzsCode();
    void clearAddSwBkzsCode();
    void updateAddConvertibleCode();
    void clearAddConvertibleCode();

    // Roles of formulas, answered by the current axis strategy

    bool isMainFormula(const QString &name) const;
    bool isBasicFormula(const QString &name) const;
    bool isVolFormula(const QString &name) const;
    QList<QString> getMainFormula() const;
    QString getBasicFormula() const;
    QString getVolFormula() const;
    QString getApplyMainFormula() const;
    void setPortfolioGraphType(int type);
    bool showContextMenu() const;
    /// Fills a request by the strategy of its own mStockKind; false when it cannot be addressed.
    bool fillRequestParam(CFormulaParam &param, const QString &key, boost::shared_ptr<CFormulaDetail> formula);

    // Last close

    /// Close of the day before, of the main instrument.
    double getLastClose() const;
    /// The same of a user-defined index or, in a view of a past day, of any instrument; otherwise 0.
    double getLastClose(const QString &key) const;

    // Trading-time axis

    /// Sessions and positions of a day from the built-in table.
    void resetAxis(const std::string &market, const std::string &code);
    /// Switches the after-hours fixed-price session of a stock.
    void showFixedPriceDeal(bool show);
    /// Width of a day's graph from the rectangle of the main pane.
    void resize(const QRect &rect);
    /// Index of a clock time; seconds round up.
    int getIndexByTime(const QTime &time) const;
    /// Index of a minute. Not clamped: a gap of a night axis may give a negative value.
    int getIndexByTime(int minute) const;
    /// Time of an index on the date of the view, which does not change at midnight. A negative index gives today's
    /// midnight; the minute 24:00 of a night session is no time of a day and gives an invalid result.
    QDateTime getDateTimeByIndex(int index) const;
    /// "hh:mm" of a position as the user reads it: of what getDateTimeByIndex() gives, and "24:00" of the midnight that ends
    /// an evening, which no date time is.
    QString getTimeTextByIndex(int index) const;
    /// Pixel of an index inside a day graph.
    int getXAxisByIndex(int index) const;
    /// Index at a pixel inside a day graph; -1 when the graph has no width.
    int getIndexByXAxis(int x) const;

    int dataCount() const { return mDataCount; }
    void setDataCount(int count) { mDataCount = count; }

    EIndexViewType mViewType; ///< never changes
    int mStockKind = eInstrument; ///< EStockKind; written only by setStock
    int mMaxAddStock = 3; ///< limit of overlays, those with and without an axis together
    bool mCrossShown = false;
    bool mCursorByKey = false; ///< the keyboard moved the cross line last, not the mouse
    bool mMouseIn = false;
    int mCrossX = 0; ///< pixels inside a day graph
    int mCrossIndex = -1; ///< axis index under the cross line, -1 none
    int mLeftAxisWidth = 0; ///< pixels
    int mRightAxisWidth = 0;
    double mDayWidth = 0.0; ///< pixels of one day's graph
    QVector<QPair<int, int>> mSessions; ///< first and last minute of each, in axis order, ends included
    SharedCount mDataCount; ///< points of the main series received so far; a result may write it on its thread
    int mDayCount = 1; ///< day graphs side by side, 1 to 6
    int mPointCount = 0; ///< positions of a whole day
    bool mShowVolume = true;
    bool mCanOverlaySector = false;
    QList<CInstrumentDetailPtr> mAddStocks; ///< overlays with an axis scale of their own
    QList<CInstrumentDetailPtr> mAddNoAxisStocks; ///< overlays on the scale of the main instrument
    QList<CIndexDetail *> mAddIndexes; ///< owned copies of overlaid user-defined indexes
    QString mSector;
    QList<int> mAddStockColors; ///< red | green << 8 | blue << 16
    QMap<QString, int> mStockColors; ///< colour of each overlay, by key
    int mRequestId = 0;
    boost::function<int()> mGetTradeDateFunc; ///< set: the past trading day shown, a time in seconds
    CGraphAxisWidget *mLeftAxis = nullptr; ///< the main pane's axis strips, not owned
    CGraphAxisWidget *mRightAxis = nullptr;
    StripScales mStripScales; ///< of the strips of all panes
    int mLinkageFlags = 1; ///< 1 nothing, value 2 account view, value 4 selected-data view
    std::array<bool, 8> mLinkageShow{}; ///< orders, deals, tasks, totals, net, profit, balance, strategy filter
    std::set<std::string> mLinkageAccounts;
    std::set<std::string> mLinkageStrategys;
    std::set<std::string> mLinkageStocks;
    std::map<int, std::pair<int, double>> mLinkageBuys; ///< axis index to (count, amount)
    std::map<int, std::pair<int, double>> mLinkageSells;
    std::map<int, std::pair<double, double>> mLinkageAmounts; ///< axis index to (buy, sell)
    std::map<int, double> mLinkageProfits;
    std::map<int, double> mLinkageBalances;
    QList<QString> mStockAccounts; ///< accounts of the account view, for stocks and for futures
    QList<QString> mFutureAccounts;
    int mFixedPriceLevel = 1;
    bool mFixedPriceRequest = false;
    boost::shared_ptr<CPanelInfo> mPanelInfo; ///< set by the host
    int mAddSwBkzsLevel = -1; ///< classification level of the overlaid sector index, -1 none
    QString mAddBkzsCode; ///< key of the sector index overlaid now
    QString mFormulaAccount;
    int mAddStockFlags = 0; ///< EAddStockFlag
    QSet<QString> mAddConvertibleCodes;
    bool mValid = false;
    CInstrumentDetailPtr mStockDetail; ///< main instrument of kind 0, otherwise null
    QString mIndexKey;
    QString mPortfolioKey;
    CRealtimeBaseFormulaAxis *mCurrentAxis = nullptr; ///< one of the three below
    CRealTimeNomalAxis *mNormalAxis = nullptr;
    CRealTimeCustomIndexAxis *mIndexAxis = nullptr;
    CRealTimePortfolioAxis *mPortfolioAxis = nullptr;
    bool mShowFixedPriceDeal = false;

private:
    const ServiceContext *mServices; ///< never changes

    /// Member by member, owning pointers as well: for the copy constructor alone, which then puts copies in their
    /// place.
    CRealtimeUiParam &operator=(const CRealtimeUiParam &) = default;
    CRealtimeBaseFormulaAxis *axisOfKind(int kind) const;
    void setTradingDay(const TradingDay &day);
    void resetInstrumentAxis(bool useUnderlying);
};

} // namespace TC
