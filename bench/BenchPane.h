#pragma once

#include "host/toolkit/CEventWidgetT.h"
#include "tests/fakehost/FakeHost.h"

#include <QWidget>
#include <boost/shared_ptr.hpp>

#include <vector>

namespace TC {
class CGraphAxisWidget;
class CRealtimeData;
class CRealtimeGraphWidget;
class CRealtimeUiParam;
} // namespace TC

namespace bench {

/// A formula pane under a BenchChart: one graph of one formula between two strips.
class BenchPane : public GZ::CEventWidgetT<QWidget> {
public:
    /// `name` is a formula that only this pane asks for, `date` the day that it shows; its lines have these colours.
    BenchPane(fakehost::FakeHost &host, const boost::shared_ptr<TC::CRealtimeUiParam> &param,
              const QString &name, int date, std::vector<qint32> colors, QWidget *parent);
    ~BenchPane() override;

    void clear();
    /// Hands over the history: the points of each line, at these times.
    void deliverHistory(const std::vector<const std::vector<double> *> &lines,
                        const std::vector<qint64> &times);
    void drawHidden();
    /// Drops every cache: the pictures are drawn anew and everything is repainted.
    void redrawAll();

    bool handleEvent(int event, int first, int second, QString text, void *data) override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    boost::shared_ptr<TC::CRealtimeUiParam> mParam;
    std::vector<qint32> mColors;
    boost::shared_ptr<TC::CRealtimeData> mData;
    TC::CRealtimeGraphWidget *mGraph = nullptr;
    TC::CGraphAxisWidget *mLeft = nullptr;
    TC::CGraphAxisWidget *mRight = nullptr;
    fakehost::LiveRequest mRequest;
};

} // namespace bench
