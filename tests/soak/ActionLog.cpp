#include "tests/soak/ActionLog.h"

#include <QByteArray>

#include <gtest/gtest.h>

namespace tests {
namespace {

/// A pipe that ends in the file; the programs that are started meanwhile do not hold it open.
std::FILE *writerTo(const QString &path) {
    QByteArray quoted = path.toLocal8Bit();
    quoted.replace('\'', "'\\''");
    std::FILE *writer = popen(("exec cat > '" + quoted + '\'').constData(), "we");
    if (writer) {
        std::setvbuf(writer, nullptr, _IONBF, 0);
    }
    return writer;
}

} // namespace

ActionLog::ActionLog(const QString &path) : mWriter(writerTo(path)) {
    EXPECT_NE(mWriter, nullptr) << qPrintable(path);
}

ActionLog::~ActionLog() {
    if (mWriter) {
        EXPECT_EQ(pclose(mWriter), 0) << "what was done is not written";
    }
}

void ActionLog::write(const QString &line) {
    if (mWriter) {
        const QByteArray text = line.toUtf8() + '\n';
        std::fwrite(text.constData(), 1, static_cast<size_t>(text.size()), mWriter);
    }
}

} // namespace tests
