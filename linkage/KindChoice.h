#pragma once

#include <QMap>
#include <QString>

#include <array>
#include <cstddef>

class QWidget;

namespace GZ {
class CCheckBox;
class CRadioButton;
} // namespace GZ

namespace TC {

class CLinkageManager;

/// Which kinds of marks and curves of the user's trades are shown, and whether those of chosen strategies alone: a check
/// box for each kind and two radio buttons. Profits and balances are worked out only while they are wanted.
class KindChoice {
public:
    using Flags = std::array<bool, 8>; ///< by ELinkageShow

    /// `linkage` works out profits and balances.
    explicit KindChoice(CLinkageManager &linkage);

    /// The controls, without a parent until they are placed; whoever places them owns them.
    QWidget *widget() const { return mWidget; }
    const Flags &flags() const { return mFlags; }

    /// By the user, whose box or button shows it already.
    void show(std::size_t kind, bool shown);
    void filterStrategies(bool filter);

    /// Puts what the controls show into a map, by names.
    void store(QMap<QString, bool> &kept) const;
    /// Takes over what the map holds of these. "seebystrategy" is read the other way round than it is stored, and is
    /// shown alone; no calculator is started or stopped.
    void load(const QMap<QString, bool> &kept);

private:
    CLinkageManager &mLinkage;
    QWidget *mWidget;
    std::array<GZ::CCheckBox *, 7> mBoxes{}; ///< by ELinkageShow
    GZ::CRadioButton *mAllButton;
    GZ::CRadioButton *mStrategiesButton;
    Flags mFlags{};
};

} // namespace TC
