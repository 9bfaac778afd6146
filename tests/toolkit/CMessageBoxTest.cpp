#include "host/toolkit/CMessageBox.h"

#include "host/toolkit/CUiResource.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPointer>
#include <QTimer>
#include <QtTest>

#include <gtest/gtest.h>

#include <functional>

namespace {

using GZ::CMessageBox;

/// Does something with the box that comes up next.
void whenOpen(const std::function<void(QMessageBox &)> &act) {
    QTimer::singleShot(0, [act] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        act(*box);
    });
}

TEST(CMessageBox, WarningShowsTitleTextAndButton) {
    QWidget parent;
    whenOpen([&](QMessageBox &box) {
        EXPECT_EQ(box.windowTitle(), QStringLiteral("提示"));
        EXPECT_EQ(box.text(), QStringLiteral("已达到允许叠加最大限制数3!"));
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        EXPECT_EQ(box.parentWidget(), &parent);
        ASSERT_EQ(box.buttons().size(), 1);
        EXPECT_EQ(box.buttons()[0]->text(), QStringLiteral("确定"));
        QTest::mouseClick(box.buttons()[0], Qt::LeftButton);
    });
    EXPECT_EQ(
        CMessageBox::warning(&parent, QStringLiteral("提示"), QStringLiteral("已达到允许叠加最大限制数3!")),
        QMessageBox::Ok);
}

TEST(CMessageBox, QuestionAnswersTheButtonThatIsClicked) {
    const CMessageBox::Buttons buttons(0x14000); // yes and no
    for (const QMessageBox::StandardButton wanted : {QMessageBox::Yes, QMessageBox::No}) {
        whenOpen([&](QMessageBox &box) {
            EXPECT_EQ(box.icon(), QMessageBox::Question);
            EXPECT_EQ(box.button(QMessageBox::Yes)->text(), QStringLiteral("是"));
            EXPECT_EQ(box.button(QMessageBox::No)->text(), QStringLiteral("否"));
            QTest::mouseClick(box.button(wanted), Qt::LeftButton);
        });
        EXPECT_EQ(CMessageBox::question(nullptr, QStringLiteral("提示"), QStringLiteral("您确定要撤销任务?"),
                                        buttons),
                  wanted);
    }
    EXPECT_EQ(int(QMessageBox::Yes), 16384);
}

TEST(CMessageBox, EscapeIsCancelOrNo) {
    whenOpen([](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(CMessageBox::question(nullptr, QStringLiteral("a"), QStringLiteral("b"),
                                    QMessageBox::Ok | QMessageBox::Cancel),
              QMessageBox::Cancel);
    whenOpen([](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(CMessageBox::question(nullptr, QStringLiteral("a"), QStringLiteral("b")), QMessageBox::No);
    whenOpen([](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(CMessageBox::warning(nullptr, QStringLiteral("a"), QStringLiteral("b")), QMessageBox::Ok);
}

TEST(CMessageBox, EnterTakesThePresetButton) {
    whenOpen([](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Return); });
    EXPECT_EQ(CMessageBox::question(nullptr, QStringLiteral("a"), QStringLiteral("b"),
                                    QMessageBox::Yes | QMessageBox::No, QMessageBox::No),
              QMessageBox::No);
}

TEST(CMessageBox, TextIsNeverReadAsMarkup) {
    whenOpen([](QMessageBox &box) {
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.palette().color(QPalette::Window),
                  GZ::CUiResource::instance().getColor(QStringLiteral("clr_dialog_bg")));
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    CMessageBox::warning(nullptr, QStringLiteral("a"), QStringLiteral("<b>x</b>"));
}

TEST(CMessageBox, ParentThatGoesTakesTheBoxAlong) {
    QPointer<QWidget> parent = new QWidget;
    whenOpen([&](QMessageBox &) { delete parent.data(); });
    CMessageBox::question(parent, QStringLiteral("a"), QStringLiteral("b"));
    EXPECT_TRUE(parent.isNull());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

} // namespace
