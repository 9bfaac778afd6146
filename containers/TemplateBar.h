#pragma once

#include <QString>
#include <QVector>

class QWidget;

namespace TC {

class CIndexModelWidget;
class CRealtimeWidget;

/// The bar of formula templates, which only some views have. Without one nothing happens, and all lists are empty.
class TemplateBar {
public:
    TemplateBar() = default;
    TemplateBar(const TemplateBar &) = delete;
    TemplateBar &operator=(const TemplateBar &) = delete;

    /// Makes the bar, hidden, as a child of `view`.
    void create(QWidget *view);
    CIndexModelWidget *widget() const { return mBar; }

    void setVisible(bool visible);
    void toggle();
    void enableButtons(bool enabled);
    void placeButtons();
    /// Reads formulas and templates anew.
    void refresh();
    /// The service has its templates.
    void templatesCame();

    QVector<QString> selectedFormulas() const;
    QVector<QString> selectedTemplates() const;
    void selectFormulas(const QVector<QString> &names);
    void selectTemplates(const QVector<QString> &names);
    /// The formulas of the template chosen last.
    QVector<QString> templateFormulas() const;
    /// Asks for a name and keeps the formulas as a template of it.
    void save(const QVector<QString> &formulas);

    /// A pane has given a formula up.
    void givenUp(const QString &formula);
    /// A pane is about to give up its formula for another.
    void replaced(const CRealtimeWidget *pane, const QString &formula);
    /// A formula is gone for good.
    void deleted(const QString &formula);

private:
    CIndexModelWidget *mBar = nullptr;
};

} // namespace TC
