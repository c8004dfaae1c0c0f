#pragma once

#include <ZEFHyperlinkLabel.h>

#include <QtWidgets/QAccessibleWidget>

//! A text called as its text, with its links as children.
class AccessibleHyperlinkLabel : public QAccessibleWidget {
public:
    explicit AccessibleHyperlinkLabel(ZEFHyperlinkLabel* label);

    int childCount() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QString text(QAccessible::Text t) const override;
    QList<std::pair<QAccessibleInterface*, QAccessible::Relation>>
    relations(QAccessible::Relation match) const override;

protected:
    ~AccessibleHyperlinkLabel() override;

private:
    ZEFHyperlinkLabel* label() const;

    //! Links that somebody asked for, by their index.
    mutable QList<QAccessible::Id> m_links;
};
