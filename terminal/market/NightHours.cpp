#include "terminal/market/NightHours.h"

#include <QStringList>

namespace terminal {
namespace {

/// From an evening on the nights of products end at a minute since midnight, 0 for products without a night. A later
/// row of a product takes the place of the earlier one.
struct NightChange {
    int evening; ///< as yyyymmdd
    int end;
    const char *products;
    const char *source; ///< the exchange, and where it has told so
};

// Compiled from the exchanges' own notices and reports. Products that are not named have no history that is stated.
constexpr NightChange kChanges[] = {
    {20130705, 150, "AU AG", "SHFE: notice of 2013-06-07"},
    {20131220, 60, "CU AL ZN PB", "SHFE: exchange's report of notice 2013/151"},
    {20140704, 150, "P J", "DCE: review of 2019-04"},
    {20141212, 1410, "SR CF RM MA TA", "CZCE: notices of 2014-11-27 and 2014-12-05 (MA then ME)"},
    {20141226, 60, "RB HC BU", "SHFE: exchange's report of notice 2014/173"},
    {20141226, 1380, "RU", "SHFE: exchange's report of notice 2014/173"},
    {20141226, 150, "A B M Y JM I", "DCE: review of 2019-04"},
    {20150327, 60, "NI SN", "SHFE: notice of 2015-03-20"},
    {20150508, 1410, "P J A B M Y JM I", "DCE: monthly report of 2015-05"},
    {20150611, 1410, "OI FG ZC", "CZCE: notice 2015/93 (ZC then TC)"},
    {20160503, 1380, "RB HC BU", "SHFE: notice of 2016-04-26"},
    {20170818, 1410, "CY", "CZCE: monthly notices of 2018-06"},
    {20180326, 150, "SC", "INE: notice of 2018-03-12"},
    {20180716, 1380, "FU", "SHFE: notice of 2018-06-26"},
    {20181127, 1380, "SP", "SHFE: notice of 2018-11-07"},
    {20190329, 1380, "P J A B M Y JM I L V PP EG C CS", "DCE: review of 2019-04"},
    {20190812, 1380, "NR", "INE: notice of 2019-08-02"},
    {20190925, 60, "SS", "SHFE: notice of 2019-09-23"},
    {20191206, 1410, "SA", "CZCE: notice of 2019-12-02"},
    {20191211, 1380, "SR CF RM MA TA OI FG ZC CY SA", "CZCE: notice 2019/473 of 2019-12-10"},
    {20200506, 1380, "PG", "DCE: notice of 2020-04"},
    {20200622, 1380, "LU", "INE: notice of 2020-06-10"},
    {20201012, 1380, "PF", "CZCE: monthly notices of 2020-10"},
    {20201119, 60, "BC", "INE: notice of 2020-11-11"},
    {20230619, 60, "AO", "SHFE: notice of 2023-06-06"},
    {20230728, 1380, "BR", "SHFE: notice of 2023-07-18"},
    {20230818, 0, "EC", "INE: notice of 2023-08-11 lists day sessions only"},
    {20230915, 1380, "SH PX", "CZCE: monthly notices of 2023-10"},
    {20240830, 1380, "PR", "CZCE: monthly notices of 2024-09"},
    {20241118, 0, "LG", "DCE: listing notice"},
    {20250610, 60, "AD", "SHFE: notice of 2025-05-26"},
    {20250910, 1380, "OP", "SHFE: notice of 2025-08-18"},
};

/// Evenings without a night, both ends included.
struct NoNights {
    int first; ///< as yyyymmdd
    int last;
    const char *exchanges; ///< null for all of them
};

// By the exchanges' notices on holidays, and on the spring of 2020. Those of CZCE follow from its rule that the first trading
// day after a statutory holiday has no night before it.
constexpr NoNights
    kNoNights
        [] =
            {
                {20130918, 20130918, "SHFE"},     {20130930, 20130930, "SHFE"},
                {20131231, 20131231, "SHFE"},     {20140130, 20140130, "SHFE"},
                {20140404, 20140404, "SHFE"},     {20140430, 20140430, "SHFE"},
                {20140530, 20140530, "SHFE"},     {20140905, 20140905, "SHFE DCE"},
                {20140930, 20140930, "SHFE DCE"}, {20141231, 20141231, nullptr},
                {20150217, 20150217, nullptr},    {20150403, 20150403, nullptr},
                {20150430, 20150430, nullptr},    {20150619, 20150619, nullptr},
                {20150902, 20150902, nullptr},    {20150925, 20150925, nullptr},
                {20150930, 20150930, nullptr},    {20151231, 20151231, nullptr},
                {20160205, 20160205, nullptr},    {20160401, 20160401, nullptr},
                {20160429, 20160429, nullptr},    {20160608, 20160608, nullptr},
                {20160914, 20160914, nullptr},    {20160930, 20160930, nullptr},
                {20161230, 20161230, nullptr},    {20170126, 20170126, nullptr},
                {20170331, 20170331, nullptr},    {20170428, 20170428, nullptr},
                {20170526, 20170526, nullptr},    {20170929, 20170929, nullptr},
                {20171229, 20171229, nullptr},    {20180214, 20180214, nullptr},
                {20180404, 20180404, nullptr},    {20180427, 20180427, nullptr},
                {20180615, 20180615, nullptr},    {20180921, 20180921, nullptr},
                {20180928, 20180928, nullptr},    {20181228, 20181228, nullptr},
                {20190201, 20190201, nullptr},    {20190404, 20190404, nullptr},
                {20190430, 20190430, nullptr},    {20190606, 20190606, nullptr},
                {20190912, 20190912, nullptr},    {20190930, 20190930, nullptr},
                {20191231, 20191231, nullptr},    {20200123, 20200123, nullptr},
                {20200203, 20200505, nullptr}, // suspended; nights again from the evening of 2020-05-06
                {20200624, 20200624, nullptr},    {20200930, 20200930, nullptr},
                {20201231, 20201231, nullptr},    {20210210, 20210210, nullptr},
                {20210402, 20210402, nullptr},    {20210430, 20210430, nullptr},
                {20210611, 20210611, nullptr},    {20210917, 20210917, nullptr},
                {20210930, 20210930, nullptr},    {20211231, 20211231, nullptr},
                {20220128, 20220128, nullptr},    {20220401, 20220401, nullptr},
                {20220429, 20220429, nullptr},    {20220602, 20220602, nullptr},
                {20220909, 20220909, nullptr},    {20220930, 20220930, nullptr},
                {20221230, 20221230, nullptr},    {20230120, 20230120, nullptr},
                {20230404, 20230404, nullptr},    {20230428, 20230428, nullptr},
                {20230621, 20230621, nullptr},    {20230928, 20230928, nullptr},
                {20231229, 20231229, nullptr},    {20240208, 20240208, nullptr},
                {20240403, 20240403, nullptr},    {20240430, 20240430, nullptr},
                {20240607, 20240607, nullptr},    {20240913, 20240913, nullptr},
                {20240930, 20240930, nullptr},    {20241231, 20241231, nullptr},
                {20250127, 20250127, nullptr},    {20250403, 20250403, nullptr},
                {20250430, 20250430, nullptr},    {20250530, 20250530, nullptr},
                {20250930, 20250930, nullptr},    {20251231, 20251231, nullptr},
                {20260213, 20260213, nullptr},    {20260403, 20260403, nullptr},
};

/// Whether a list of words separated by blanks has a word.
bool isAmong(const char *words, const QString &word) {
    return QString::fromLatin1(words).split(QLatin1Char(' ')).contains(word);
}

bool isWithoutNight(const QString &exchange, int evening) {
    for (const NoNights &span : kNoNights) {
        if (evening >= span.first && evening <= span.last) {
            return !span.exchanges || isAmong(span.exchanges, exchange);
        }
    }
    return false;
}

} // namespace

std::optional<int> nightEndOn(const QString &exchange, const QString &product, const QDate &evening) {
    const int number = evening.year() * 10000 + evening.month() * 100 + evening.day();
    std::optional<int> end;
    for (const NightChange &change : kChanges) {
        if (isAmong(change.products, product)) {
            end = number >= change.evening ? change.end : end.value_or(0);
        }
    }
    return end && isWithoutNight(exchange, number) ? 0 : end;
}

} // namespace terminal
