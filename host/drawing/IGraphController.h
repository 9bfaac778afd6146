#pragma once

#include "host/Export.h"

namespace TC {

/// Hears of the drawings that the user makes on a graph.
class TIMESHARE_EXPORT IGraphController {
public:
    virtual ~IGraphController() = default;
    /// A drawing was finished; `notification` belongs to the drawing layer and is valid during the call. It
    /// points at a bson::BSONObj, the drawing as it stands in IGraphWidget::getParam.
    virtual void onGraphFinished(void *notification) = 0;
};

} // namespace TC
