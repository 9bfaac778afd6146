#pragma once

#include <QHeaderView>

namespace GZ {

/// The headings of CStandardTable, in the colours of the theme, with an arrow at the one that the rows are sorted by.
class TableHeader : public QHeaderView {
public:
    explicit TableHeader(QWidget *parent = nullptr) : QHeaderView(Qt::Horizontal, parent) {}

protected:
    void paintSection(QPainter *painter, const QRect &rect, int column) const override;
    /// Where there are no headings.
    void paintEvent(QPaintEvent *event) override;
};

} // namespace GZ
