// What a trader may rely on at sight: a button that can be pressed does something, fields are seen, lists have the colours of
// the theme.

#include "host/toolkit/CPushButton.h"
#include "host/windows/CSmartKeyboardDialog.h"
#include "terminal/app/FormulaPanel.h"
#include "terminal/app/ImportDialog.h"
#include "terminal/app/ThemeStyle.h"
#include "tests/integration/TerminalFixture.h"
#include "tests/support/Contrast.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMetaMethod>
#include <QStyle>
#include <QToolButton>

using namespace terminal;
using tests::TerminalFixture;

namespace {

class WindowLooks : public TerminalFixture {
protected:
    void SetUp() override {
        QApplication::setStyle(new ThemeStyle); // as the program does
        TerminalFixture::SetUp();
        ASSERT_TRUE(mWindow->showInstrument("SH600000", QDate(2026, 11, 19)));
        mWindow->setFormulasShown(true);
        mWindow->setFormulaPanes(2);
        ASSERT_TRUE(waitUntilComplete());
    }
    void TearDown() override {
        TerminalFixture::TearDown();
        QApplication::setStyle(mStyle);
    }

private:
    const QString mStyle = QApplication::style()->objectName();
};

/// Lets a connection be asked for that only the class itself may ask for.
struct Asking : QObject {
    using QObject::isSignalConnected;
    static bool hears(const QObject &object, const char *signal) {
        const QMetaObject &meta = *object.metaObject();
        return (object.*&Asking::isSignalConnected)(meta.method(meta.indexOfSignal(signal)));
    }
};

bool doesSomething(const QAbstractButton &button) {
    const auto *tool = qobject_cast<const QToolButton *>(&button);
    if (tool && (tool->menu() || tool->defaultAction())) {
        return true;
    }
    if (button.group() || qobject_cast<const QDialogButtonBox *>(button.parentWidget())) {
        return true;
    }
    for (const char *signal : {"clicked(bool)", "toggled(bool)", "pressed()", "released()"}) {
        if (Asking::hears(button, signal)) {
            return true;
        }
    }
    // A box that is read when its dialog is accepted.
    return button.isCheckable() && button.window() && button.window()->inherits("QDialog");
}

QStringList idleButtons(const QWidget &window) {
    QStringList idle;
    for (const QAbstractButton *button : window.findChildren<QAbstractButton *>()) {
        const bool isPartOfAnother =
            button->parentWidget() && (qobject_cast<QLineEdit *>(button->parentWidget()) ||
                                       button->parentWidget()->inherits("QTableView"));
        if (button->isEnabled() && !isPartOfAnother && !doesSomething(*button)) {
            idle.append(QString::fromLatin1(button->metaObject()->className()) + ' ' + button->objectName() +
                        ' ' + button->text());
        }
    }
    return idle;
}

/// The darkest and the lightest of the pixels that lie on a line.
std::pair<QColor, QColor> extremesOf(const QImage &image, const QRect &line) {
    QColor darkest = image.pixelColor(line.topLeft());
    QColor lightest = darkest;
    for (int y = line.top(); y <= line.bottom(); ++y) {
        for (int x = line.left(); x <= line.right(); ++x) {
            const QColor color = image.pixelColor(x, y);
            darkest = tests::luminance(color) < tests::luminance(darkest) ? color : darkest;
            lightest = tests::luminance(color) > tests::luminance(lightest) ? color : lightest;
        }
    }
    return {darkest, lightest};
}

} // namespace

TEST_F(WindowLooks, EveryButtonThatCanBePressedDoesSomething) {
    EXPECT_GT(mWindow->findChildren<QAbstractButton *>().size(), 10);
    EXPECT_EQ(idleButtons(*mWindow), QStringList());
    ImportDialog import(mServices->store(), mWindow.get());
    EXPECT_GT(import.findChildren<QAbstractButton *>().size(), 2);
    EXPECT_EQ(idleButtons(import), QStringList());

    const QPushButton dead(QStringLiteral("dead"), mWindow.get());
    EXPECT_EQ(idleButtons(*mWindow), QStringList{"QPushButton  dead"}) << "one that does nothing is found";
}

TEST_F(WindowLooks, AFieldIsSeenWithoutTheFocus) {
    constexpr double kSeen = 1.2; // contrast of a thin line that shows where a field is
    for (const char *theme : {"dark", "light"}) {
        mWindow->setThemeName(QLatin1String(theme));
        QLineEdit *field = mWindow->formulas()->filter();
        ASSERT_TRUE(field->isVisible());
        ASSERT_FALSE(field->hasFocus());
        const QImage image = mWindow->grab().toImage();
        const QRect inside(field->mapTo(mWindow.get(), QPoint()), field->size());
        const int middle = inside.center().x();
        // From the ground above the field over its frame into it.
        const auto [darkest, lightest] =
            extremesOf(image, QRect(QPoint(middle, inside.top() - 1), QPoint(middle, inside.top() + 3)));
        EXPECT_GE(tests::contrast(darkest, lightest), kSeen) << theme;
    }
}

TEST_F(WindowLooks, ListsHaveTheColoursOfTheTheme) {
    for (const char *theme : {"dark", "light"}) {
        mWindow->setThemeName(QLatin1String(theme));
        const auto boxes = mWindow->findChildren<QComboBox *>();
        ASSERT_FALSE(boxes.isEmpty());
        for (QComboBox *box : boxes) {
            if (!box->isVisible() || box->count() < 2) {
                continue;
            }
            box->showPopup();
            const QAbstractItemView &list = *box->view();
            const QModelIndex other = list.model()->index(box->currentIndex() == 0 ? 1 : 0, 0);
            const QRect row = list.visualRect(other) & list.viewport()->rect();
            ASSERT_FALSE(row.isEmpty()) << theme << ' ' << qPrintable(box->objectName());
            const QImage image = list.viewport()->grab().toImage();
            const auto [darkest, lightest] = extremesOf(image, row);
            const bool isDark = qstrcmp(theme, "dark") == 0;
            EXPECT_LT(tests::luminance(darkest), 0.2) << theme << ' ' << qPrintable(box->objectName());
            EXPECT_GT(tests::luminance(lightest), 0.3) << theme << ' ' << qPrintable(box->objectName());
            const QColor ground = image.pixelColor(row.right() - 2, row.center().y());
            EXPECT_EQ(tests::luminance(ground) < 0.2, isDark) << theme << ' ' << qPrintable(box->objectName());
            EXPECT_GE(tests::contrast(darkest, lightest), tests::kReadable) << theme;
            box->hidePopup();
        }
    }
}
