// A host of its own services, hidden from everybody: the installed library finds them. Ends with 0 when all is as it
// should be, and says what is not. "outside --differences FILE FILE" counts the pixels that differ between two pictures.

#include "Host.h"

#include <timeshare/containers/CRealtimeMainWidget.h>
#include <timeshare/host/Translation.h>
#include <timeshare/host/Version.h>
#include <timeshare/host/services/CFileClient.h>
#include <timeshare/host/services/DefaultServices.h>
#include <timeshare/viewmodel/CRealtimeUiParam.h>

#include <QApplication>
#include <QLocale>

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

int faults = 0;

void expect(bool good, const char *what) {
    if (!good) {
        std::fprintf(stderr, "not so: %s\n", what);
        ++faults;
    }
}

/// The host of the examples, which notes what it is asked.
class Clock : public example::Clock {
public:
    using example::Clock::Clock;
    QDateTime currentDateTime() const override {
        ++mAsked;
        return example::Clock::currentDateTime();
    }
    mutable int mAsked = 0;
};

class Stocks : public example::Stocks {
public:
    TC::CInstrumentDetailPtr getInstrumentDetail(const QString &key) override {
        ++mAsked;
        return example::Stocks::getInstrumentDetail(key);
    }
    int mAsked = 0;
};

class Series : public example::Series {
public:
    using example::Series::Series;
    void requestFormulas(QVector<TC::CFormulaParam> &params, TC::FormulaHistoryCallback onHistory,
                         TC::FormulaRealtimeCallback onRealtime) override {
        for (const TC::CFormulaParam &param : params) {
            mAsked.append(param.mFormulaName);
        }
        example::Series::requestFormulas(params, std::move(onHistory), std::move(onRealtime));
    }
    QList<QString> mAsked;
};

/// The pixels that differ between two pictures; all of them when the sizes differ.
int differences(const QImage &a, const QImage &b) {
    if (a.isNull() || a.size() != b.size()) {
        return a.width() * a.height() + b.width() * b.height() + 1;
    }
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
    example::Market market;
    Clock clock(market);
    Stocks stocks;
    Series series(market);
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
        view.setStock(QStringLiteral("SH600000"), false);
        expect(view.getUiParam()->isValid() && view.getUiParam()->getLastClose() == 10.0,
               "the view knows the instrument of the program");
        const QImage empty = view.grab().toImage();
        view.request(false);
        expect(series.mAsked.contains(QStringLiteral("REALTIME")), "the series of the program is asked for");
        expect(view.getUiParam()->dataCount() == 90, "its points have come");
        market.goOn();
        series.tellNewest();
        expect(view.getUiParam()->dataCount() == 91, "the next minute has come");
        QApplication::processEvents();
        expect(differences(empty, view.grab().toImage()) > 500, "they are drawn");
        expect(stocks.mAsked > 0 && clock.mAsked > 0, "instruments and the time are the program's");
    }
    expect(TC::missingServices().size() == 17, "the defaults go, the program's services stay");
}

/// English is inside the library, without a file beside it.
void tryLanguages() {
    const auto yes = [] { return QCoreApplication::translate("GZ::CMessageBox", "\xe6\x98\xaf"); };
    const QString chinese = yes();
    expect(timeshare::installTranslation(QLocale(QLocale::English)), "English is there");
    expect(yes() == QLatin1String("Yes"), "texts are English");
    expect(!timeshare::installTranslation(QLocale(QLocale::German)), "another language is refused");
    expect(timeshare::installTranslation(QLocale(QLocale::Chinese)) && yes() == chinese,
           "texts are Chinese again");
}

} // namespace

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.value(1) == QLatin1String("--differences")) {
        const QImage before = QImage(arguments.value(2)).convertToFormat(QImage::Format_RGB32);
        const QImage after = QImage(arguments.value(3)).convertToFormat(QImage::Format_RGB32);
        std::printf("%d\n", differences(before, after));
        return 0;
    }
    const std::string release = std::to_string(TIMESHARE_VERSION_MAJOR) + "." +
                                std::to_string(TIMESHARE_VERSION_MINOR) + "." +
                                std::to_string(TIMESHARE_VERSION_PATCH);
    expect(release == TC::libraryVersion(), "headers and library are of one release");
    expect(catchesFaultOfDocument(), "an exception of the library is known by its type");
    tryServices();
    tryLanguages();
    std::printf("%d faults\n", faults);
    return faults == 0 ? 0 : 1;
}
