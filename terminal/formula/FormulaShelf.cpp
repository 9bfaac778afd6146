#include "terminal/formula/FormulaShelf.h"

#include <QFileInfo>

namespace terminal {

void FormulaShelf::addBuiltin(const CataloguedFormulaPtr &formula) {
    std::lock_guard<std::mutex> hold(mLock);
    const QString upper = formula->description.name.toUpper();
    mBuiltin.insert(upper, formula);
    mOrder.append(upper);
}

void FormulaShelf::putUser(const CataloguedFormulaPtr &formula) {
    std::lock_guard<std::mutex> hold(mLock);
    const QString upper = formula->description.name.toUpper();
    mUser.insert(upper, formula);
    mFaulty.remove(upper);
}

void FormulaShelf::addFaulty(const FormulaFile &file) {
    std::lock_guard<std::mutex> hold(mLock);
    mFaulty.insert(QFileInfo(file.path).completeBaseName().toUpper(), file);
}

void FormulaShelf::removeUser(const QString &name) {
    std::lock_guard<std::mutex> hold(mLock);
    mUser.remove(name.toUpper());
    mFaulty.remove(name.toUpper());
}

void FormulaShelf::renew(const QString &name,
                         const std::function<CataloguedFormulaPtr(const CataloguedFormula &)> &make) {
    const QString upper = name.toUpper();
    for (Formulas *formulas : {&mBuiltin, &mUser}) {
        CataloguedFormulaPtr old;
        {
            std::lock_guard<std::mutex> hold(mLock);
            old = formulas->value(upper);
        }
        if (old) {
            const CataloguedFormulaPtr made = make(*old);
            std::lock_guard<std::mutex> hold(mLock);
            formulas->insert(upper, made);
        }
    }
}

CataloguedFormulaPtr FormulaShelf::find(const QString &name) const {
    std::lock_guard<std::mutex> hold(mLock);
    const QString upper = name.toUpper();
    return mUser.value(upper, mBuiltin.value(upper));
}

bool FormulaShelf::hasUser(const QString &name) const {
    std::lock_guard<std::mutex> hold(mLock);
    return mUser.contains(name.toUpper());
}

TC::CFormulaSource FormulaShelf::source(const QString &name) const {
    std::lock_guard<std::mutex> hold(mLock);
    const QString upper = name.toUpper();
    TC::CFormulaSource source;
    source.mHasBuiltin = mBuiltin.contains(upper);
    source.mIsUserMade = mUser.contains(upper) || mFaulty.contains(upper);
    if (mUser.contains(upper)) {
        source.mText = QString::fromUtf8(mUser[upper]->file.text);
    } else if (mFaulty.contains(upper)) {
        source.mText = QString::fromUtf8(mFaulty[upper].text);
    } else if (source.mHasBuiltin) {
        source.mText = QString::fromUtf8(mBuiltin[upper]->file.text);
    }
    return source;
}

QString FormulaShelf::userPath(const QString &name) const {
    std::lock_guard<std::mutex> hold(mLock);
    const QString upper = name.toUpper();
    return mUser.contains(upper) ? mUser[upper]->file.path : mFaulty.value(upper).path;
}

QVector<FormulaShelf::Place> FormulaShelf::places() const {
    std::lock_guard<std::mutex> hold(mLock);
    QVector<Place> all;
    for (const QString &name : mOrder) {
        all.append({mUser.value(name, mBuiltin[name]), mBuiltin[name]->file.folders, false});
    }
    for (auto user = mUser.cbegin(); user != mUser.cend(); ++user) {
        if (!mBuiltin.contains(user.key())) {
            all.append({user.value(), user.value()->file.folders, true});
        }
    }
    return all;
}

} // namespace terminal
