#include "terminal/formula/FormulaDescription.h"

#include <QHash>

namespace terminal {

int drawStyleOf(const QString &name) {
    static const QHash<QString, int> styles = {
        {QStringLiteral("LINE"), 0},
        {QStringLiteral("CIRCLEDOT"), 1},
        {QStringLiteral("COLORSTICK"), 2},
        {QStringLiteral("NODRAW"), 3},
        {QStringLiteral("DOTLINE"), 4},
        {QStringLiteral("DASHDOTLINE"), 5},
        {QStringLiteral("VOLSTICK"), 10},
        {QStringLiteral("KLINE"), 12},
        {QStringLiteral("TEXT"), 13},
        {QStringLiteral("VERTLINE"), 14},
        {QStringLiteral("VERTDOT"), 15},
        {QStringLiteral("VERTDASHDOT"), 17},
        {QStringLiteral("VERTDASHDOTDOT"), 18},
        {QStringLiteral("ICON"), 26},
        {QStringLiteral("PLAINLINE"), 27},
        {QStringLiteral("NUMBER"), 28},
        {QStringLiteral("TEXTFIX"), 31},
        {QStringLiteral("STICKLINE"), 36},
        {QStringLiteral("BOOLLINE"), 37},
        {QStringLiteral("WIDESTICK"), 40},
        {QStringLiteral("SEGMENT"), 41},
        {QStringLiteral("STACKSTICK"), 42},
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
