#include "terminal/app/MemoryWatch.h"

#include "tests/support/BytesInUse.h"

#include <QFile>
#include <QTest>

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <unistd.h>
#include <vector>

namespace {

/// Pages that are the program's own.
qint64 ownPages() {
    QFile file(QStringLiteral("/proc/self/statm"));
    const QList<QByteArray> fields =
        file.open(QIODevice::ReadOnly) ? file.readAll().split(' ') : QList<QByteArray>();
    return fields.value(1).toLongLong() - fields.value(2).toLongLong();
}

/// Small blocks of so many megabytes, of which one in a hundred stays.
class Holes {
public:
    explicit Holes(int megabytes) {
        constexpr size_t kBlock = 1000;
        std::vector<void *> blocks;
        for (int i = 0; i < megabytes * 1000; ++i) {
            blocks.push_back(std::malloc(kBlock));
            std::memset(blocks.back(), 1, kBlock);
        }
        for (size_t i = 0; i < blocks.size(); ++i) {
            if (i % 100 == 0) {
                mKept.push_back(blocks[i]);
            } else {
                std::free(blocks[i]);
            }
        }
    }
    ~Holes() {
        for (void *block : mKept) {
            std::free(block);
        }
    }
    Holes(const Holes &) = delete;
    Holes &operator=(const Holes &) = delete;

private:
    std::vector<void *> mKept;
};

class MemoryWatchTest : public ::testing::Test {
protected:
    void SetUp() override {
#ifdef TESTS_UNDER_SANITIZER
        GTEST_SKIP() << "the C library's heaps are not in use";
#endif
    }
};

} // namespace

TEST_F(MemoryWatchTest, WhatIsFreeBetweenPiecesThatStayGoesBack) {
    constexpr qint64 kMegabytes = 40;
    const qint64 page = sysconf(_SC_PAGESIZE);
    terminal::MemoryWatch watch([](const terminal::FormulaError &) {}, 0);
    watch.look();
    const qint64 before = ownPages();
    const Holes holes(kMegabytes);
    ASSERT_GT((ownPages() - before) * page, kMegabytes * 900000) << "it is kept";
    watch.look();
    EXPECT_LT((ownPages() - before) * page, kMegabytes * 500000);
}

TEST_F(MemoryWatchTest, NothingIsGivenBackBeforeThePauseIsOver) {
    terminal::MemoryWatch watch([](const terminal::FormulaError &) {});
    const qint64 before = ownPages();
    const Holes holes(20);
    const qint64 held = ownPages();
    ASSERT_GT(held, before);
    watch.look();
    EXPECT_GE(ownPages(), held);
}
