#pragma once

#include "tests/chartview/GraphInputFixture.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPointer>
#include <QTimer>

#include <functional>

namespace tests {

/// What a menu has, in one line: entries with "|" between them, "-" for a separator, "+" before a checked entry and "o"
/// before one that can be, "{...}" behind a submenu.
inline QString outline(const QMenu &menu) {
    QStringList entries;
    for (const QAction *action : menu.actions()) {
        const QString mark = !action->isCheckable() ? QString() : action->isChecked() ? "+" : "o";
        const QString inner = action->menu() ? '{' + outline(*action->menu()) + '}' : QString();
        entries.append(action->isSeparator() ? QStringLiteral("-") : mark + action->text() + inner);
    }
    return entries.join('|');
}

/// The entry of a path, "submenu/entry"; null when there is none.
inline QAction *entryOf(const QMenu &menu, const QString &path) {
    const QString head = path.section('/', 0, 0);
    for (QAction *action : menu.actions()) {
        if (action->text() == head) {
            return head == path     ? action
                   : action->menu() ? entryOf(*action->menu(), path.section('/', 1))
                                    : nullptr;
        }
    }
    return nullptr;
}

/// Opens the menus of a graph and chooses in them.
class GraphMenuFixture : public GraphInputFixture {
protected:
    using Look = std::function<void(QMenu &)>;

    /// Does what opens a menu, shows the menu to `look` and closes it. Whether one opened.
    bool duringMenu(const std::function<void()> &open, const Look &look) {
        bool opened = false;
        QTimer watch; // a menu may open later than it is asked for
        QObject::connect(&watch, &QTimer::timeout, mKeeper.get(), [&] {
            const QPointer<QMenu> menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            if (!menu) {
                return;
            }
            watch.stop();
            opened = true;
            look(*menu);
            if (menu) { // it may be gone with its graph
                menu->close();
            }
        });
        watch.start(0);
        open();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return opened;
    }
    bool openMenu(const Look &look = [](QMenu &) {}) {
        return duringMenu([this] { sendMenuEvent(); }, look);
    }
    /// Whether the graph has taken the event.
    bool sendMenuEvent() {
        QContextMenuEvent event(QContextMenuEvent::Mouse, {10, 10}, mGraph->mapToGlobal(QPoint(10, 10)));
        QCoreApplication::sendEvent(mGraph.get(), &event);
        return event.isAccepted();
    }
    QString menu() {
        QString text;
        openMenu([&](QMenu &open) { text = outline(open); });
        return text;
    }
    /// Whether the menu has an entry of a path.
    bool has(const QString &path) {
        bool found = false;
        openMenu([&](QMenu &open) { found = entryOf(open, path) != nullptr; });
        return found;
    }
    /// Chooses an entry, and answers the events that it leads to.
    Events choose(const QString &path) {
        takeEvents();
        openMenu([&](QMenu &open) {
            QAction *entry = entryOf(open, path);
            ASSERT_NE(entry, nullptr) << qPrintable(path) << " in " << qPrintable(outline(open));
            entry->trigger();
        });
        return takeEvents();
    }

    /// Adds formulas to a folder of the catalogue's root.
    TC::CFormulaCatalogDetailPtr addFolder(const QString &name, const QStringList &formulas, int modelType = 0,
                                           const TC::CFormulaCatalogDetailPtr &parent = {}) {
        auto folder =
            boost::make_shared<TC::CFormulaCatalogDetail>(name, TC::CFormulaCatalogDetail::eFolder, modelType);
        for (const QString &formula : formulas) {
            folder->addChild(
                boost::make_shared<TC::CFormulaCatalogDetail>(formula, TC::CFormulaCatalogDetail::eFormula));
        }
        (parent ? parent : mHost.mCatalogue.mRoot)->addChild(folder);
        return folder;
    }
    TC::UserConfigRecord &settings() { return mHost.mConfig.mRecord; }
};

} // namespace tests
