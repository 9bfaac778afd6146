#include "host/services/DefaultServices.h"

#include "host/services/CFormulaManager.h"
#include "host/services/CHostClock.h"
#include "host/services/CLinkageManager.h"
#include "host/services/CStockManager.h"
#include "host/services/ServiceContext.h"
#include "toolkit/services/DefaultCatalogues.h"
#include "toolkit/services/DefaultDesk.h"
#include "toolkit/services/DefaultTrading.h"

#include <algorithm>

namespace TC {
namespace {

/// A service that stands in its place while it lives and nobody else does.
template <class Base, class Service> class InstalledDefault {
public:
    InstalledDefault() {
        if (!CSingletonT<Base>::isInstalled()) {
            CSingletonT<Base>::install(&mService);
        }
    }
    ~InstalledDefault() {
        Base *standing = CSingletonT<Base>::install(nullptr);
        if (standing != &mService) {
            CSingletonT<Base>::install(standing);
        }
    }
    InstalledDefault(const InstalledDefault &) = delete;
    InstalledDefault &operator=(const InstalledDefault &) = delete;

private:
    Service mService;
};

template <class... Services> std::vector<std::string> namesOfMissing(const ServiceContext &services) {
    std::vector<std::string> names;
    const auto look = [&](bool isInstalled, const std::type_info &type) {
        if (!isInstalled) {
            names.push_back(ServicePlaces::nameOf(type));
        }
    };
    (look(services.has<Services>(), typeid(Services)), ...);
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

std::vector<std::string> missingServices() {
    return missingServices(ServiceContext::processWide());
}

std::vector<std::string> missingServices(const ServiceContext &services) {
    return namesOfMissing<CHostClock, CStockManager, CFormulaManager, CTradeOpenCloseTimeManager,
                          CSectorManager, CIndexManager, kvservice::StockTypeCenter, se::IdGenerator,
                          CMultiRequestDataManager, CFormulaOperateManager, CLinkageManager, CReplayManager,
                          CStrategyTradeManager, CFileClient, CConfigService, CEnhanceDrawManager,
                          CIndexMainWindowHelper, CIndexTemplateManager, CSelfStockManager, CSmartKeyManager>(
        services);
}

struct DefaultServices::Services {
    InstalledDefault<CTradeOpenCloseTimeManager, DefaultTradeTimes> mTimes;
    InstalledDefault<CSectorManager, DefaultSectors> mSectors;
    InstalledDefault<CIndexManager, DefaultIndexes> mIndexes;
    InstalledDefault<kvservice::StockTypeCenter, DefaultTypes> mTypes;
    InstalledDefault<se::IdGenerator, DefaultIds> mIds;
    InstalledDefault<CMultiRequestDataManager, DefaultHistories> mHistories;
    InstalledDefault<CFormulaOperateManager, DefaultFormulas> mFormulas;
    InstalledDefault<CLinkageManager, CLinkageManager> mLinkage;
    InstalledDefault<CReplayManager, DefaultReplay> mReplay;
    InstalledDefault<CStrategyTradeManager, DefaultStrategies> mStrategies;
    InstalledDefault<CFileClient, DefaultFiles> mFiles;
    InstalledDefault<CConfigService, DefaultConfig> mConfig;
    InstalledDefault<CEnhanceDrawManager, DefaultDrawings> mDrawings;
    InstalledDefault<CIndexMainWindowHelper, DefaultMainWindow> mMainWindow;
    InstalledDefault<CIndexTemplateManager, DefaultTemplates> mTemplates;
    InstalledDefault<CSelfStockManager, DefaultSelfStocks> mSelfStocks;
    InstalledDefault<CSmartKeyManager, DefaultSmartKeys> mSmartKeys;
};

DefaultServices::DefaultServices() : mServices(std::make_unique<Services>()) {}

DefaultServices::~DefaultServices() = default;

} // namespace TC
