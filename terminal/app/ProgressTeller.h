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

    /// False when the user has stopped the work.
    bool operator()(int done, int total);

private:
    const QString mWhat;
    QElapsedTimer mSince;
    std::unique_ptr<QProgressDialog> mDialog;
    int mToldPercent = -1;
};

} // namespace terminal
