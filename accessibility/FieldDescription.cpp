#include "FieldDescription.h"

#include "labelText.h"

#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtCore/QVariant>
#include <QtGui/QAccessible>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>

namespace {

//! Belongs to the field.
class FieldDescription : public QObject { // clazy:exclude=missing-qobject-macro
public:
    FieldDescription(QWidget* field, QLabel* label)
        : QObject(field)
        , m_field(field)
        , m_label(label)
        , m_own(field->accessibleDescription())
    {
        label->installEventFilter(this);
        label->parentWidget()->installEventFilter(this);
        follow();
    }

protected:
    bool eventFilter(QObject* watched, QEvent* e) override
    {
        switch (e->type()) {
        // A visible label asks for a new layout whenever its text changes.
        case QEvent::LayoutRequest:
        case QEvent::Show:
        case QEvent::Hide:
        case QEvent::ShowToParent:
        case QEvent::HideToParent:
            follow();
            break;
        default:
            break;
        }
        return QObject::eventFilter(watched, e);
    }

private:
    void follow()
    {
        if (!m_label)
            return;
        const QString message = m_label->isVisibleTo(m_label->window()) ? readableText(m_label) : QString();
        const QString description = message.isEmpty() ? m_own : message;
        if (description == m_field->accessibleDescription())
            return;
        m_field->setAccessibleDescription(description);
        // The cell of a format edit, which is described as the edit
        QWidget* focused = QApplication::focusWidget();
        if (focused && m_field->isAncestorOf(focused)) {
            QAccessibleEvent event(focused, QAccessible::DescriptionChanged);
            QAccessible::updateAccessibility(&event);
        }
    }

    QWidget* const m_field;
    const QPointer<QLabel> m_label;
    const QString m_own;
};

} // namespace

void describeFields(QWidget* form)
{
    const QList<QWidget*> widgets = form->findChildren<QWidget*>();
    for (QWidget* field : widgets) {
        // A look for a property of any kind would cost each widget a microsecond.
        if (!field->dynamicPropertyNames().contains("describedBy"))
            continue;
        const QString name = field->property("describedBy").toString();
        auto* label = name.isEmpty() ? nullptr : form->findChild<QLabel*>(name);
        if (label)
            new FieldDescription(field, label);
    }
}
