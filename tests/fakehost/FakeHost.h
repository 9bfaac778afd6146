#pragma once

#include "tests/fakehost/CallLog.h"
#include "tests/fakehost/FakeCatalogues.h"
#include "tests/fakehost/FakeClock.h"
#include "tests/fakehost/FakeConfig.h"
#include "tests/fakehost/FakeFileClient.h"
#include "tests/fakehost/FakeFormulaServices.h"
#include "tests/fakehost/FakeLinkageManager.h"
#include "tests/fakehost/FakeStockManager.h"
#include "tests/fakehost/FakeWindowServices.h"

namespace TC {
class ServiceContext;
} // namespace TC

namespace fakehost {

/// Recording doubles of all services.
class FakeServices {
public:
    FakeServices() = default;
    ~FakeServices();
    FakeServices(const FakeServices &) = delete;
    FakeServices &operator=(const FakeServices &) = delete;

    /// For the views of a context, which go first.
    void installInto(TC::ServiceContext &context);

    CallLog mLog; ///< calls of all services, in order
    FakeClock mClock;
    FakeStockManager mStocks{mLog};
    FakeTradeTimes mTimes;
    FakeSectorManager mSectors;
    FakeIndexManager mIndexes;
    FakeStockTypes mTypes;
    FakeIdGenerator mIds;
    FakeConfigService mConfig;
    FakeFormulaManager mFormulas{mLog};
    FakeFormulaOperateManager mCatalogue{mLog};
    FakeHistoryCache mCache{mLog};
    FakeReplayManager mReplay{mLog};
    FakeStrategyTradeManager mStrategies{mLog};
    FakeLinkageManager mLinkage{mLog};
    FakeFileClient mFiles{mLog};
    FakeEnhanceDrawManager mEnhance{mLog};
    FakeSmartKeyManager mSmartKeys;
    FakeIndexTemplateManager mTemplates;
    FakeSelfStockManager mSelfStocks;
    FakeIndexMainWindowHelper mMainWindow{mLog};

protected:
    template <class Use> void forEach(Use use);
};

/// A whole host of recording doubles, installed for the program while it lives. Make it the first member of a fixture.
class FakeHost : public FakeServices {
public:
    FakeHost();
    ~FakeHost();
};

} // namespace fakehost
