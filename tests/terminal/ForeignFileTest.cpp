// What the reading of foreign files makes of its reader, with other programs in its place.

#include "terminal/files/ForeignFile.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>

namespace {

class ForeignFileTest : public ::testing::Test {
protected:
    /// A program that does this, in the language of the shell.
    QString program(const QByteArray &body) {
        QFile file(mFolder.filePath("program"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + body + '\n');
        file.close();
        EXPECT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
        return file.fileName();
    }
    QByteArray told(const char *name) {
        QFile file(mFolder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir mFolder;
};

} // namespace

TEST_F(ForeignFileTest, WhatItSaysIsTheText) {
    const terminal::ForeignText text = terminal::readForeign("sheet", "a b", program("/bin/cat; echo \" $1\""));
    EXPECT_EQ(text.error, "");
    EXPECT_EQ(text.text, "a b sheet\n");
}

TEST_F(ForeignFileTest, OneThatSaysNoMoreAndDoesNotEndIsEnded) {
    const QString script = program("/bin/cat >/dev/null\n"
                                   "echo $$ > " +
                                   QFile::encodeName(mFolder.filePath("id")) +
                                   "\n"
                                   "echo some text\n"
                                   "exec /bin/sleep 100000 </dev/null >/dev/null");
    QElapsedTimer time;
    time.start();
    const terminal::ForeignText text = terminal::readForeign("sheet", "x", script);
    EXPECT_LT(time.elapsed(), 50000) << "it has a second to end";
    EXPECT_EQ(text.error, "its content cannot be read");
    EXPECT_EQ(text.text, "") << "whether it was all is not known";
    const int id = told("id").trimmed().toInt();
    ASSERT_GT(id, 0);
    EXPECT_NE(::kill(id, 0), 0) << "it is there yet";
}

TEST_F(ForeignFileTest, OneThatFailsHasNoText) {
    const terminal::ForeignText text = terminal::readForeign("sheet", "x", program("echo some text; exit 1"));
    EXPECT_EQ(text.error, "its content cannot be read");
    EXPECT_TRUE(text.isFaultOfFile);
    EXPECT_EQ(text.text, "");
}

TEST_F(ForeignFileTest, OneThatIsNotThereIsNoFaultOfTheFile) {
    const terminal::ForeignText text = terminal::readForeign("sheet", "x", mFolder.filePath("nothing"));
    EXPECT_TRUE(text.error.contains("cannot be started")) << qPrintable(text.error);
    EXPECT_FALSE(text.isFaultOfFile);
}
