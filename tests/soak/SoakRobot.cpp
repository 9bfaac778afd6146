#include "tests/soak/SoakRobot.h"

#include "chartview/CRealtimeGraphWidget.h"
#include "containers/CRealtimeMainWidget.h"
#include "containers/CRealtimeWidget.h"
#include "host/windows/CSmartKeyboardDialog.h"
#include "terminal/app/ChartView.h"
#include "terminal/app/ControlRow.h"
#include "terminal/app/TerminalServices.h"
#include "terminal/app/TerminalWindow.h"
#include "terminal/market/MarketDate.h"
#include "tests/soak/MouseOnGraph.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDialog>
#include <QEventLoop>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTest>
#include <QThread>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <vector>

using namespace terminal;

namespace tests {
namespace {

const QString kInstrument = QStringLiteral("SH600000");
constexpr int kActionsKept = 40;
constexpr int kMostPanes = 6;
constexpr int kMostDays = 6;
constexpr int kImportedTrades = 100; ///< keys of imported trades, used over and over
constexpr int kMostClosings = 400; ///< in a row
const QSize kFirstSize(1200, 760);
const QStringList kClosing{QStringLiteral("关闭"),
                           QStringLiteral("取消")}; ///< buttons that are not tried first

/// Windows beside the main one, the tips aside.
QList<QWidget *> otherWindows(const QWidget &main) {
    QList<QWidget *> windows;
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget != &main && widget->isVisible() && widget->windowType() != Qt::ToolTip) {
            windows.append(widget);
        }
    }
    std::sort(windows.begin(), windows.end(), [](const QWidget *one, const QWidget *other) {
        return std::pair(one->objectName(), QString::fromLatin1(one->metaObject()->className())) <
               std::pair(other->objectName(), QString::fromLatin1(other->metaObject()->className()));
    });
    return windows;
}

QString nameOf(const QWidget &widget) {
    const QString kind = QString::fromLatin1(widget.metaObject()->className());
    return widget.objectName().isEmpty() ? kind : kind + ' ' + widget.objectName();
}

template <class Widget> QList<Widget *> usable(const QWidget &parent) {
    QList<Widget *> found;
    for (Widget *child : parent.findChildren<Widget *>()) {
        if (child->isEnabled() && child->isVisibleTo(&parent) && child->window() == &parent) {
            found.append(child);
        }
    }
    return found;
}

QList<QAction *> usableEntries(const QMenu &menu) {
    QList<QAction *> entries;
    for (QAction *action : menu.actions()) {
        if (action->isEnabled() && action->isVisible() && !action->isSeparator()) {
            entries.append(action);
        }
    }
    return entries;
}

} // namespace

SoakRobot::SoakRobot(TerminalServices &services, TerminalWindow &window, quint32 seed, const QString &logPath)
    : mServices(services), mWindow(window), mFirstView(window.view()->main()->param()), mRandom(seed),
      mLog(logPath) {
    mSinceStart.start();
    // A timer does not fire while its own slot runs, and an action may run an event loop: the step is posted.
    connect(&mTimer, &QTimer::timeout, this, [this] {
        if (!mIsPosted) {
            mIsPosted = true;
            QMetaObject::invokeMethod(
                this,
                [this] {
                    mIsPosted = false;
                    step();
                },
                Qt::QueuedConnection);
        }
    });
}

