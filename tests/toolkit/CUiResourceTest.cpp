#include "host/toolkit/CUiResource.h"

#include "host/toolkit/CBaseWidget.h"
#include "host/toolkit/CStyleSheetCenter.h"
#include "tests/support/MessageGuard.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFontMetrics>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <deque>
#include <functional>
#include <limits>
#include <memory>
#include <thread>
#include <vector>

namespace {

using GZ::CUiResource;

/// Every colour that the library and its toolkit ask for.
const QStringList kColors{
    "clr_code_comment",
    "clr_code_error_bg",
    "clr_code_function",
    "clr_code_gutter_bg",
    "clr_code_gutter_text",
    "clr_code_keyword",
    "clr_code_number",
    "clr_code_text",
    "clr_dialog_bg",
    "clr_dialog_border",
    "clr_dialog_title_bg",
    "clr_edit_bg",
    "clr_edit_border",
    "clr_global_fall",
    "clr_global_rise",
    "clr_graph_frame_cross_line",
    "clr_graph_frame_cross_line_bg",
    "clr_menu_bg",
    "clr_menu_border",
    "clr_menu_selected_bg",
    "clr_menu_selected_text",
    "clr_menu_text",
    "clr_menu_text_disable",
    "clr_pushbutton_group_border_new",
    "clr_pushbutton_text",
    "clr_selection_bg",
    "clr_selection_text",
    "clr_table_header_bg",
    "clr_table_header_text",
    "clr_table_row_even",
    "clr_table_row_odd",
    "clr_task_op_button_text_disable",
    "clr_task_op_button_text_enable",
    "clr_task_progress_background",
    "clr_text_default",
    "clr_text_light_default",
    "ic_clr_account_report_timeline_bg",
    "ic_clr_concise_mainwindow_split_background",
    "ic_clr_graph_drawing",
    "ic_clr_highlight_widget_bg",
    "ic_clr_highlight_widget_frame",
    "ic_clr_index_default_fall",
    "ic_clr_index_default_flat",
    "ic_clr_index_default_rise",
    "ic_clr_index_line_1",
    "ic_clr_index_line_2",
    "ic_clr_index_line_3",
    "ic_clr_index_line_4",
    "ic_clr_index_line_5",
    "ic_clr_index_line_6",
    "ic_clr_index_line_7",
    "ic_clr_index_line_8",
    "ic_clr_index_title_bg",
    "ic_clr_index_title_name",
    "ic_clr_index_title_selected_bg",
    "ic_clr_index_title_text",
    "ic_clr_kline_graph_scale_border",
    "ic_clr_realtime_axis_bg",
    "ic_clr_realtime_axis_default_text",
    "ic_clr_realtime_axis_line",
    "ic_clr_realtime_axis_line_border",
    "ic_clr_realtime_axis_text",
    "ic_clr_realtime_colorstick",
    "ic_clr_realtime_cross_line",
    "ic_clr_realtime_cross_line_bg",
    "ic_clr_realtime_cross_line_text",
    "ic_clr_realtime_gradient_bottom",
    "ic_clr_realtime_gradient_top",
    "ic_clr_realtime_graph_bg",
    "ic_clr_realtime_graph_scale_border",
    "ic_clr_realtime_spliter_background",
    "ic_clr_realtime_superpos_1",
    "ic_clr_realtime_superpos_2",
    "ic_clr_realtime_superpos_3",
    "ic_clr_timeline_text",
    "ic_clr_timeline_time_scale",
    "tc_clr_buyamount",
    "tc_clr_conciseStyle_depth_bottom_group_btn_disable",
    "tc_clr_conciseStyle_depth_bottom_group_btn_hover",
    "tc_clr_conciseStyle_depth_bottom_group_btn_nomal",
    "tc_clr_conciseStyle_depth_bottom_group_btn_press",
    "tc_clr_depth_bottom_group_btn_txt_disable",
    "tc_clr_depth_bottom_group_btn_txt_hover",
    "tc_clr_depth_bottom_group_btn_txt_nomal",
    "tc_clr_depth_bottom_group_btn_txt_press",
    "tc_clr_total_buyamount",
    "tc_clr_total_sellamount",
};
const QStringList kFonts{
    "fnt_default_normal",  "fnt_default_normal_fix", "fnt_default_small_heavy",
    "fnt_graph_axis_text", "fnt_index_title_text",   "fnt_timeline_text_default",
};
const QStringList kImages{
    "ic_img_arrow_up",
    "img_btn_medium_normal",
    "img_btn_ok",
    "img_sys_btn_min",
    "img_title_close",
    "img_title_fewer_days",
    "img_title_menu",
    "img_title_more_days",
    "img_title_one_day",
    "img_title_settings",
    "tc_img_btn_holographic_view",
    "tc_img_op_hedge_type_bg",
};

/// Puts the default theme back.
class CUiResourceTest : public ::testing::Test {
protected:
    ~CUiResourceTest() override { CUiResource::instance().setTheme(QStringLiteral("dark")); }

