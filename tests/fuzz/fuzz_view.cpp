// Saved views: any text is read as far as it is sound, what was read is written and read again the same, and a view that
// restores it has a whole pane for every formula.

#include "containers/CRealtimeMainWidget.h"
#include "containers/ViewDocument.h"
#include "host/toolkit/CDragWidgetList.h"
#include "tests/fakehost/FakeHost.h"

#include <QApplication>

#include <cstdint>
#include <cstdlib>
#include <memory>

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void restoreIn(TC::CRealtimeMainWidget &view, const QString &text) {
    view.setParam(text);
    const auto *list = view.findChild<GZ::CDragWidgetList *>();
    const QVector<TC::CRealtimeWidget *> panes = view.getSubIndexWidgets();
    require(list->count() == panes.size() + 1);
    for (const TC::CRealtimeWidget *pane : panes) {
        require(list->containItem(pane) && pane->getCrossLineWidget() && pane->getGrapWidgetCount() == 1);
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication app(*argc, *argv);
    static fakehost::FakeHost host;
    host.mStocks.add("SH", "600000", 10.0);
    host.mStocks.add("SH", "600001", 20.0);
    host.mCatalogue.add("KDJ");
    host.mCatalogue.add("MACD");
    host.mCatalogue.add("MA", 1);
    host.mCatalogue.add("TREND", 2);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<int>(size));
    for (const bool concise : {false, true}) {
        const std::optional<TC::ViewDocument> read = TC::ViewDocument::fromText(text, concise);
        if (read && read->mFormulas) {
            const QString written = read->toText();
            const std::optional<TC::ViewDocument> again = TC::ViewDocument::fromText(written, true);
            require(again && again->toText() == written);
        }
    }
    const auto view = std::make_unique<TC::CRealtimeMainWidget>(nullptr, TC::EIndexViewType::Ordinary);
    view->setStock(QStringLiteral("SH600000"), false);
    restoreIn(*view, text);
    restoreIn(*view, text);
    restoreIn(*view, view->param());
    return 0;
}
