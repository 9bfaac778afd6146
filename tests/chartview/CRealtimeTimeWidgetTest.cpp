#include "chartview/CRealtimeTimeWidget.h"

#include "chartview/IDayRows.h"
#include "tests/chartview/GraphFixture.h"
#include "tests/support/Golden.h"

using namespace TC;

namespace {

struct ScaleLabel {
    int x;
    QString text;
};

/// A scale of 1202x20 beneath strips of 50: one day of 1102 pixels. Position i of the axis is 1100 / 240 * i + 1 pixels
/// right of the beginning of the day.
class TimeScale : public tests::ChartFixture {
protected:
    TimeScale() {
        mUi->mLeftAxisWidth = mUi->mRightAxisWidth = 50;
        makeScale();
        resizeView(1202);
    }
    void makeScale() {
        mScale = std::make_unique<CRealtimeTimeWidget>(mUi, nullptr);
        mScale->setParent(mKeeper.get());
    }
    void resizeView(int width) {
        mUi->resize(QRect(0, 0, width, 300));
        mKeeper->resize(width, 320);
        mScale->setGeometry(0, 300, width, 20);
        mScale->updateScale();
    }
    static QFont font() {
        return GZ::CUiResource::instance().getFont(QStringLiteral("fnt_timeline_text_default"));
    }
    static int widthOf(const QString &text) { return QFontMetrics(font()).horizontalAdvance(text); }

    /// The scale as it has to look.
    QImage picture(const QList<int> &ticks, const QList<ScaleLabel> &labels) const {
        QImage image(mScale->width(), 20, QImage::Format_ARGB32_Premultiplied);
        image.fill(color("ic_clr_account_report_timeline_bg"));
        QPainter painter(&image);
        painter.setClipRect(50, 0, image.width() - 100, 20);
        painter.setFont(font());
        painter.setPen(color("ic_clr_timeline_text"));
        for (const ScaleLabel &label : labels) {
            painter.drawText(label.x, 20 - 8, label.text);
        }
        for (const int x : ticks) {
            painter.fillRect(x, 20 - 4, 1, 4, color("ic_clr_timeline_time_scale"));
        }
        return image;
    }
    QImage oneDay() const {
        const int half = widthOf("10:00") / 2;
        return picture({50, 188, 326, 463, 601, 738, 876, 1013, 1151},
                       {{51, "09:30"},
                        {188 - half, "10:00"},
                        {326 - half, "10:30"},
                        {463 - half, "11:00"},
                        {601 - half, "11:30"},
                        {738 - half, "13:30"},
                        {876 - half, "14:00"},
                        {1013 - half, "14:30"},
                        {1151 - widthOf("15:00") - 2, "15:00"}});
    }
    static QImage withFlag(QImage image, int x, const QString &text) {
        QPainter painter(&image);
        const QRect box(x, 0, widthOf(text) + 10, 20);
        painter.fillRect(box, color("ic_clr_realtime_cross_line_bg"));
        painter.setFont(font());
        painter.setPen(color("ic_clr_realtime_cross_line_text"));
        painter.drawText(box, 0x84, text);
        return image;
    }
    void show() {
        mKeeper->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(mKeeper.get()));
        QCoreApplication::processEvents();
    }
    void enter() {
        QEnterEvent event{QPointF(), QPointF(), QPointF()};
        QCoreApplication::sendEvent(mScale.get(), &event);
    }
    /// Columns whose lowest pixel is that of a tick.
    QList<int> ticks() const {
        const QImage image = painted(*mScale);
        QList<int> columns;
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, 19) == color("ic_clr_timeline_time_scale")) {
                columns.append(x);
            }
        }
        return columns;
    }

    std::unique_ptr<CRealtimeTimeWidget> mScale;
};

TEST_F(TimeScale, HasItsName) {
    EXPECT_EQ(mScale->objectName(), "realtime_time_widget");
}

TEST_F(TimeScale, OneDayShowsItsTimesAndBeginsWithATime) {
    EXPECT_EQ(painted(*mScale), oneDay());
}

TEST_F(TimeScale, FiveDaysBeginWithTheirDatesOldestFirst) {
    mUi->mDayCount = 5;
    resizeView(1202); // 220.4 a day
    const QImage image = painted(*mScale);
    const int width = widthOf("24-03-11");
    const QStringList dates = {"24-03-11", "24-03-12", "24-03-13", "24-03-14", "24-03-15"};
    const int lefts[] = {50, 270, 490, 711, 931}; // 50 + i * 220.4
    for (int i = 0; i < 5; ++i) {
        const QRect room(lefts[i], 0, width + 4, 16);
        const QImage expected = picture({}, {{lefts[i] + 1, dates[i]}}).copy(room);
        EXPECT_EQ(image.copy(room), expected) << i;
    }
}

