#include "chartview/FormulaMenu.h"

#include "host/services/CConfigService.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/ServiceContext.h"

#include <QMenu>
#include <QStringList>

#include <utility>

namespace TC {
namespace {

using Detail = CFormulaCatalogDetail;

bool isScript(const Detail &node) {
    return node.modelType() == Detail::eScript || node.modelType() == Detail::eGroupScript;
}

bool mayNotShowModels(CConfigService &config) {
    const CUserConfig *user = config.userConfig();
    return user && !user->hasPermissionShowModel();
}

/// What the menu of replacements leaves out at its root, beside what it leaves out everywhere.
bool isLeftOutOfRoot(const Detail &node, CConfigService &config) {
    const CUserConfig *user = config.userConfig();
    return (node.modelType() == Detail::eUserMade && user && !user->hasFormulaEditorAuth()) ||
           (isScript(node) && config.isClientType(EClientType::Trading));
}

bool isHidden(const Detail &node, const QString &market, CConfigService &config) {
    static const QStringList kModels{QStringLiteral("常用模板"), QStringLiteral("择时策略示范"),
                                     QStringLiteral("PYTHON模型指标")};
    static const QStringList kHiddenWithModels{QStringLiteral("财务指标"), QStringLiteral("因子函数")};
    const QString &name = node.catalogName();
    const bool isModel = isScript(node) || kModels.contains(name);
    return (isModel && mayNotShowModels(config)) ||
           ((isModel || kHiddenWithModels.contains(name)) && config.hideModel()) ||
           (node.isFolder() && name == QStringLiteral("Level2专用") && !config.isLevel2User(market));
}

} // namespace

FormulaMenu::FormulaMenu(EIndexDisplayType displayType, IsShown isShown, Connect connect,
                         const ServiceContext &services)
    : mDisplayType(displayType), mIsShown(std::move(isShown)), mConnect(std::move(connect)),
      mServices(services) {}

QMenu *FormulaMenu::makeOverlayMenu(QWidget *parent) const {
    const auto nothing = [](const Detail &) { return false; };
    return makeMenu(parent, tr("叠加指标"), nothing, nothing);
}

QMenu *FormulaMenu::makeReplaceMenu(QWidget *parent, const QString &market) const {
    const QString title = mDisplayType == EIndexDisplayType::Sub ? tr("更改副图指标") : tr("更改指标");
    CConfigService &config = mServices.get<CConfigService>();
    return makeMenu(
        parent, title, [&config](const Detail &node) { return isLeftOutOfRoot(node, config); },
        [&config, &market](const Detail &node) { return isHidden(node, market, config); });
}

QMenu *FormulaMenu::makeMenu(QWidget *parent, const QString &title, const IsLeftOut &isLeftOutOfRoot,
                             const IsLeftOut &isLeftOut) const {
    const CFormulaCatalogDetailPtr root = mServices.get<CFormulaOperateManager>().getRootCatalog();
    auto *menu = new QMenu(title, parent);
    for (const CFormulaCatalogDetailPtr &child : root->children()) {
        if (isLeftOutOfRoot(*child) || isLeftOut(*child)) {
            continue;
        }
        if (QMenu *folder = makeFolder(menu, *child, isLeftOut)) {
            menu->addMenu(folder);
        }
    }
    if (menu->isEmpty()) {
        delete menu;
        return nullptr;
    }
    return menu;
}

QMenu *FormulaMenu::makeFolder(QWidget *parent, const Detail &folder, const IsLeftOut &isLeftOut) const {
    auto *menu = new QMenu(folder.catalogName(), parent);
    for (const CFormulaCatalogDetailPtr &child : folder.children()) {
        if (isLeftOut(*child)) {
            continue;
        }
        if (!child->isFolder()) {
            addFormula(*menu, *child);
        } else if (QMenu *inner = makeFolder(menu, *child, isLeftOut)) {
            menu->addMenu(inner);
        }
    }
    if (menu->isEmpty()) {
        delete menu;
        return nullptr;
    }
    return menu;
}

void FormulaMenu::addFormula(QMenu &menu, const Detail &node) const {
    const CFormulaDetailPtr formula = mServices.get<CFormulaOperateManager>().getFormula(node.catalogName());
    const bool ofChart = mDisplayType == EIndexDisplayType::Main;
    if (!formula || !formula->mVisible || (formula->mType == eAttachedFormula) != ofChart) {
        return;
    }
    QAction *action = menu.addAction(formula->mName);
    if (mIsShown(formula->mName)) {
        action->setCheckable(true);
        action->setChecked(true);
    }
    mConnect(action);
}

} // namespace TC
