#pragma once

#include <QJsonObject>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>

class QTableWidget;

namespace GZ {

/// How the columns of a table lie: their order, their widths, and which are hidden. It knows what of that the user has
/// chosen, tells it as a text's values, and can take it back. Columns are told apart by their names there, so that a layout
/// stays when the headings are in another language.
class ColumnLayout : public QObject {
    Q_OBJECT
public:
    static constexpr int kNameRole =
        Qt::UserRole + 1; ///< of a heading's item: the column's name in every language

    /// The table, which it watches for the mouse, must have its headings.
    explicit ColumnLayout(QTableWidget &table);

    QString heading(int column) const;
    /// What is kept under kNameRole with the heading; the heading itself where nothing is.
    QString name(int column) const;
    int columnOf(const QString &name) const; ///< -1 when there is none
    /// Columns that are to be seen, as they lie.
    QList<int> shown() const;

    /// The table has new columns: nothing is the user's, and the widths are those of now.
    void reset();
    /// The width until the user chooses another.
    void setDefaultWidth(int column, int width);
    /// Whether the user has chosen the column's width.
    bool isSized(int column) const { return mSized.contains(column); }
    void forgetSized() { mSized.clear(); }

    /// What the user has changed; empty when it is nothing.
    QJsonObject save() const;
    /// Takes it over; what is no layout of these columns is passed over, and one column stays to be seen.
    void load(const QJsonObject &layout);
    /// Columns as they were before the user's changes.
    void restore();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void onResized(int column);

    QTableWidget &mTable;
    QList<int> mDefaultWidths; ///< by column
    QSet<int> mSized; ///< by the user
    bool mPressed = false; ///< the mouse, on the headings
};

} // namespace GZ
