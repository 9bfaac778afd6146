// The dialogs of statistics and of the ranking, in both themes and at two pixel ratios.

#include "tests/statistics/StatisticFixture.h"
#include "tests/support/Golden.h"

using namespace TC;

namespace {

class StatisticDialogs : public tests::StatisticFixture {
protected:
    void expectPictures(QWidget &dialog, const QString &name) {
        if (QWidget *focused = dialog.focusWidget()) {
            focused->clearFocus(); // a cursor blinks
        }
        QCoreApplication::processEvents(); // a scroll bar comes with the next turn
        for (const char *theme : {"dark", "light"}) {
            GZ::CUiResource::instance().setTheme(QString::fromLatin1(theme));
            for (const double ratio : {1.0, 2.0}) {
                const QString picture =
                    tests::goldenName(name + QLatin1Char('-') + QLatin1String(theme), ratio);
                EXPECT_TRUE(tests::matchesGolden(tests::rendered(dialog, ratio), picture));
            }
        }
    }
    /// Opens the dialog with the figures of 09:30 to 10:00.
    void open(const QStringList &values) {
        mDialog->setWindowTitle(QStringLiteral("浦发银行 时段统计"));
        mDialog->setStock(QStringLiteral("SH600000"), true);
        setRange(at(9, 30), at(10, 0));
        mDialog->setValues(31, values);
        ASSERT_NO_FATAL_FAILURE(show());
    }
    const QStringList mFigures = {QStringLiteral("10.00"),  QStringLiteral("10.52"),   QStringLiteral("9.90"),
                                  QStringLiteral("10.21"),  QStringLiteral("12.53万"), QStringLiteral("2.10%"),
                                  QStringLiteral("10.13"),  QStringLiteral("6.20%"),   QStringLiteral("0.12%"),
                                  QStringLiteral("1.27亿"), QStringLiteral("-1.03%")};
};

TEST_F(StatisticDialogs, StretchWithTransactions) {
    ASSERT_NO_FATAL_FAILURE(open(mFigures));
    CWatchPlateWidget::Records records;
    for (int i = 0; i < 40; ++i) {
        records.push_back(
            transaction(at(9, 30) + i * 37, 10.0 + 0.01 * (i * 7 % 9 - 4), 100.0 * (i * i % 113 + 1)));
    }
    answerQuotes(records);
    expectPictures(*mDialog, QStringLiteral("dialog-statistics"));
}

TEST_F(StatisticDialogs, StretchWithNeitherFiguresNorTransactions) {
    ASSERT_NO_FATAL_FAILURE(open({}));
    expectPictures(*mDialog, QStringLiteral("dialog-statistics-empty"));
}

TEST_F(StatisticDialogs, BothTabsOfAReplay) {
    makeDialog(true);
    addOrder("a1", "20240315-00007", "20240315", "09:35:00");
    addAccount("a1");
    ASSERT_NO_FATAL_FAILURE(open(mFigures));
    expectPictures(*mDialog, QStringLiteral("dialog-statistics-replay"));
    child<GZ::CCheckBox>()->setChecked(true);
    child<GZ::CPushButtonGroup>()->setCheckedId(605);
    mDialog->handleEvent(5, 605, 1, QString(), nullptr);
    expectPictures(*mDialog, QStringLiteral("dialog-statistics-orders"));
}

TEST_F(StatisticDialogs, Ranking) {
    CRealtimeStageDialog dialog(mBus.get());
    dialog.setRange(static_cast<quint64>(at(9, 30)), static_cast<quint64>(at(10, 0)), 0, 0);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    expectPictures(dialog, QStringLiteral("dialog-ranking"));
}

} // namespace
