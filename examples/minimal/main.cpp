// The smallest host: a clock, one instrument, its bars. It shows a past day and beside it the running one, which gets a
// minute every second. "minimal --snapshot FILE" writes a picture of it instead and ends.

#include <timeshare/containers/CRealtimeMainWidget.h>
#include <timeshare/host/services/CHostClock.h>
#include <timeshare/host/services/CStockManager.h>
#include <timeshare/host/services/DefaultServices.h>
#include <timeshare/host/services/MainSeries.h>

#include <QApplication>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <ctime>

namespace {

constexpr int kToday = 1710432000; // midnight of 15 March 2024 at UTC+8, in seconds since the epoch
constexpr int kDay = 24 * 3600;
constexpr int kMinutes = 241; // 09:30 to 11:30, 13:01 to 15:00

int minutesToday = 90; // that have passed

qint64 endOf(int date, int index) {
    return (date + (index <= 120 ? 570 + index : 660 + index) * 60LL) * 1000;
}

/// The bars of a day, so far. A real host has them from its data source.
std::vector<TC::MinuteBar> barsOf(int date) {
    std::vector<TC::MinuteBar> bars;
    double last = 10.0;
    for (int i = 0; i < (date < kToday ? kMinutes : minutesToday); ++i) {
        const double close = 10.0 + 0.25 * std::sin(date / kDay + i / 40.0) + 0.03 * std::sin(i * 1.7);
        const double volume = 800.0 + 600.0 * std::sin(i * 0.9);
        bars.push_back({endOf(date, i), last, close, volume, volume * (last + close) / 2.0});
        last = close;
    }
    return bars;
}

class Clock : public TC::CHostClock {
    QDateTime currentDateTime() const override {
        return QDateTime::fromMSecsSinceEpoch(endOf(kToday, minutesToday - 1), Qt::OffsetFromUTC, 8 * 3600);
    }
};

/// One instrument, which trades every day and has closed at 10 on each.
class Stocks : public TC::CStockManager {
    TC::CInstrumentDetailPtr getInstrumentDetail(const QString &key) override {
        return isExist(key) ? mStock : nullptr;
    }
    bool isExist(const QString &key) override { return key == QLatin1String("SH600000"); }
    bool isPortfolio(const QString &) override { return false; }
    TC::CInstrumentDetailPtr getDefaultDetail() override { return mStock; }
    double getCurrentDateLastClose(const QString &, int) override { return 10.0; }
    double getCurrentDateLastClose(const TC::CInstrumentDetailPtr &, int) override { return 10.0; }
    int getLastTradingDay(const QString &) override { return kToday; }
    int getShiftTradeDate(const QString &, int date, int shift) override { return date + shift * kDay; }
    QPair<qint64, qint64> getStartEndTime(const TC::CInstrumentDetailPtr &, int &date) override {
        return {endOf(date, 0), endOf(date, kMinutes - 1)};
    }

    const TC::CInstrumentDetailPtr mStock = std::make_shared<TC::CInstrumentDetail>(
        TC::CInstrumentDetail{"SH", "600000", "示例", {}, 10.0, 0.0, 0.01, {}});
};

/// The series of the main chart. It knows no other formula, and answers at once.
class Series : public TC::CFormulaManager {
public:
    void requestFormulas(QVector<TC::CFormulaParam> &params, TC::FormulaHistoryCallback onHistory,
                         TC::FormulaRealtimeCallback onRealtime) override {
        for (const TC::CFormulaParam &param : params) {
            const QString &formula = param.mFormulaName;
            const int date = dateOf(param);
            if (TC::MainSeries::isMain(formula)) {
                onHistory(TC::MainSeries::meta(formula), TC::MainSeries::result(formula, barsOf(date)),
                          QString::fromStdString(param.mRequestId), 1, formula, false);
            }
            if (param.mDataDemand == 3) {
                mLive.push_back({param, onRealtime});
            }
        }
    }
    /// One more minute of the running day.
    void goOn() {
        minutesToday += minutesToday < kMinutes ? 1 : 0;
        const auto live = mLive; // a callback may request and withdraw
        for (const auto &[param, onRealtime] : live) {
            onRealtime(0, QString::fromStdString(param.mRequestId),
                       TC::MainSeries::lastPoint(param.mFormulaName, barsOf(kToday)));
        }
    }

private:
    static int dateOf(const TC::CFormulaParam &param) {
        const qint64 seconds = param.mStart.first / 1000 + 8 * 3600;
        return static_cast<int>(seconds - seconds % kDay - 8 * 3600);
    }
    void requestFormulasSync(QVector<TC::CFormulaParam> &params, std::vector<TC::FormulaMetaPtr> &metas,
                             std::vector<TC::FormulaResultPtr> &results) override {
        for (const TC::CFormulaParam &param : params) {
            metas.push_back(TC::MainSeries::meta(param.mFormulaName));
            results.push_back(TC::MainSeries::result(param.mFormulaName, barsOf(dateOf(param))));
        }
    }
    void unrequestFormula(const QString &requestId) override {
        const auto gone = std::remove_if(mLive.begin(), mLive.end(), [&](const auto &request) {
            return QString::fromStdString(request.first.mRequestId) == requestId;
        });
        const decltype(mLive) released(gone, mLive.end()); // its data may go with a callback, and ask us then
        mLive.erase(gone, mLive.end());
    }
    void unrequestFormulas(const QVector<QString> &requestIds) override {
        for (const QString &id : requestIds) {
            unrequestFormula(id);
        }
    }
    void fetchCacheData(se::RPCFetchCacheDataParam &,
                        std::vector<std::shared_ptr<quoter::QuoterBase>> &) override {}
    void requestHistoryQuote(const quoter::TSMetaInfo &, const quoter::TRegionInfo &,
                             TC::HistoryQuoteCallback) override {}
    QString lookHideVar(const QString &, int) override { return {}; }
    void suppleDataFromServer(const QString &, TC::CHistoryDataParam &, TC::SuppleProgressCallback) override {}
    bool groupRunProgress(const std::string &, bson::BSONObj &) override { return false; }

    std::vector<std::pair<TC::CFormulaParam, TC::FormulaRealtimeCallback>> mLive;
};

} // namespace

int main(int argc, char **argv) {
    qputenv("TZ", "Asia/Shanghai");
    tzset();
    QApplication application(argc, argv);
    Clock clock;
    Stocks stocks;
    Series series;
    TC::CSingletonT<TC::CHostClock>::install(&clock);
    TC::CSingletonT<TC::CStockManager>::install(&stocks);
    TC::CSingletonT<TC::CFormulaManager>::install(&series);
    const TC::DefaultServices defaults;
    for (const std::string &name : TC::missingServices()) {
        qCritical("not installed: %s", name.c_str());
    }

    TC::CRealtimeMainWidget view(nullptr, TC::EIndexViewType::Ordinary);
    view.setStock(QStringLiteral("SH600000"), false);
    view.scaleView(false); // one more day
    view.request(false);
    view.resize(1000, 560);
    view.show();

    QTimer market;
    QObject::connect(&market, &QTimer::timeout, [&] { series.goOn(); });
    market.start(1000);
    const QStringList arguments = QApplication::arguments();
    if (arguments.value(1) == QLatin1String("--snapshot")) {
        series.goOn();
        QApplication::processEvents();
        return view.grab().save(arguments.value(2)) ? 0 : 1;
    }
    return QApplication::exec();
}
