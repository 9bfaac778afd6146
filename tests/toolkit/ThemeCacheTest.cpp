#include "host/toolkit/ThemeCache.h"

#include "host/toolkit/ThemeColor.h"

#include <gtest/gtest.h>

namespace {

using GZ::CUiResource;

int made = 0;

struct Look {
    QColor ground;

    static Look ofTheme() {
        ++made;
        return {GZ::themeColor("ic_clr_realtime_graph_bg")};
    }
};

class ThemeCacheTest : public testing::Test {
protected:
    ThemeCacheTest() { made = 0; }
    ~ThemeCacheTest() override { CUiResource::instance().setTheme(QStringLiteral("dark")); }

    GZ::ThemeCache<Look> mCache;
};

TEST_F(ThemeCacheTest, NothingIsMadeBeforeTheFirstReading) {
    EXPECT_EQ(made, 0);
    EXPECT_EQ(mCache.generation(), -1);
    EXPECT_TRUE(mCache.isStale());
}

TEST_F(ThemeCacheTest, TheLookIsMadeOnceATheme) {
    const QColor dark = mCache->ground;
    EXPECT_EQ(dark, CUiResource::instance().getColor(QStringLiteral("ic_clr_realtime_graph_bg")));
    EXPECT_EQ(mCache.look().ground, dark);
    EXPECT_EQ(made, 1);
    EXPECT_FALSE(mCache.isStale());

    ASSERT_TRUE(CUiResource::instance().setTheme(QStringLiteral("light")));
    EXPECT_TRUE(mCache.isStale());
    const QColor light = mCache->ground;
    EXPECT_NE(light, dark);
    EXPECT_EQ(light, CUiResource::instance().getColor(QStringLiteral("ic_clr_realtime_graph_bg")));
    EXPECT_EQ(mCache.generation(), CUiResource::instance().generation());
    EXPECT_EQ(made, 2);
}

TEST_F(ThemeCacheTest, WhatIsPutInStaysUntilTheThemeChanges) {
    mCache.look().ground = QColor(1, 2, 3);
    EXPECT_EQ(mCache->ground, QColor(1, 2, 3));
    ASSERT_TRUE(CUiResource::instance().setTheme(QStringLiteral("light")));
    EXPECT_NE(mCache->ground, QColor(1, 2, 3));
}

} // namespace
