#pragma once

#include "host/records/Quotes.h"

#include <QAbstractScrollArea>
#include <QStringList>

#include <memory>
#include <vector>

namespace TC {

/// The rows of a list of transactions under their headings. Only rows that can be seen cost anything.
class TransactionList : public QAbstractScrollArea {
    Q_OBJECT
public:
    using Record = std::shared_ptr<quoter::QuoterBase>;

    explicit TransactionList(QWidget *parent = nullptr);

    /// Decimals of prices, and the price that they are coloured against; the unset value, and any other than a positive
    /// one, colours none.
    void setPrices(int decimals, double reference);
    /// Replaces the rows; none is null. A list that showed its end goes on showing it.
    void setRows(std::vector<Record> rows);
    const std::vector<Record> &rows() const { return mRows; }
    /// What a row reads, from left to right.
    QStringList textsOf(const quoter::QuoterBase &record) const;
    /// Takes the colours and the font of the theme.
    void applyTheme();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    QString priceColorKey(double price) const;
    void drawHeadings(QPainter &painter) const;
    void drawRow(QPainter &painter, int row, int y) const;
    void fitScrollBar();

    std::vector<Record> mRows;
    int mDecimals = 2;
    double mReference = 0.0;
};

} // namespace TC
