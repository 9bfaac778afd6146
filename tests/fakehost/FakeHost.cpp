#include "tests/fakehost/FakeHost.h"

namespace fakehost {

FakeHost::FakeHost() {
    TC::CSingletonT<TC::CHostClock>::install(&mClock);
    TC::CSingletonT<TC::CStockManager>::install(&mStocks);
    TC::CSingletonT<TC::CTradeOpenCloseTimeManager>::install(&mTimes);
    TC::CSingletonT<TC::CSectorManager>::install(&mSectors);
    TC::CSingletonT<TC::CIndexManager>::install(&mIndexes);
    TC::CSingletonT<kvservice::StockTypeCenter>::install(&mTypes);
    TC::CSingletonT<se::IdGenerator>::install(&mIds);
    TC::CSingletonT<TC::CConfigService>::install(&mConfig);
    TC::CSingletonT<TC::CFormulaManager>::install(&mFormulas);
    TC::CSingletonT<TC::CFormulaOperateManager>::install(&mCatalogue);
    TC::CSingletonT<TC::CMultiRequestDataManager>::install(&mCache);
    TC::CSingletonT<TC::CReplayManager>::install(&mReplay);
    TC::CSingletonT<TC::CStrategyTradeManager>::install(&mStrategies);
    TC::CSingletonT<TC::CLinkageManager>::install(&mLinkage);
    TC::CManualSingletonT<TC::CFileClient>::install(&mFiles);
    TC::CSingletonT<TC::CEnhanceDrawManager>::install(&mEnhance);
    TC::CSingletonT<TC::CSmartKeyManager>::install(&mSmartKeys);
    TC::CSingletonT<TC::CIndexTemplateManager>::install(&mTemplates);
    TC::CSingletonT<TC::CSelfStockManager>::install(&mSelfStocks);
    TC::CSingletonT<TC::CIndexMainWindowHelper>::install(&mMainWindow);
}

FakeHost::~FakeHost() {
    // Callbacks keep their objects alive, which call on the services when they go.
    mFormulas.mLive.clear();
    mReplay.mLive.clear();
    TC::CSingletonT<TC::CHostClock>::install(nullptr);
    TC::CSingletonT<TC::CStockManager>::install(nullptr);
    TC::CSingletonT<TC::CTradeOpenCloseTimeManager>::install(nullptr);
    TC::CSingletonT<TC::CSectorManager>::install(nullptr);
    TC::CSingletonT<TC::CIndexManager>::install(nullptr);
    TC::CSingletonT<kvservice::StockTypeCenter>::install(nullptr);
    TC::CSingletonT<se::IdGenerator>::install(nullptr);
    TC::CSingletonT<TC::CConfigService>::install(nullptr);
    TC::CSingletonT<TC::CFormulaManager>::install(nullptr);
    TC::CSingletonT<TC::CFormulaOperateManager>::install(nullptr);
    TC::CSingletonT<TC::CMultiRequestDataManager>::install(nullptr);
    TC::CSingletonT<TC::CReplayManager>::install(nullptr);
    TC::CSingletonT<TC::CStrategyTradeManager>::install(nullptr);
    TC::CSingletonT<TC::CLinkageManager>::install(nullptr);
    TC::CManualSingletonT<TC::CFileClient>::install(nullptr);
    TC::CSingletonT<TC::CEnhanceDrawManager>::install(nullptr);
    TC::CSingletonT<TC::CSmartKeyManager>::install(nullptr);
    TC::CSingletonT<TC::CIndexTemplateManager>::install(nullptr);
    TC::CSingletonT<TC::CSelfStockManager>::install(nullptr);
    TC::CSingletonT<TC::CIndexMainWindowHelper>::install(nullptr);
}

} // namespace fakehost
