#pragma once

#include "chartdata/LinkageScope.h"
#include "chartdata/MarkBook.h"
#include "chartdata/MarkPlacer.h"
#include "host/records/CInstrumentDetail.h"

class QPainter;

namespace TC {

class CRealtimeUiParam;
class ShownDay;

/// One drawing of the user's orders, deals and tasks: places the records of a scope, draws them and enters them in the
/// book. Selected records are those of several instruments; the account view shows those of one.
class TradeMarks {
public:
    TradeMarks(QPainter &painter, CRealtimeUiParam &view, const ShownDay &day, MarkPlacer &placer,
               MarkBook &book)
        : mPainter(painter), mView(view), mDay(day), mPlacer(placer), mBook(book) {}

    void drawOrders(const LinkageScope &scope);
    void drawDeals(const LinkageScope &scope);
    void drawTasks(const LinkageScope &scope);
    /// Those of the account view end where a replay has come.
    void drawAccountOrders(const LinkageScope &scope);
    /// Deals with the average cost that they come to, which the view parameters are told of.
    void drawAccountDeals(const LinkageScope &scope);
    void drawAccountTasks(const LinkageScope &scope);

private:
    template <class Kind> void drawRecords(const LinkageScope &scope, bool closeOfDay, bool withAhead);
    template <class IsShown>
    void drawTasksOf(const std::string &instrument, const LinkageScope &scope, IsShown isShown);
    double closeOf(const CInstrumentDetailPtr &detail, bool ofDay) const;
    int costStepEnd() const;
    void drawCostSteps();

    QPainter &mPainter;
    CRealtimeUiParam &mView;
    const ShownDay &mDay;
    MarkPlacer &mPlacer;
    MarkBook &mBook;
};

} // namespace TC
