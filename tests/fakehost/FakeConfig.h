#pragma once

#include "host/services/CConfigService.h"

#include <QSet>

#include <optional>

namespace fakehost {

class FakeProgramConfig : public TC::CConfig {
public:
    bool conciseStyle() const override { return mConcise; }
    bool crossLineBelowTitle() const override { return mCrossLineBelowTitle; }
    bool debugLog() const override { return mDebugLog; }
    bool mConcise = false;
    bool mCrossLineBelowTitle = false;
    bool mDebugLog = false;
};

class FakeUserConfig : public TC::CUserConfig {
public:
    bool isBoardNewRules() const override { return mBoardNewRules; }
    bool hasFormulaEditorAuth() const override { return mEditorAuth; }
    bool hasPermissionShowModel() const override { return mShowModel; }
    int subIndexRefresh() const override { return mSubIndexRefresh; }
    bool quickCancel() const override { return mQuickCancel; }
    QList<boost::shared_ptr<TC::CAccount>> accounts() const override { return mAccounts; }
    QString tableConfig(int tableId) const override { return mTables.value(tableId); }
    void setTableConfig(int tableId, const QString &text) override { mTables[tableId] = text; }
    bool mBoardNewRules = false;
    bool mEditorAuth = false;
    bool mShowModel = true;
    int mSubIndexRefresh = 0;
    bool mQuickCancel = false;
    QList<boost::shared_ptr<TC::CAccount>> mAccounts;
    QMap<int, QString> mTables; ///< layouts by table id
};

/// Both configurations exist unless told; the client is of no type unless told.
class FakeConfigService : public TC::CConfigService, public TC::UserConfigInterface {
public:
    TC::CConfig *config() override { return mHasConfig ? &mConfig : nullptr; }
    TC::CUserConfig *userConfig() override { return mHasUserConfig ? &mUserConfig : nullptr; }
    bool isClientType(TC::EClientType type) override { return mClientType && *mClientType == type; }
    TC::UserConfigInterface &indexUserConfig() override { return *this; }
    bool hideModel() override { return mHideModel; }
    bool isBrokerQuoteMode() override { return mBrokerQuotes; }
    bool isLevel2User(const QString &market) override { return mLevel2Markets.contains(market); }
    TC::UserConfigRecord read() const override { return mRecord; }
    void write(const TC::UserConfigRecord &record) override { mRecord = record; }

    FakeProgramConfig mConfig;
    FakeUserConfig mUserConfig;
    bool mHasConfig = true;
    bool mHasUserConfig = true;
    bool mHideModel = false;
    bool mBrokerQuotes = false;
    QSet<QString> mLevel2Markets;
    std::optional<TC::EClientType> mClientType;
    TC::UserConfigRecord mRecord;
};

} // namespace fakehost
