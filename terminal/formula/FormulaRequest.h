#pragma once

#include "terminal/formula/BarStream.h"
#include "terminal/formula/DueResult.h"
#include "terminal/formula/RequestTools.h"
#include "terminal/formula/ResultDelivery.h"

#include <memory>
#include <optional>

namespace terminal {

/// One request on its way. It goes through stages in one direction, each of which owns its state: the bars are opened
/// (BarStream), placed on the axis (PlacedDay), computed by a program (SeriesComputer) or a script model (ModelRun),
/// become due (DueResult), and are delivered (ResultDelivery).
///
/// Everything but the model's run and the delivery is touched on the request's worker alone. Withdrawn, it sends
/// nothing more and lets go of the feed. Any thread.
class FormulaRequest : public std::enable_shared_from_this<FormulaRequest> {
public:
    /// `home` is where it is worked on. The tools and the worker have to outlive its work.
    FormulaRequest(const RequestTools &tools, Worker &home, const TC::CFormulaParam &param, int day,
                   std::shared_ptr<ResultDelivery> delivery);

    /// Begins its work, once.
    void start();
    void withdraw();
    const ResultDelivery &delivery() const { return *mDelivery; }
    /// See ModelRun; nothing when the request names no script model.
    std::optional<bson::BSONObj> modelProgress() const;

private:
    bool isStream() const;
    void open();
    void openUnderlying();
    void note(SeriesChange change);
    void send(DueResult::Due due);
    void sendSeries(bool isFirst);
    void runModel(bool isFirst);

    const RequestTools &mTools;
    Worker &mHome;
    const TC::CFormulaParam mParam;
    const int mDay;
    const bool mIsModel;
    BarStream mBars;
    std::optional<BarStream> mUnderlying; ///< of the instrument that the program reads beside its own
    PlacedDay mPlaced;
    SeriesComputer mComputer;
    ModelRun mModel;
    DueResult mDue;
    const std::shared_ptr<ResultDelivery> mDelivery;
};

} // namespace terminal
