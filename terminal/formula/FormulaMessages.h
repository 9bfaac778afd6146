#pragma once

#include "terminal/formula/FormulaError.h"

#include <QDateTime>
#include <QList>
#include <QObject>

#include <mutex>

namespace terminal {

/// An error as the user is told it.
struct FormulaMessage {
    QDateTime time; ///< of the market, when it was listed last
    FormulaError error;
    int count = 1; ///< how often it came
};

/// The errors of formulas and models, the newest first. An error that is there already counts up and comes to the
/// front; beyond kMost the oldest go. Texts are cut to a length that can be read. On the user-interface thread, but for the sink.
class FormulaMessages : public QObject {
    Q_OBJECT
public:
    static constexpr int kMost = 200;

    explicit FormulaMessages(QObject *parent = nullptr) : QObject(parent) {}

    /// Takes errors on any thread, as long as this object lives; they are listed on the user-interface thread.
    FormulaErrorSink sink();
    const QList<FormulaMessage> &messages() const { return mMessages; }
    void clear();

Q_SIGNALS:
    /// The list is another; `isNew` when an error came that was not in it.
    void changed(bool isNew);

private:
    void post(const FormulaError &error);
    Q_INVOKABLE void drain();

    QList<FormulaMessage> mMessages;
    std::mutex mLock; ///< guards what follows
    QList<FormulaMessage> mWaiting; ///< the newest first, bounded as well
};

} // namespace terminal
