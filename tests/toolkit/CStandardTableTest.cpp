#include "host/toolkit/CStandardTable.h"

#include "host/toolkit/COddEvenRowTable.h"
#include "tests/chartview/ChartFixture.h"
#include "tests/support/Golden.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QtTest>

using GZ::CStandardTable;

namespace {

class CStandardTableTest : public tests::ChartFixture {
protected:
    CStandardTableTest() { mTable = makeTable(); }
    std::unique_ptr<CStandardTable> makeTable(int menuFlags = 511) const {
        auto table = std::make_unique<CStandardTable>(7, menuFlags);
        table->setHeaders({"时间", "名称", "价格"});
        table->setDefaultWidth(0, 60);
        table->setDefaultWidth(1, 80);
        table->setDefaultWidth(2, 70);
        table->resize(400, 200);
        return table;
    }
    void fill() {
        add("09:31:00", "浦发银行", 9.5);
        add("09:30:00", "平安银行", 10.25);
        add("09:32:00", "贵州茅台", 9.5);
    }
    void add(const char *time, const char *name, double price) {
        const int row = mTable->addRow();
        mTable->setText(row, 0, QString::fromUtf8(time));
        mTable->setText(row, 1, QString::fromUtf8(name));
        mTable->setText(row, 2, QString::number(price), Qt::AlignRight | Qt::AlignVCenter, price);
    }
    QStringList column(int number) const {
        QStringList texts;
        for (int row = 0; row < mTable->rowCount(); ++row) {
            texts.append(mTable->textAt(row, number));
        }
        return texts;
    }
    void show() {
        mTable->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(mTable.get()));
    }
    void clickHeading(int number) {
        const QHeaderView *header = mTable->horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(header->sectionViewportPosition(number) + 10, 10));
    }
    /// Widens a column by the mouse on the line at its right.
    void dragBorder(int number, int by) {
        const QHeaderView *header = mTable->horizontalHeader();
        const QPoint at(header->sectionViewportPosition(number) + header->sectionSize(number) - 1, 10);
        QTest::mousePress(header->viewport(), Qt::LeftButton, Qt::NoModifier, at);
        QMouseEvent move(QEvent::MouseMove, at + QPoint(by, 0), at + QPoint(by, 0), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(header->viewport(), &move);
        QTest::mouseRelease(header->viewport(), Qt::LeftButton, Qt::NoModifier, at + QPoint(by, 0));
    }
    /// Does something with the context menu over a cell.
    void withMenu(const QPoint &at, const std::function<void(QMenu &)> &act) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, mTable->viewport()->mapToGlobal(at));
        QCoreApplication::sendEvent(mTable->viewport(), &event);
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        act(*menu);
        menu->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(mTable->findChild<QMenu *>(), nullptr);
    }
    static QAction *entry(const QMenu &menu, const char *text) {
        for (QAction *action : menu.actions()) {
            if (action->text() == QString::fromUtf8(text)) {
                return action;
            }
        }
        return nullptr;
    }
    std::unique_ptr<CStandardTable> mTable;
};

TEST_F(CStandardTableTest, RowsAreAddedAtTheEndAndClearedAll) {
    fill();
    EXPECT_EQ(mTable->getID(), 7);
    EXPECT_EQ(mTable->rowCount(), 3);
    EXPECT_EQ(column(1), (QStringList{"浦发银行", "平安银行", "贵州茅台"}));
    EXPECT_EQ(mTable->item(0, 2)->textAlignment(), int(Qt::AlignRight | Qt::AlignVCenter));
    EXPECT_EQ(mTable->item(0, 0)->textAlignment(), 132);
    mTable->clearRows();
    EXPECT_EQ(mTable->rowCount(), 0);
    EXPECT_EQ(mTable->columnCount(), 3);
}

TEST_F(CStandardTableTest, HeadingSortsUpThenDownAndEqualRowsKeepTheirOrder) {
    fill();
    ASSERT_NO_FATAL_FAILURE(show());
    clickHeading(2);
    EXPECT_EQ(column(1),
              (QStringList{"浦发银行", "贵州茅台", "平安银行"})); // 10.25 is more than 9.5, not before it
    EXPECT_TRUE(mTable->horizontalHeader()->isSortIndicatorShown());
    clickHeading(2);
    EXPECT_EQ(column(1), (QStringList{"平安银行", "浦发银行", "贵州茅台"}));
    clickHeading(0);
    EXPECT_EQ(column(0), (QStringList{"09:30:00", "09:31:00", "09:32:00"}));
    mTable->sortRows(-1, Qt::AscendingOrder);
    EXPECT_EQ(column(0), (QStringList{"09:31:00", "09:30:00", "09:32:00"}));
    EXPECT_FALSE(mTable->horizontalHeader()->isSortIndicatorShown());
}

