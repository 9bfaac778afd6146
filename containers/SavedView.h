#pragma once

#include <QString>

namespace TC {

class CRealtimeMainWidget;
class TemplateBar;
class TradeSettings;
struct ViewDocument;

/// A view as it is saved: its formula panes, overlays, the formula attached to the main chart and the choice of trades. A
/// restore is meant for a view that was just built; later it takes the place of all formula panes and adds to the overlays.
class SavedView {
public:
    SavedView(CRealtimeMainWidget &view, TemplateBar &bar, TradeSettings &tradeSettings);

    QString text() const;
    /// Restores as far as the text is sound, see ViewDocument. Requests nothing.
    void restore(const QString &text);

private:
    void restoreBeforePanes(const ViewDocument &document);
    void restorePanes(const ViewDocument &document);
    void restoreBehindPanes(const ViewDocument &document);

    CRealtimeMainWidget &mView;
    TemplateBar &mBar;
    TradeSettings &mTradeSettings;
};

} // namespace TC
