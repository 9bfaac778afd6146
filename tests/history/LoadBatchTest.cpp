// What files bring that are to be loaded into a server, before there is one.

#include "terminal/loader/LoadBatch.h"

#include "terminal/market/FileImporter.h"
#include "tests/terminal/StoreFixture.h"

using namespace terminal;

namespace {

class LoadBatchTest : public StoreFixture {
protected:
    void SetUp() override { openStore(); }

    /// Takes a file of so many minutes of a share; answers what is wrong with it.
    QString take(LoadBatch &batch, const char *name, int minutes) {
        QByteArray content("datetime,open,high,low,close,volume\n");
        for (int minute = 1; minute <= minutes; ++minute) {
            content += "2025-03-24 10:" + QByteArray::number(minute).rightJustified(2, '0') + ",1,1,1,1,1\n";
        }
        const QString path = write(name, content);
        return importMarketFile(mStore, {}, path, {}, [&] { return batch.target(mStore, path); }).error;
    }
};

} // namespace

TEST_F(LoadBatchTest, AFileOfMoreBarsThanFitIsRefusedAndTheOthersStay) {
    LoadBatch batch(30);
    EXPECT_EQ(take(batch, "SH600000.csv", 30), QString());
    EXPECT_EQ(batch.bars(), 30);
    EXPECT_EQ(take(batch, "SH600001.csv", 31),
              pathOf("SH600001.csv") + ": more than 30 bars in one file: split it by days");
    EXPECT_EQ(batch.bars(), 30);
    EXPECT_EQ(batch.instruments().keys(), QList<QString>{"SH600000"});
    EXPECT_EQ(take(batch, "SH600002.csv", 1), QString());
    EXPECT_EQ(batch.bars(), 31) << "the bound is that of a file";
}
