#pragma once

#include "terminal/market/CMarketStore.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// A store in a folder of its own.
class StoreFixture : public ::testing::Test {
protected:
    QString storePath() const { return mFolder.filePath(QStringLiteral("market.db")); }
    QString pathOf(const char *name) const { return mFolder.filePath(QString::fromLatin1(name)); }

    /// Writes a file into the folder and answers its path.
    QString write(const char *name, const QByteArray &content) const {
        QFile file(pathOf(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }
    void openStore() { ASSERT_EQ(mStore.open(storePath()).toStdString(), ""); }

    QTemporaryDir mFolder;
    terminal::CMarketStore mStore;
};
