#include "terminal/market/SimulatedInstruments.h"

#include "terminal/market/MarketSessions.h"

#include <algorithm>

namespace terminal {
namespace {

using Kind = InstrumentKind;

constexpr Kind kBond = Kind::ConvertibleBond;
constexpr Kind kStock = Kind::Stock;
constexpr Kind kFund = Kind::Fund;
constexpr Kind kIndex = Kind::Index;
constexpr Kind kSector = Kind::SectorIndex;
constexpr Kind kFuture = Kind::Future;

/// One line of the roster.
struct Entry {
    const char *market;
    const char *code;
    const char *name;
    const char *initials;
    Kind kind;
    QVector<int> types;
    double tick;
    double price;
    double volume;
    double volatility;
    double limit;
    double multiplier;
    double quiet;
};

const QVector<Entry> &roster() {
    static const QVector<Entry> entries{
        {"SH", "600000", "浦发银行", "PFYH", kStock, {}, 0.01, 9.86, 4.5e7, 0.014, 0.1, 1, 0},
        {"SH", "600519", "贵州茅台", "GZMT", kStock, {}, 0.01, 1436.5, 2.8e6, 0.014, 0.1, 1, 0},
        {"SH", "601318", "中国平安", "ZGPA", kStock, {}, 0.01, 52.3, 5.2e7, 0.015, 0.1, 1, 0},
        {"SH", "601009", "南京银行", "NJYH", kStock, {}, 0.01, 10.42, 3.6e7, 0.013, 0.1, 1, 0},
        {"SH", "688001", "华兴源创", "HXYC", kStock, {100017}, 0.01, 27.8, 4.1e6, 0.026, 0.2, 1, 0.02},
        {"SZ", "000001", "平安银行", "PAYH", kStock, {}, 0.01, 11.42, 8.3e7, 0.014, 0.1, 1, 0},
        {"SZ", "000858", "五粮液", "WLY", kStock, {}, 0.01, 128.66, 1.7e7, 0.017, 0.1, 1, 0},
        {"SZ", "002594", "比亚迪", "BYD", kStock, {}, 0.01, 104.2, 2.2e7, 0.02, 0.1, 1, 0},
        {"SZ", "002714", "牧原股份", "MYGF", kStock, {}, 0.01, 46.75, 2.4e7, 0.019, 0.1, 1, 0},
        {"SZ", "300750", "宁德时代", "NDSD", kStock, {277, 10006}, 0.01, 262.5, 1.9e7, 0.023, 0.2, 1, 0},
        {"SZ", "300059", "东方财富", "DFCF", kStock, {277, 10006}, 0.01, 22.4, 1.6e8, 0.026, 0.2, 1, 0},
        {"SZ", "001872", "招商港口", "ZSGK", kStock, {126}, 0.01, 20.15, 3.1e6, 0.013, 0.1, 1, 0.05},
        {"SH", "113050", "南银转债", "NYZZ", kBond, {10019}, 0.001, 121.44, 9.0e6, 0.007, 0.2, 1, 0.1},
        {"SZ", "127045", "牧原转债", "MYZZ", kBond, {135}, 0.001, 126.3, 7.0e6, 0.012, 0.2, 1, 0.15},
        {"SH", "510300", "沪深300ETF", "HS300ETF", kFund, {100013, 105}, 0.001, 4.012, 9.0e8, 0.011, 0.1, 1, 0},
        {"SZ", "159915", "创业板ETF", "CYBETF", kFund, {100013, 10008}, 0.001, 2.234, 8.0e8, 0.016, 0.2, 1, 0},
        {"SH", "000001", "上证指数", "SZZS", kIndex, {}, 0.01, 3388.4, 4.4e10, 0.009, 0, 0.1, 0},
        {"SH", "000300", "沪深300", "HS300", kIndex, {}, 0.01, 4021.7, 1.6e10, 0.010, 0, 0.1, 0},
        {"SZ", "399001", "深证成指", "SZCZ", kIndex, {}, 0.01, 10874.2, 5.2e10, 0.012, 0, 0.1, 0},
        {"SZ", "399006", "创业板指", "CYBZ", kIndex, {}, 0.01, 2236.9, 1.5e10, 0.016, 0, 0.1, 0},
        {"CFFEX", "IF2612", "沪深300股指2612", "HS300GZ", kFuture, {}, 0.2, 4012.4, 9.5e4, 0.011, 0.1, 300, 0},
        {"CFFEX", "TS2612", "二债2612", "EZ", kFuture, {}, 0.002, 102.454, 4.2e4, 0.0003, 0.005, 20000, 0.05},
        {"CFFEX", "TF2612", "五债2612", "WZ", kFuture, {}, 0.005, 106.035, 6.8e4, 0.0007, 0.012, 10000, 0},
        {"CFFEX", "T2612", "十债2612", "SZ", kFuture, {}, 0.005, 108.615, 8.4e4, 0.0012, 0.02, 10000, 0},
        {"SHFE", "AU2612", "沪金2612", "HJ", kFuture, {}, 0.02, 782.46, 2.6e5, 0.009, 0.08, 1000, 0},
        {"SHFE", "RB2701", "螺纹钢2701", "LWG", kFuture, {}, 1, 3284, 1.5e6, 0.01, 0.07, 10, 0},
        {"CZCE", "SM701", "锰硅2701", "MG", kFuture, {}, 2, 6238, 2.1e5, 0.012, 0.07, 5, 0},
        {"DCE", "M2701", "豆粕2701", "DP", kFuture, {}, 1, 3056, 8.6e5, 0.01, 0.07, 10, 0},
        {"DCE", "JD2701", "鸡蛋2701", "JD", kFuture, {}, 1, 3412, 1.7e5, 0.011, 0.07, 5, 0},
        {"HK", "00700", "腾讯控股", "TXKG", kStock, {}, 0.2, 512.6, 1.9e7, 0.018, 0, 1, 0},
        {"HK", "02318", "中国平安H", "ZGPAH", kStock, {}, 0.05, 48.85, 3.4e7, 0.017, 0, 1, 0},
        {"HK", "00005", "汇丰控股", "HFKG", kStock, {}, 0.05, 88.4, 1.8e7, 0.011, 0, 1, 0.02},
        {"HGT", "00700", "腾讯控股(沪港通)", "TXKG", kStock, {}, 0.2, 512.6, 2.4e6, 0.018, 0, 1, 0.03},
        {"SGT", "00981", "中芯国际(深港通)", "ZXGJ", kStock, {}, 0.05, 34.6, 8.8e6, 0.025, 0, 1, 0.03},
        {"YSWP", "CN2612", "富时中国A50期指", "FSZGA50", kFuture, {}, 1, 13326, 3.2e5, 0.011, 0, 1, 0.1},
        {"YSWP", "CNINDEX", "富时中国A50指数", "FSZGA50ZS", kIndex, {}, 0.01, 13334.6, 3e9, 0.011, 0, 0.1, 0},
        {"BKZS", "801780", "银行指数", "YHZS", kSector, {}, 0.01, 3655.3, 2.6e9, 0.011, 0, 0.1, 0},
        {"BKZS", "801783", "股份制银行指数", "GFZYHZS", kSector, {}, 0.01, 2873.1, 1.1e9, 0.012, 0, 0.1, 0},
        {"BKZS", "801120", "食品饮料指数", "SPYLZS", kSector, {}, 0.01, 18244.8, 6.4e8, 0.014, 0, 0.1, 0},
        {"BKZS", "801730", "电力设备指数", "DLSBZS", kSector, {}, 0.01, 8120.6, 2.9e9, 0.017, 0, 0.1, 0},
        {"BKZS", "850111", "白酒指数", "BJZS", kSector, {}, 0.01, 52110.4, 3.1e8, 0.015, 0, 0.1, 0},
    };
    return entries;
}

SimulatedInstrument instrumentOf(const Entry &entry) {
    SimulatedInstrument simulated;
    Instrument &instrument = simulated.instrument;
    instrument.market = QString::fromLatin1(entry.market);
    instrument.code = QString::fromLatin1(entry.code);
    instrument.name = QString::fromUtf8(entry.name);
    instrument.initials = QString::fromLatin1(entry.initials);
    instrument.kind = entry.kind;
    instrument.types = entry.types;
    instrument.priceTick = entry.tick;
    instrument.lastClose = entry.price;
    instrument.simulated = true;
    if (isFuturesMarket(instrument.market)) {
        instrument.product = productOfCode(instrument.code);
    }
    instrument.sessions = marketSessions({instrument.market, instrument.code, instrument.product, entry.types});
    // A night that ends at 02:30 is what a chart expects of a future; an earlier end has to be told.
    const int nightEnd = instrument.product.isEmpty() ? 0 : nightEndOfProduct(instrument.product);
    instrument.ownSessions = instrument.sessions.hasNight() && nightEnd != 150;
    const bool share = instrument.kind == Kind::Stock;
    instrument.floatShares = share ? entry.volume * 180.0 : 0.0;
    simulated.basePrice = entry.price;
    simulated.dayVolume = entry.volume;
    simulated.volatility = entry.volatility;
    simulated.limit = entry.limit;
    simulated.multiplier = entry.multiplier;
    simulated.quietShare = entry.quiet;
    simulated.haltChance = entry.kind == Kind::ConvertibleBond ? 0.1 : share && entry.limit > 0.0 ? 0.04 : 0.0;
    const bool lots = share || entry.kind == Kind::Fund || entry.kind == Kind::Index;
    simulated.volumeStep = lots ? 100 : entry.kind == Kind::ConvertibleBond ? 10 : 1;
    return simulated;
}

/// The share that a bond converts to, the index under a future, and the index that a fund tracks.
const QVector<QPair<const char *, const char *>> kUnderlyings{
    {"SH113050", "SH601009"}, {"SZ127045", "SZ002714"}, {"CFFEXIF2612", "SH000300"},
    {"HGT00700", "HK00700"},  {"SH510300", "SH000300"}, {"SZ159915", "SZ399006"}};

Instrument *findInstrument(QVector<SimulatedInstrument> &all, const char *key) {
    for (SimulatedInstrument &candidate : all) {
        if (candidate.instrument.key() == QLatin1String(key)) {
            return &candidate.instrument;
        }
    }
    return nullptr;
}

bool isBond(const QString &key) {
    const auto isIt = [&key](const Entry &entry) {
        return entry.kind == Kind::ConvertibleBond && key == QLatin1String(entry.market) + entry.code;
    };
    return std::any_of(roster().begin(), roster().end(), isIt);
}

QVector<SimulatedInstrument> makeInstruments() {
    QVector<SimulatedInstrument> all;
    for (const Entry &entry : roster()) {
        all.append(instrumentOf(entry));
    }
    for (const auto &link : kUnderlyings) {
        Instrument *derived = findInstrument(all, link.first);
        const Instrument *underlying = findInstrument(all, link.second);
        derived->underlyingMarket = underlying->market;
        derived->underlyingCode = underlying->code;
    }
    return all;
}

UserIndex userIndex(const QString &key, const QString &name, double base, const QStringList &members) {
    UserIndex index;
    index.key = key;
    index.detail = TC::CIndexDetail(key);
    index.detail.mCode = name;
    index.detail.mBaseValue = base;
    index.detail.mMembers = members;
    index.lastValue = base;
    return index;
}

Catalogue makeLinks() {
    const auto text = [](const char *utf8) { return QString::fromUtf8(utf8); };
    Catalogue links;
    links.sectors = {
        {1, text("银行"), text("BKZS801780"), {"SH600000", "SH601009", "SZ000001"}},
        {2, text("股份制银行Ⅱ"), text("BKZS801783"), {"SH600000", "SZ000001"}},
        {2, text("城商行Ⅱ"), QString(), {"SH601009"}},
        {3, text("股份制银行Ⅲ"), text("BKZS801783"), {"SH600000", "SZ000001"}},
        {3, text("城商行Ⅲ"), QString(), {"SH601009"}},
        {1, text("食品饮料"), text("BKZS801120"), {"SH600519", "SZ000858"}},
        {2, text("白酒Ⅱ"), text("BKZS850111"), {"SH600519", "SZ000858"}},
        {3, text("白酒Ⅲ"), text("BKZS850111"), {"SH600519", "SZ000858"}},
        {1, text("电力设备"), text("BKZS801730"), {"SZ300750"}},
        {2, text("电池"), text("BKZS801730"), {"SZ300750"}},
        {3, text("锂电池"), text("BKZS801730"), {"SZ300750"}},
    };
    for (const auto &link : kUnderlyings) {
        if (isBond(text(link.first))) {
            links.convertibles[text(link.first)].insert(text(link.second));
        }
    }
    links.hShareOf[text("SH601318")] = text("HK02318");
    for (const UserIndex &index :
         {userIndex(text("CD100001"), text("我的金融"), 1000.0, {"SH600000", "SH601318", "SZ000001"}),
          userIndex(text("CD100002"), text("我的消费"), 1000.0, {"SH600519", "SZ000858"})}) {
        links.indexes[index.key] = index;
    }
    for (const Portfolio &portfolio :
         {Portfolio{1, text("稳健组合"), {{"SH600000", 20000}, {"SH600519", 100}, {"SH510300", 50000}}},
          Portfolio{2, text("期货组合"), {{"SHFEAU2612", 2}, {"CFFEXIF2612", -1}}}}) {
        links.portfolios[portfolio.key()] = portfolio;
    }
    return links;
}

} // namespace

const QVector<SimulatedInstrument> &simulatedInstruments() {
    static const QVector<SimulatedInstrument> all = makeInstruments();
    return all;
}

const SimulatedInstrument *findSimulated(const QString &key) {
    const QVector<SimulatedInstrument> &all = simulatedInstruments();
    const auto found = std::find_if(all.begin(), all.end(), [&key](const SimulatedInstrument &candidate) {
        return candidate.instrument.key() == key;
    });
    return found == all.end() ? nullptr : &*found;
}

const Catalogue &simulatedLinks() {
    static const Catalogue links = makeLinks();
    return links;
}

} // namespace terminal
