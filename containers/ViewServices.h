#pragma once

#include "host/services/ServiceContext.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QWidget>
#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

namespace TC {

/// The parameters of a view of a context, through which its parts find their services; dialogs find them through the view.
inline boost::shared_ptr<CRealtimeUiParam> makeViewParam(QWidget &view, EIndexViewType viewType,
                                                         const ServiceContext &services) {
    services.giveTo(&view);
    return boost::make_shared<CRealtimeUiParam>(viewType, services);
}

} // namespace TC