TEST_F(TimeScale, DatesAreThoseOfThePastDayShown) {
    mUi->mDayCount = 2;
    mUi->mGetTradeDateFunc = [] { return tests::kDay - 9 * 86400; }; // 2024-03-06
    resizeView(1202);
    const QRect room(50, 0, widthOf("24-03-05") + 4, 16);
    EXPECT_EQ(painted(*mScale).copy(room), picture({}, {{51, "24-03-05"}}).copy(room));
}

TEST_F(TimeScale, LabelTooNearIsDroppedWhileItsTickStands) {
    resizeView(340); // 240 for the day: 238 / 240 a position
    EXPECT_EQ(ticks(), (QList<int>{50, 80, 110, 140, 170, 199, 229, 259, 289}));
    // 09:30 holds everything off up to 50 + 30 + 48 = 128: 11:00 would begin at 125. 11:30 begins at 155 and holds off
    // what begins before 170 + 15 + 48 = 233, 14:30 at 259 what does before 322.
    ASSERT_EQ(widthOf("09:30"), 30);
    EXPECT_EQ(painted(*mScale), picture(ticks(), {{51, "09:30"}, {170 - 15, "11:30"}, {259 - 15, "14:30"}}));
}

TEST_F(TimeScale, MidnightOfANightSessionIsTheHourTwentyFour) {
    mHost.mTimes.mNight.insert("SH600000");
    mUi->resetAxis("SH",
                   "600000"); // 21:00 to 24:00, 00:01 to 02:30, 09:01 to 10:15, 10:31 to 11:30, 13:31 to 15:00
    resizeView(2322); // (2222 - 2) / 555 = 4 pixels a position
    QList<int> expected = {50};
    // The 15 minutes that are left at 10:15 have no tick of their own.
    for (const int index : {30, 60, 90, 120, 150, 180, 210, 240, 270, 300, 330, 360, 390, 435, 465, 495, 525}) {
        expected.append(51 + 4 * index);
    }
    expected.append(50 + 2222 - 1);
    EXPECT_EQ(ticks(), expected);
    const QImage image = painted(*mScale);
    const int midnight = 51 + 4 * 180;
    EXPECT_EQ(image.pixelColor(midnight, 19), color("ic_clr_timeline_time_scale"));
    // The labels around it stand at 23:30 and 00:30, 120 pixels away.
    const QRect around(midnight - 40, 0, 80, 20);
    EXPECT_EQ(image.copy(around), picture({midnight}, {{midnight - 15, "24:00"}}).copy(around));
}

TEST_F(TimeScale, ViewWithoutAnInstrumentIsAnEmptyGround) {
    mUi = boost::make_shared<CRealtimeUiParam>(EIndexViewType::Ordinary);
    makeScale();
    resizeView(400);
    QImage empty(400, 20, QImage::Format_ARGB32_Premultiplied);
    empty.fill(color("ic_clr_realtime_graph_bg"));
    EXPECT_EQ(painted(*mScale), empty);
}

TEST_F(TimeScale, NothingIsDrawnWithoutWidthOrHeight) {
    QImage image(10, 10, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::magenta);
    const QImage untouched = image;
    mUi->mCrossShown = true;
    mScale->setCursor(3, 4);
    for (const QSize &size : {QSize(0, 20), QSize(400, 0), QSize(0, 0)}) {
        mScale->resize(size);
        mScale->updateScale();
        mScale->refreshFlag();
        mScale->render(&image);
        EXPECT_EQ(image, untouched);
    }
}

TEST_F(TimeScale, AnyParametersDoNoHarm) {
    for (const double width : {-5.0, 0.0, 0.3, 1e9}) {
        for (const int days : {-1, 0, 6, 1000000}) {
            mUi->mDayWidth = width;
            mUi->mDayCount = days;
            mUi->mCrossShown = true;
            mScale->setCursor(1000000, -1000000);
            mScale->updateScale();
            EXPECT_EQ(painted(*mScale).size(), QSize(1202, 20));
        }
    }
}

TEST_F(TimeScale, ResizingDrawsItAnew) {
    mScale->resize(1202, 30);
    EXPECT_EQ(painted(*mScale).copy(0, 10, 1202, 20), oneDay());
}