const std::vector<SoakRobot::Kind> &SoakRobot::kinds() {
    static const std::vector<Kind> kinds{
        {"key", 20, &SoakRobot::pressKey},
        {"command key", 4, &SoakRobot::pressCommandKey, ELeaning::Windows},
        {"smart keyboard", 3, &SoakRobot::typeInstrument},
        {"mouse", 30, &SoakRobot::moveMouse},
        {"double click", 4, &SoakRobot::doubleClick, ELeaning::Windows},
        {"double click on a trade", 2, &SoakRobot::doubleClickTrade, ELeaning::Windows},
        {"stretch", 3, &SoakRobot::dragRegion, ELeaning::Windows},
        {"menu", 5, &SoakRobot::openMenu, ELeaning::Windows},
        {"dialog", 15, &SoakRobot::useSomeDialog, ELeaning::Windows},
        {"instrument", 5, &SoakRobot::showInstrument, ELeaning::Requests},
        {"day", 3, &SoakRobot::showDay, ELeaning::Requests},
        {"formula", 5, &SoakRobot::showFormula, ELeaning::Requests},
        {"script model", 1, &SoakRobot::runScriptModel},
        {"import of trades", 3, &SoakRobot::importTrades},
        {"replay", 1, &SoakRobot::replay},
        {"end of replay", 1, &SoakRobot::endReplay},
        {"panes", 2, &SoakRobot::setPanes, ELeaning::Requests},
        {"trades", 1, &SoakRobot::toggleTrades},
        {"control", 4, &SoakRobot::clickControl},
        {"size", 2, &SoakRobot::resizeWindow},
    };
    return kinds;
}

QStringList SoakRobot::missing() const {
    QStringList names;
    for (const Kind &kind : kinds()) {
        if (!mDone.contains(QString::fromLatin1(kind.name))) {
            names.append(QString::fromLatin1(kind.name));
        }
    }
    return names;
}

void SoakRobot::act(qint64 milliseconds, int pace) {
    QEventLoop loop;
    mEnd = mSinceStart.elapsed() + milliseconds;
    int closings = 0;
    mOnStep = [&, level = QThread::currentThread()->loopLevel() + 1] {
        if (mSinceStart.elapsed() < mEnd || !missing().isEmpty()) {
            return true;
        }
        if (!closeOne() && QThread::currentThread()->loopLevel() == level) {
            loop.quit();
        } else if (++closings == kMostClosings) {
            const QList<QWidget *> open = otherWindows(mWindow);
            ADD_FAILURE() << "does not close: "
                          << qPrintable(open.isEmpty() ? QString() : nameOf(*open.first()));
            loop.quit();
        }
        return false;
    };
    mTimer.start(pace);
    loop.exec();
    mTimer.stop();
    mOnStep = {};
}

/// Step by step, as a user would: between two steps the events have their turn.
void SoakRobot::settle() {
    TC::CRealtimeMainWidget &main = *mWindow.view()->main();
    std::vector<std::function<void()>> steps{
        [&] { mWindow.setPaused(false); },
        [&] { mWindow.setPace(SimulatedClock::kFastest); },
        [&] { mWindow.setThemeName(QStringLiteral("dark")); },
        [&] { mWindow.setFormulasShown(false); },
        [&] { mWindow.setTradesShown(true); },
        [&] { mWindow.resize(kFirstSize); },
        [&] { mWindow.view()->hideCrossLine(); },
        [&] { main.delAllAddStock(); },
    };
    steps.insert(steps.end(), kMostDays - 1, [&] { main.scaleView(true); });
    steps.emplace_back([&] { main.setParam(mFirstView); });
    steps.emplace_back(
        [&] { EXPECT_TRUE(mWindow.showInstrument(kInstrument)) << qPrintable(mWindow.status()); });
    for (const std::function<void()> &step : steps) {
        step();
        QCoreApplication::processEvents();
    }
    QCoreApplication::sendPostedEvents(nullptr,
                                       QEvent::DeferredDelete); // which no loop does that is not inside another
}

bool SoakRobot::closeOne() {
    QWidget *foremost = QApplication::activePopupWidget();
    if (!foremost) {
        foremost = QApplication::activeModalWidget();
    }
    if (!foremost) {
        foremost = otherWindows(mWindow).value(0);
    }
    if (!foremost) {
        return false;
    }
    tell("close " + nameOf(*foremost));
    if (auto *box = qobject_cast<QMessageBox *>(foremost)) {
        pickOf(box->buttons())->click();
    } else if (auto *dialog = qobject_cast<QDialog *>(foremost); dialog && dialog->isModal()) {
        dialog->reject();
    } else {
        foremost->close();
    }
    return true;
}

