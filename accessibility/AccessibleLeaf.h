#pragma once

#include <QtWidgets/QAccessibleWidget>

/*!
 * A widget without children, whatever widgets it consists of, and with one action of its own, which it offers
 * while it is enabled.
 *
 * The action follows when control is back in the event loop, as it may open a dialog: who asked for it would
 * have to wait for the end of that.
 */
class AccessibleLeaf : public QAccessibleWidget {
public:
    int childCount() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    //! The name is accessibleName, else content(), else what Qt finds around the widget.
    QString text(QAccessible::Text t) const override;
    QStringList actionNames() const override;
    void doAction(const QString& name) override;

protected:
    using Act = void (*)(QWidget* widget);

    //! \a action is one of the names of QAccessibleActionInterface; \a act does it.
    AccessibleLeaf(QWidget* widget, QAccessible::Role role, const QString& action = QString(),
                   Act act = nullptr);

    //! What the widget says itself.
    virtual QString content() const = 0;

private:
    const QString m_action;
    const Act m_act;
};
