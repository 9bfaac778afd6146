#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>

namespace terminal {

class ConfigService;

/// How the user has arranged the window: what is brought back at the next start.
struct SavedView {
    static constexpr int kMostDays = 6;
    static constexpr int kMostHeight = 1000;
    static constexpr int kMostPanes = 64;

    QString document; ///< panes, overlays and trades of the chart, as the chart writes them
    QVector<int> heights; ///< stretch factors of the panes, the main pane first
    QString mainFormula; ///< a formula that stands in place of the ordinary chart; empty for none
    int days = 1; ///< side by side
    double pace = 1.0; ///< market seconds a second
    QByteArray geometry; ///< of the window; empty when it is not known

    bool operator==(const SavedView &other) const;
    bool operator!=(const SavedView &other) const { return !(*this == other); }
};

/// What the configuration has of a view; nothing when it has none. What cannot be is left at its default, since the file
/// may come from anywhere.
std::optional<SavedView> readSavedView(const ConfigService &config);
/// Writes a view into the configuration, whole or not at all.
void writeSavedView(ConfigService &config, const SavedView &view);

} // namespace terminal