void SoakRobot::tell(const QString &action) {
    const double minute = static_cast<double>(mSinceStart.elapsed()) / 60000.0;
    mLast.append(QString::asprintf("%8.4f ", minute) + action);
    mLog.write(mLast.last());
    if (mLast.size() > kActionsKept) {
        mLast.removeFirst();
    }
}

void SoakRobot::step() {
    if (!mOnStep || !mOnStep()) {
        return;
    }
    if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())) {
        useMenu(*menu);
        return;
    }
    if (QApplication::activePopupWidget()) {
        closeOne();
        return;
    }
    if (QWidget *modal = QApplication::activeModalWidget()) {
        useDialog(*modal);
        return;
    }
    if (mServices.clock().isPaused() && pick(5) == 0) {
        mWindow.setPaused(false);
    }
    // When the time is over, what was never done comes first.
    const QStringList missing = mSinceStart.elapsed() < mEnd ? QStringList() : this->missing();
    const QString wanted = missing.isEmpty() ? QString() : missing[pick(missing.size())];
    const int weights = std::accumulate(kinds().begin(), kinds().end(), 0,
                                        [this](int sum, const Kind &kind) { return sum + weightOf(kind); });
    int at = pick(weights);
    for (const Kind &kind : kinds()) {
        at -= weightOf(kind);
        if (wanted.isEmpty() ? at < 0 : wanted == QLatin1String(kind.name)) {
            if ((this->*kind.action)()) {
                ++mDone[QString::fromLatin1(kind.name)];
            }
            return;
        }
    }
}

int SoakRobot::weightOf(const Kind &kind) const {
    constexpr int kOftenWindows = 20;
    constexpr int kOftenRequests = 3;
    if (mLeaning == ELeaning::Nothing || kind.leaning != mLeaning) {
        return kind.weight;
    }
    return kind.weight * (mLeaning == ELeaning::Windows ? kOftenWindows : kOftenRequests);
}

TC::CRealtimeGraphWidget *SoakRobot::pickGraph() {
    return pickOf(usable<TC::CRealtimeGraphWidget>(mWindow));
}

bool SoakRobot::isNew(const QAction &entry) const {
    if (!entry.menu()) {
        return !mChosen.contains(entry.text());
    }
    const QList<QAction *> entries = usableEntries(*entry.menu());
    return std::any_of(entries.begin(), entries.end(),
                       [this](const QAction *inside) { return isNew(*inside); });
}

bool SoakRobot::useMenu(QMenu &menu) {
    QMenu *at = &menu;
    for (;;) {
        QAction *chosen = pickNewOf(usableEntries(*at), [this](const QAction &entry) { return isNew(entry); });
        if (chosen && chosen->menu()) {
            at = chosen->menu();
            continue;
        }
        const QPointer<QMenu> guard(&menu);
        if (chosen && pick(6) != 0) {
            tell("menu " + chosen->text());
            mChosen.insert(chosen->text());
            chosen->trigger();
        } else {
            tell("menu closed");
        }
        if (guard) {
            guard->close();
        }
        return true;
    }
}

