#include "tests/fakehost/FakeHost.h"

#include "host/services/ServiceContext.h"

#include <type_traits>

namespace fakehost {

namespace {

/// Installs a service for the whole program, or takes it away.
struct ForProgram {
    template <class Service> void operator()(Service *service) const {
        TC::CSingletonT<Service>::install(isThere ? service : nullptr);
    }
    bool isThere;
};

} // namespace

template <class Use> void FakeServices::forEach(Use use) {
    use(static_cast<TC::CHostClock *>(&mClock));
    use(static_cast<TC::CStockManager *>(&mStocks));
    use(static_cast<TC::CTradeOpenCloseTimeManager *>(&mTimes));
    use(static_cast<TC::CSectorManager *>(&mSectors));
    use(static_cast<TC::CIndexManager *>(&mIndexes));
    use(static_cast<kvservice::StockTypeCenter *>(&mTypes));
    use(static_cast<se::IdGenerator *>(&mIds));
    use(static_cast<TC::CConfigService *>(&mConfig));
    use(static_cast<TC::CFormulaManager *>(&mFormulas));
    use(static_cast<TC::CFormulaOperateManager *>(&mCatalogue));
    use(static_cast<TC::CMultiRequestDataManager *>(&mCache));
    use(static_cast<TC::CReplayManager *>(&mReplay));
    use(static_cast<TC::CStrategyTradeManager *>(&mStrategies));
    use(static_cast<TC::CLinkageManager *>(&mLinkage));
    use(static_cast<TC::CFileClient *>(&mFiles));
    use(static_cast<TC::CEnhanceDrawManager *>(&mEnhance));
    use(static_cast<TC::CSmartKeyManager *>(&mSmartKeys));
    use(static_cast<TC::CIndexTemplateManager *>(&mTemplates));
    use(static_cast<TC::CSelfStockManager *>(&mSelfStocks));
    use(static_cast<TC::CIndexMainWindowHelper *>(&mMainWindow));
}

FakeServices::~FakeServices() {
    // Callbacks keep their objects alive, which call on the services when they go.
    mFormulas.mLive.clear();
    mReplay.mLive.clear();
}

void FakeServices::installInto(TC::ServiceContext &context) {
    forEach([&context](auto *service) { context.install<std::remove_pointer_t<decltype(service)>>(service); });
}

FakeHost::FakeHost() {
    forEach(ForProgram{true});
}

FakeHost::~FakeHost() {
    mFormulas.mLive.clear();
    mReplay.mLive.clear();
    forEach(ForProgram{false});
}

} // namespace fakehost
