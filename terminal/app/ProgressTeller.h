#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>
#include <QString>

#include <memory>

namespace terminal {

/// Tells long work: in a dialog with a stop button, or on a terminal as a line that goes when the work is done. Work that
/// is done at once is not told.
class ProgressTeller {
public:
    ProgressTeller(const QString &what, bool inDialog);
    ~ProgressTeller();
    ProgressTeller(const ProgressTeller &) = delete;
    ProgressTeller &operator=(const ProgressTeller &) = delete;

    /// Tells how far work of another thread is. False when the user has stopped it.
    bool tell(int done, int total);
    /// The same for work of this thread, which lets the dialog have its turn.
    bool operator()(int done, int total);

private:
    const QString mWhat;
    QElapsedTimer mSince;
    std::unique_ptr<QProgressDialog> mDialog;
    int mToldPercent = -1;
};

} // namespace terminal
