#include "AccessibleHyperlinkLabel.h"

#include "labelText.h"

#include <QtCore/QPointer>

namespace {

//! The link of a label with an index. It is invalid while the label has no such link.
class AccessibleLink : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    AccessibleLink(ZEFHyperlinkLabel* label, int index)
        : m_label(label)
        , m_index(index)
    {
    }

    int index() const { return m_index; }

    bool isValid() const override { return m_label && m_index < linksOf(m_label).size(); }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(m_label); }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessible::Role role() const override { return QAccessible::Link; }
    void setText(QAccessible::Text, const QString&) override { }

    // Where in the label it stands is known only to the label.
    QRect rect() const override { return parent() ? parent()->rect() : QRect(); }

    QString text(QAccessible::Text t) const override
    {
        return t == QAccessible::Name && isValid() ? linksOf(m_label).at(m_index).text : QString();
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        if (parent())
            state = parent()->state();
        state.linked = true;
        state.invalid = !isValid();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    QStringList actionNames() const override
    {
        return m_label && m_label->isEnabled() ? QStringList{pressAction()} : QStringList();
    }

    void doAction(const QString& name) override
    {
        if (name != pressAction() || !isValid())
            return;
        // later, as in AccessibleLeaf
        const auto follow = [label = m_label.data(), target = linksOf(m_label).at(m_index).target] {
            if (label->isEnabled())
                label->onLinkClick(target);
        };
        QMetaObject::invokeMethod(m_label, follow, Qt::QueuedConnection);
    }

    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    const QPointer<ZEFHyperlinkLabel> m_label;
    const int m_index;
};

} // namespace

AccessibleHyperlinkLabel::AccessibleHyperlinkLabel(ZEFHyperlinkLabel* label)
    : QAccessibleWidget(label, QAccessible::StaticText)
{
}

AccessibleHyperlinkLabel::~AccessibleHyperlinkLabel()
{
    for (const QAccessible::Id link : std::as_const(m_links))
        QAccessible::deleteAccessibleInterface(link);
}

ZEFHyperlinkLabel* AccessibleHyperlinkLabel::label() const
{
    return static_cast<ZEFHyperlinkLabel*>(widget());
}

int AccessibleHyperlinkLabel::childCount() const
{
    return static_cast<int>(linksOf(label()).size());
}

int AccessibleHyperlinkLabel::indexOfChild(const QAccessibleInterface* child) const
{
    const auto* link = dynamic_cast<const AccessibleLink*>(child);
    return link && link->isValid() && link->parent() == this ? link->index() : -1;
}

QAccessibleInterface* AccessibleHyperlinkLabel::child(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    while (m_links.size() <= index) {
        auto* link = new AccessibleLink(label(), static_cast<int>(m_links.size()));
        m_links.append(QAccessible::registerAccessibleInterface(link));
    }
    return QAccessible::accessibleInterface(m_links.at(index));
}

QAccessibleInterface* AccessibleHyperlinkLabel::childAt(int x, int y) const
{
    return childCount() == 1 && rect().contains(x, y) ? child(0) : nullptr;
}

QString AccessibleHyperlinkLabel::text(QAccessible::Text t) const
{
    return t == QAccessible::Name && label()->accessibleName().isEmpty() ? readableText(label())
                                                                         : QAccessibleWidget::text(t);
}

QList<std::pair<QAccessibleInterface*, QAccessible::Relation>>
AccessibleHyperlinkLabel::relations(QAccessible::Relation match) const
{
    auto relations = QAccessibleWidget::relations(match);
    // as every label with a buddy
    if (match.testFlag(QAccessible::Labelled) && label()->buddy())
        relations.append({QAccessible::queryAccessibleInterface(label()->buddy()), QAccessible::Labelled});
    return relations;
}
