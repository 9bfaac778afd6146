#include "terminal/config/SavedView.h"

#include "terminal/config/ConfigService.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace terminal {
namespace {

const QString kViewSection = QStringLiteral("view");
const QString kDocument = QStringLiteral("document");
const QString kHeights = QStringLiteral("heights");
const QString kMainFormula = QStringLiteral("mainFormula");
const QString kDays = QStringLiteral("days");
const QString kPace = QStringLiteral("pace");
const QString kGeometry = QStringLiteral("geometry");
constexpr int kLongestDocument = 1 << 20; ///< characters

QVector<int> heightsOf(const QJsonArray &values) {
    QVector<int> heights;
    for (const QJsonValue &value : values) {
        const int height = value.toInt();
        if (height < 1 || height > SavedView::kMostHeight || heights.size() >= SavedView::kMostPanes) {
            return {}; // heights that are not all known fit no panes
        }
        heights.append(height);
    }
    return heights;
}

auto fieldsOf(const SavedView &view) {
    return std::tie(view.document, view.heights, view.mainFormula, view.days, view.pace, view.geometry);
}

} // namespace

bool SavedView::operator==(const SavedView &other) const {
    return fieldsOf(*this) == fieldsOf(other);
}

std::optional<SavedView> readSavedView(const ConfigService &config) {
    const QJsonObject fields = config.section(kViewSection);
    if (fields.isEmpty()) {
        return std::nullopt;
    }
    SavedView view;
    view.document = fields.value(kDocument).toString();
    if (view.document.size() > kLongestDocument) {
        view.document.clear();
    }
    view.heights = heightsOf(fields.value(kHeights).toArray());
    view.mainFormula = fields.value(kMainFormula).toString();
    view.days = std::clamp(fields.value(kDays).toInt(1), 1, SavedView::kMostDays);
    const double pace = fields.value(kPace).toDouble(view.pace);
    view.pace = std::isfinite(pace) && pace > 0.0 ? pace : view.pace;
    view.geometry = QByteArray::fromBase64(fields.value(kGeometry).toString().toLatin1());
    return view;
}

void writeSavedView(ConfigService &config, const SavedView &view) {
    QJsonArray heights;
    for (const int height : view.heights) {
        heights.append(height);
    }
    config.changeSection(kViewSection, {{kDocument, view.document},
                                        {kHeights, heights},
                                        {kMainFormula, view.mainFormula},
                                        {kDays, view.days},
                                        {kPace, view.pace},
                                        {kGeometry, QString::fromLatin1(view.geometry.toBase64())}});
}

} // namespace terminal
