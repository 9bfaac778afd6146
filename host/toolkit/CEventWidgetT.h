#pragma once

#include "host/Export.h"
#include "host/toolkit/CEventDeliverer.h"

#include <QWidget>

namespace GZ {

/// Makes a widget class a participant of the event bus. Its next participant is the nearest one among its
/// ancestors.
template <class Widget> class TIMESHARE_EXPORT CEventWidgetT : public Widget, public CEventDeliverer {
public:
    explicit CEventWidgetT(QWidget *parent = nullptr) : Widget(parent) {}

protected:
    CEventDeliverer *nextParticipant() const override {
        for (QWidget *up = this->parentWidget(); up; up = up->parentWidget()) {
            if (auto *participant = dynamic_cast<CEventDeliverer *>(up)) {
                return participant;
            }
        }
        return nullptr;
    }
};

} // namespace GZ
