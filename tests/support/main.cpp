// Main function of every test program: offscreen, the bundled font set-up, and no unexpected warning of Qt.

#include "tests/support/ForeignMemory.h"
#include "tests/support/MessageGuard.h"

#include <QApplication>
#include <QCursor>
#include <QFont>
#include <QScreen>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <clocale>

namespace {

/// A test begins with the mouse beside its windows: Qt 6 tells a window that comes under the mouse of it.
class MouseAside : public ::testing::EmptyTestEventListener {
    void OnTestStart(const ::testing::TestInfo &) override {
        QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
    }
};

} // namespace

int main(int argc, char **argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    if (qEnvironmentVariableIsEmpty("FONTCONFIG_FILE")) {
        qputenv("FONTCONFIG_FILE", TIMESHARE_BINARY_DIR "/fonts.conf");
        qputenv("QT_FONT_DPI", "96");
    }
    QTemporaryDir runtimeDir;
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) {
        qputenv("XDG_RUNTIME_DIR", runtimeDir.path().toLocal8Bit());
    }
    ::testing::InitGoogleTest(&argc, argv);
    tests::installMessageGuard();
    tests::letSqliteAllocateUnwatched();
    QApplication app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setStyle(QStringLiteral("Fusion"));
    QFont font(QStringLiteral("Noto Sans CJK SC"));
    font.setPixelSize(13);
    font.setHintingPreference(QFont::PreferNoHinting);
    QApplication::setFont(font);
    ::testing::UnitTest::GetInstance()->listeners().Append(new MouseAside);
    return RUN_ALL_TESTS();
}