TEST_F(TimeScale, AnotherInstrumentIsSeenOnceTheScaleIsUpdated) {
    mHost.mStocks.add("HK", "00700", 300.0, 0.2);
    EXPECT_EQ(painted(*mScale), oneDay());
    mUi->setStock("HK00700", false); // until 16:10
    EXPECT_EQ(painted(*mScale), oneDay());
    mScale->updateScale();
    EXPECT_NE(painted(*mScale), oneDay());
}

TEST_F(TimeScale, FollowsTheTheme) {
    ASSERT_TRUE(GZ::CUiResource::instance().setTheme("light"));
    EXPECT_EQ(painted(*mScale), oneDay());
}

TEST_F(TimeScale, IsCrispAtRatioTwo) {
    const QImage image = painted(*mScale, 2.0);
    ASSERT_EQ(image.size(), QSize(2404, 40));
    EXPECT_EQ(image.pixelColor(2 * 188, 39), color("ic_clr_timeline_time_scale"));
    EXPECT_EQ(painted(*mScale), oneDay()) << "and again at ratio one";
}

TEST_F(TimeScale, MouseOnItTakesTheCrossLineAway) {
    enter();
    ASSERT_EQ(mKeeper->mEvents.size(), 1U);
    const tests::Event &event = mKeeper->mEvents[0];
    EXPECT_EQ(event.number, 3031);
    EXPECT_EQ(event.first, -1);
    EXPECT_EQ(event.second, -1);
    EXPECT_EQ(event.text, QString());
    EXPECT_EQ(event.data, nullptr);
}

// The flag

TEST_F(TimeScale, FlagTellsTheTimeUnderTheCrossLine) {
    mUi->mCrossShown = true;
    mScale->setCursor(30, 138);
    const int width = widthOf("10:00") + 10;
    EXPECT_EQ(painted(*mScale), withFlag(oneDay(), 50 + 138 - width / 2, "10:00"));
}

TEST_F(TimeScale, FlagStaysInsideTheDay) {
    mUi->mCrossShown = true;
    const int width = widthOf("09:30") + 10;
    mScale->setCursor(0, 1);
    EXPECT_EQ(painted(*mScale), withFlag(oneDay(), 50, "09:30"));
    mScale->setCursor(240, 1101);
    EXPECT_EQ(painted(*mScale), withFlag(oneDay(), 1152 - width, "15:00"));
}

TEST_F(TimeScale, ThereIsNoFlagWithoutAnIndexOrWithTheCrossLineOff) {
    mUi->mCrossShown = true;
    EXPECT_EQ(painted(*mScale), oneDay());
    mScale->setCursor(-1, 138);
    EXPECT_EQ(painted(*mScale), oneDay());
    mUi->mCrossShown = false;
    mScale->setCursor(30, 138);
    EXPECT_EQ(painted(*mScale), oneDay());
}

TEST_F(TimeScale, TellingTheCursorRepaintsNothing) {
    show();
    mUi->mCrossShown = true;
    tests::PaintWatch watch(mScale.get());
    mScale->setCursor(30, 138);
    QCoreApplication::processEvents();
    EXPECT_TRUE(watch.mRegions.isEmpty());
}

TEST_F(TimeScale, MovingTheFlagRepaintsItsOldAndItsNewBoxOnly) {
    show();
    mUi->mCrossShown = true;
    mScale->setCursor(30, 138);
    mScale->refreshFlag();
    QCoreApplication::processEvents();
    tests::PaintWatch watch(mScale.get());
    mScale->setCursor(90, 413);
    mScale->refreshFlag();
    QCoreApplication::processEvents();
    const int width = widthOf("10:00") + 10;
    ASSERT_EQ(watch.mRegions.size(), 1);
    EXPECT_EQ(watch.mRegions[0],
              QRegion(188 - width / 2, 0, width, 20) | QRegion(463 - width / 2, 0, width, 20));
    mScale->refreshFlag();
    QCoreApplication::processEvents();
    EXPECT_EQ(watch.mRegions.size(), 1) << "standing still repaints nothing";
}

TEST_F(TimeScale, AnyWalkOfTheFlagLeavesThePixelsOfAWholeRepaint) {
    show();
    for (int step = 0; step < 30; ++step) {
        mUi->mCrossShown = step % 7 != 3;
        const int index = (step * 53) % 241 - (step % 11 == 5 ? 300 : 0);
        mScale->setCursor(index, mUi->getXAxisByIndex(index));
        mScale->refreshFlag();
        QCoreApplication::processEvents();
        const QImage walked = tests::onScreen(*mKeeper);
        mKeeper->update();
        QCoreApplication::processEvents();
        ASSERT_EQ(walked, tests::onScreen(*mKeeper)) << step;
    }
}

// Days

