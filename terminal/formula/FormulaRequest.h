#pragma once

#include "terminal/formula/BarStream.h"
#include "terminal/formula/DueResult.h"
#include "terminal/formula/RequestTools.h"
#include "terminal/formula/ResultDelivery.h"
#include "terminal/formula/RunShare.h"

#include <atomic>
#include <memory>
#include <optional>

namespace terminal {

/// One request on its way. It goes through stages in one direction, each of which owns its state: the bars are opened
/// (BarStream), placed on the axis (PlacedDay), computed by a program (SeriesComputer) or a script model (ModelRun),
/// become due (DueResult), and are delivered (ResultDelivery).
///
/// Everything but the model's run and the delivery is touched on the request's place of work alone. At most one run of
/// it waits, and computes the newest state. Long runs go to the lane of slow work, and are told in the name of the first
/// line when they go on (RunShare). Withdrawn, it sends nothing more and lets go of the feed. One of history only, or
/// of a day that does not run, lets go of everything but its hidden lines once its series is sent: whoever asked may forget to withdraw it. Any thread.
class FormulaRequest : public std::enable_shared_from_this<FormulaRequest> {
public:
    /// `home` is where it is worked on; `isPrice` when that is the lane of prices while its runs are short. The tools
    /// have to outlive its work.
    FormulaRequest(const RequestTools &tools, std::shared_ptr<SerialWork> home, bool isPrice,
                   const TC::CFormulaParam &param, int day, std::shared_ptr<ResultDelivery> delivery);

    /// Begins its work, once.
    void start();
    void withdraw();
    /// What it keeps for questions about it, once nothing more will come of it: its hidden lines, and how its model ran.
    /// Nothing before; 0 when there is nothing to be asked.
    std::optional<size_t> keptBytes() const;
    /// Whether no result has come since this was asked before, or since its beginning; false for one that is finished.
    bool wasQuiet() const { return !mIsFinished && mDelivery->wasQuiet(); }
    /// Says once more what it said last.
    void repeat() { mDelivery->repeat(); }
    const ResultDelivery &delivery() const { return *mDelivery; }
    /// See ModelRun; nothing when the request names no script model.
    std::optional<bson::BSONObj> modelProgress() const;

private:
    bool isStream() const;
    void open();
    void openUnderlying();
    void note(const MinuteBars &bars);
    void noteUnderlying(const MinuteBars &bars);
    void sendWhenDue();
    void send(DueResult::Due due);
    void sendSeries(bool isFirst);
    void runModel(bool isFirst);
    void settle(std::chrono::nanoseconds taken, bool isSeries);
    void finish();

    const RequestTools &mTools;
    const std::shared_ptr<SerialWork> mHome;
    const bool mIsPrice;
    const TC::CFormulaParam mParam;
    const int mDay;
    const bool mIsModel;
    BarStream mBars;
    std::optional<BarStream> mUnderlying; ///< of the instrument that the program reads beside its own
    PlacedDay mPlaced;
    SeriesComputer mComputer;
    ModelRun mModel;
    DueResult mDue;
    RunShare mShare;
    std::atomic<bool> mIsFinished{false};
    bool mIsMarked = false; ///< the series sent last tells that its runs are long
    const std::shared_ptr<ResultDelivery> mDelivery;
};

} // namespace terminal
