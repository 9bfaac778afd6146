#pragma once

#include <QPair>
#include <QString>
#include <QVector>

#include <optional>

namespace TC {

/// What is saved of a view, as JSON text. Saved documents depend on the keys as they are spelt in ViewDocument.cpp, and on
/// their order, in which a restore goes.
///
/// A reader restores as far as a document is sound: what lies behind the first fault is left out. A part that is absent
/// stays empty here.
struct ViewDocument {
    /// Formulas of all formula panes in a row, each to have a pane.
    std::optional<QVector<QString>> mFormulas;
    /// In use in the template bar; in the concise style only.
    std::optional<QVector<QString>> mBarFormulas;
    std::optional<QVector<QString>> mBarTemplates;
    QVector<QString> mOverlays; ///< instrument keys
    QVector<QPair<QString, bool>>
        mTradeSetting; ///< what is checked in the settings of the user's trades, by name
    std::optional<int> mSectorLevel; ///< CRealtimeUiParam::mAddSwBkzsLevel
    std::optional<int> mOverlayFlags; ///< CRealtimeUiParam::mAddStockFlags
    std::optional<QVector<QString>> mConvertibles; ///< CRealtimeUiParam::mAddConvertibleCodes
    QVector<QString> mAttached; ///< formulas attached to the main chart; a reader takes the first

    int mFormulasLeftOut = 0; ///< by a reader, see kMostFormulas

    /// Formulas beyond this many are left out by a reader, as no view has room for their panes.
    static constexpr int kMostFormulas = 200;

    QString toText() const;
    /// Nothing for a text that is no document, or has no list of formulas. The parts of the template bar are read in the
    /// concise style only, and in any other they may be of any type.
    static std::optional<ViewDocument> fromText(const QString &text, bool concise);
};

} // namespace TC