TEST_F(CStandardTableTest, ArrowOfTheSortedHeadingIsOnTheScreenInBothThemes) {
    fill();
    ASSERT_NO_FATAL_FAILURE(show());
    const QHeaderView *header = mTable->horizontalHeader();
    // The arrow lies in the last 13 columns of its heading, before the line at its right.
    const QPoint arrow(header->sectionViewportPosition(0) + header->sectionSize(0) - 1 - 8, 11);
    for (const char *theme : {"dark", "light"}) {
        GZ::CUiResource::instance().setTheme(QString::fromLatin1(theme));
        mTable->sortRows(-1, Qt::AscendingOrder);
        QCoreApplication::processEvents();
        EXPECT_EQ(tests::onScreen(*mTable).pixelColor(arrow), color("clr_table_header_bg")) << theme;
        mTable->sortRows(0, Qt::AscendingOrder);
        QCoreApplication::processEvents();
        EXPECT_EQ(tests::onScreen(*mTable).pixelColor(arrow), color("clr_text_default")) << theme;
    }
}

TEST_F(CStandardTableTest, WithoutTheFlagAHeadingSortsNothing) {
    mTable->setFlag(8, false);
    fill();
    ASSERT_NO_FATAL_FAILURE(show());
    clickHeading(0);
    EXPECT_EQ(column(0), (QStringList{"09:31:00", "09:30:00", "09:32:00"}));
    EXPECT_EQ(mTable->saveConfigStr(), QString());
}

TEST_F(CStandardTableTest, RowsThatComeAreSortedInWhenTheColumnsAreAdjusted) {
    fill();
    mTable->sortRows(0, Qt::AscendingOrder);
    add("09:30:30", "万科", 8.0);
    EXPECT_EQ(column(0).last(), QStringLiteral("09:30:30"));
    mTable->adjustVisibleRowsColumnWidth();
    EXPECT_EQ(column(0), (QStringList{"09:30:00", "09:30:30", "09:31:00", "09:32:00"}));
}

TEST_F(CStandardTableTest, ColumnsGetTheWidthOfTheirTextsButForThoseTheUserHasSized) {
    fill();
    mTable->setAutoAdjust(false);
    ASSERT_NO_FATAL_FAILURE(show());
    dragBorder(0, 50);
    EXPECT_EQ(mTable->columnWidth(0), 110);
    mTable->setText(1, 1, QString(40, QChar(u'国')));
    mTable->adjustVisibleRowsColumnWidth();
    EXPECT_EQ(mTable->columnWidth(0), 110);
    EXPECT_GE(mTable->columnWidth(1), mTable->fontMetrics().horizontalAdvance(QString(40, QChar(u'国'))));
    EXPECT_EQ(mTable->saveConfigStr(), QStringLiteral("{\"widths\":{\"时间\":110}}"));
}

TEST_F(CStandardTableTest, LayoutOfTheUserSurvivesAsAText) {
    fill();
    ASSERT_NO_FATAL_FAILURE(show());
    EXPECT_EQ(mTable->saveConfigStr(), QString());
    mTable->horizontalHeader()->moveSection(2, 0);
    dragBorder(2, 25);
    mTable->hideColumn(0);
    mTable->sortRows(2, Qt::DescendingOrder);
    const QString text = mTable->saveConfigStr();

    mTable = makeTable();
    mTable->setAutoAdjust(false);
    fill();
    EXPECT_TRUE(mTable->loadConfigStr(text));
    EXPECT_EQ(mTable->horizontalHeader()->visualIndex(2), 0);
    EXPECT_EQ(mTable->columnWidth(2), 95);
    EXPECT_TRUE(mTable->isColumnHidden(0));
    EXPECT_EQ(column(2), (QStringList{"10.25", "9.5", "9.5"}));
    EXPECT_EQ(mTable->saveConfigStr(), text);
    mTable->restoreDefaultLayout();
    EXPECT_EQ(mTable->saveConfigStr(), QString());
    EXPECT_EQ(mTable->horizontalHeader()->visualIndex(2), 2);
    EXPECT_EQ(mTable->columnWidth(2), 70);
    EXPECT_FALSE(mTable->isColumnHidden(0));
}

