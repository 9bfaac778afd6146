#pragma once

#include "host/records/CInstrumentDetail.h"

#include <QList>
#include <QString>

namespace TC {

class CRealtimeUiParam;

/// The overlays of a view: those that the user adds, and those that follow the main instrument by rule (the index of its
/// sector, what converts to or from it).
///
/// It works on the overlay members of the view parameters, which are public and hold its state. Invariant: it never
/// brings their number above the limit by rule. A colour is chosen by the position in the lists at that time and is not
/// given back, so two overlays may share one.
class ViewOverlays {
public:
    /// Works on `param`, which has to live as long.
    explicit ViewOverlays(CRealtimeUiParam &param) : mParam(param) {}

    /// Overlays an instrument, a sector by its name or a user-defined index; nothing when `key` is none of them or is
    /// there already in the same way. Does not check the limit.
    void add(const QString &key, bool hasAxis);
    void removeAll();
    /// Puts the index of the main instrument's sector in the place of the one overlaid. Nothing without a level.
    void followSector();
    void removeSector();
    /// Overlays what converts to or from the main instrument, in place of what did before. Nothing when that is off.
    void followConvertible();
    void removeConvertible();

private:
    void addIndex(const QString &key);
    void append(const CInstrumentDetailPtr &detail);
    void showSectorIndex(const CInstrumentDetailPtr &detail);
    void setColor(const QString &key, int position);

    CRealtimeUiParam &mParam;
};

/// Whether an instrument with exactly this key is among the overlays.
bool hasKey(const QList<CInstrumentDetailPtr> &overlays, const QString &key);
/// Whether the key of an overlay contains a text, in any letter case.
bool hasKeyWith(const QList<CInstrumentDetailPtr> &overlays, const QString &part);

} // namespace TC
