#pragma once

#include "host/Export.h"
#include "host/services/CSingletonT.h"

#include <QString>

#include <string>

namespace se {

/// Fresh ids.
class TIMESHARE_EXPORT IdGenerator {
public:
    virtual ~IdGenerator() = default;

    /// A request id, unique among live requests.
    static std::string genId(int panel, const QString &formula, const QString &code) {
        return TC::CSingletonT<IdGenerator>::instance().formulaRequestId(panel, formula, code);
    }

    virtual std::string formulaRequestId(int panel, const QString &formula, const QString &code) = 0;
    virtual int requestRoundId() = 0;
};

} // namespace se

namespace TC {

/// A fresh integer request id.
inline int genRequestID() {
    return CSingletonT<se::IdGenerator>::instance().requestRoundId();
}

} // namespace TC
