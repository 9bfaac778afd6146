#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <QtTest>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace tests {

/// Does something with the message box that comes up next; tells whether one came.
inline std::shared_ptr<bool> whenAsked(const std::function<void(QMessageBox &)> &act) {
    const auto came = std::make_shared<bool>(false);
    QTimer::singleShot(0, qApp, [act, came] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        *came = true;
        act(*box);
    });
    return came;
}

/// Presses a button of the message box that comes up next.
inline std::shared_ptr<bool> answerWith(QMessageBox::StandardButton button) {
    return whenAsked([button](QMessageBox &box) { QTest::mouseClick(box.button(button), Qt::LeftButton); });
}

} // namespace tests
