#include "AccessibleEllipsisLabel.h"

#include "labelText.h"

AccessibleEllipsisLabel::AccessibleEllipsisLabel(ZEFEllipsisLabel* label)
    : AccessibleLeaf(label, QAccessible::StaticText)
{
}

ZEFEllipsisLabel* AccessibleEllipsisLabel::label() const
{
    return static_cast<ZEFEllipsisLabel*>(widget());
}

QString AccessibleEllipsisLabel::content() const
{
    const QString& captured = label()->m_fullText;
    return readableText(label(), captured.isEmpty() ? label()->text() : captured);
}

QList<std::pair<QAccessibleInterface*, QAccessible::Relation>>
AccessibleEllipsisLabel::relations(QAccessible::Relation match) const
{
    auto relations = AccessibleLeaf::relations(match);
    // as every label with a buddy
    if (match.testFlag(QAccessible::Labelled) && label()->buddy())
        relations.append({QAccessible::queryAccessibleInterface(label()->buddy()), QAccessible::Labelled});
    return relations;
}
