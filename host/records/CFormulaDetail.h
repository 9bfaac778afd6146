#pragma once

#include "host/records/Enumerations.h"

#include <QMap>
#include <QString>
#include <QVector>
#include <boost/shared_ptr.hpp>

namespace TC {

/// One formula of the catalogue. Owned by the host and read-only for the chart view.
struct CFormulaDetail {
    QString mName; ///< name, as in a CFormulaKey
    QString mFileName; ///< name of the compiled file, as a request addresses it
    qint32 mType = 0; ///< 0 sub pane, 1 attached to the main chart, 2 replaces the main chart
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

} // namespace TC
