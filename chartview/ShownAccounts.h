#pragma once

#include <QList>
#include <QString>

namespace TC {

class CRealtimeUiParam;

/// Whose trades a view shows: the accounts of the kind that its instrument is traded in, for futures or for stocks. The
/// lists stand in the view parameters, where the account view is on as long as either has an account.
class ShownAccounts {
public:
    explicit ShownAccounts(CRealtimeUiParam &uiParam) : mUiParam(uiParam) {}

    /// Those of the instrument's kind that are shown.
    QList<QString> &list() const;
    /// Those of that kind that the user has.
    QList<QString> offered() const;
    /// Whether an account is shown, of either kind.
    bool isListed(const QString &account) const;
    /// Switches the account view as the lists ask for.
    void switchView() const;

private:
    bool isFutures() const;

    CRealtimeUiParam &mUiParam;
};

} // namespace TC
