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

QString AccessibleEllipsisLabel::text(QAccessible::Text t) const
{
    const QString given = AccessibleLeaf::text(t);
    if (t != QAccessible::Name || !given.isEmpty())
        return given;
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
