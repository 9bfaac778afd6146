#include "terminal/app/DialogState.h"

#include <QFile>
#include <QFileDialog>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using terminal::keepDialogStateIn;

namespace {

class DialogStateTest : public ::testing::Test {
protected:
    ~DialogStateTest() override {
        keepDialogStateIn(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    }
    static void useDialog() {
        QFileDialog dialog;
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        dialog.show();
        dialog.reject();
    }
};

} // namespace

TEST_F(DialogStateTest, AFileDialogWritesToNoFileOfOtherPrograms) {
    const QTemporaryDir others;
    const QTemporaryDir ours;
    keepDialogStateIn(others.path());
    useDialog();
    const QString shared = others.filePath(QStringLiteral("QtProject.conf"));
    ASSERT_TRUE(QFile::exists(shared)) << "what is to be kept apart";
    QFile::remove(shared);
    keepDialogStateIn(ours.path());
    useDialog();
    EXPECT_FALSE(QFile::exists(shared));
    EXPECT_TRUE(QFile::exists(ours.filePath(QStringLiteral("QtProject.conf"))));
}
