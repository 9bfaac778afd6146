#pragma once

#include "host/services/CFormulaOperateManager.h"
#include "host/services/CIndexTemplateManager.h"
#include "terminal/config/ConfigService.h"

namespace terminal {

/// The template bar's formulas, and the user's templates in the configuration.
class IndexTemplateService : public TC::CIndexTemplateManager {
public:
    IndexTemplateService(ConfigService &config, TC::CFormulaOperateManager &formulas)
        : mConfig(config), mFormulas(formulas) {}

    /// The usual formulas of sub panes, as far as the catalogue has them.
    QVector<QString> indexes() override;
    /// By name. What the configuration has in another form is passed over, and so are formulas that are gone; a
    /// template without any is none.
    QVector<TC::CIndexTemplate> templates() override;
    void saveTemplate(const TC::CIndexTemplate &saved) override;
    void removeTemplate(const QString &name) override;

private:
    ConfigService &mConfig;
    TC::CFormulaOperateManager &mFormulas;
};

} // namespace terminal
