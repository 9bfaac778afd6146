#include "terminal/formula/FormulaTree.h"

#include "terminal/formula/FormulaWords.h"

#include <boost/make_shared.hpp>

namespace terminal {
namespace {

using TreeNode = TC::CFormulaCatalogDetail;

/// The folder of a name within a folder, made when there is none.
TC::CFormulaCatalogDetailPtr folderIn(const TC::CFormulaCatalogDetailPtr &parent, const QString &name, int type,
                                      int modelType) {
    for (const TC::CFormulaCatalogDetailPtr &child : parent->children()) {
        if (child->isFolder() && child->catalogName() == name) {
            return child;
        }
    }
    const auto folder = boost::make_shared<TreeNode>(name, type, modelType);
    parent->addChild(folder);
    return folder;
}

TC::CFormulaCatalogDetailPtr folderIn(TC::CFormulaCatalogDetailPtr parent, const QStringList &names, int type,
                                      int modelType) {
    for (const QString &name : names) {
        parent = folderIn(parent, name, type, modelType);
    }
    return parent;
}

} // namespace

TC::CFormulaCatalogDetailPtr formulaTree(const QVector<FormulaShelf::Place> &formulas,
                                         const QVector<TC::CFormulaDetailPtr> &scripts) {
    const auto root = boost::make_shared<TreeNode>();
    for (const FormulaShelf::Place &place : formulas) {
        const QString &name = place.formula->description.name;
        if (place.isOwn) {
            folderIn(root, QStringList(FormulaWords::tr("自编指标")) + place.folders, TreeNode::eUserFolder,
                     TreeNode::eUserMade)
                ->addChild(boost::make_shared<TreeNode>(name, TreeNode::eFormula, TreeNode::eUserMade));
        } else {
            folderIn(root, place.folders, TreeNode::eFolder, TreeNode::eOrdinary)
                ->addChild(boost::make_shared<TreeNode>(name, TreeNode::eFormula));
        }
    }
    for (const TC::CFormulaDetailPtr &script : scripts) {
        folderIn(root, QStringList(FormulaWords::tr("PYTHON模型指标")), TreeNode::eFolder, TreeNode::eScript)
            ->addChild(boost::make_shared<TreeNode>(script->mName, TreeNode::eFormula, TreeNode::eScript));
    }
    return root;
}

} // namespace terminal
