// Lines of a file that is larger than the window on it.

#include "terminal/market/LineWindow.h"

#include "toolkit/files/RegularFile.h"

#include <QTemporaryFile>

#include <gtest/gtest.h>

#include <string>

using namespace terminal;

namespace {

/// The lines of a text through a window of so many bytes, and how many bytes were done after each.
struct Read {
    Read(const QByteArray &content, size_t bytes) {
        QTemporaryFile file;
        EXPECT_TRUE(file.open());
        EXPECT_EQ(file.write(content), content.size());
        EXPECT_TRUE(file.flush());
        GZ::RegularFile regular(file.fileName());
        LineWindow window(regular, bytes);
        for (std::string_view line; window.next(line);) {
            lines.emplace_back(line);
            done.push_back(window.done());
        }
        isTooLong = window.isTooLong();
    }

    std::vector<std::string> lines;
    std::vector<qint64> done;
    bool isTooLong = false;
};

using Lines = std::vector<std::string>;

} // namespace

TEST(LineWindow, LinesAreWholeWhereverTheWindowEnds) {
    const QByteArray text("one\n\nthree\nfo\nlast");
    for (size_t bytes = 5; bytes < 25; ++bytes) {
        const Read read(text, bytes);
        EXPECT_EQ(read.lines, (Lines{"one", "", "three", "fo", "last"})) << bytes;
        EXPECT_EQ(read.done, (std::vector<qint64>{4, 5, 11, 14, 18})) << bytes;
        EXPECT_FALSE(read.isTooLong) << bytes;
    }
}

TEST(LineWindow, AnEndAtTheEndIsNoLineMore) {
    EXPECT_EQ(Read("a\n", 10).lines, Lines{"a"});
    EXPECT_EQ(Read("a\n\n", 10).lines, (Lines{"a", ""}));
    EXPECT_EQ(Read("", 10).lines, Lines());
}

TEST(LineWindow, ALineOfMoreBytesThanTheWindowEndsTheReading) {
    EXPECT_EQ(Read("a\n12345\nb\n", 5).lines, (Lines{"a", "12345", "b"}));
    for (const char *text : {"a\n123456\nb\n", "a\n123456", "a\n1234567890123456789012345"}) {
        const Read read(text, 5);
        EXPECT_EQ(read.lines, Lines{"a"}) << text;
        EXPECT_TRUE(read.isTooLong) << text;
    }
}

TEST(LineWindow, AFileThatIsNotThereHasNoLines) {
    GZ::RegularFile file(QStringLiteral("/no/such/file"));
    LineWindow window(file);
    std::string_view line;
    EXPECT_FALSE(window.next(line));
    EXPECT_FALSE(window.isTooLong());
}
