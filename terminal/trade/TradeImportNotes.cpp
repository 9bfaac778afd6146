#include "terminal/trade/TradeImportNotes.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

namespace terminal {
namespace {

struct NotesWords {
    Q_DECLARE_TR_FUNCTIONS(TradeImportNotes)
};

} // namespace

void TradeImportNotes::setLineSource(std::function<int()> source) {
    std::lock_guard<std::mutex> hold(mLock);
    mSource = std::move(source);
}

int TradeImportNotes::nextLine() {
    ++mRecords;
    return mSource ? mSource() : mRecords;
}

void TradeImportNotes::take() {
    std::lock_guard<std::mutex> hold(mLock);
    mTaken.insert(nextLine());
}

void TradeImportNotes::refuse(const char *reason) {
    std::lock_guard<std::mutex> hold(mLock);
    mRefused[nextLine()] = QString::fromLatin1(reason);
}

QStringList TradeImportNotes::tell(int lines) {
    std::lock_guard<std::mutex> hold(mLock);
    const int taken = static_cast<int>(mTaken.size());
    const int all = std::max(lines, taken + static_cast<int>(mRefused.size()));
    QStringList told;
    told.append(NotesWords::tr("文件已读完：导入 %1 条，略去 %2 行").arg(taken).arg(all - taken));
    for (int line = 1; line <= lines && told.size() <= kTold; ++line) {
        if (mTaken.count(line) == 0) {
            const auto reason = mRefused.find(line);
            told.append(NotesWords::tr("第 %1 行：%2")
                            .arg(line)
                            .arg(reason == mRefused.end() ? NotesWords::tr("没有账号、证券、价格、数量等字段")
                                                          : reason->second));
        }
    }
    mTaken.clear();
    mRefused.clear();
    mRecords = 0;
    return told;
}

} // namespace terminal
