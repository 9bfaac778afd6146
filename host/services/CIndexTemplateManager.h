#pragma once

#include "host/Export.h"
#include "host/records/CIndexTemplate.h"
#include "host/services/CSingletonT.h"

#include <QString>
#include <QVector>

namespace TC {

/// What the template bar offers: single formulas and the user's templates.
class TIMESHARE_EXPORT CIndexTemplateManager {
public:
    virtual ~CIndexTemplateManager() = default;

    /// Formulas of the bar, in order.
    virtual QVector<QString> indexes() = 0;
    virtual QVector<CIndexTemplate> templates() = 0;
    /// Keeps a template; one of that name is replaced.
    virtual void saveTemplate(const CIndexTemplate &saved) = 0;
    virtual void removeTemplate(const QString &name) = 0;
};

} // namespace TC
