#include "tests/support/MessageGuard.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <mutex>
#include <vector>

namespace tests {
namespace {

std::mutex gLock;
std::vector<ExpectMessages *> gExpectations;

/// What the offscreen platform says of itself on every run.
bool isPlatformNoise(const QString &message) {
    return message.startsWith(QStringLiteral("This plugin does not support"));
}

} // namespace

bool takeExpected(const QString &message) {
    std::lock_guard<std::mutex> hold(gLock);
    for (ExpectMessages *expectation : gExpectations) {
        if (expectation->mPattern.match(message).hasMatch()) {
            expectation->mSeen.append(message);
            return true;
        }
    }
    return false;
}

namespace {

void onMessage(QtMsgType type, const QMessageLogContext &, const QString &message) {
    if (type == QtDebugMsg || type == QtInfoMsg || isPlatformNoise(message) || takeExpected(message)) {
        return;
    }
    std::fprintf(stderr, "Qt: %s\n", qPrintable(message));
    ADD_FAILURE() << "unexpected message of Qt: " << message.toStdString();
}

} // namespace

void installMessageGuard() {
    qInstallMessageHandler(onMessage);
}

ExpectMessages::ExpectMessages(const QString &pattern) : mPattern(pattern) {
    std::lock_guard<std::mutex> hold(gLock);
    gExpectations.push_back(this);
}

ExpectMessages::~ExpectMessages() {
    std::lock_guard<std::mutex> hold(gLock);
    gExpectations.erase(std::find(gExpectations.begin(), gExpectations.end(), this));
}

QStringList ExpectMessages::seen() const {
    std::lock_guard<std::mutex> hold(gLock);
    return mSeen;
}

} // namespace tests
