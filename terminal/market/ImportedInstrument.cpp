#include "terminal/market/ImportedInstrument.h"

#include "terminal/market/MarketSessions.h"

#include <QHash>
#include <QRegularExpression>

namespace terminal {
namespace {

/// The market word of an exchange by any of its usual names.
QString marketOfExchange(const QString &exchange) {
    static const QHash<QString, QString> names{
        {QStringLiteral("XSHG"), QStringLiteral("SH")},     {QStringLiteral("SSE"), QStringLiteral("SH")},
        {QStringLiteral("SHSE"), QStringLiteral("SH")},     {QStringLiteral("SS"), QStringLiteral("SH")},
        {QStringLiteral("XSHE"), QStringLiteral("SZ")},     {QStringLiteral("SZSE"), QStringLiteral("SZ")},
        {QStringLiteral("XSGE"), QStringLiteral("SHFE")},   {QStringLiteral("SHF"), QStringLiteral("SHFE")},
        {QStringLiteral("XDCE"), QStringLiteral("DCE")},    {QStringLiteral("XZCE"), QStringLiteral("CZCE")},
        {QStringLiteral("CZC"), QStringLiteral("CZCE")},    {QStringLiteral("CCFX"), QStringLiteral("CFFEX")},
        {QStringLiteral("CFX"), QStringLiteral("CFFEX")},   {QStringLiteral("CFE"), QStringLiteral("CFFEX")},
        {QStringLiteral("XINE"), QStringLiteral("INE")},    {QStringLiteral("BSE"), QStringLiteral("BJ")},
        {QStringLiteral("XHKG"), QStringLiteral("HK")},     {QStringLiteral("HKEX"), QStringLiteral("HK")},
        {QStringLiteral("上交所"), QStringLiteral("SH")},   {QStringLiteral("深交所"), QStringLiteral("SZ")},
        {QStringLiteral("上期所"), QStringLiteral("SHFE")}, {QStringLiteral("大商所"), QStringLiteral("DCE")},
        {QStringLiteral("郑商所"), QStringLiteral("CZCE")}, {QStringLiteral("中金所"), QStringLiteral("CFFEX")},
    };
    const QString word = exchange.trimmed().toUpper();
    return knownMarkets().contains(word) ? word : names.value(word);
}

/// What a range of share codes holds.
struct CodeRange {
    const char *market;
    const char *start; ///< first digits of the code
    InstrumentKind kind;
    QVector<int> types;
};

const QVector<CodeRange> &codeRanges() {
    static const QVector<CodeRange> ranges{
        {"SH", "000", InstrumentKind::Index, {}},
        {"SH", "688", InstrumentKind::Stock, {100017}},
        {"SH", "689", InstrumentKind::Stock, {100017}},
        {"SH", "11", InstrumentKind::ConvertibleBond, {10019}},
        {"SH", "5", InstrumentKind::Fund, {100013}},
        {"SZ", "399", InstrumentKind::Index, {}},
        {"SZ", "30", InstrumentKind::Stock, {277, 10006}},
        {"SZ", "12", InstrumentKind::ConvertibleBond, {135}},
        {"SZ", "15", InstrumentKind::Fund, {100013}},
        {"SZ", "16", InstrumentKind::Fund, {100013}},
    };
    return ranges;
}

} // namespace

InstrumentName readSymbol(const QString &symbol, const QString &exchange) {
    InstrumentName name{marketOfExchange(exchange), symbol.trimmed()};
    const int dot = name.code.lastIndexOf(QLatin1Char('.'));
    if (dot > 0) {
        const QString suffix = marketOfExchange(name.code.mid(dot + 1));
        const QString prefix = marketOfExchange(name.code.left(dot));
        name.market = !suffix.isEmpty() ? suffix : prefix.isEmpty() ? name.market : prefix;
        name.code = suffix.isEmpty() && !prefix.isEmpty() ? name.code.mid(dot + 1) : name.code.left(dot);
        return name;
    }
    const QString front = name.code.left(2).toUpper();
    const bool isShare =
        front == QLatin1String("SH") || front == QLatin1String("SZ") || front == QLatin1String("BJ");
    if (isShare && name.code.size() == 8 && name.code[2].isDigit()) {
        return {front, name.code.mid(2)};
    }
    return name;
}

InstrumentName instrumentOfFileName(const QString &fileName) {
    const QString base = fileName.left(fileName.lastIndexOf(QLatin1Char('.')));
    for (const QString &part : base.split(QRegularExpression(QStringLiteral("[_\\s-]")))) {
        const InstrumentName name = readSymbol(part, {});
        if (!name.market.isEmpty() && !name.code.isEmpty()) {
            return name;
        }
    }
    return {};
}

QString likelyMarket(const QString &code) {
    static const QRegularExpression share(QStringLiteral("^\\d{6}$"));
    if (!share.match(code).hasMatch()) {
        return {};
    }
    switch (code[0].digitValue()) {
    case 5:
    case 6:
        return QStringLiteral("SH");
    case 0:
    case 1:
    case 3:
        return code.startsWith(QLatin1String("11")) ? QStringLiteral("SH") : QStringLiteral("SZ");
    case 4:
    case 8:
    case 9:
        return QStringLiteral("BJ");
    default:
        return {};
    }
}

InstrumentName completeName(InstrumentName told, const QString &fileName) {
    const InstrumentName ofFile = instrumentOfFileName(fileName);
    if (told.code.isEmpty() && !ofFile.code.isEmpty()) {
        return ofFile;
    }
    if (told.code.isEmpty()) {
        static const QRegularExpression share(QStringLiteral("(?<!\\d)\\d{6}(?!\\d)"));
        told.code = share.match(fileName).captured();
    }
    if (told.market.isEmpty()) {
        told.market = told.code == ofFile.code ? ofFile.market : likelyMarket(told.code);
    }
    return told;
}

Instrument newInstrument(const InstrumentName &name, double priceTick, int nightEnd) {
    Instrument instrument;
    instrument.market = name.market;
    instrument.code = name.code;
    instrument.name = name.code;
    instrument.priceTick = priceTick;
    for (const CodeRange &range : codeRanges()) {
        if (name.market == QLatin1String(range.market) && name.code.startsWith(QLatin1String(range.start))) {
            instrument.kind = range.kind;
            instrument.types = range.types;
        }
    }
    if (isFuturesMarket(name.market)) {
        instrument.kind = InstrumentKind::Future;
        instrument.product = productOfCode(name.code);
    }
    const bool commodity = isFuturesMarket(name.market) && name.market != QLatin1String("CFFEX") &&
                           name.market != QLatin1String("IF");
    const bool unknownProduct = commodity && nightEndOfProduct(instrument.product) < 0;
    instrument.sessions = unknownProduct
                              ? commoditySessions(nightEnd)
                              : marketSessions({name.market, name.code, instrument.product, instrument.types});
    instrument.ownSessions = true;
    return instrument;
}

} // namespace terminal