    /// A theme file of this text.
    QString file(const QByteArray &json) {
        const QString path = mFolder.filePath(QStringLiteral("my.json"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(json);
        return path;
    }
    QColor color(const char *key) { return mTheme.getColor(QLatin1String(key)); }

    CUiResource &mTheme = CUiResource::instance();
    QTemporaryDir mFolder;
};

QJsonObject section(const QString &theme, const char *name) {
    QFile file(QStringLiteral(":/timeshare/theme/%1.json").arg(theme));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QJsonDocument::fromJson(file.readAll()).object().value(QLatin1String(name)).toObject();
}

TEST_F(CUiResourceTest, BothThemesHaveEveryKeyThemselves) {
    for (const QString &theme : mTheme.themes()) {
        EXPECT_EQ(section(theme, "colors").keys(), kColors) << qPrintable(theme);
        EXPECT_EQ(section(theme, "fonts").keys(), kFonts) << qPrintable(theme);
        EXPECT_EQ(section(theme, "images").keys(), kImages) << qPrintable(theme);
    }
}

TEST_F(CUiResourceTest, EveryKeyReadsInBothThemes) {
    for (const QString &theme : mTheme.themes()) {
        ASSERT_TRUE(mTheme.setTheme(theme)); // an unknown key would be an unexpected message
        for (const QString &key : kColors) {
            EXPECT_TRUE(mTheme.contains(key));
            EXPECT_TRUE(mTheme.getColor(key).isValid());
        }
        for (const QString &key : kFonts) {
            EXPECT_TRUE(mTheme.contains(key));
            EXPECT_GT(mTheme.getFont(key).pixelSize(), 0);
        }
        for (const QString &key : kImages) {
            EXPECT_TRUE(mTheme.contains(key));
            EXPECT_FALSE(mTheme.getPixmap(key).isNull());
        }
    }
}

TEST_F(CUiResourceTest, DarkIsTheDefaultAndHasTheMarketsColours) {
    EXPECT_EQ(mTheme.themes(), (QStringList{"dark", "light"}));
    EXPECT_EQ(mTheme.theme(), QStringLiteral("dark"));
    EXPECT_LT(color("ic_clr_realtime_graph_bg").lightness(), 20);
    const QColor rise = color("ic_clr_index_default_rise");
    const QColor fall = color("ic_clr_index_default_fall");
    EXPECT_GT(rise.red(), 2 * rise.green());
    EXPECT_GT(fall.green(), 2 * fall.red());
    EXPECT_GT(color("ic_clr_index_line_1").lightness(), 230);
    EXPECT_LT(color("ic_clr_index_line_1").saturation(), 20);
    EXPECT_NEAR(color("ic_clr_index_line_2").hue(), 50, 10);
    EXPECT_LT(color("ic_clr_realtime_gradient_top").alpha(), 255);
}

TEST_F(CUiResourceTest, TheCrossLineOverlayIsSeenThrough) {
    EXPECT_EQ(color("ic_clr_highlight_widget_bg").alpha(), 0);
}

TEST_F(CUiResourceTest, FontsAreSizedInPixelsAndNotHinted) {
    const QFont font = mTheme.getFont(QStringLiteral("fnt_graph_axis_text"));
    EXPECT_EQ(font.pixelSize(), 12);
    EXPECT_EQ(font.hintingPreference(), QFont::PreferNoHinting);
    EXPECT_EQ(font.families().first(), QStringLiteral("Noto Sans CJK SC"));
    EXPECT_TRUE(mTheme.getFont(QStringLiteral("fnt_default_small_heavy")).bold());
    const QFontMetrics fixed(mTheme.getFont(QStringLiteral("fnt_default_normal_fix")));
    EXPECT_EQ(fixed.horizontalAdvance(QStringLiteral("1111")), fixed.horizontalAdvance(QStringLiteral("MMMM")));
}

TEST_F(CUiResourceTest, TheArrowIsSymmetricalAndInTheRiseColour) {
    const QImage arrow = mTheme.getPixmap(QStringLiteral("ic_img_arrow_up")).toImage();
    for (int y = 0; y < arrow.height(); ++y) {
        for (int x = 0; x < arrow.width() / 2; ++x) { // edges are smoothed to about an eighth
            const int mirrored = arrow.pixelColor(arrow.width() - 1 - x, y).alpha();
            EXPECT_NEAR(arrow.pixelColor(x, y).alpha(), mirrored, 32) << x << " " << y;
        }
    }
    EXPECT_EQ(arrow.pixelColor(5, 8), color("ic_clr_index_default_rise"));
    EXPECT_EQ(arrow.pixelColor(0, 0).alpha(), 0);
}

TEST_F(CUiResourceTest, AnUnknownKeyIsReportedOnceAndVisible) {
    tests::ExpectMessages messages(QStringLiteral("no_such_"));
    EXPECT_EQ(mTheme.getColor(QStringLiteral("no_such_color")), QColor(Qt::magenta));
    EXPECT_EQ(mTheme.getColor(QStringLiteral("no_such_color")), QColor(Qt::magenta));
    EXPECT_EQ(mTheme.getFont(QStringLiteral("no_such_font")), QFont());
    const QImage box = mTheme.getPixmap(QStringLiteral("no_such_image")).toImage();
    EXPECT_EQ(box.pixelColor(0, 0), QColor(Qt::magenta));
    EXPECT_EQ(box.pixelColor(7, 7), QColor(Qt::magenta));
    EXPECT_EQ(box.pixelColor(8, 3), QColor(Qt::white));
    EXPECT_FALSE(mTheme.contains(QStringLiteral("no_such_color")));
    EXPECT_EQ(messages.seen().size(), 3);
}

TEST_F(CUiResourceTest, SwitchesToTheOtherTheme) {
    const int before = mTheme.generation();
    ASSERT_TRUE(mTheme.setTheme(QStringLiteral("light")));
    EXPECT_EQ(mTheme.theme(), QStringLiteral("light"));
    EXPECT_GT(color("ic_clr_realtime_graph_bg").lightness(), 240);
    EXPECT_GT(mTheme.generation(), before);
}

TEST_F(CUiResourceTest, AFileOverridesWhatItHasAndTakesTheRestFromDark) {
    ASSERT_TRUE(mTheme.setTheme(QStringLiteral("light")));
    const QString path =
        file("{\"colors\":{\"ic_clr_realtime_graph_bg\":\"#80102030\",\"my_own\":\"#010203\"},"
             "\"fonts\":{\"fnt_default_normal\":{\"families\":[\"DejaVu Sans\"],\"pixelSize\":30}}}");
    QString error;
    ASSERT_TRUE(mTheme.setTheme(path, &error)) << qPrintable(error);
    EXPECT_EQ(mTheme.theme(), path);
    EXPECT_EQ(color("ic_clr_realtime_graph_bg"), QColor(0x10, 0x20, 0x30, 0x80));
    EXPECT_EQ(color("my_own"), QColor(1, 2, 3));
    EXPECT_EQ(color("ic_clr_index_line_1"), QColor("#f2f2f2")); // that of dark
    EXPECT_EQ(mTheme.getFont(QStringLiteral("fnt_default_normal")).pixelSize(), 30);
    EXPECT_EQ(mTheme.getFont(QStringLiteral("fnt_graph_axis_text")).pixelSize(), 12);
}

TEST_F(CUiResourceTest, AFilesPictureIsDrawnFromItsShapes) {
    const QString path = file("{\"images\":{\"my_img\":{\"width\":4,\"height\":2,\"shapes\":["
                              "{\"kind\":\"rect\",\"at\":[0,0,2,2],\"fill\":\"#ff0000\"}]}}}");
    ASSERT_TRUE(mTheme.setTheme(path));
    const QImage image = mTheme.getPixmap(QStringLiteral("my_img")).toImage();
    EXPECT_EQ(image.size(), QSize(4, 2));
    EXPECT_EQ(image.pixelColor(1, 1), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(2, 1).alpha(), 0);
}

TEST_F(CUiResourceTest, ABadThemeChangesNothingAndSaysWhy) {
    struct Case {
        QByteArray mJson;
        const char *mSays;
    };
    const Case cases[] = {
        {"{\"colors\":", "JSON"},
        {"[]", "对象"},
        {"{\"colors\":[]}", "colors"},
        {"{\"colors\":{\"ic_clr_x\":\"red\"}}", "ic_clr_x"},
        {"{\"colors\":{\"ic_clr_x\":\"#12345\"}}", "ic_clr_x"},
        {"{\"colors\":{\"ic_clr_x\":7}}", "ic_clr_x"},
        {"{\"fonts\":{\"fnt_x\":{\"families\":[\"A\"]}}}", "fnt_x"},
        {"{\"fonts\":{\"fnt_x\":{\"families\":[],\"pixelSize\":12}}}", "fnt_x"},
        {"{\"fonts\":{\"fnt_x\":{\"families\":[\"A\"],\"pixelSize\":12,\"weight\":400}}}", "fnt_x"},
        {"{\"images\":{\"img_x\":{\"width\":0,\"height\":4}}}", "img_x"},
        {"{\"images\":{\"img_x\":{\"width\":4,\"height\":100000}}}", "img_x"},
        {"{\"images\":{\"img_x\":{\"width\":4,\"height\":4,\"shapes\":[{\"kind\":\"star\",\"at\":[0,0,1,1]}]}}"
         "}",
         "img_x"},
        {"{\"images\":{\"img_x\":{\"width\":4,\"height\":4,\"shapes\":[{\"kind\":\"rect\",\"at\":[0,\"a\"]}]}}"
         "}",
         "img_x"},
        {"{\"images\":{\"img_x\":{\"width\":4,\"height\":4,\"shapes\":[{\"kind\":\"polygon\",\"at\":[0,0,1]}]}}"
         "}",
         "img_x"},
    };
    const int before = mTheme.generation();
    for (const Case &bad : cases) {
        QString error;
        EXPECT_FALSE(mTheme.setTheme(file(bad.mJson), &error)) << bad.mJson.constData();
        EXPECT_TRUE(error.contains(QString::fromUtf8(bad.mSays))) << qPrintable(error);
        EXPECT_TRUE(error.contains(QStringLiteral("my.json"))) << qPrintable(error);
    }
    EXPECT_EQ(mTheme.generation(), before);
    EXPECT_EQ(mTheme.theme(), QStringLiteral("dark"));
    EXPECT_FALSE(mTheme.contains(QStringLiteral("ic_clr_x")));
}

TEST_F(CUiResourceTest, AMissingThemeIsNamed) {
    QString error;
    EXPECT_FALSE(mTheme.setTheme(QStringLiteral("blue"), &error));
    EXPECT_TRUE(error.contains(QStringLiteral("blue"))) << qPrintable(error);
    EXPECT_FALSE(mTheme.setTheme(mFolder.path(), &error)); // a folder
    EXPECT_TRUE(error.contains(mFolder.path())) << qPrintable(error);
    EXPECT_FALSE(mTheme.setTheme(QString()));
    EXPECT_EQ(mTheme.theme(), QStringLiteral("dark"));
}

/// Counts, and does more when told.
struct Handler : GZ::CUiResourceChangeHandler {
    void onUiResourceChanged() override {
        ++mCalls;
        if (mThen) {
            mThen();
        }
    }
    int mCalls = 0;
    std::function<void()> mThen;
};

TEST_F(CUiResourceTest, HandlersHearOfAChangeAndNotOfAFailure) {
    Handler handler;
    int seen = -1;
    handler.mThen = [&] { seen = color("ic_clr_realtime_graph_bg").lightness(); };
    mTheme.setTheme(QStringLiteral("blue"));
    EXPECT_EQ(handler.mCalls, 0);
    mTheme.setTheme(QStringLiteral("light"));
    EXPECT_EQ(handler.mCalls, 1);
    EXPECT_GT(seen, 240);
}

TEST_F(CUiResourceTest, AHandlerMayDestroyAnother) {
    Handler first;
    auto second = std::make_unique<Handler>();
    first.mThen = [&] { second.reset(); };
    mTheme.setTheme(QStringLiteral("light"));
    EXPECT_EQ(second, nullptr);
    EXPECT_EQ(first.mCalls, 1);
}

TEST_F(CUiResourceTest, HandlersHearInTheOrderInWhichTheyCame) {
    std::vector<int> heard;
    std::vector<std::unique_ptr<Handler>> handlers;
    for (int i = 0; i < 6; ++i) {
        handlers.push_back(std::make_unique<Handler>());
        handlers.back()->mThen = [&heard, i] { heard.push_back(i); };
    }
    handlers[1].reset();
    handlers[1] = std::make_unique<Handler>(); // comes last now
    handlers[1]->mThen = [&heard] { heard.push_back(1); };
    handlers[4].reset();
    const auto third = handlers[2]->mThen;
    std::unique_ptr<Handler> late;
    handlers[2]->mThen = [&, third] {
        third();
        handlers[0].reset(); // has heard it
        handlers[5].reset(); // is still to hear it
        if (!late) {
            late = std::make_unique<Handler>();
        }
    };
    mTheme.setTheme(QStringLiteral("light"));
    EXPECT_EQ(heard, (std::vector<int>{0, 2, 3, 1}));
    heard.clear();
    mTheme.setTheme(QStringLiteral("dark"));
    EXPECT_EQ(heard, (std::vector<int>{2, 3, 1}));
    EXPECT_EQ(late->mCalls, 1) << "it came while the first change was told";
}

/// The shortest of some times, in nanoseconds, that it takes handlers to come, to hear of a change, and to go, the oldest
/// first or the newest.
qint64 timeOfHandlers(int count, bool oldestFirst) {
    qint64 best = std::numeric_limits<qint64>::max();
    for (int round = 0; round < 3; ++round) {
        QElapsedTimer timer;
        timer.start();
        std::deque<Handler> handlers(static_cast<size_t>(count));
        GZ::CUiResource::instance().setTheme(QStringLiteral("dark"));
        while (!handlers.empty()) {
            oldestFirst ? handlers.pop_front() : handlers.pop_back();
        }
        best = std::min(best, timer.nsecsElapsed());
    }
    return best;
}

TEST_F(CUiResourceTest, TenTimesAsManyHandlersTakeAboutTenTimesAsLong) {
    for (const bool oldestFirst : {true, false}) {
        const qint64 few = timeOfHandlers(10000, oldestFirst);
        const qint64 many = timeOfHandlers(100000, oldestFirst);
        EXPECT_LT(many, 40 * few) << oldestFirst << ": a hundred times as long when each looks for its place";
    }
}

TEST_F(CUiResourceTest, WhatWouldNeverEndIsNoTheme) {
    const QString pipe = mFolder.filePath(QStringLiteral("pipe.json"));
    ASSERT_EQ(::mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    for (const QString &path : {pipe, QStringLiteral("/dev/zero")}) {
        QString error;
        EXPECT_FALSE(mTheme.setTheme(path, &error));
        EXPECT_TRUE(error.contains(path + QStringLiteral("”：it is a pipe or a device, no file")))
            << qPrintable(error);
    }
    EXPECT_EQ(mTheme.theme(), QStringLiteral("dark"));
}

TEST_F(CUiResourceTest, ABaseWidgetRepaintsWithTheTheme) {
    class Painted : public GZ::CBaseWidget {
    public:
        int mPaints = 0;

    protected:
        void paintEvent(QPaintEvent *) override { ++mPaints; }
    };
    Painted widget;
    widget.resize(20, 20);
    widget.show();
    QCoreApplication::processEvents();
    const int before = widget.mPaints;
    mTheme.setTheme(QStringLiteral("light"));
    QCoreApplication::processEvents();
    EXPECT_GT(widget.mPaints, before);
}

TEST_F(CUiResourceTest, AnyThreadMayReadWhileTheThemeChanges) {
    std::vector<std::thread> readers;
    std::atomic<int> wrong{0};
    for (int t = 0; t < 2; ++t) {
        readers.emplace_back([&] {
            for (int i = 0; i < 2000; ++i) {
                const QColor line = color("ic_clr_index_line_1");
                const bool known = line == QColor("#f2f2f2") || line == QColor("#1f4e8c");
                wrong +=
                    known && mTheme.getFont(QStringLiteral("fnt_graph_axis_text")).pixelSize() == 12 ? 0 : 1;
            }
        });
    }
    for (int i = 0; i < 10; ++i) {
        mTheme.setTheme(i % 2 ? QStringLiteral("dark") : QStringLiteral("light"));
    }
    for (std::thread &reader : readers) {
        reader.join();
    }
    EXPECT_EQ(wrong, 0);
}

TEST_F(CUiResourceTest, TheMenuStyleHasTheColoursOfTheTheme) {
    const QString dark = GZ::CStyleSheetCenter::getStyle(15);
    EXPECT_TRUE(dark.contains(QStringLiteral("background: rgba(29, 32, 38, 255)"))) << qPrintable(dark);
    mTheme.setTheme(QStringLiteral("light"));
    EXPECT_TRUE(
        GZ::CStyleSheetCenter::getStyle(15).contains(QStringLiteral("background: rgba(255, 255, 255, 255)")));
    EXPECT_EQ(GZ::CStyleSheetCenter::getStyle(-1), QString());
    EXPECT_EQ(GZ::CStyleSheetCenter::getStyle(9999), QString());
}

} // namespace
