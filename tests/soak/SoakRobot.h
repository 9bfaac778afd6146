#pragma once

#include "tests/soak/ActionLog.h"

#include <QElapsedTimer>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <iterator>
#include <random>
#include <vector>

class QAction;
class QMenu;

namespace TC {
class CRealtimeGraphWidget;
}

namespace terminal {
class TerminalServices;
class TerminalWindow;
} // namespace terminal

namespace tests {

/// Uses the terminal's window as a user does who has had too much coffee: keys, the mouse, menus, dialogs and commands, in
/// an order that its seed decides. Menus and modal dialogs are used too, while they are open; of their entries and buttons those
/// come first that were never chosen, so that what is made with the first use of a dialog is there after some minutes. Files to
/// open or to save are never chosen; the window itself is not closed.
///
/// Every action is written to a file before it is done, so that the file tells what ended the program.
class SoakRobot : public QObject {
public:
    SoakRobot(terminal::TerminalServices &services, terminal::TerminalWindow &window, quint32 seed,
              const QString &logPath);

    /// Acts, at most once in so many milliseconds, until the time is over and every kind of action has been done; then
    /// closes what is open but the window. Returns when nothing is open any more.
    void act(qint64 milliseconds, int pace);
    /// To open menus and dialogs and use them, or to ask for series, more often than all else.
    enum class ELeaning { Windows, Requests, Nothing };
    void setLeaning(ELeaning leaning) { mLeaning = leaning; }
    /// Brings the window back to the chart that it began with.
    void settle();

    /// How often each kind of action was done.
    const QMap<QString, int> &done() const { return mDone; }
    /// Kinds that have never been done.
    QStringList missing() const;
    QString last() const { return mLast.value(mLast.size() - 1); }
    /// The last actions, the newest last.
    QStringList lastActions() const { return mLast; }

private:
    /// Does something; false when that cannot be done now.
    using Action = bool (SoakRobot::*)();
    struct Kind {
        const char *name;
        int weight;
        Action action;
        ELeaning leaning = ELeaning::Nothing; ///< with which it is done more often
    };
    static const std::vector<Kind> &kinds();

    void step();
    int weightOf(const Kind &kind) const;
    /// Closes what stands foremost; false when nothing is open.
    bool closeOne();
    void tell(const QString &action);
    int pick(int count) { return static_cast<int>(mRandom() % static_cast<quint32>(count)); }
    template <class Item> Item *pickOf(const QList<Item *> &items) {
        return items.isEmpty() ? nullptr : items[pick(items.size())];
    }
    /// One of those that are new, as long as there are any.
    template <class Item, class IsNew> Item *pickNewOf(const QList<Item *> &items, IsNew isNew) {
        QList<Item *> fresh;
        std::copy_if(items.begin(), items.end(), std::back_inserter(fresh),
                     [&](Item *item) { return isNew(*item); });
        return pickOf(fresh.isEmpty() ? items : fresh);
    }
    /// Whether an entry of a menu, or one of the menu behind it, was never chosen.
    bool isNew(const QAction &entry) const;
    TC::CRealtimeGraphWidget *pickGraph();

    bool useMenu(QMenu &menu);
    bool useDialog(QWidget &dialog);

    bool pressKey();
    bool pressCommandKey();
    bool typeInstrument();
    bool moveMouse();
    bool doubleClick();
    bool doubleClickTrade();
    bool doubleClickAt(TC::CRealtimeGraphWidget &graph, const QPoint &at);
    bool dragRegion();
    bool openMenu();
    bool useSomeDialog();
    bool showInstrument();
    bool showDay();
    bool showFormula();
    bool runScriptModel();
    bool importTrades();
    bool replay();
    bool endReplay();
    bool setPanes();
    bool toggleTrades();
    bool clickControl();
    bool resizeWindow();

    terminal::TerminalServices &mServices;
    terminal::TerminalWindow &mWindow;
    const QString mFirstView; ///< what the view told of itself at the beginning
    std::mt19937 mRandom;
    ActionLog mLog;
    QStringList mLast;
    QMap<QString, int> mDone;
    QSet<QString> mChosen; ///< entries and buttons, by their names
    QTimer mTimer;
    std::function<bool()> mOnStep; ///< whether to act; empty while the robot rests
    QElapsedTimer mSinceStart;
    qint64 mEnd = 0; ///< of the acting, milliseconds
    bool mIsPosted = false; ///< a step is on its way
    ELeaning mLeaning = ELeaning::Nothing;
    int mTrades = 0;
};

} // namespace tests
