#pragma once

#include "host/services/CFormulaOperateManager.h"
#include "terminal/config/ConfigService.h"
#include "terminal/formula/FormulaShelf.h"
#include "terminal/formula/FormulaTrials.h"
#include "terminal/formula/LuaFormula.h"
#include "terminal/threads/WorkLanes.h"

#include <QMap>

#include <functional>
#include <mutex>

namespace terminal {

/// The formulas that the terminal offers, named in capitals and found in any letter case: those built in, and over them
/// the user's own.
///
/// A file of the user's folder takes the place of the built-in formula of the same name, or is a formula of its own. One
/// that is faulty is told, and the built-in formula stands. They are tried in the background: construction waits for them
/// no longer than kLongestStart, and what comes later is entered from the event loop. Folders of the files are those of the tree, what the user
/// added stands in a folder of its own, script models in the last one, and built-in formulas outside all folders are not offered in menus. Values of
/// parameters are kept in the part "formulas" of the configuration.
///
/// A record never changes: an edit or another parameter makes a new one, and those who hold the old one keep it. Any
/// thread; the functions that change a formula on the user-interface thread.
class FormulaCatalogue : public TC::CFormulaOperateManager {
public:
    using ChangeListener = std::function<void(const QString &name)>;

    static constexpr int kLongestStart = 2000; ///< milliseconds

    /// `userFolder` holds the user's own files and `scriptFolder` the script models; empty for none. `sink` hears of
    /// faulty files, at once and later.
    explicit FormulaCatalogue(ConfigService &config, QString userFolder = {}, QString scriptFolder = {},
                              FormulaErrorSink sink = {});
    ~FormulaCatalogue() override;

    TC::CFormulaDetailPtr getFormula(const QString &name) override;
    TC::CFormulaCatalogDetailPtr getRootCatalog() override;
    /// Formulas are ready as they are: true for those of the catalogue.
    bool genLuaFormula(const QString &fileName, const QString &name) override;
    QString pythonDir() override { return mScriptFolder; }

    TC::CFormulaParameters parameters(const QString &name) override;
    QString setParameters(const QString &name, const TC::CFormulaParameters &parameters) override;

    TC::CFormulaSource source(const QString &name) override;
    QString newFormulaText(const QString &name) override;
    TC::CFormulaFault checkFormula(const QString &text) override;
    TC::CFormulaFault saveFormula(QString &name, const QString &text) override;
    QString restoreFormula(const QString &name) override;

    /// The file that a request names, with the values of its parameters; nothing when there is none.
    std::optional<LuaFormulaFile> fileOf(const TC::CFormulaParam &param) const;
    /// Names of all formulas in the order of the tree.
    QStringList names() const;
    /// What the file of a formula says about itself; nothing for an unknown one.
    std::optional<FormulaDescription> description(const QString &name) const;
    /// The lane of a request that has not run yet: that of prices for the built-in formulas that are not offered in
    /// menus, that of quick work for the other built-in ones.
    WorkLane laneOf(const TC::CFormulaParam &param) const;
    /// Is called after a formula or its parameters have changed.
    void setChangeListener(ChangeListener listener);

private:
    void readBuiltin();
    void readUser();
    void takeUser(const FormulaFile &file, const LuaFormulaTrial &trial);
    void readScripts();
    /// The formula of a user's file; null, with the reason, when it is faulty.
    CataloguedFormulaPtr userFormula(const FormulaFile &file, FormulaError &error) const;
    /// The formula with its file brought to what files are like today: names in capitals.
    CataloguedFormulaPtr migrated(const CataloguedFormulaPtr &formula) const;
    CataloguedFormulaPtr makeFormula(const FormulaFile &file, const FormulaDescription &description,
                                     bool isUserMade) const;
    /// The values of parameters that were kept for a name.
    QJsonObject keptValues(const QString &name) const;
    TC::CFormulaDetailPtr script(const QString &name) const;
    QString setScriptParameters(const QString &name, const TC::CFormulaParameters &parameters);
    QString fileToSave(const QString &name) const;
    void buildTree();
    void tell(const FormulaError &error) const;
    void changed(const QString &name);

    ConfigService &mConfig;
    const QString mUserFolder;
    const QString mScriptFolder;
    const FormulaErrorSink mSink;
    ChangeListener mListener;
    FormulaShelf mFormulas;
    bool mIsOpen = false; ///< constructed: what comes now is told
    mutable std::mutex mLock; ///< guards scripts and root
    QMap<QString, TC::CFormulaDetailPtr> mScripts; ///< script models by name, as their files are
    QMap<QString, TC::CFormulaDetailPtr> mScriptRecords; ///< with the values of their parameters
    TC::CFormulaCatalogDetailPtr mRoot;
    std::unique_ptr<FormulaTrials> mTrials; ///< of the user's files; goes first
};

} // namespace terminal
