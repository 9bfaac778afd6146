// Every text of the themes is read with ease on every ground that it stands on.

#include "host/toolkit/ThemeColor.h"

#include "tests/support/Contrast.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <gtest/gtest.h>

namespace {

/// The colours of texts by the grounds that they stand on.
using Pairs = QVector<QPair<QString, QStringList>>;

QStringList values() {
    QStringList keys{"ic_clr_index_default_rise", "ic_clr_index_default_fall", "ic_clr_index_default_flat",
                     "ic_clr_realtime_colorstick"};
    for (int line = 1; line <= 8; ++line) {
        keys.append(QStringLiteral("ic_clr_index_line_%1").arg(line));
    }
    for (int overlay = 1; overlay <= 3; ++overlay) {
        keys.append(QStringLiteral("ic_clr_realtime_superpos_%1").arg(overlay));
    }
    return keys;
}

Pairs pairsOfThemes() {
    const QStringList sides{"ic_clr_index_default_rise", "ic_clr_index_default_fall"};
    const QStringList title = QStringList{"ic_clr_index_title_name", "ic_clr_index_title_text"} + values();
    const QStringList row = QStringList{"clr_text_default", "clr_text_light_default",
                                        "clr_task_progress_background", "clr_task_op_button_text_enable"} +
                            sides;
    const QStringList code{"clr_text_default", "clr_code_comment", "clr_code_function",
                           "clr_code_keyword", "clr_code_number",  "clr_code_text"};
    const QStringList axis{"ic_clr_realtime_axis_text", "ic_clr_realtime_axis_default_text",
                           "ic_clr_realtime_colorstick"};
    return {
        {"ic_clr_realtime_axis_bg", axis + sides},
        {"ic_clr_realtime_cross_line_bg", {"ic_clr_realtime_cross_line_text"}},
        {"clr_graph_frame_cross_line_bg", {"clr_global_rise", "clr_global_fall"}},
        {"ic_clr_realtime_graph_bg", QStringList{"clr_global_rise", "clr_global_fall"} + values()},
        {"ic_clr_account_report_timeline_bg", {"ic_clr_timeline_text"}},
        {"ic_clr_index_title_bg", title},
        {"ic_clr_index_title_selected_bg", title},
        {"clr_table_row_even", row},
        {"clr_table_row_odd", row},
        {"clr_table_header_bg", {"clr_table_header_text"}},
        {"clr_selection_bg", {"clr_selection_text"}},
        {"clr_dialog_bg", QStringList{"clr_text_default", "clr_text_light_default", "clr_global_rise"} + sides},
        {"clr_dialog_title_bg", {"clr_text_default", "clr_text_light_default"}},
        {"clr_edit_bg", code + QStringList{"clr_text_light_default"}},
        {"clr_code_error_bg", code},
        {"clr_code_gutter_bg", {"clr_code_gutter_text"}},
        {"clr_menu_bg", {"clr_menu_text"}},
        {"clr_menu_selected_bg", {"clr_menu_selected_text"}},
        {"tc_clr_conciseStyle_depth_bottom_group_btn_nomal",
         {"tc_clr_depth_bottom_group_btn_txt_nomal", "clr_task_op_button_text_enable"}},
        {"tc_clr_conciseStyle_depth_bottom_group_btn_hover",
         {"tc_clr_depth_bottom_group_btn_txt_hover", "clr_task_op_button_text_enable"}},
        {"tc_clr_conciseStyle_depth_bottom_group_btn_press", {"tc_clr_depth_bottom_group_btn_txt_press"}},
    };
}

QJsonObject themeFile(const QString &name) {
    QFile file(QStringLiteral(":/timeshare/theme/%1.json").arg(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QJsonDocument::fromJson(file.readAll()).object();
}

class ThemeContrast : public testing::TestWithParam<const char *> {
protected:
    void SetUp() override { ASSERT_TRUE(GZ::CUiResource::instance().setTheme(QLatin1String(GetParam()))); }
    void TearDown() override { GZ::CUiResource::instance().setTheme(QStringLiteral("dark")); }
};

TEST_P(ThemeContrast, EveryTextIsReadOnItsGround) {
    const QColor chart = GZ::themeColor("ic_clr_realtime_graph_bg");
    for (const auto &[groundKey, textKeys] : pairsOfThemes()) {
        const QColor ground = tests::blended(GZ::themeColor(groundKey), chart);
        for (const QString &textKey : textKeys) {
            const QColor text = tests::blended(GZ::themeColor(textKey), ground);
            EXPECT_GE(tests::contrast(text, ground), tests::kReadable)
                << qPrintable(textKey) << " on " << qPrintable(groundKey);
        }
    }
}

TEST_P(ThemeContrast, TextOfFilledButtonsIsReadOnAllOfThem) {
    const QColor text = GZ::themeColor("clr_pushbutton_text");
    const QJsonObject images = themeFile(QLatin1String(GetParam())).value("images").toObject();
    int fills = 0;
    for (const char *image : {"img_btn_ok", "img_btn_medium_normal"}) {
        const QJsonObject shape =
            images.value(QLatin1String(image)).toObject().value("shapes").toArray().at(0).toObject();
        for (const char *fill : {"fill", "fillBottom"}) {
            const QColor ground(shape.value(QLatin1String(fill)).toString());
            ASSERT_TRUE(ground.isValid()) << image;
            EXPECT_GE(tests::contrast(text, ground), tests::kReadable) << image << ' ' << fill;
            ++fills;
        }
    }
    EXPECT_EQ(fills, 4);
}

TEST_P(ThemeContrast, NoColourOfATextIsLeftOut) {
    QSet<QString> known{"clr_pushbutton_text"};
    for (const auto &[groundKey, textKeys] : pairsOfThemes()) {
        known += QSet<QString>(textKeys.begin(), textKeys.end());
    }
    for (const QString &key : themeFile(QLatin1String(GetParam())).value("colors").toObject().keys()) {
        const bool isText = key.contains("text") || key.contains("txt") || key.contains("_line_") ||
                            key.endsWith("_rise") || key.endsWith("_fall") || key.endsWith("_name");
        const bool isOther = key.endsWith("_bg") || key.endsWith("_border") || key.endsWith("disable") ||
                             key.endsWith("axis_line") || key.endsWith("cross_line");
        EXPECT_TRUE(!isText || isOther || known.contains(key)) << qPrintable(key);
    }
}

INSTANTIATE_TEST_SUITE_P(Themes, ThemeContrast, testing::Values("dark", "light"));

} // namespace