/// Rows of graphs that were made beneath it.
class DayRowsView : public QWidget, public IDayRows {
public:
    QVector<QList<CRealtimeGraphWidget *>> dayRows() const override { return mRows; }
    QVector<QList<CRealtimeGraphWidget *>> mRows;
};

/// A scale of three days of 400 pixels, beneath a main pane and two formula panes.
class TimeScaleOfDays : public TimeScale {
protected:
    TimeScaleOfDays() {
        mUi->mDayCount = 3;
        mUi->mCrossShown = true;
        mView.setParent(mKeeper.get());
        mView.resize(1300, 320);
        for (const EIndexDisplayType type :
             {EIndexDisplayType::Main, EIndexDisplayType::Sub, EIndexDisplayType::Sub}) {
            QList<CRealtimeGraphWidget *> row;
            for (int day = 0; day < 3; ++day) {
                row.append(new CRealtimeGraphWidget(day, makeData(type, {}), mUi, type,
                                                    EIndexViewType::Ordinary, &mView, day == 0));
            }
            mView.mRows.append(row);
        }
        mScale = std::make_unique<CRealtimeTimeWidget>(mUi, &mView);
        resizeView(1300);
        mScale->setCursor(0, 100);
    }
    ~TimeScaleOfDays() override { mScale.reset(); }
    void send(int pane, int daysAgo, QEvent::Type type) {
        QEvent event(type);
        QCoreApplication::sendEvent(mView.mRows[pane][daysAgo], &event);
    }
    /// Left end of the flag, -1 without one.
    static int flagLeft(const QImage &scale) {
        for (int x = 0; x < scale.width(); ++x) {
            if (scale.pixelColor(x, 0) == color("ic_clr_realtime_cross_line_bg")) {
                return x;
            }
        }
        return -1;
    }
    int flagLeft() { return flagLeft(painted(*mScale)); }
    int centred(int column) const { return column - (widthOf("09:30") + 10) / 2; }

    DayRowsView mView;
};

TEST_F(TimeScaleOfDays, FlagStandsInTheDayUnderTheMouse) {
    send(0, 1, QEvent::Enter);
    EXPECT_EQ(flagLeft(), centred(50 + 400 + 100));
    send(0, 1, QEvent::Leave);
    send(0, 0, QEvent::Enter);
    EXPECT_EQ(flagLeft(), centred(50 + 800 + 100));
}

TEST_F(TimeScaleOfDays, OfFormulaPanesTheLastOneCountsAndTheMainPaneBeforeAll) {
    send(1, 1, QEvent::Enter);
    EXPECT_EQ(flagLeft(), centred(50 + 400 + 100));
    send(2, 0, QEvent::Enter);
    EXPECT_EQ(flagLeft(), centred(50 + 800 + 100));
    send(0, 2, QEvent::Enter);
    EXPECT_EQ(flagLeft(), centred(50 + 100));
}

TEST_F(TimeScaleOfDays, FlagStandsInTheOldestDayOnceTheMouseHasLeftAllGraphs) {
    send(0, 0, QEvent::Enter);
    EXPECT_EQ(flagLeft(), centred(50 + 800 + 100));
    send(0, 0, QEvent::Leave);
    EXPECT_EQ(flagLeft(), centred(50 + 100));
    mScale->setCursor(0, 100); // as a new point does
    EXPECT_EQ(flagLeft(), centred(50 + 100));
}

TEST_F(TimeScaleOfDays, LeavingAGraphMovesTheFlagOnTheScreen) {
    show();
    send(0, 0, QEvent::Enter);
    mScale->refreshFlag();
    QCoreApplication::processEvents();
    send(0, 0, QEvent::Leave);
    QCoreApplication::processEvents();
    EXPECT_EQ(flagLeft(mKeeper->grab().toImage().copy(mScale->geometry())), centred(50 + 100));
    tests::PaintWatch watch(mScale.get());
    mScale->refreshFlag();
    QCoreApplication::processEvents();
    EXPECT_TRUE(watch.mRegions.isEmpty()) << "it is there already";
}

TEST_F(TimeScaleOfDays, DatesAreThoseOfTheTimesInAnyZone) {
    mUi->mGetTradeDateFunc = [] { return 1709827200; }; // 2024-03-08 00:00 at UTC+8
    mUi->mCrossShown = false;
    mScale->updateScale();
    const QRect room(850, 0, widthOf("24-03-08") + 4, 16);
    EXPECT_EQ(painted(*mScale).copy(room), picture({}, {{851, "24-03-08"}}).copy(room));
    EXPECT_EQ(mUi->getDateTimeByIndex(0), QDateTime(QDate(2024, 3, 8), QTime(9, 30)));
}

} // namespace
