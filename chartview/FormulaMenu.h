#pragma once

#include "host/records/CFormulaCatalogDetail.h"
#include "host/records/CFormulaDetail.h"
#include "host/records/Enumerations.h"
#include "host/services/ServiceContext.h"

#include <QCoreApplication>
#include <QString>

#include <functional>

class QAction;
class QMenu;
class QWidget;

namespace TC {

/// The menus in which the formula catalogue offers itself to a pane: one entry a formula, in submenus as the catalogue
/// has folders. A folder without an entry has no submenu.
class FormulaMenu {
    Q_DECLARE_TR_FUNCTIONS(TC::FormulaMenu)
public:
    using IsShown = std::function<bool(const QString &formula)>;
    /// Connects an entry to what it does.
    using Connect = std::function<void(QAction *)>;

    /// The pane's display type says which formulas pass, `isShown` which entries are checked.
    FormulaMenu(EIndexDisplayType displayType, IsShown isShown, Connect connect,
                const ServiceContext &services);

    /// The menu of formulas to be put over the chart, with everything that the catalogue has. Null when it is empty.
    QMenu *makeOverlayMenu(QWidget *parent) const;
    /// The menu of formulas to be shown in place of the present ones: without what the user may not see, and for
    /// an instrument of `market`. Null when it is empty.
    QMenu *makeReplaceMenu(QWidget *parent, const QString &market) const;

private:
    using IsLeftOut = std::function<bool(const CFormulaCatalogDetail &)>;

    QMenu *makeMenu(QWidget *parent, const QString &title, const IsLeftOut &isLeftOutOfRoot,
                    const IsLeftOut &isLeftOut) const;
    QMenu *makeFolder(QWidget *parent, const CFormulaCatalogDetail &folder, const IsLeftOut &isLeftOut) const;
    void addFormula(QMenu &menu, const CFormulaCatalogDetail &node) const;

    EIndexDisplayType mDisplayType;
    IsShown mIsShown;
    Connect mConnect;
    const ServiceContext &mServices;
};

} // namespace TC