bool SoakRobot::useDialog(QWidget &dialog) {
    const QString name = nameOf(dialog);
    if (auto *files = qobject_cast<QFileDialog *>(&dialog)) {
        tell("refuse " + name);
        files->reject();
        return true;
    }
    const int way = pick(10);
    if (QLineEdit *field = way < 2 ? pickOf(usable<QLineEdit>(dialog)) : nullptr) {
        const QString text = QString::number(pick(1000));
        tell(name + ": type " + text);
        QTest::keyClicks(field, text);
        return true;
    }
    if (QComboBox *box = way == 2 ? pickOf(usable<QComboBox>(dialog)) : nullptr; box && box->count() > 0) {
        const int index = pick(box->count());
        tell(name + ": choose " + box->itemText(index));
        box->setCurrentIndex(index);
        return true;
    }
    if (QAbstractItemView *view = way < 5 ? pickOf(usable<QAbstractItemView>(dialog)) : nullptr) {
        const QPoint at(pick(qMax(1, view->viewport()->width())), pick(qMax(1, view->viewport()->height())));
        tell(name + QString::asprintf(": row at %d %d", at.x(), at.y()));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at);
        return true;
    }
    const auto told = [&](const QAbstractButton &button) {
        return name + ": button " + button.objectName() + ' ' + button.text();
    };
    const auto isNewButton = [&](const QAbstractButton &button) {
        return !mChosen.contains(told(button)) && !kClosing.contains(button.text());
    };
    if (QAbstractButton *button = way < 9 ? pickNewOf(usable<QAbstractButton>(dialog), isNewButton) : nullptr) {
        tell(told(*button));
        mChosen.insert(told(*button));
        button->click();
        return true;
    }
    tell(name + ": Escape");
    QTest::keyClick(&dialog, Qt::Key_Escape);
    return true;
}

bool SoakRobot::useSomeDialog() {
    const QList<QWidget *> windows = otherWindows(mWindow);
    if (QWidget *window = pickOf(windows)) {
        return pick(8) == 0 || windows.size() > 6 ? closeOne() : useDialog(*window);
    }
    pressCommandKey(); // most of them open one
    return false;
}

bool SoakRobot::pressKey() {
    static const std::vector<Qt::Key> keys{Qt::Key_Left,   Qt::Key_Right,    Qt::Key_Left,  Qt::Key_Right,
                                           Qt::Key_Home,   Qt::Key_End,      Qt::Key_Up,    Qt::Key_Down,
                                           Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Space, Qt::Key_Escape};
    const Qt::Key key = keys[static_cast<size_t>(pick(static_cast<int>(keys.size())))];
    tell("key " + QKeySequence(key).toString());
    QTest::keyClick(&mWindow, key);
    return true;
}

bool SoakRobot::pressCommandKey() {
    static const std::vector<Qt::Key> keys{Qt::Key_O, Qt::Key_D, Qt::Key_E, Qt::Key_H,
                                           Qt::Key_T, Qt::Key_L, Qt::Key_I};
    const Qt::Key key = keys[static_cast<size_t>(pick(static_cast<int>(keys.size())))];
    tell("key " + QKeySequence(Qt::CTRL | key).toString());
    QTest::keyClick(&mWindow, key, Qt::ControlModifier);
    return true;
}

bool SoakRobot::typeInstrument() {
    static const QStringList texts{"600519", "pfyh", "000001", "03", "04", "macd", "if", "zzz", "5", "113050"};
    const QString text = texts[pick(texts.size())];
    tell("type " + text);
    QTest::keyClicks(&mWindow, text.left(1));
    TC::CSmartKeyboardDialog &keyboard = *TC::CSmartKeyboardDialog::instance();
    auto *edit = keyboard.findChild<QLineEdit *>();
    if (!keyboard.isVisible() || !edit) {
        return false;
    }
    QTest::keyClicks(edit, text.mid(1));
    QTest::keyClick(edit, pick(5) == 0 ? Qt::Key_Down : Qt::Key_Return);
    if (keyboard.isVisible()) {
        QTest::keyClick(edit, Qt::Key_Escape);
    }
    return true;
}

bool SoakRobot::moveMouse() {
    TC::CRealtimeGraphWidget *graph = pickGraph();
    if (!graph) {
        return false;
    }
    const QPoint at(pick(qMax(1, graph->width())), pick(qMax(1, graph->height())));
    tell(QString::asprintf("mouse to %d %d", at.x(), at.y()));
    sendMouse(*graph, QEvent::MouseMove, at, Qt::NoButton, Qt::NoButton);
    return true;
}

