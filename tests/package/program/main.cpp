// A host of its own services, hidden from everybody: the installed library finds them. Ends with 0 when all is as it
// should be, and says what is not.

#include <timeshare/containers/CRealtimeMainWidget.h>
#include <timeshare/host/Version.h>
#include <timeshare/host/services/CFileClient.h>
#include <timeshare/host/services/CHostClock.h>
#include <timeshare/host/services/CStockManager.h>
#include <timeshare/host/services/DefaultServices.h>
#include <timeshare/host/services/MainSeries.h>
#include <timeshare/viewmodel/CRealtimeUiParam.h>

#include <QApplication>

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

constexpr int kDay = 1710432000;
int faults = 0;

void expect(bool good, const char *what) {
    if (!good) {
        std::fprintf(stderr, "not so: %s\n", what);
        ++faults;
    }
}

class Clock : public TC::CHostClock {
public:
    QDateTime currentDateTime() const override {
        ++mAsked;
        return QDateTime::fromSecsSinceEpoch(kDay + 10 * 3600, Qt::OffsetFromUTC, 8 * 3600);
    }
    mutable int mAsked = 0;
};

class Stocks : public TC::CStockManager {
public:
    TC::CInstrumentDetailPtr getInstrumentDetail(const QString &key) override {
        ++mAsked;
        return isExist(key) ? mStock : nullptr;
    }
    bool isExist(const QString &key) override { return key == QLatin1String("SZ000001"); }
    bool isPortfolio(const QString &) override { return false; }
    TC::CInstrumentDetailPtr getDefaultDetail() override { return mStock; }
    double getCurrentDateLastClose(const QString &, int) override { return 12.5; }
    double getCurrentDateLastClose(const TC::CInstrumentDetailPtr &, int) override { return 12.5; }
    int getLastTradingDay(const QString &) override { return kDay; }
    int getShiftTradeDate(const QString &, int date, int shift) override { return date + shift * 86400; }
    QPair<qint64, qint64> getStartEndTime(const TC::CInstrumentDetailPtr &, int &) override {
        return {(kDay + 34200) * 1000LL, (kDay + 54000) * 1000LL};
    }
    Stocks() {
        mStock->mMarket = "SZ";
        mStock->mCode = "000001";
        mStock->mName = "outside";
        mStock->mLastClose = 12.5;
    }
    const TC::CInstrumentDetailPtr mStock = std::make_shared<TC::CInstrumentDetail>();
    int mAsked = 0;
};

class Series : public TC::CFormulaManager {
public:
    void requestFormulas(QVector<TC::CFormulaParam> &params, TC::FormulaHistoryCallback onHistory,
                         TC::FormulaRealtimeCallback) override {
        for (const TC::CFormulaParam &param : params) {
            mAsked.append(param.mFormulaName);
            onHistory(TC::MainSeries::meta(param.mFormulaName),
                      TC::MainSeries::result(param.mFormulaName, mBars),
                      QString::fromStdString(param.mRequestId), 1, param.mFormulaName, false);
        }
    }
    void requestFormulasSync(QVector<TC::CFormulaParam> &, std::vector<TC::FormulaMetaPtr> &,
                             std::vector<TC::FormulaResultPtr> &) override {}
    void unrequestFormula(const QString &) override {}
    void unrequestFormulas(const QVector<QString> &) override {}
    void fetchCacheData(se::RPCFetchCacheDataParam &,
                        std::vector<std::shared_ptr<quoter::QuoterBase>> &) override {}
    void requestHistoryQuote(const quoter::TSMetaInfo &, const quoter::TRegionInfo &,
                             TC::HistoryQuoteCallback) override {}
    QString lookHideVar(const QString &, int) override { return {}; }
    void suppleDataFromServer(const QString &, TC::CHistoryDataParam &, TC::SuppleProgressCallback) override {}
    bool groupRunProgress(const std::string &, bson::BSONObj &) override { return false; }

    std::vector<TC::MinuteBar> mBars;
    QList<QString> mAsked;
};

/// The pixels that differ between two pictures of one size.
int differences(const QImage &a, const QImage &b) {
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            count += a.pixel(x, y) != b.pixel(x, y) ? 1 : 0;
        }
    }
    return count;
}

/// Exceptions of the library are caught by what catches them here.
bool catchesFaultOfDocument() {
    try {
        bson::BSONObj::fromJson("{");
    } catch (const bson::BSONError &) {
        return true;
    }
    return false;
}

void tryServices() {
    const std::vector<std::string> before = TC::missingServices();
    expect(before.size() == 20, "20 services are missing at first");
    expect(std::count(before.begin(), before.end(), "TC::CHostClock") == 1, "names are readable");
    Clock clock;
    Stocks stocks;
    Series series;
    TC::CSingletonT<TC::CHostClock>::install(&clock);
    TC::CSingletonT<TC::CStockManager>::install(&stocks);
    TC::CSingletonT<TC::CFormulaManager>::install(&series);
    {
        const TC::DefaultServices defaults;
        expect(TC::missingServices().empty(), "nothing is missing with the defaults");

        int read = 0;
        auto &files = TC::CSingletonT<TC::CFileClient>::instance();
        QObject::connect(&files, &TC::CFileClient::sigReadFinished,
                         [&](int, bool, const QString &) { ++read; });
        int number = 0;
        files.readFileByLine(number, TC::EFileType(), QString(), [](const QString &) { return 0; });
        QApplication::processEvents();
        expect(read == 1, "signals of the library's classes reach the program");

        TC::CRealtimeMainWidget view(nullptr, TC::EIndexViewType::Ordinary);
        view.resize(800, 500);
        view.setStock(QStringLiteral("SZ000001"), false);
        expect(view.getUiParam()->isValid() && view.getUiParam()->getLastClose() == 12.5,
               "the view knows the instrument of the program");
        const QImage empty = view.grab().toImage();
        for (int i = 0; i <= 120; ++i) {
            const double price = 12.5 + (i % 30) * 0.02;
            series.mBars.push_back({(kDay + (570 + i) * 60LL) * 1000, price, price, 100.0, price * 100.0});
        }
        view.request(false);
        expect(series.mAsked.contains(QStringLiteral("REALTIME")), "the series of the program is asked for");
        expect(view.getUiParam()->dataCount() == 121, "its points have come");
        QApplication::processEvents();
        expect(differences(empty, view.grab().toImage()) > 500, "they are drawn");
        expect(stocks.mAsked > 0 && clock.mAsked > 0, "instruments and the time are the program's");
    }
    expect(TC::missingServices().size() == 17, "the defaults go, the program's services stay");
}

} // namespace

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    const std::string release = std::to_string(TIMESHARE_VERSION_MAJOR) + "." +
                                std::to_string(TIMESHARE_VERSION_MINOR) + "." +
                                std::to_string(TIMESHARE_VERSION_PATCH);
    expect(release == TC::libraryVersion(), "headers and library are of one release");
    expect(catchesFaultOfDocument(), "an exception of the library is known by its type");
    tryServices();
    std::printf("%d faults\n", faults);
    return faults == 0 ? 0 : 1;
}
