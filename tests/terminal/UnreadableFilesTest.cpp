// Folders of formulas and of script models in which something lies that is no file.

#include "terminal/formula/FormulaFiles.h"
#include "terminal/formula/ScriptModelCatalogue.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

class UnreadableFilesTest : public testing::Test {
protected:
    void write(const char *name, const QByteArray &content) {
        QFile file(mFolder.filePath(QString::fromLatin1(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    /// Puts a pipe, a link to an endless device and a folder beside the files.
    void addSpecial(const QString &ending) {
        const QByteArray pipe = mFolder.filePath(QStringLiteral("PIPE") + ending).toLocal8Bit();
        ASSERT_EQ(::mkfifo(pipe.constData(), 0600), 0);
        ASSERT_TRUE(
            QFile::link(QStringLiteral("/dev/zero"), mFolder.filePath(QStringLiteral("ZERO") + ending)));
        ASSERT_EQ(::mkdir(mFolder.filePath(QStringLiteral("FOLDER") + ending).toLocal8Bit().constData(), 0700),
                  0);
    }

    QTemporaryDir mFolder;
};

TEST_F(UnreadableFilesTest, FormulasComeWithoutThem) {
    write("A.lua", "name = \"A\"");
    write("LARGE.lua", QByteArray((1 << 20) + 1, ' '));
    addSpecial(QStringLiteral(".lua"));
    QStringList told;
    const auto files = terminal::readFormulaFiles(
        mFolder.path(), [&](const terminal::FormulaError &error) { told.append(error.formula); });
    ASSERT_EQ(files.size(), 1);
    EXPECT_EQ(files[0].text, "name = \"A\"");
    EXPECT_EQ(told, (QStringList{"LARGE", "ZERO"}));
}

TEST_F(UnreadableFilesTest, ScriptModelsComeWithoutThem) {
    write("A.py", "# type: 1\n");
    addSpecial(QStringLiteral(".py"));
    const auto models = terminal::readScriptModels(mFolder.path());
    ASSERT_EQ(models.size(), 1);
    EXPECT_EQ(models[0]->mName, "A");
    EXPECT_EQ(models[0]->mType, 1);
}

} // namespace
