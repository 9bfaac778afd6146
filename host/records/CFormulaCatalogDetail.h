#pragma once

#include <QString>
#include <QVector>
#include <boost/shared_ptr.hpp>

#include <utility>

namespace TC {

class CFormulaCatalogDetail;
using CFormulaCatalogDetailPtr = boost::shared_ptr<CFormulaCatalogDetail>;

/// One node of the tree of the formula catalogue: a folder, or a formula by its name. Made by the host and unchanged
/// from then on; whoever holds the root holds the whole tree.
class CFormulaCatalogDetail {
public:
    /// Kind of a node. Folders are eFolder and eUserFolder, everything else is a formula.
    enum ECatalogType : int { eFolder = 0, eUserFolder = 1, eFormula = 2 };
    /// What a folder holds, for those who hide some of them.
    enum EModelType : int {
        eOrdinary = 0,
        eUserMade = 1, ///< formulas that the user has written
        eScript = 4, ///< script models
        eGroupScript = 5, ///< script models over a group of instruments
    };

    explicit CFormulaCatalogDetail(QString name = {}, int type = eFolder, int modelType = eOrdinary)
        : mName(std::move(name)), mType(type), mModelType(modelType) {}

    /// Name of the folder, or of the formula as CFormulaOperateManager::getFormula takes it.
    const QString &catalogName() const { return mName; }
    int catalogType() const { return mType; }
    bool isFolder() const { return mType == eFolder || mType == eUserFolder; }
    int modelType() const { return mModelType; }
    /// The nodes of a folder in the order of showing; empty for a formula.
    const QVector<CFormulaCatalogDetailPtr> &children() const { return mChildren; }

    void addChild(CFormulaCatalogDetailPtr child) { mChildren.append(std::move(child)); }

private:
    QString mName;
    int mType;
    int mModelType;
    QVector<CFormulaCatalogDetailPtr> mChildren;
};

} // namespace TC
