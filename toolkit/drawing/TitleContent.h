#pragma once

#include "host/drawing/CArrowColorSimpleText.h"
#include "host/drawing/IndexBaseData.h"
#include "host/drawing/TitleView.h"
#include "host/records/CInstrumentDetail.h"
#include "host/records/Enumerations.h"

#include <QCoreApplication>
#include <QList>
#include <QString>
#include <boost/function.hpp>

namespace TC {

class CStockManager;

/// What a title strip tells: the instrument, each formula with the values of its lines at an axis index, the overlays with their
/// change, and what the curves of the user's trading stand at.
/// User-interface thread only; the data may change on another thread meanwhile.
class TitleContent {
    Q_DECLARE_TR_FUNCTIONS(TC::CIndexTitleWidget)
public:
    explicit TitleContent(EIndexDisplayType displayType) : mDisplayType(displayType) {}

    /// Appends everything that is told of a pane's data.
    void write(CArrowColorSimpleText &title, const IndexBaseData &source) const;

    TitleView mView;
    boost::function<int()> mGetTradeDateFunc; ///< set: the strip's view shows a past trading day
    CInstrumentDetailPtr mStock; ///< the instrument to name; null for none
    int mIndex = -1; ///< axis index whose values are told; below 0 the last one
    QString mShowIndex; ///< formula to name until its series has come
    QList<CInstrumentDetailPtr> mAddStocks;

private:
    void addInstrument(CArrowColorSimpleText &title, const IndexBaseData &source) const;
    void addFormulas(CArrowColorSimpleText &title, const IndexBaseData &source) const;
    void addChange(CArrowColorSimpleText &title, const se::RPCFormulaResultCache &series,
                   double lastClose) const;
    void addOverlay(CArrowColorSimpleText &title, const CFormulaKey &key,
                    const se::RPCFormulaResultCache &series, const IndexBaseData &source) const;
    void addCurves(CArrowColorSimpleText &title) const;
    CInstrumentDetailPtr overlay(const CFormulaKey &key) const;
    bool showsToday(int date, CStockManager &stocks) const;
    double lastClose(const IndexBaseData &source) const;
    double closeBefore(const CInstrumentDetailPtr &stock, int date, CStockManager &stocks) const;

    const EIndexDisplayType mDisplayType;
};

} // namespace TC
