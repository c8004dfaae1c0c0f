#include <ZEFUIWidget.h>

#include <ZEFUIElement.h>

#include <element/HostLife.h>
#include <element/widgetLookup.h>

#include <QtGui/QKeyEvent>

#include <algorithm>

ZEFUIWidget::ZEFUIWidget(const QString& form, const QString& locale, QWidget* parent, Qt::WindowFlags flags,
                         ZEFPipeFacilityInvocationContext* context)
    : QWidget(parent, flags)
    , m_element(new ZEFUIElement(this, ZEFUIElement::elementFromQObject(parent), form, locale, context, 0))
{
}

ZEFUIWidget::ZEFUIWidget(QWidget* parent, Qt::WindowFlags flags, ZEFPipeFacilityInvocationContext* context)
    : QWidget(parent, flags)
    , m_element(new ZEFUIElement(this, ZEFUIElement::elementFromQObject(parent), context, 0))
{
}

ZEFUIWidget::~ZEFUIWidget()
{
    // As QDialog does: Qt cannot move the focus out of a half deleted form whose slots change it.
    if (isVisible()) {
        const HostLife::Work work(this, m_element);
        hide();
    }
    delete m_element;
}

ZEFUIWidget* ZEFUIWidget::create(const QString& form, const QString& locale, QWidget* parent,
                                 Qt::WindowFlags flags)
{
    auto* host = new ZEFUIWidget(form, locale, parent, flags, nullptr);
    // A host without its form stays alive on purpose: the user sees an empty window and closes it.
    return host->element()->loaded() ? host : nullptr;
}

ZEFUIElement* ZEFUIWidget::element() const
{
    return m_element;
}

void ZEFUIWidget::clicked(bool)
{
    if (m_element)
        m_element->dispatch(sender(), "clicked");
}

void ZEFUIWidget::rootClosed()
{
    close();
}

void ZEFUIWidget::closeEvent(QCloseEvent* e)
{
    QWidget::closeEvent(e);
    // the element's next tick destroys this host
    if (m_element && !m_element->isClosing())
        HostLife::of(m_element).closeAndAnswer(this);
}

void ZEFUIWidget::keyPressEvent(QKeyEvent* e)
{
    if (!e)
        return;
    if (e->key() != Qt::Key_Escape) {
        QWidget::keyPressEvent(e);
        return;
    }
    const QPointer<ZEFUIWidget> self(this);
    const QList<QPointer<QWidget>> widgets = widgetsBelow(this);
    QWidget::keyPressEvent(e);
    // The closing flag is not asked: an element that was marked closing without an answer still answers.
    if (self && m_element && HostLife::of(m_element).closeAndAnswer(this))
        HostLife::of(m_element).end();
    // Qt would offer the ignored key to the parent of this host next, unless the widget that got it first is
    // gone. A cell of a format edit may outlive its host.
    if (!self
        && std::any_of(widgets.cbegin(), widgets.cend(), [](const auto& widget) { return bool(widget); }))
        e->accept();
}

#include "moc_ZEFUIWidget.cpp"
