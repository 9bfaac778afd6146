#include "host/windows/CViewVariableDialog.h"

#include <QPlainTextEdit>
#include <QtTest>

#include <gtest/gtest.h>

namespace {

TEST(CViewVariableDialog, ShowsATextThatCanBeReadOnly) {
    TC::CViewVariableDialog dialog;
    dialog.setText(QStringLiteral("价格 = 10.5\n量 = 3"));
    EXPECT_EQ(dialog.text(), QStringLiteral("价格 = 10.5\n量 = 3"));
    auto *edit = dialog.findChild<QPlainTextEdit *>();
    ASSERT_NE(edit, nullptr);
    QTest::keyClicks(edit, QStringLiteral("x"));
    EXPECT_EQ(dialog.text(), QStringLiteral("价格 = 10.5\n量 = 3"));
}

TEST(CViewVariableDialog, IsNotModalAndClosesByEscape) {
    TC::CViewVariableDialog dialog;
    dialog.show();
    EXPECT_FALSE(dialog.isModal());
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
}

TEST(CViewVariableDialog, FollowsTheTheme) {
    GZ::CUiResource &theme = GZ::CUiResource::instance();
    TC::CViewVariableDialog dialog;
    EXPECT_LT(dialog.palette().color(QPalette::Base).lightness(), 40);
    theme.setTheme(QStringLiteral("light"));
    EXPECT_GT(dialog.palette().color(QPalette::Base).lightness(), 240);
    theme.setTheme(QStringLiteral("dark"));
    EXPECT_LT(dialog.palette().color(QPalette::Base).lightness(), 40);
}

} // namespace
