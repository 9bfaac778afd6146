#pragma once

#include "host/Export.h"
#include "host/records/CIndexTemplate.h"
#include "host/toolkit/CBaseWidget.h"

#include <QList>
#include <QString>
#include <QVector>

class QToolButton;

namespace TC {

/// The bar beneath the panes that offers single formulas and the user's templates of formulas. A click on one of them
/// travels up as eTemplateChosen, with 1 for a template and 0 for a formula as its second number, and the name as text.
/// Those that are in use stand out.
class TIMESHARE_EXPORT CIndexModelWidget : public GZ::CBaseWidget {
    Q_OBJECT
public:
    explicit CIndexModelWidget(QWidget *parent = nullptr);

    /// Size that the bar asks for; its height does not depend on what it offers.
    QSize getSize() const;
    /// Places the buttons for the present width; those that do not fit go into a menu at the end.
    void resizeLayout();

    /// A pane gave a formula up: it no longer stands out.
    void updateIndexTemplate(const QString &formula);
    /// Reads formulas and templates anew.
    void updateIndexTemplate();
    /// The formulas of the template chosen last.
    QVector<QString> getTemplateIndex() const;
    /// Asks for a name and keeps the formulas as a template of it. Nothing for no formulas.
    void showSaveModelDialog(const QVector<QString> &formulas);
    /// A formula is gone from the catalogue: it is no longer offered here.
    void delIndexTemplate(const QString &formula);

    void setIndexModelVisible(bool visible);
    void showIndexModelWidget(); ///< shows it, or hides it when shown
    void changeBtnStatus(bool enabled); ///< whether the buttons can be clicked

    /// Formulas and templates in use, in the order of the bar; and setting them.
    QVector<QString> getSelectIndex() const;
    QVector<QString> getSelectTempalte() const;
    void updateSelectIndex(const QVector<QString> &formulas);
    void updateSelectTemplate(const QVector<QString> &templates);

    void onUiResourceChanged() override;

public Q_SLOTS:
    /// The service has its templates.
    void slotIndexTemplateInited();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    struct Entry {
        QString mName;
        bool mIsTemplate = false;
        bool mInUse = false;
        QToolButton *mButton = nullptr;
    };
    void rebuild();
    void choose(const QString &name, bool isTemplate);
    void showMore();
    QVector<QString> inUse(bool templates) const;
    void setInUse(const QVector<QString> &names, bool templates);

    QVector<Entry> mEntries;
    QVector<CIndexTemplate> mTemplates;
    QString mChosenTemplate;
    QToolButton *mMore;
};

} // namespace TC
