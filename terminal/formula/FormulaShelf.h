#pragma once

#include "host/services/CFormulaOperateManager.h"
#include "terminal/formula/FormulaDescription.h"
#include "terminal/formula/FormulaFiles.h"

#include <QMap>

#include <functional>
#include <memory>
#include <mutex>

namespace terminal {

/// A formula that can be used. It never changes: an edit or another parameter makes a new one.
struct CataloguedFormula {
    FormulaFile file;
    FormulaDescription description;
    bool isUserMade = false;
    TC::CFormulaDetailPtr record; ///< with the values of its parameters
};
using CataloguedFormulaPtr = std::shared_ptr<const CataloguedFormula>;

/// The formulas by name in any letter case: those built in, over them the user's own, and the user's faulty files,
/// which stand aside.
///
/// A file of the user's is a formula or a faulty one, never both. Any thread.
class FormulaShelf {
public:
    /// A formula and its place in the tree.
    struct Place {
        CataloguedFormulaPtr formula;
        QStringList folders;
        bool isOwn = false; ///< not in the place of a built-in one
    };

    void addBuiltin(const CataloguedFormulaPtr &formula);
    /// Puts a user's formula in the place of the one of its name, faulty or not.
    void putUser(const CataloguedFormulaPtr &formula);
    void addFaulty(const FormulaFile &file);
    /// The built-in formula stands again.
    void removeUser(const QString &name);
    /// Puts what `make` answers in the place of the formulas of a name, the built-in one and the user's.
    void renew(const QString &name, const std::function<CataloguedFormulaPtr(const CataloguedFormula &)> &make);

    /// The user's formula, or else the built-in one; null for neither.
    CataloguedFormulaPtr find(const QString &name) const;
    bool hasUser(const QString &name) const;
    TC::CFormulaSource source(const QString &name) const;
    /// The user's file of a name, faulty or not; empty when there is none.
    QString userPath(const QString &name) const;
    /// All that can be used: the built-in formulas in the order of their files, then the user's own by name.
    QVector<Place> places() const;

private:
    using Formulas = QMap<QString, CataloguedFormulaPtr>; ///< by upper-case name

    mutable std::mutex mLock; ///< guards what follows
    Formulas mBuiltin;
    Formulas mUser;
    QMap<QString, FormulaFile> mFaulty; ///< by the upper-case name of the file
    QStringList mOrder; ///< upper-case names of the built-in formulas
};

} // namespace terminal