bool SoakRobot::doubleClick() {
    TC::CRealtimeGraphWidget *graph = pickGraph();
    if (!graph) {
        return false;
    }
    const QPoint at(pick(qMax(1, graph->width())), pick(qMax(1, graph->height())));
    return doubleClickAt(*graph, at);
}

bool SoakRobot::doubleClickAt(TC::CRealtimeGraphWidget &graph, const QPoint &at) {
    tell(QString::asprintf("double click at %d %d", at.x(), at.y()));
    sendDoubleClick(graph, at);
    return true;
}

/// An order, a deal or a task of the main pane; those of a kind first that was never chosen.
bool SoakRobot::doubleClickTrade() {
    TC::CRealtimeGraphWidget &graph = *mWindow.view()->graph();
    const QMap<QString, QVector<QPoint>> marks = tradesOn(graph);
    if (marks.isEmpty()) { // let there be some for the next time
        mWindow.setTradesShown(true);
        mWindow.view()->main()->scaleView(true);
        mWindow.showInstrument(kInstrument);
        importTrades();
        return false;
    }
    QStringList kinds = marks.keys();
    const auto isChosen = [this](const QString &kind) { return mChosen.contains(kind); };
    if (!std::all_of(kinds.begin(), kinds.end(), isChosen)) {
        kinds.erase(std::remove_if(kinds.begin(), kinds.end(), isChosen), kinds.end());
    }
    const QString kind = kinds[pick(kinds.size())];
    mChosen.insert(kind);
    tell(kind);
    const QVector<QPoint> places = marks[kind];
    return doubleClickAt(graph, places[pick(places.size())]);
}

bool SoakRobot::dragRegion() {
    TC::CRealtimeGraphWidget *graph = mWindow.view()->graph();
    if (!mWindow.view()->main()->isShowCrossline()) {
        QTest::keyClick(&mWindow, Qt::Key_End);
    }
    const QPoint from(pick(qMax(1, graph->width())), graph->height() / 2);
    const QPoint to(pick(qMax(1, graph->width())), graph->height() / 2);
    tell(QString::asprintf("stretch from %d to %d", from.x(), to.x()));
    const QPointer<QWidget> guard(graph);
    sendMouse(*guard, QEvent::MouseMove, from, Qt::NoButton, Qt::NoButton);
    sendMouse(*guard, QEvent::MouseButtonPress, from, Qt::RightButton, Qt::RightButton);
    sendMouse(*guard, QEvent::MouseMove, to, Qt::NoButton, Qt::RightButton);
    QContextMenuEvent menu(QContextMenuEvent::Mouse, to, guard->mapToGlobal(to));
    QCoreApplication::sendEvent(guard, &menu);
    if (guard) {
        sendMouse(*guard, QEvent::MouseButtonRelease, to, Qt::RightButton, Qt::NoButton);
    }
    return true;
}

bool SoakRobot::openMenu() {
    TC::CRealtimeGraphWidget *graph = pickGraph();
    if (!graph) {
        return false;
    }
    tell(QStringLiteral("menu of a graph"));
    QContextMenuEvent event(QContextMenuEvent::Mouse, {10, 10}, graph->mapToGlobal(QPoint(10, 10)));
    QCoreApplication::sendEvent(graph, &event);
    return true;
}

bool SoakRobot::showInstrument() {
    const auto catalogue = mServices.store().catalogue();
    const QStringList keys = QStringList(catalogue->instruments.keys()) +
                             QStringList(catalogue->indexes.keys()) + QStringList(catalogue->portfolios.keys());
    const QString key = keys[pick(keys.size())];
    tell("instrument " + key);
    mWindow.showInstrument(key);
    return true;
}

