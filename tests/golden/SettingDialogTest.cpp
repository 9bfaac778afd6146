// The dialog in which the user chooses what is shown of his trades.

#include "tests/linkage/SettingDialogFixture.h"
#include "tests/support/Golden.h"

namespace {

class SettingDialogPicture : public tests::SettingDialogFixture {
protected:
    void compare(const char *name) {
        for (const char *theme : {"dark", "light"}) {
            ASSERT_TRUE(GZ::CUiResource::instance().setTheme(QLatin1String(theme)));
            QCoreApplication::processEvents();
            for (const double ratio : {1.0, 2.0}) {
                const QString picture = tests::goldenName(
                    QStringLiteral("setting-%1-%2").arg(QLatin1String(name), QLatin1String(theme)), ratio);
                EXPECT_TRUE(tests::matchesGolden(tests::rendered(*mDialog, ratio), picture));
            }
        }
    }
};

TEST_F(SettingDialogPicture, ChosenByStrategy) {
    mDetail->mName = "浦发银行";
    showFilled();
    mHost.mLinkage.mStrategys.insert("均值回归");
    mDialog->updateStrategys();
    for (const int id : {3, 6, 8}) {
        click(box(id));
    }
    click(radio(19));
    click(rowBox(0, 1));
    click(rowBox(1, 2));
    click(rowBox(2, 0));
    button(12)->setEnabled(false);
    button(13)->setEnabled(false);
    if (QWidget *focused = mDialog->focusWidget()) {
        focused->clearFocus();
    }
    QCoreApplication::processEvents();
    compare("strategy");
}

} // namespace
