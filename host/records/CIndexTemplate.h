#pragma once

#include <QString>
#include <QVector>

namespace TC {

/// A named set of formulas for the sub panes of a view, top down.
struct CIndexTemplate {
    QString mName;
    QVector<QString> mFormulas;
};

} // namespace TC
