#pragma once

#include "host/records/Enumerations.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>
#include <boost/shared_ptr.hpp>

namespace TC {

/// Where a formula stands.
enum EFormulaType : qint32 {
    eSubPaneFormula = 0, ///< in a pane of its own
    eAttachedFormula = 1, ///< over the main chart
    eReplacingFormula = 2, ///< in place of the main chart
};

/// One formula of the catalogue. Owned by the host and read-only for the chart view.
struct CFormulaDetail {
    QString mName; ///< name, as in a CFormulaKey
    QString mFileName; ///< name of the compiled file, as a request addresses it
    qint32 mType = eSubPaneFormula; ///< EFormulaType
    QVector<QString> mParamNames; ///< numeric parameters, parallel to mParamValues
    QVector<double> mParamValues;
    QVector<QString> mStrParamNames; ///< text parameters, parallel to mStrParamValues
    QVector<QString> mStrParamValues;
    QMap<int, int> mPrecisions; ///< line index to the decimals to show for it
    EFormulaLanguage mLanguage = EFormulaLanguage::Native;
    bool mVisible = true; ///< offered in the menus of the catalogue
    boost::shared_ptr<void> mRunData; ///< handed to the request when it is run with ERunMode::HandOver
};

using CFormulaDetailPtr = boost::shared_ptr<CFormulaDetail>;

/// The parameters of a formula as they stand behind its name, "(12,26,9,close)": numbers with up to six digits, then
/// texts. Empty when there are none.
inline QString formulaParamText(const CFormulaDetail &formula) {
    QStringList parts;
    for (const double value : formula.mParamValues) {
        parts.append(QString::number(value, 'g', 6));
    }
    for (const QString &value : formula.mStrParamValues) {
        parts.append(value);
    }
    return parts.isEmpty() ? QString() : QLatin1Char('(') + parts.join(QLatin1Char(',')) + QLatin1Char(')');
}

} // namespace TC
