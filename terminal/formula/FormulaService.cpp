#include "terminal/formula/FormulaService.h"

#include <utility>

namespace terminal {
FormulaService::FormulaService(MarketFeed &feed, FormulaProgramMaker maker, RequestDay requestDay,
                               DayPositions positions, int workers)
    : mRequestDay(std::move(requestDay)),
      mTools{feed, std::move(maker), std::move(positions), ScriptModelRunner(feed), {}, {}}, mQuotes(feed),
      mLanes(workers), mDownloads(mQueue) {}

FormulaService::~FormulaService() {
    mDownloads.finish();
    for (const RequestBook::RequestPtr &request : mRequests.takeAll()) {
        request->withdraw();
    }
    // All subscriptions end on the workers; only then may what the listeners use go.
    mLanes.finish();
}

void FormulaService::setScriptModels(const ScriptModelSettings &settings, FormulaErrorSink onError) {
    mTools.models.setUp(settings, onError);
    mTools.tell = onError;
    mDownloads.setErrorSink(std::move(onError));
}

void FormulaService::requestFormulas(QVector<TC::CFormulaParam> &params, TC::FormulaHistoryCallback onHistory,
                                     TC::FormulaRealtimeCallback onRealtime) {
    const auto callbacks =
        std::make_shared<const ResultCallbacks>(ResultCallbacks{std::move(onHistory), std::move(onRealtime)});
    for (const TC::CFormulaParam &param : qAsConst(params)) {
        const QString id = QString::fromStdString(param.mRequestId);
        const WorkLane wanted = wantedLane(param);
        const auto home =
            std::make_shared<SerialWork>(mLanes, mTools.costs->firstLane(param.mFormulaName, wanted));
        const int day = mRequestDay(param);
        const int cachedDay = isAfterHours(param) ? HistoryCache::kNoDay : day;
        if (mCache) {
            mCache->expect(feedKeyOf(param), HistoryCache::kNoDay);
        }
        const auto delivery = std::make_shared<ResultDelivery>(
            mQueue, ResultDelivery::Subject{id, param.mFormulaName, mCache, cachedDay}, callbacks);
        const auto request =
            std::make_shared<FormulaRequest>(mTools, home, wanted == WorkLane::Price, param, day, delivery);
        if (const RequestBook::RequestPtr before = mRequests.enter(id, request)) {
            before->withdraw();
        }
        request->start();
        for (const RequestBook::RequestPtr &quiet : mRequests.look()) {
            quiet->repeat();
        }
    }
}

WorkLane FormulaService::wantedLane(const TC::CFormulaParam &param) const {
    if (isScriptModel(param)) {
        return WorkLane::Model;
    }
    return mLaneChoice ? mLaneChoice(param) : WorkLane::First;
}

void FormulaService::requestFormulasSync(QVector<TC::CFormulaParam> &params,
                                         std::vector<TC::FormulaMetaPtr> &metas,
                                         std::vector<TC::FormulaResultPtr> &results) {
    metas.clear();
    results.clear();
    for (const TC::CFormulaParam &param : qAsConst(params)) {
        FormulaSeries series = mTools.compute(param, mRequestDay(param));
        metas.push_back(std::make_shared<se::RPCFormulaMetaResult>(std::move(series.meta)));
        results.push_back(std::make_shared<se::RPCFormulaResult>(std::move(series.result)));
    }
}

void FormulaService::unrequestFormula(const QString &requestId) {
    unrequestFormulas({requestId});
}

void FormulaService::unrequestFormulas(const QVector<QString> &requestIds) {
    for (const RequestBook::RequestPtr &request : mRequests.take(requestIds)) {
        request->withdraw();
    }
}

void FormulaService::fetchCacheData(se::RPCFetchCacheDataParam &param,
                                    std::vector<std::shared_ptr<quoter::QuoterBase>> &records) {
    records = mQuotes.days(param);
}

void FormulaService::requestHistoryQuote(const quoter::TSMetaInfo &meta, const quoter::TRegionInfo &region,
                                         TC::HistoryQuoteCallback onQuotes) {
    // The callback never becomes the worker's: it would be released there.
    auto callback = std::make_shared<TC::HistoryQuoteCallback>(std::move(onQuotes));
    mLanes.post(WorkLane::First, [this, meta, region, callback]() mutable {
        mQueue.post([callback = std::move(callback), quotes = mQuotes.between(meta, region)] {
            if (*callback) {
                (*callback)(0, 0, quotes, QString());
            }
        });
    });
}

QString FormulaService::lookHideVar(const QString &requestId, int index) {
    const RequestBook::RequestPtr request = mRequests.find(requestId);
    return request ? request->delivery().hiddenAt(index) : QString();
}

void FormulaService::suppleDataFromServer(const QString &, TC::CHistoryDataParam &param,
                                          TC::SuppleProgressCallback onProgress) {
    mDownloads.start(param, std::move(onProgress));
}

bool FormulaService::groupRunProgress(const std::string &requestId, bson::BSONObj &progress) {
    const RequestBook::RequestPtr request = mRequests.find(QString::fromStdString(requestId));
    const std::optional<bson::BSONObj> known = request ? request->modelProgress() : std::nullopt;
    progress = known.value_or(progress);
    return known.has_value();
}

} // namespace terminal
