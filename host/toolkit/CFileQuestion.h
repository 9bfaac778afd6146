#pragma once

#include "host/Export.h"

#include <QPointer>
#include <QString>
#include <QStringList>

class QFileDialog;
class QWidget;

namespace GZ {

/// Asks for files. User-interface thread.
///
/// To take a file dialog down waits for the thread that reads its folder, a tenth of a second and more while that is at work:
/// it is hidden at once, and taken down a while later, when the folder has been read.
class TIMESHARE_EXPORT CFileQuestion {
public:
    static constexpr int kRest = 2000; ///< milliseconds before a hidden dialog is taken down

    /// `directory` is where it begins, the one that was shown last when it is empty.
    CFileQuestion(QWidget *parent, const QString &caption, const QString &directory);
    ~CFileQuestion();
    CFileQuestion(const CFileQuestion &) = delete;
    CFileQuestion &operator=(const CFileQuestion &) = delete;

    /// To be set up before it asks.
    QFileDialog *operator->() const;
    QFileDialog &operator*() const;
    /// The chosen paths; none when the user does not want to. The parent may go while it asks, and takes the dialog along.
    QStringList ask();

private:
    QPointer<QFileDialog> mDialog;
};

} // namespace GZ
