#include "chartdata/PaneFormulas.h"

#include "viewmodel/CRealtimeUiParam.h"

#include <algorithm>
#include <iterator>

namespace TC {

void PaneFormulas::add(const QString &name) {
    const QString upper = name.toUpper();
    if (!mNames.contains(upper)) {
        mNames.append(upper);
    }
}

void PaneFormulas::replace(const QString &name) {
    const auto isNoMain = [this](const QString &formula) { return !mView.isMainFormula(formula); };
    mNames.erase(std::remove_if(mNames.begin(), mNames.end(), isNoMain), mNames.end());
    add(name);
}

QList<QString> PaneFormulas::sub() const {
    QList<QString> found;
    std::remove_copy_if(mNames.cbegin(), mNames.cend(), std::back_inserter(found), mIsMainGraph);
    return found;
}

QString PaneFormulas::mainGraph() const {
    const auto found = std::find_if(mNames.cbegin(), mNames.cend(), [this](const QString &name) {
        return mIsMainGraph(name) && !mView.isVolFormula(name);
    });
    return found != mNames.cend() ? *found : QString();
}

} // namespace TC
