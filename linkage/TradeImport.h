#pragma once

#include "host/services/ServiceContext.h"

#include <QString>

class QWidget;

namespace GZ {
class CSmallNoNormalButton;
}

namespace TC {

/// Orders and deals from a file that the user chooses: the two buttons that start it, and the one read that is under way.
/// While it is, neither button can be pressed.
class TradeImport {
public:
    /// What is read; the numbers are those of the tables that show it.
    enum EKind : int { eNothing = -1, eOrders = 542, eDeals = 544 };
    /// Takes a line with fields between separators, on a thread of the reader. Its answer tells the reader nothing.
    using LineHandler = int (*)(const QString &line, const QString &separator, const ServiceContext &services);

    TradeImport();

    /// The buttons, without a parent until they are placed; whoever places them owns them.
    GZ::CSmallNoNormalButton *ordersButton() const { return mOrdersButton; }
    GZ::CSmallNoNormalButton *dealsButton() const { return mDealsButton; }

    /// Asks for a file by a dialog over `parent`, whose services are taken, and has it read. The parent, and this with it, may go meanwhile.
    void start(QWidget *parent, EKind kind, LineHandler handler);
    /// A read of the file reader has ended, this one or another's.
    void finish(int seq, bool success);

    /// The handlers of lines. They need nothing but the trade service and the clock, and always answer 2.
    static int takeOrder(const QString &line, const QString &separator,
                         const ServiceContext &services = ServiceContext::processWide());
    static int takeDeal(const QString &line, const QString &separator,
                        const ServiceContext &services = ServiceContext::processWide());

private:
    void setEnabled(bool enabled);

    GZ::CSmallNoNormalButton *mOrdersButton;
    GZ::CSmallNoNormalButton *mDealsButton;
    int mSeq = 0; ///< of the latest read
    EKind mKind = eNothing; ///< under way
};

} // namespace TC
