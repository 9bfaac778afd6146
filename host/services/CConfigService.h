#pragma once

#include "host/Export.h"
#include "host/records/CAccount.h"
#include "host/records/Enumerations.h"
#include "host/records/UserConfigRecord.h"
#include "host/services/CSingletonT.h"

#include <QList>
#include <QMap>
#include <QString>
#include <boost/shared_ptr.hpp>

namespace TC {

/// Configuration of the program.
class TIMESHARE_EXPORT CConfig {
public:
    virtual ~CConfig() = default;
    virtual bool conciseStyle() const { return false; }
    /// The vertical cross line starts beneath the title strip, whatever its height.
    virtual bool crossLineBelowTitle() const { return false; }
    /// Request traffic of sub panes is logged point by point.
    virtual bool debugLog() const { return false; }
};

/// Configuration of the user who is logged in.
class TIMESHARE_EXPORT CUserConfig {
public:
    virtual ~CUserConfig() = default;
    virtual bool isBoardNewRules() const { return false; }
    virtual bool hasFormulaEditorAuth() const { return false; }
    /// Script models are offered in the catalogue's menus.
    virtual bool hasPermissionShowModel() const { return false; }
    /// Refresh interval of native formulas in sub panes, in seconds.
    virtual int subIndexRefresh() const { return 0; }
    /// Tasks are cancelled at once, without the dialog.
    virtual bool quickCancel() const { return false; }
    /// The accounts that the user has set up; an entry may be null.
    virtual QList<boost::shared_ptr<CAccount>> accounts() const { return {}; }
    /// Saved layout of a table.
    virtual QString tableConfig(int /*tableId*/) const { return QString(); }
    virtual void setTableConfig(int /*tableId*/, const QString & /*text*/) {}
};

/// The host's configuration.
class TIMESHARE_EXPORT CConfigService {
public:
    virtual ~CConfigService() = default;
    virtual CConfig *config() = 0; ///< may be null
    virtual CUserConfig *userConfig() = 0; ///< may be null
    virtual bool isClientType(EClientType type) = 0;
    virtual UserConfigInterface &indexUserConfig() = 0;
    /// Models are hidden from catalogues.
    virtual bool hideModel() = 0;
    /// Quotes are those of a broker.
    virtual bool isBrokerQuoteMode() = 0;
    /// The user has the ten-level quotes of a market.
    virtual bool isLevel2User(const QString &market) = 0;
};

/// Program configuration; null when there is none.
inline CConfig *getConfig() {
    return CSingletonT<CConfigService>::instance().config();
}
/// User configuration; null when nobody is logged in.
inline CUserConfig *getUserConfig() {
    return CSingletonT<CConfigService>::instance().userConfig();
}
/// Whether quotes are those of a broker.
inline bool isBrokerQuoteMode() {
    return CSingletonT<CConfigService>::instance().isBrokerQuoteMode();
}
/// Whether the user has the ten-level quotes of a market.
inline bool isLevel2User(const QString &market) {
    return CSingletonT<CConfigService>::instance().isLevel2User(market);
}

struct CAppConfig {
    static bool isClientType(EClientType type) {
        return CSingletonT<CConfigService>::instance().isClientType(type);
    }
    static bool isClientType(int type) { return isClientType(static_cast<EClientType>(type)); }
};

struct SingletonManager {
    static UserConfigInterface &getIndexUserConfig() {
        return CSingletonT<CConfigService>::instance().indexUserConfig();
    }
};

struct ConfigCollector {
    static bool getHideModel() { return CSingletonT<CConfigService>::instance().hideModel(); }
};

} // namespace TC
