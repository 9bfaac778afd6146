#include "host/toolkit/CFileQuestion.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

using GZ::CFileQuestion;

namespace {

/// Asks with a dialog that is not the desktop's own, and lets `use` answer.
class CFileQuestionTest : public ::testing::Test {
protected:
    QStringList ask(const std::function<void(QFileDialog *)> &use) {
        CFileQuestion question(mWindow.get(), QStringLiteral("title"), mFolder.path());
        question->setOption(QFileDialog::DontUseNativeDialog);
        question->setFileMode(QFileDialog::AnyFile);
        QTimer::singleShot(0, [&] {
            mAsked = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            ASSERT_TRUE(mAsked);
            use(mAsked);
        });
        return question.ask();
    }
    static void choose(QFileDialog *dialog, const QString &name) {
        dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(name);
        QMetaObject::invokeMethod(dialog, "accept");
    }

    QTemporaryDir mFolder;
    std::unique_ptr<QWidget> mWindow = std::make_unique<QWidget>();
    QPointer<QFileDialog> mAsked; ///< the last one
};

TEST_F(CFileQuestionTest, TheChosenFileIsAnswered) {
    EXPECT_EQ(ask([this](QFileDialog *dialog) {
                  EXPECT_EQ(dialog->parentWidget(), mWindow.get());
                  EXPECT_EQ(dialog->windowTitle(), "title");
                  choose(dialog, "a.csv");
              }),
              QStringList(mFolder.filePath("a.csv")));
    EXPECT_TRUE(ask([](QFileDialog *dialog) { dialog->reject(); }).isEmpty());
}

TEST_F(CFileQuestionTest, TheDialogIsHiddenAtOnceAndTakenDownLater) {
    ask([](QFileDialog *dialog) { dialog->reject(); });
    ASSERT_TRUE(mAsked);
    EXPECT_FALSE(mAsked->isVisible());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !mAsked; }, 60000));
}

TEST_F(CFileQuestionTest, TheWindowTakesAlongWhatIsHidden) {
    ask([](QFileDialog *dialog) { dialog->reject(); });
    mWindow.reset();
    EXPECT_FALSE(mAsked);
}

TEST_F(CFileQuestionTest, TheWindowMayGoWhileItIsAsked) {
    EXPECT_TRUE(ask([this](QFileDialog *) { mWindow.reset(); }).isEmpty());
    EXPECT_FALSE(mAsked);
}

} // namespace
