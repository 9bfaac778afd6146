#pragma once

#include "host/services/CFileClient.h"
#include "tests/fakehost/CallLog.h"

#include <QList>

#include <utility>

namespace fakehost {

/// Keeps what it is to read, until the test hands the lines over and ends the read by the signal.
class FakeFileClient : public TC::CFileClient {
public:
    struct Read {
        int seq = 0;
        TC::EFileType type = TC::EFileType::CommaSeparated;
        QString path;
        LineHandler handler;
    };

    explicit FakeFileClient(CallLog &log) : mLog(log) {}

    void readFileByLine(int &seq, TC::EFileType type, const QString &path, LineHandler lineHandler) override {
        seq = mNextSeq++;
        mLog.add(QStringLiteral("CFileClient::readFileByLine %1 %2").arg(static_cast<int>(type)).arg(path));
        mReads.append({seq, type, path, std::move(lineHandler)});
    }

    QList<Read> mReads;
    int mNextSeq = 71;

private:
    CallLog &mLog;
};

} // namespace fakehost
