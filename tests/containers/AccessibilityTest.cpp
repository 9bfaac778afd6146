// What assistive technology is told of a view, asked within the process.

#include "chartview/CGraphAxisWidget.h"
#include "host/drawing/CIndexTitleWidget.h"
#include "tests/containers/CursorFixture.h"
#include "tests/support/ActiveAccessibility.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPushButton>

namespace tests {
namespace {

/// One call of the handler of accessibility updates.
struct Update {
    QAccessible::Event type;
    QObject *object;
    QString text; ///< of a change of value
    QString cell; ///< of an interface without an object
};
std::vector<Update> gUpdates;

void keepUpdate(QAccessibleEvent *event) {
    Update update{event->type(), event->object(), QString(), QString()};
    if (event->type() == QAccessible::ValueChanged) {
        update.text = static_cast<QAccessibleValueChangeEvent *>(event)->value().toString();
    } else if (!event->object() && event->accessibleInterface()) {
        update.cell = event->accessibleInterface()->text(QAccessible::Description);
    }
    gUpdates.push_back(update);
}

class Accessibility : public CursorFixture {
protected:
    Accessibility() {
        gUpdates.clear();
        mBefore = QAccessible::installUpdateHandler(&keepUpdate);
    }
    ~Accessibility() override { QAccessible::installUpdateHandler(mBefore); }
    static QAccessibleInterface *of(QObject *object) { return QAccessible::queryAccessibleInterface(object); }
    static QString told(QObject *object, QAccessible::Text kind) { return of(object)->text(kind); }
    static QAccessibleTableInterface *table(TC::CRealtimeGraphWidget *of) {
        return Accessibility::of(of)->tableInterface();
    }
    static QString cell(TC::CRealtimeGraphWidget *of, int row, int column) {
        QAccessibleInterface *found = table(of)->cellAt(row, column);
        return found ? found->text(QAccessible::Name) : QStringLiteral("none");
    }
    static std::vector<Update> updates(QAccessible::Event type) {
        std::vector<Update> found;
        for (const Update &one : gUpdates) {
            if (one.type == type) {
                found.push_back(one);
            }
        }
        return found;
    }

