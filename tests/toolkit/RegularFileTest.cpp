// Files that are read: what is no file is refused at once, and nothing is read beyond a bound.

#include "toolkit/files/RegularFile.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using GZ::RegularFile;

namespace {

class RegularFileTest : public testing::Test {
protected:
    QString pathOf(const char *name) const { return mFolder.filePath(QString::fromLatin1(name)); }
    QString write(const char *name, const QByteArray &content,
                  QIODevice::OpenMode mode = QIODevice::WriteOnly) const {
        QFile file(pathOf(name));
        EXPECT_TRUE(file.open(mode));
        EXPECT_EQ(file.write(content), content.size());
        return file.fileName();
    }
    static void expectRefused(const QString &path, RegularFile::EFault fault, const QString &reason) {
        RegularFile file(path);
        EXPECT_FALSE(file.isGood()) << qPrintable(path);
        EXPECT_EQ(file.fault(), fault) << qPrintable(path);
        EXPECT_EQ(file.reason(), reason) << qPrintable(path);
        EXPECT_EQ(file.size(), 0);
        EXPECT_TRUE(file.head(10).isEmpty());
        EXPECT_TRUE(file.tail(10).isEmpty());
        EXPECT_TRUE(file.whole(10).isEmpty());
        EXPECT_EQ(file.fault(), fault) << "the first fault stays";
    }

