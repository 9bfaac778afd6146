#include "terminal/formula/FormulaTree.h"

#include <QCoreApplication>

#include <boost/make_shared.hpp>

namespace terminal {
namespace {

using Node = TC::CFormulaCatalogDetail;

QString tr(const char *text) {
    return QCoreApplication::translate("FormulaCatalogue", text);
}

/// The folder of a name within a folder, made when there is none.
TC::CFormulaCatalogDetailPtr folderIn(const TC::CFormulaCatalogDetailPtr &parent, const QString &name, int type,
                                      int modelType) {
    for (const TC::CFormulaCatalogDetailPtr &child : parent->children()) {
        if (child->isFolder() && child->catalogName() == name) {
            return child;
        }
    }
    const auto folder = boost::make_shared<Node>(name, type, modelType);
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
    const auto root = boost::make_shared<Node>();
    for (const FormulaShelf::Place &place : formulas) {
        const QString &name = place.formula->description.name;
        if (place.isOwn) {
            folderIn(root, QStringList(tr("自编指标")) + place.folders, Node::eUserFolder, Node::eUserMade)
                ->addChild(boost::make_shared<Node>(name, Node::eFormula, Node::eUserMade));
        } else {
            folderIn(root, place.folders, Node::eFolder, Node::eOrdinary)
                ->addChild(boost::make_shared<Node>(name, Node::eFormula));
        }
    }
    for (const TC::CFormulaDetailPtr &script : scripts) {
        folderIn(root, QStringList(tr("PYTHON模型指标")), Node::eFolder, Node::eScript)
            ->addChild(boost::make_shared<Node>(script->mName, Node::eFormula, Node::eScript));
    }
    return root;
}

} // namespace terminal
