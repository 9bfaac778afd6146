#include "terminal/config/IndexTemplateService.h"

#include <QJsonArray>

namespace terminal {
namespace {

const QString kTemplateSection = QStringLiteral("indexTemplates");

} // namespace

QVector<QString> IndexTemplateService::indexes() {
    QVector<QString> known;
    for (const char *name : {"KDJ", "MACD", "VOL", "CCI", "RSI", "OBV", "PSY", "AD", "CR"}) {
        if (mFormulas.getFormula(QLatin1String(name))) {
            known.append(QLatin1String(name));
        }
    }
    return known;
}

QVector<TC::CIndexTemplate> IndexTemplateService::templates() {
    QVector<TC::CIndexTemplate> kept;
    const QJsonObject section = mConfig.section(kTemplateSection);
    for (auto entry = section.begin(); entry != section.end(); ++entry) {
        TC::CIndexTemplate named{entry.key(), {}};
        for (const QJsonValue &formula : entry.value().toArray()) {
            if (mFormulas.getFormula(formula.toString())) {
                named.mFormulas.append(formula.toString());
            }
        }
        if (!named.mFormulas.isEmpty()) {
            kept.append(named);
        }
    }
    return kept;
}

void IndexTemplateService::saveTemplate(const TC::CIndexTemplate &saved) {
    QJsonArray formulas;
    for (const QString &formula : saved.mFormulas) {
        formulas.append(formula);
    }
    mConfig.changeSection(kTemplateSection, {{saved.mName, formulas}});
}

void IndexTemplateService::removeTemplate(const QString &name) {
    mConfig.changeSection(kTemplateSection, {{name, QJsonValue()}});
}

} // namespace terminal