TEST_F(CStandardTableTest, DamagedLayoutsChangeNothing) {
    fill();
    mTable->sortRows(0, Qt::AscendingOrder);
    for (const char *text : {"", "x", "[1]", "{", "12"}) {
        EXPECT_FALSE(mTable->loadConfigStr(QString::fromUtf8(text))) << text;
    }
    EXPECT_EQ(column(0).first(), QStringLiteral("09:30:00"));
    EXPECT_TRUE(mTable->loadConfigStr(
        "{\"order\":[\"没有\",5,\"价格\",\"价格\"],\"hidden\":[\"时间\",\"名称\",\"价格\"],"
        "\"widths\":{\"没有\":9,\"价格\":-7,\"名称\":\"x\"},\"sort\":\"没有\"}"));
    EXPECT_EQ(mTable->horizontalHeader()->hiddenSectionCount(), 2); // one stays to be seen
    EXPECT_GE(mTable->columnWidth(2), 0);
    EXPECT_EQ(column(0).first(), QStringLiteral("09:31:00"));
}

TEST_F(CStandardTableTest, WidgetsAreCentredOrFillTheirCellAndGoWithTheRows) {
    mTable->setAutoAdjust(false);
    const int row = mTable->addRow();
    auto *centred = new QLabel(QStringLiteral("以"));
    centred->setFixedSize(20, 10);
    const QPointer<QLabel> filling = new QLabel(QStringLiteral("x"));
    mTable->setWidget(row, 0, centred, 132);
    mTable->setWidget(row, 1, filling, 12288);
    ASSERT_NO_FATAL_FAILURE(show());
    const QRect cell = mTable->visualRect(mTable->model()->index(row, 1));
    EXPECT_EQ(QRect(filling->mapTo(mTable->viewport(), QPoint(0, 0)), filling->size()), cell);
    EXPECT_EQ(centred->mapTo(mTable->viewport(), QPoint(0, 0)), QPoint(20, 6)); // 60 by 22 pixels
    EXPECT_EQ(mTable->widgetAt(row, 0), centred);
    EXPECT_EQ(mTable->widgetAt(row, 2), nullptr);
    EXPECT_EQ(mTable->textAt(row, 0), QStringLiteral("以"));
    mTable->clearRows();
    EXPECT_TRUE(QTest::qWaitFor([&] { return filling.isNull(); }, 1000));
}

TEST_F(CStandardTableTest, WidgetOfACellThatIsNotThereGoesAtOnce) {
    const QPointer<QLabel> lost = new QLabel;
    mTable->setWidget(4, 0, lost);
    EXPECT_TRUE(lost.isNull());
    mTable->setText(4, 0, QStringLiteral("x"));
    EXPECT_EQ(mTable->textAt(4, 0), QString());
}

TEST_F(CStandardTableTest, HeaderHeightOfNothingHidesTheHeadings) {
    EXPECT_FALSE(mTable->horizontalHeader()->isHidden());
    mTable->setHeaderHeight(0);
    EXPECT_TRUE(mTable->horizontalHeader()->isHidden());
    mTable->setHeaderHeight(30);
    EXPECT_EQ(mTable->horizontalHeader()->height(), 30);
}

TEST_F(CStandardTableTest, FlagsDecideOnFocusAndRowHeight) {
    EXPECT_EQ(mTable->selectionMode(), QAbstractItemView::ExtendedSelection);
    mTable->setFlag(1, false);
    EXPECT_EQ(mTable->selectionMode(), QAbstractItemView::NoSelection);
    EXPECT_EQ(mTable->focusPolicy(), Qt::NoFocus);
    mTable->addRow();
    const int low = mTable->rowHeight(0);
    mTable->setFlag(0x800000, true);
    EXPECT_GE(mTable->rowHeight(0), low + 7); // a bar of seven pixels below the text
}

