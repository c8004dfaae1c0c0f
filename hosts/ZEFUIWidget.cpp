#include <ZEFUIWidget.h>

#include <ZEFUIElement.h>

#include <element/ZEFUIElementPrivate.h>

#include <QtGui/QKeyEvent>

ZEFUIWidget::ZEFUIWidget(const QString& form, const QString& locale, QWidget* parent, Qt::WindowFlags flags,
                         ZEFPipeFacilityInvocationContext* context)
    : QWidget(parent, flags)
    , m_element(new ZEFUIElement(this, ZEFUIElement::elementFromQObject(parent), form, locale, context, 0))
{
    ZEFUIElementPrivate::get(m_element)->answer = [this] { respond(); };
}

ZEFUIWidget::ZEFUIWidget(QWidget* parent, Qt::WindowFlags flags, ZEFPipeFacilityInvocationContext* context)
    : QWidget(parent, flags)
    , m_element(new ZEFUIElement(this, ZEFUIElement::elementFromQObject(parent), context, 0))
{
    ZEFUIElementPrivate::get(m_element)->answer = [this] { respond(); };
}

ZEFUIWidget::~ZEFUIWidget()
{
    delete m_element;
    ZEFUIElementPrivate::spareHostsAround(this);
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
    if (!m_element)
        return;
    ++ZEFUIElementPrivate::get(m_element)->closeEvents;
    if (m_element->isClosing())
        return;
    const QPointer<ZEFUIWidget> self(this);
    {
        const ZEFUIElementPrivate::DeletionGuard guard(m_element);
        m_element->setClosing(true);
    }
    // the element's next tick destroys this host
    if (self)
        respond();
}

void ZEFUIWidget::keyPressEvent(QKeyEvent* e)
{
    if (!e)
        return;
    const bool escape = e->key() == Qt::Key_Escape;
    const QPointer<ZEFUIWidget> self(this);
    {
        const ZEFUIElementPrivate::DeletionGuard guard(m_element);
        QWidget::keyPressEvent(e);
        if (!escape || !self || !m_element)
            return;
        // QWidget has ignored it. Qt would offer it to this host's parent next, although the host is gone,
        // when the widget that got it first lives on, as cells of format edits do.
        e->accept();
        // The closing flag is not asked: an element that was marked closing without an answer still answers.
        m_element->setClosing(true);
    }
    if (self)
        respond();
    if (self && m_element)
        m_element->destroy();
}

void ZEFUIWidget::respond()
{
    if (m_responded || !m_element)
        return;
    m_responded = true;
    Q_EMIT respondClosed(m_element->context(), m_element->closeSelection());
}

#include "moc_ZEFUIWidget.cpp"