    QTemporaryDir mFolder;
};

TEST_F(RegularFileTest, PartsAndTheWhole) {
    RegularFile file(write("a", "0123456789"));
    ASSERT_TRUE(file.isGood());
    EXPECT_EQ(file.reason(), QString());
    EXPECT_EQ(file.size(), 10);
    EXPECT_EQ(file.head(3), "012");
    EXPECT_EQ(file.tail(3), "789");
    EXPECT_EQ(file.head(0), "");
    EXPECT_EQ(file.head(11), "0123456789");
    EXPECT_EQ(file.tail(11), "0123456789");
    EXPECT_EQ(file.whole(10), "0123456789") << "the bound itself is allowed";
    EXPECT_EQ(file.whole(11), "0123456789");
    EXPECT_TRUE(file.isGood());
}

TEST_F(RegularFileTest, OneByteOverTheBoundIsTooLarge) {
    RegularFile file(write("a", "0123456789"));
    EXPECT_EQ(file.whole(9), "");
    EXPECT_EQ(file.fault(), RegularFile::eTooLarge);
    EXPECT_EQ(file.reason(), "it is larger than 9 bytes");
    EXPECT_EQ(file.head(3), "") << "nothing is read any more";
}

TEST_F(RegularFileTest, AnEmptyFileIsGood) {
    RegularFile file(write("a", ""));
    EXPECT_EQ(file.whole(0), "");
    EXPECT_EQ(file.tail(5), "");
    EXPECT_TRUE(file.isGood());
}

TEST_F(RegularFileTest, EveryByteOfALargeFileComes) {
    QByteArray content;
    for (int i = 0; i < 50000; ++i) {
        content += QByteArray::number(i) + ',';
    }
    RegularFile file(write("a", content));
    EXPECT_EQ(file.whole(content.size()), content);
    EXPECT_EQ(file.head(100000), content.left(100000));
    EXPECT_EQ(file.tail(100000), content.right(100000));
}

TEST_F(RegularFileTest, PiecesComeIntoMemoryOfTheCaller) {
    RegularFile file(write("a", "0123456789"));
    char piece[] = "------";
    EXPECT_EQ(file.readInto(piece, 3, 4), 4);
    EXPECT_STREQ(piece, "3456--");
    EXPECT_EQ(file.readInto(piece, 8, 6), 2) << "what there is";
    EXPECT_STREQ(piece, "8956--");
    EXPECT_EQ(file.readInto(piece, 10, 6), 0);
    EXPECT_TRUE(file.isGood());
    RegularFile none(pathOf("none"));
    EXPECT_EQ(none.readInto(piece, 0, 6), 0);
}

TEST_F(RegularFileTest, WhatAFileGrowsByIsReadUpToTheBound) {
    const QString path = write("a", "0123456789");
    RegularFile file(path);
    write("a", QByteArray(200000, 'x'), QIODevice::Append);
    EXPECT_EQ(file.whole(200010), "0123456789" + QByteArray(200000, 'x'));
    write("a", "y", QIODevice::Append);
    EXPECT_EQ(file.whole(200010), "");
    EXPECT_EQ(file.fault(), RegularFile::eTooLarge);
}

TEST_F(RegularFileTest, AFileWithoutASizeOfItsOwnIsReadToo) {
    RegularFile file(QStringLiteral("/proc/self/stat"));
    if (!file.isGood()) {
        GTEST_SKIP() << "no such system";
    }
    EXPECT_TRUE(file.whole(100000).startsWith(QByteArray::number(::getpid()) + " ("));
}

TEST_F(RegularFileTest, WhatIsNoFileIsRefusedAtOnce) {
    const QString special = QStringLiteral("it is a pipe or a device, no file");
    const QString pipe = pathOf("pipe");
    ASSERT_EQ(::mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    expectRefused(pipe, RegularFile::eNotRegular, special);
    ASSERT_TRUE(QFile::link(pipe, pathOf("link")));
    expectRefused(pathOf("link"), RegularFile::eNotRegular, special);
    expectRefused(QStringLiteral("/dev/zero"), RegularFile::eNotRegular, special);
    expectRefused(QStringLiteral("/dev/null"), RegularFile::eNotRegular, special);
    expectRefused(mFolder.path(), RegularFile::eNotRegular, QStringLiteral("it is a folder"));
    EXPECT_EQ(RegularFile::notRegularReason(pathOf("link")), special);
    EXPECT_EQ(RegularFile::notRegularReason(mFolder.path()), QStringLiteral("it is a folder"));
    EXPECT_EQ(RegularFile::notRegularReason(pathOf("nothing")), QString());

    const int handle = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const QByteArray name = pathOf("socket").toLocal8Bit();
    ASSERT_LT(name.size(), int(sizeof(address.sun_path)));
    std::copy(name.begin(), name.end(), address.sun_path);
    ASSERT_EQ(::bind(handle, reinterpret_cast<const sockaddr *>(&address), sizeof(address)), 0);
    expectRefused(pathOf("socket"), RegularFile::eNotRegular, special);
    ::close(handle);
}

TEST_F(RegularFileTest, WhatIsNotThereIsMissing) {
    const QString missing = QStringLiteral("there is no such file");
    expectRefused(pathOf("none"), RegularFile::eMissing, missing);
    expectRefused(write("a", "x") + QStringLiteral("/below"), RegularFile::eMissing, missing);
    expectRefused(QString(), RegularFile::eMissing, missing);
    ASSERT_TRUE(QFile::link(pathOf("none"), pathOf("dangling")));
    expectRefused(pathOf("dangling"), RegularFile::eMissing, missing);
    EXPECT_EQ(RegularFile(QStringLiteral(":/no/such/resource")).fault(), RegularFile::eMissing);
}

TEST_F(RegularFileTest, LinksAndResourcesAreRead) {
    ASSERT_TRUE(QFile::link(write("a", "text"), pathOf("link")));
    EXPECT_EQ(RegularFile(pathOf("link")).whole(10), "text");
    RegularFile resource(QStringLiteral(":/timeshare/theme/dark.json"));
    const QByteArray theme = resource.whole(1000000);
    EXPECT_EQ(theme.size(), resource.size());
    EXPECT_TRUE(theme.contains("colors"));
    EXPECT_EQ(RegularFile(QStringLiteral(":/timeshare/theme/dark.json")).whole(10), "");
}

TEST_F(RegularFileTest, AFileThatMayNotBeReadSaysSo) {
    const QString path = write("locked", "x");
    QFile::setPermissions(path, QFile::Permissions());
    const uid_t user = ::geteuid();
    if (user == 0) { // who may read everything
        ASSERT_EQ(::seteuid(65534), 0);
    }
    expectRefused(path, RegularFile::eUnreadable, QStringLiteral("Permission denied"));
    ASSERT_EQ(::seteuid(user), 0);
}

} // namespace
