// The window's own controls are read with ease, in both themes.

#include "terminal/app/WindowColors.h"

#include "host/toolkit/ThemeColor.h"
#include "tests/support/Contrast.h"
#include "toolkit/windows/WindowLook.h"

#include <gtest/gtest.h>

namespace {

using Role = QPalette::ColorRole;

class WindowColors : public testing::TestWithParam<const char *> {
protected:
    void SetUp() override { ASSERT_TRUE(GZ::CUiResource::instance().setTheme(QLatin1String(GetParam()))); }
    void TearDown() override { GZ::CUiResource::instance().setTheme(QStringLiteral("dark")); }
};

TEST_P(WindowColors, EveryTextIsReadOnItsGround) {
    for (const QPalette &colors : {terminal::windowColors(), GZ::windowPalette()}) {
        for (const auto &[text, ground] : {std::pair<Role, Role>{QPalette::WindowText, QPalette::Window},
                                           {QPalette::Text, QPalette::Base},
                                           {QPalette::ButtonText, QPalette::Button},
                                           {QPalette::HighlightedText, QPalette::Highlight}}) {
            EXPECT_GE(tests::contrast(colors.color(text), colors.color(ground)), tests::kReadable)
                << text << ' ' << ground;
        }
    }
    const QPalette colors = terminal::windowColors();
    EXPECT_GE(tests::contrast(colors.color(QPalette::PlaceholderText), colors.color(QPalette::Base)),
              tests::kReadable);
    EXPECT_GE(tests::contrast(colors.color(QPalette::ToolTipText), colors.color(QPalette::ToolTipBase)),
              tests::kReadable);
    // An error in the status line.
    EXPECT_GE(tests::contrast(GZ::themeColor("ic_clr_index_default_rise"), colors.color(QPalette::Window)),
              tests::kReadable);
}

INSTANTIATE_TEST_SUITE_P(Themes, WindowColors, testing::Values("dark", "light"));

} // namespace
