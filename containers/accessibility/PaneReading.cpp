#include "containers/accessibility/PaneReading.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "containers/PaneView.h"
#include "containers/accessibility/AccessibleWords.h"
#include "host/drawing/CArrowColorSimpleText.h"
#include "host/drawing/CDrawStyle.h"
#include "host/toolkit/Text.h"
#include "host/toolkit/Wording.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <algorithm>

namespace TC {

namespace {

using SeriesByKey = QMap<CFormulaKey, se::RPCFormulaResultCache>;

const PaneView *paneAround(const QWidget *widget) {
    while (widget && !qobject_cast<const PaneView *>(widget)) {
        widget = widget->parentWidget();
    }
    return qobject_cast<const PaneView *>(widget);
}

} // namespace

PaneReading::PaneReading(const CRealtimeGraphWidget *graph) : mGraph(graph), mPane(paneAround(graph)) {}

int PaneReading::rows() const {
    std::size_t count = 0;
    if (mPane) {
        mGraph->getData()->readData([&count](const SeriesByKey &series) {
            for (const se::RPCFormulaResultCache &one : series) {
                count = std::max(count, one.result.mTimes.size());
            }
        });
    }
    return static_cast<int>(count);
}

/// The title tells a line as "name:value", a line without a name as its value, and the name of an overlay before its lines.
QList<PaneReading::Line> PaneReading::lines(int index) const {
    QList<Line> found;
    if (!mPane) {
        return found;
    }
    const CRealtimeUiParam &view = *mPane->getUiParam();
    const CInstrumentDetailPtr instrument = view.getStockDetail();
    const QList<CInstrumentDetailPtr> overlays = view.getAllAddStockList();
    const boost::shared_ptr<CRealtimeData> data = mGraph->getData();
    data->readData([&](const SeriesByKey &series) {
        for (auto one = series.begin(); one != series.end(); ++one) {
            CArrowColorSimpleText title{QString()};
            CDrawStyle::getTitleText(title, one.key(), *one, index, instrument, overlays, data->services());
            QString overlay;
            for (const auto &run : title.getTextColor()) {
                const int colon = run.first.indexOf(QLatin1Char(':'));
                const bool isOverlay = colon < 0 && one.key().mStock != view.getStock() && overlay.isEmpty();
                if (isOverlay) {
                    overlay = run.first + QLatin1Char(' ');
                } else {
                    const QString name = colon < 0 ? one.key().mFormula : run.first.left(colon);
                    found.append({overlay + name, run.first.mid(colon + 1)});
                }
            }
        }
    });
    return found;
}

QStringList PaneReading::heads() const {
    QStringList heads{AccessibleWords::tr("时间")};
    for (const Line &line : lines(0)) {
        heads.append(line.name);
    }
    return heads;
}

QStringList PaneReading::row(int index) const {
    if (index < 0 || index >= rows()) {
        return {};
    }
    QStringList texts{mPane->getUiParam()->getTimeTextByIndex(index)};
    for (const Line &line : lines(index)) {
        texts.append(line.value);
    }
    return texts;
}

QString PaneReading::sentence(int index) const {
    if (index < 0 || index >= rows()) {
        return {};
    }
    QString text = mPane->getUiParam()->getTimeTextByIndex(index);
    for (const Line &line : lines(index)) {
        text += QLatin1Char(' ') + line.name + QLatin1Char(':') + line.value;
    }
    return text;
}

int PaneReading::rowOfCrossLine() const {
    return mPane && mPane->getUiParam()->mCrossShown ? mPane->getUiParam()->mCrossIndex : -1;
}

QString PaneReading::name() const {
    if (!mPane) {
        return {};
    }
    const CRealtimeUiParam &view = *mPane->getUiParam();
    const boost::shared_ptr<CRealtimeData> data = mGraph->getData();
    const QList<QString> formulas = data->getFormulas();
    const bool isMain = std::any_of(formulas.begin(), formulas.end(),
                                    [&](const QString &formula) { return data->isMainGraph(formula); });
    QStringList words;
    if (isMain) {
        words << AccessibleWords::tr("分时图") << getDetailQsName(view.getStockDetail());
    } else {
        words << AccessibleWords::tr("副图");
        for (const QString &formula : formulas) {
            words << data->getShowName(formula);
        }
    }
    if (data->getTradeDate() != 0) {
        words << GZ::exchangeDate(data->getTradeDate()).toString(GZ::kDateFormat);
    }
    words.removeAll(QString());
    return words.join(QLatin1Char(' '));
}

} // namespace TC
