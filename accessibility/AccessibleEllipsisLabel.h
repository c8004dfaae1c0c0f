#pragma once

#include "AccessibleLeaf.h"

#include <ZEFEllipsisLabel.h>

//! A text called as its full text, however much of it the label shows.
class AccessibleEllipsisLabel : public AccessibleLeaf {
public:
    explicit AccessibleEllipsisLabel(ZEFEllipsisLabel* label);

    QList<std::pair<QAccessibleInterface*, QAccessible::Relation>>
    relations(QAccessible::Relation match) const override;

protected:
    QString content() const override;

private:
    ZEFEllipsisLabel* label() const;
};
