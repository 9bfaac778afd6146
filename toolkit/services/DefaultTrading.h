#pragma once

/// \file
/// Default services of a program that trades nothing and replays nothing.

#include "host/services/CFileClient.h"
#include "host/services/CReplayManager.h"
#include "host/services/CStrategyTradeManager.h"

#include <QCoreApplication>

namespace TC {

class DefaultReplay : public CReplayManager {
public:
    void requestFormulas(const QString &, QVector<CFormulaParam> &, FormulaHistoryCallback,
                         FormulaRealtimeCallback) override {}
    void deleteFormulas(QVector<QString> &) override {}
    void setThousandRange(qint64, qint64) override {}
};

class DefaultStrategies : public CStrategyTradeManager {
public:
    bool getStrategyByName(const QString &, CStrategyInfo &) override { return false; }
    bool isFomrulaRun(const QString &) override { return false; }
    void updateBacktestData(const QVector<QString> &) override {}
};

/// Reads no file, and says so.
class DefaultFiles : public CFileClient {
public:
    void readFileByLine(int &seq, EFileType, const QString &, LineHandler) override {
        const int number = ++mLast;
        seq = number;
        const auto tell = [this, number] {
            Q_EMIT sigReadFinished(number, false,
                                   QCoreApplication::translate("TC::DefaultServices", "不能读取文件"));
        };
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
    }

private:
    int mLast = 0;
};

} // namespace TC
