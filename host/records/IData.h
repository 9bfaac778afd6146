#pragma once

#include "host/Export.h"

#include <boost/shared_ptr.hpp>

#include <string>

namespace kvservice {

/// Base of every record of the trade service. Records are read-only for the chart view.
class TIMESHARE_EXPORT IData {
public:
    virtual ~IData() = default;
    /// Key of the record among those of its kind.
    virtual std::string getKey() const = 0;
};

using IDataPtr = boost::shared_ptr<IData>;

} // namespace kvservice