    std::unique_ptr<ActiveAccessibility> mActive = std::make_unique<ActiveAccessibility>();

private:
    QAccessible::UpdateHandler mBefore;
};

TEST_F(Accessibility, AViewIsAChartWithTheNameOfItsInstrument) {
    mDetail->mName = "浦发银行";
    showTrading();
    EXPECT_EQ(of(mMain.get())->role(), QAccessible::Chart);
    EXPECT_EQ(told(mMain.get(), QAccessible::Name), QString("分时图 浦发银行"));
    EXPECT_TRUE(of(mMain.get())->state().focusable);
    mMain->setAccessibleName("行情");
    EXPECT_EQ(told(mMain.get(), QAccessible::Name), QString("行情")) << "a host's own stands";
}

TEST_F(Accessibility, AViewWithoutAnInstrumentIsAChartAllTheSame) {
    makeView();
    EXPECT_EQ(told(mMain.get(), QAccessible::Name), QString("分时图"));
    EXPECT_FALSE(of(mMain.get())->valueInterface()->currentValue().isValid());
}

TEST_F(Accessibility, TheValueIsWhatFlagAndTitleTellAtTheCrossLine) {
    showTrading();
    EXPECT_FALSE(of(mMain.get())->valueInterface()->currentValue().isValid());
    mMain->moveToEnd();
    mMain->moveCursor(true);
    const QString value = told(mMain.get(), QAccessible::Value);
    EXPECT_TRUE(value.startsWith("11:29 ")) << value.toStdString();
    EXPECT_TRUE(value.contains("L0:10.39")) << value.toStdString(); // 10.00 + 0.01 * (119 % 40)
    EXPECT_TRUE(value.contains("涨跌:+0.39")) << value.toStdString();
    EXPECT_TRUE(value.contains("涨幅:+3.90%")) << value.toStdString();
    EXPECT_DOUBLE_EQ(of(mMain.get())->valueInterface()->currentValue().toDouble(), 10.39);
    EXPECT_EQ(told(mMain.get(), QAccessible::Description), value);
    EXPECT_EQ(told(timeScale(), QAccessible::Value), QString("11:29"));
    mMain->showCrossline(false);
    EXPECT_EQ(told(timeScale(), QAccessible::Value), QString());
}

TEST_F(Accessibility, TheSelectedFormulaPaneIsToldAfterTheChart) {
    showTrading(2);
    mMain->moveToHome();
    mMain->highlightWidget(sub(1)->getId());
    const QString value = told(mMain.get(), QAccessible::Value);
    EXPECT_LT(value.indexOf("涨跌:"), value.indexOf("MACD")) << value.toStdString();
    EXPECT_FALSE(value.contains("KDJ")) << value.toStdString();
}

TEST_F(Accessibility, AGraphIsATableOfMinutesAndLines) {
    showTrading();
    TC::CRealtimeGraphWidget *day = graph(pane());
    ASSERT_NE(table(day), nullptr);
    EXPECT_EQ(of(day)->role(), QAccessible::Table);
    EXPECT_EQ(table(day)->rowCount(), 121);
    EXPECT_EQ(table(day)->columnCount(), 3);
    EXPECT_EQ(table(day)->columnDescription(0), QString("时间"));
    EXPECT_EQ(table(day)->columnDescription(1), QString("L0"));
    EXPECT_EQ(cell(day, 0, 0), QString("09:30"));
    EXPECT_EQ(cell(day, 0, 1), QString("10.00"));
    EXPECT_EQ(cell(day, 0, 2), QString("500"));
    EXPECT_EQ(cell(day, 45, 0), QString("10:15"));
    EXPECT_EQ(cell(day, 45, 1), QString("10.05"));
    EXPECT_EQ(table(day)->rowDescription(120), QString("11:30"));
    EXPECT_EQ(cell(day, 121, 0), QString("none"));
    EXPECT_EQ(cell(day, 0, 3), QString("none"));
    EXPECT_EQ(cell(day, -1, 0), QString("none"));
    EXPECT_EQ(cell(day, 0, -1), QString("none"));
    EXPECT_EQ(told(day, QAccessible::Value), QString("11:30 L0:10.00 L0:500")) << "the newest minute";
}

TEST_F(Accessibility, ATableGrowsWithItsPoints) {
    showTrading();
    stream("REALTIME", 691, 10.77);
    settle();
    EXPECT_EQ(table(graph(pane()))->rowCount(), 122);
    EXPECT_EQ(cell(graph(pane()), 121, 1), QString("10.77"));
}

TEST_F(Accessibility, ACellKnowsItsPlaceAndItsTable) {
    showTrading();
    QAccessibleInterface *found = table(graph(pane()))->cellAt(7, 1);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found, table(graph(pane()))->cellAt(7, 1)) << "one for each place";
    EXPECT_EQ(found->role(), QAccessible::Cell);
    EXPECT_EQ(found->parent(), of(graph(pane())));
    EXPECT_EQ(found->tableCellInterface()->rowIndex(), 7);
    EXPECT_EQ(found->tableCellInterface()->columnIndex(), 1);
    EXPECT_EQ(of(graph(pane()))->indexOfChild(found), 7 * 3 + 1);
    EXPECT_EQ(of(graph(pane()))->child(7 * 3 + 1), found);
    EXPECT_EQ(found->text(QAccessible::Description), QString("L0"));
    EXPECT_EQ(found->tableCellInterface()->rowHeaderCells().value(0)->text(QAccessible::Name),
              QString("09:37"));
    EXPECT_FALSE(found->state().selected);
    mMain->moveToHome();
    for (int i = 0; i < 7; ++i) {
        mMain->moveCursor(false);
    }
    EXPECT_TRUE(found->state().selected) << "the cross line stands there";
    EXPECT_EQ(table(graph(pane()))->selectedRows(), QList<int>{7});
    answer("REALTIME", {10.0});
    answer("REALTIMEVOL", {1.0}, 2);
    EXPECT_FALSE(found->isValid()) << "its minute is no more";
    EXPECT_EQ(found->text(QAccessible::Name), QString());
}

TEST_F(Accessibility, AnOverlayHasItsNameBeforeThatOfItsLine) {
    const TC::CInstrumentDetailPtr other = mHost.mStocks.add("SH", "600001", 20.0, 0.01);
    other->mName = "邯郸钢铁";
    showTrading();
    mMain->addSuperposedStock(other);
    mMain->request(false);
    answer("REALTIME", {10.0, 10.1});
    answer("REALTIME", {20.0, 20.2}, 0, "600001");
    settle();
    const QStringList heads{table(graph(pane()))->columnDescription(1),
                            table(graph(pane()))->columnDescription(2),
                            table(graph(pane()))->columnDescription(3)};
    EXPECT_TRUE(heads.contains("邯郸钢铁 L0")) << heads.join("|").toStdString();
}

TEST_F(Accessibility, EveryPaneTellsItsFormulasAndItsDay) {
    showTrading(1);
    EXPECT_EQ(of(sub(0))->role(), QAccessible::Grouping);
    EXPECT_TRUE(told(sub(0), QAccessible::Name).startsWith("副图 KDJ"));
    EXPECT_TRUE(told(graph(pane()), QAccessible::Name).startsWith("分时图"));
    EXPECT_TRUE(told(sub(0), QAccessible::Value).contains("L0:10.00"));
    EXPECT_EQ(cell(graph(sub(0)), 3, 1), QString("10.03"));
}

TEST_F(Accessibility, StripsTellTheirLabelsAndTheirSide) {
    showTrading();
    const auto strips = pane()->findChildren<TC::CGraphAxisWidget *>();
    ASSERT_EQ(strips.size(), 2);
    for (TC::CGraphAxisWidget *strip : strips) {
        const bool right = strip->side() == TC::CGraphAxisWidget::eRight;
        EXPECT_EQ(told(strip, QAccessible::Name), QString(right ? "右侧坐标轴" : "左侧坐标轴"));
        EXPECT_EQ(told(strip, QAccessible::Value).contains("%"), right);
        EXPECT_TRUE(told(strip, QAccessible::Value).contains(right ? "0.00%" : "10.00"))
            << told(strip, QAccessible::Value).toStdString();
    }
    EXPECT_EQ(told(timeScale(), QAccessible::Name), QString("时间轴"));
}

TEST_F(Accessibility, TheButtonOfAStripIsPressedByItsAction) {
    showTrading();
    auto *strip = pane()->findChildren<TC::CGraphAxisWidget *>().last();
    QAccessibleActionInterface *actions = of(strip)->actionInterface();
    ASSERT_NE(actions, nullptr);
    EXPECT_TRUE(actions->actionNames().isEmpty());
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(mKeeper->of(TC::eHolographicPressed).empty());
    strip->showHolographicButon(true);
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(mKeeper->of(TC::eHolographicPressed).size(), 1u);
}

TEST_F(Accessibility, TitlesTellTheirTextAndNameTheirTools) {
    showTrading(1);
    auto *title = sub(0)->findChild<TC::CIndexTitleWidget *>();
    EXPECT_EQ(told(title, QAccessible::Name), title->text());
    QStringList names;
    for (QPushButton *button : title->findChildren<QPushButton *>()) {
        names.append(told(button, QAccessible::Name));
        EXPECT_EQ(button->focusPolicy(), Qt::TabFocus);
    }
    EXPECT_EQ(names, (QStringList{"关闭", "菜单", "设置"}));
}

TEST_F(Accessibility, WhatIsForTheEyeAloneIsInvisible) {
    showTrading(1);
    mMain->moveToHome();
    EXPECT_TRUE(of(line(pane()))->state().invisible);
    EXPECT_TRUE(of(frame())->state().invisible);
}

TEST_F(Accessibility, AKeyThatMovesTheCrossLineIsAnnounced) {
    showTrading();
    mMain->activateWindow();
    mMain->setFocus();
    settle();
    gUpdates.clear();
    key(Qt::Key_Home);
    key(Qt::Key_Right);
    const std::vector<Update> values = updates(QAccessible::ValueChanged);
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(values[1].object, mMain.get());
    EXPECT_TRUE(values[1].text.startsWith("09:31 ")) << values[1].text.toStdString();
    EXPECT_TRUE(values[1].text.contains("L0:10.01")) << values[1].text.toStdString();
    const std::vector<Update> focus = updates(QAccessible::Focus);
    ASSERT_EQ(focus.size(), 2u) << "on the minute";
    EXPECT_EQ(focus[1].cell, QString("09:31 L0:10.01 L0:500"));
}

TEST_F(Accessibility, TheMouseAndNewPointsAreNotAnnounced) {
    showTrading();
    mMain->moveToEnd();
    gUpdates.clear();
    moveTo(graph(pane()), {200, 60});
    stream("REALTIME", 691, 10.77);
    settle();
    EXPECT_TRUE(updates(QAccessible::ValueChanged).empty());
}

TEST_F(Accessibility, NothingIsAnnouncedWhileNobodyListens) {
    showTrading();
    mActive.reset();
    gUpdates.clear();
    key(Qt::Key_Home);
    EXPECT_TRUE(gUpdates.empty());
}

TEST_F(Accessibility, WhatWasAskedForMayGo) {
    showTrading(1);
    mMain->scaleView(false);
    settle();
    QPointer<TC::CRealtimeGraphWidget> older = graph(pane(), 1);
    ASSERT_TRUE(older);
    of(older);
    QAccessibleInterface *found = table(graph(sub(0)))->cellAt(0, 0);
    ASSERT_NE(found, nullptr);
    const QAccessible::Id id = QAccessible::uniqueId(found);
    mMain->scaleView(true);
    mMain->delIndexWidget(ids()[0]);
    settle();
    EXPECT_FALSE(older);
    EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr) << "cells go with their table";
    of(mMain.get());
    mMain.reset();
}

} // namespace
} // namespace tests
