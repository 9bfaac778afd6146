#pragma once

#include <QAccessibleWidget>

/// \file
/// What the parts of a view are to assistive technology, day graphs aside. Texts that a host has set by
/// QWidget::setAccessibleName and setAccessibleDescription stand.

namespace TC {

class CGraphAxisWidget;
class CRealtimeTimeWidget;
class CIndexTitleWidget;
class MainView;
class PaneView;

/// A widget with a name, and a value that describes it as well, since that is what a screen reader hears of.
class AccessiblePart : public QAccessibleWidget {
public:
    using QAccessibleWidget::QAccessibleWidget;
    QString text(QAccessible::Text kind) const override;

protected:
    virtual QString name() const = 0;
    virtual QString value() const { return {}; }
};

/// A whole view: what the cross line stands at, as a sentence and as the number of the main chart.
class AccessibleView : public AccessiblePart, public QAccessibleValueInterface {
public:
    explicit AccessibleView(MainView *view);

    void *interface_cast(QAccessible::InterfaceType type) override;
    QVariant currentValue() const override; ///< of the main chart at the cross line; invalid without one
    void setCurrentValue(const QVariant & /*value*/) override {}
    QVariant maximumValue() const override { return {}; }
    QVariant minimumValue() const override { return {}; }
    QVariant minimumStepSize() const override { return {}; }

protected:
    QString name() const override;
    QString value() const override;

private:
    const MainView *view() const; ///< null while it goes
};

/// A pane: its title tells the values.
class AccessiblePane : public AccessiblePart {
public:
    explicit AccessiblePane(PaneView *pane);

protected:
    QString name() const override;
    QString value() const override;
};

/// A title strip, which is told by its text; its tools are children.
class AccessibleTitle : public AccessiblePart {
public:
    explicit AccessibleTitle(CIndexTitleWidget *title);

protected:
    QString name() const override;
};

/// An axis strip, with its labels from top to bottom, and its button where it has one.
class AccessibleStrip : public AccessiblePart {
public:
    explicit AccessibleStrip(CGraphAxisWidget *strip);

    QStringList actionNames() const override;
    void doAction(const QString &action) override;

protected:
    QString name() const override;
    QString value() const override;
};

/// The time scale, with the time under the cross line.
class AccessibleTimeScale : public AccessiblePart {
public:
    explicit AccessibleTimeScale(CRealtimeTimeWidget *scale);

protected:
    QString name() const override;
    QString value() const override;
};

/// What is there for the eye alone: cross lines and frames.
class AccessibleDecoration : public QAccessibleWidget {
public:
    explicit AccessibleDecoration(QWidget *widget);
    QAccessible::State state() const override;
};

} // namespace TC