bool SoakRobot::showDay() {
    const QString key = mWindow.view()->instrument();
    const QVector<QDate> days = mServices.daysOf(key);
    if (days.isEmpty()) {
        return false;
    }
    const QDate day = days[pick(days.size())];
    tell(key + ' ' + day.toString(Qt::ISODate));
    return mWindow.showInstrument(key, day);
}

bool SoakRobot::showFormula() {
    const QStringList names = mServices.catalogue().names();
    const QString name = names[pick(names.size())];
    if (mWindow.view()->formulaPanes() >= kMostPanes) {
        mWindow.setFormulaPanes(1);
    }
    tell("formula " + name);
    mWindow.view()->main()->handleDoubleClickedFormula(name);
    return true;
}

bool SoakRobot::runScriptModel() {
    static const QStringList models{"MEANBAND", "GROUPRANK"};
    const QString name = models[pick(models.size())];
    tell("script model " + name);
    mWindow.view()->main()->handleDoubleClickedFormula(name);
    return true;
}

bool SoakRobot::importTrades() {
    const QString key = mWindow.view()->instrument();
    const InstrumentQuote quote = mServices.quoteOf(key);
    if (!(quote.price > 0.0)) {
        return false; // it has not traded, and a trade without a price is left out
    }
    const int number = ++mTrades % kImportedTrades;
    const long long time = mServices.clock().now() / 1000;
    tell(QStringLiteral("import of trade %1 of %2").arg(number).arg(key));
    mServices.trade().importOrder("80010001", key.toStdString(), "o" + std::to_string(number), quote.price, 300,
                                  time, 48 + number % 2);
    mServices.trade().importDeal("80010001", key.toStdString(), "d" + std::to_string(number), quote.price, 200,
                                 time, 48 + number % 2);
    return true;
}

bool SoakRobot::replay() {
    const QVector<QDate> days = mServices.daysOf(mWindow.view()->instrument());
    if (days.isEmpty()) {
        return false;
    }
    const QDate day = days[pick(days.size())];
    const int first = 570 + pick(60); // minutes of the day
    const qint64 start = timeOf(day, first) / 1000;
    const qint64 end = timeOf(day, first + 10 + pick(200)) / 1000;
    tell(QStringLiteral("replay of %1 from %2").arg(day.toString(Qt::ISODate)).arg(first));
    mServices.replay().setThousandRange(start * 1000, end * 1000);
    mWindow.startReplay(start, end);
    return true;
}

bool SoakRobot::endReplay() {
    auto *button = mWindow.findChild<QAbstractButton *>(QStringLiteral("replay_end"));
    if (!button || !button->isVisible()) {
        replay(); // to be ended by the next one
        return false;
    }
    tell(QStringLiteral("end of replay"));
    button->click();
    return true;
}

bool SoakRobot::setPanes() {
    const int count = pick(kMostPanes);
    tell(QStringLiteral("panes %1").arg(count));
    mWindow.setFormulaPanes(count);
    return true;
}

bool SoakRobot::toggleTrades() {
    const bool shown = pick(4) != 0;
    tell(shown ? QStringLiteral("trades shown") : QStringLiteral("trades hidden"));
    mWindow.setTradesShown(shown);
    return true;
}

bool SoakRobot::clickControl() {
    const auto *row = mWindow.findChild<ControlRow *>();
    QList<QAbstractButton *> buttons;
    for (QAbstractButton *button : row->findChildren<QAbstractButton *>()) {
        if (button->isVisible() && button->isEnabled()) {
            buttons.append(button);
        }
    }
    QAbstractButton *button = pickOf(buttons);
    if (!button) {
        return false;
    }
    tell("control " + button->objectName());
    QTest::mouseClick(button, Qt::LeftButton);
    return true;
}

bool SoakRobot::resizeWindow() {
    const QSize size(480 + pick(1100), 320 + pick(700));
    tell(QString::asprintf("size %d %d", size.width(), size.height()));
    mWindow.resize(size);
    return true;
}

} // namespace tests
