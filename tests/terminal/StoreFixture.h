#pragma once

#include "terminal/market/CMarketStore.h"
#include "terminal/market/MarketFill.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <map>

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
    /// A store that was filled up to a time; filling takes a while, so each is made once and then copied.
    void openFilledStore(qint64 now) {
        static QTemporaryDir folder;
        static std::map<qint64, QString> filled;
        QString &model = filled[now];
        if (model.isEmpty()) {
            const QString path = folder.filePath(QString::number(now));
            terminal::CMarketStore store;
            ASSERT_EQ(store.open(path).toStdString(), "");
            ASSERT_EQ(terminal::fillStore(store, now).toStdString(), "");
            model = path;
        }
        ASSERT_TRUE(QFile::copy(model, storePath()));
        openStore();
    }

    QTemporaryDir mFolder;
    terminal::CMarketStore mStore;
};