TEST_F(CStandardTableTest, MenuCopiesCellsAndRowsWithTheirHeadings) {
    fill();
    ASSERT_NO_FATAL_FAILURE(show());
    QClipboard *clipboard = QApplication::clipboard();
    const QPoint second = mTable->visualRect(mTable->model()->index(1, 1)).center();
    mTable->selectRow(1);
    withMenu(second, [](QMenu &menu) { entry(menu, "复制单元格")->trigger(); });
    EXPECT_EQ(clipboard->text(), QStringLiteral("平安银行"));
    withMenu(second, [](QMenu &menu) { entry(menu, "复制选中行")->trigger(); });
    EXPECT_EQ(clipboard->text(), QStringLiteral("时间\t名称\t价格\n09:30:00\t平安银行\t10.25\n"));
    mTable->hideColumn(0);
    withMenu(second, [](QMenu &menu) { entry(menu, "复制全部")->trigger(); });
    EXPECT_EQ(clipboard->text(), QStringLiteral("名称\t价格\n浦发银行\t9.5\n平安银行\t10.25\n贵州茅台\t9.5\n"));
}

TEST_F(CStandardTableTest, MenuHasTheEntriesThatItsFlagsName) {
    mTable = makeTable(CStandardTable::eCopyAll | CStandardTable::eFitColumns);
    fill();
    ASSERT_NO_FATAL_FAILURE(show());
    withMenu(QPoint(5, 5), [](QMenu &menu) {
        EXPECT_EQ(entry(menu, "复制单元格"), nullptr);
        EXPECT_NE(entry(menu, "复制全部"), nullptr);
        EXPECT_NE(entry(menu, "自动列宽"), nullptr);
        EXPECT_EQ(entry(menu, "恢复缺省布局"), nullptr);
    });
}

TEST_F(CStandardTableTest, MenuHidesColumnsButForTheLastOne) {
    fill();
    ASSERT_NO_FATAL_FAILURE(show());
    const auto toggle = [this](const char *name) {
        withMenu(QPoint(5, 5), [name](QMenu &menu) { entry(*entry(menu, "显示列")->menu(), name)->trigger(); });
    };
    toggle("时间");
    toggle("价格");
    EXPECT_TRUE(mTable->isColumnHidden(0));
    EXPECT_TRUE(mTable->isColumnHidden(2));
    withMenu(QPoint(5, 5), [](QMenu &menu) {
        EXPECT_FALSE(entry(*entry(menu, "显示列")->menu(), "名称")->isEnabled());
        entry(menu, "恢复缺省布局")->trigger();
    });
    EXPECT_EQ(mTable->horizontalHeader()->hiddenSectionCount(), 0);
}

TEST_F(CStandardTableTest, MayGoWhileItsMenuIsOpen) {
    fill();
    ASSERT_NO_FATAL_FAILURE(show());
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), mTable->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(mTable->viewport(), &event);
    EXPECT_NE(QApplication::activePopupWidget(), nullptr);
    mTable.reset();
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(CStandardTableTest, NoCellOfItsOwnShowsTheKeyboard) {
    fill();
    ASSERT_NO_FATAL_FAILURE(show());
    mTable->setCurrentCell(1, 1, QItemSelectionModel::NoUpdate);
    QCoreApplication::processEvents();
    const QImage before = tests::onScreen(*mTable);
    mTable->setFocus();
    mTable->activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([this] { return mTable->hasFocus(); }));
    mTable->setCurrentCell(2, 2, QItemSelectionModel::NoUpdate);
    QCoreApplication::processEvents();
    EXPECT_EQ(tests::onScreen(*mTable), before);
}

TEST_F(CStandardTableTest, FollowsTheThemeOnTheScreen) {
    GZ::COddEvenRowTable table(1, 0);
    table.setHeaders({"a"});
    for (int row = 0; row < 4; ++row) { // the mouse may stand over the first
        table.addRow();
    }
    table.resize(200, 120);
    table.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&table));
    for (const char *theme : {"dark", "light"}) {
        GZ::CUiResource::instance().setTheme(QString::fromLatin1(theme));
        QCoreApplication::processEvents();
        const QImage screen = tests::onScreen(table);
        EXPECT_EQ(screen.pixelColor(100, 24 + 44 + 11), color("clr_table_row_even")) << theme;
        EXPECT_EQ(screen.pixelColor(100, 24 + 44 + 33), color("clr_table_row_odd")) << theme;
        EXPECT_EQ(screen.pixelColor(100, 3), color("clr_table_header_bg")) << theme;
        EXPECT_EQ(table.horizontalHeader()->font().pixelSize(), 12);
    }
}

} // namespace
