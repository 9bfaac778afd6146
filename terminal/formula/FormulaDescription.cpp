#include "terminal/formula/FormulaDescription.h"

#include "host/drawing/DrawStyles.h"

#include <QHash>

namespace terminal {

int drawStyleOf(const QString &name) {
    static const QHash<QString, int> styles = {
        {QStringLiteral("LINE"), TC::eLineStyle},
        {QStringLiteral("CIRCLEDOT"), TC::eDotStyle},
        {QStringLiteral("COLORSTICK"), TC::eColorStickStyle},
        {QStringLiteral("NODRAW"), TC::eNoStyle},
        {QStringLiteral("DOTLINE"), TC::eDottedLineStyle},
        {QStringLiteral("DASHDOTLINE"), TC::eDashDotLineStyle},
        {QStringLiteral("VOLSTICK"), TC::eVolStickStyle},
        {QStringLiteral("KLINE"), TC::eKLineStyle},
        {QStringLiteral("TEXT"), TC::eTextStyle},
        {QStringLiteral("VERTLINE"), TC::eVertLineStyle},
        {QStringLiteral("VERTDOT"), TC::eVertDotStyle},
        {QStringLiteral("VERTDASHDOT"), TC::eVertDashDotStyle},
        {QStringLiteral("VERTDASHDOTDOT"), TC::eVertDashDotDotStyle},
        {QStringLiteral("ICON"), TC::eIconStyle},
        {QStringLiteral("PLAINLINE"), TC::ePlainLineStyle},
        {QStringLiteral("NUMBER"), TC::eNumberStyle},
        {QStringLiteral("TEXTFIX"), TC::eTextExStyle},
        {QStringLiteral("STICKLINE"), TC::eStickKlineStyle},
        {QStringLiteral("BOOLLINE"), TC::eBoolLineStyle},
        {QStringLiteral("WIDESTICK"), TC::eWideVolStickStyle},
        {QStringLiteral("SEGMENT"), TC::eSegmentLineStyle},
        {QStringLiteral("STACKSTICK"), TC::eStackVolStickStyle},
    };
    return styles.value(name.toUpper(), -1);
}

se::RPCFormulaMetaResult FormulaDescription::meta() const {
    se::RPCFormulaMetaResult meta;
    meta.mLineCount = lines.size();
    for (const FormulaLine &line : lines) {
        meta.mLineNames.push_back(line.name.toStdString());
        meta.mLineStyles.push_back(line.style);
        meta.mLineColors.push_back(line.color);
        meta.mLineFlags.push_back(line.fixedColor ? se::kLineFixedColor : 0);
        meta.mLineAxis.push_back(line.axis);
    }
    return meta;
}

} // namespace terminal
