#include "FormSession.h"

#include "FormDelegates.h"
#include "RequestContext.h"

#include <protocol/FormAnswer.h>

#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>

#include <QtWidgets/QLayout>

namespace {

constexpr qsizetype longestQuote = 60;

//! The value of <widget>.<property>; invalid when the form has no such widget or property.
QVariant valueOf(const ZEFUIElement* element, const QString& name)
{
    // An object name may hold a dot, a property name cannot.
    const qsizetype dot = name.lastIndexOf(u'.');
    return element->childProperty(name.first(dot), name.mid(dot + 1));
}

} // namespace

FormSession* FormSession::open(const FormRequest& request, std::unique_ptr<RequestContext> context,
                               qint64 clientPID)
{
    RequestContext* pending = context.release();
    // Not ZEFUIDialog::create(): a dialog whose form is missing would stay alive, out of reach.
    auto host =
        std::make_unique<ZEFUIDialog>(request.form, request.locale, nullptr, Qt::WindowFlags(), pending);
    if (!host->element()->loaded()) {
        pending->answer(FormAnswer::error(u"unknown form: " + request.form.left(longestQuote)));
        return nullptr;
    }
    return new FormSession(host.release(), request, clientPID);
}

FormSession::FormSession(ZEFUIDialog* host, const FormRequest& request, qint64 clientPID)
    : QObject(host)
    , m_host(host)
    , m_request(request)
{
    connect(host, &ZEFUIDialog::respondClosed, this, &FormSession::respond);
    for (ZEFDictionary& dictionary : m_request.dictionaries)
        m_dictionaries.append(&dictionary);
    fill();
    ZEFUIElement* element = host->element();
    element->setClientPID(static_cast<long>(clientPID));
    element->setDelegate(makeFormDelegate(request.form, host, m_dictionaries));
    fitToForm(host);
    element->show();
}

void FormSession::fill()
{
    ZEFUIElement* element = m_host->element();
    const QWidget* form = m_host->layout()->itemAt(0)->widget();
    m_host->setWindowTitle(m_request.title.isEmpty() ? form->windowTitle() : m_request.title);

    // Values come after the placeholders were filled: they are data, and a %{key} in one stays as it is.
    element->interpolate(m_dictionaries);
    element->updateProperties(m_request.values);

    for (const QString& name : m_request.displayedBy.keys())
        element->showChild(name, m_request.displayedBy.getString(name), &m_dictionaries);
    for (const QString& name : m_request.shownIf.keys())
        element->showChildIf(name, m_request.shownIf.getString(name), &m_dictionaries);
    for (const QString& name : m_request.enabledIf.keys())
        element->enableChildIf(name, m_request.enabledIf.getString(name), &m_dictionaries);
    for (const QString& name : std::as_const(m_request.shown))
        element->showChild(name);
    for (const QString& name : std::as_const(m_request.hidden))
        element->hideChild(name);
    for (const QString& name : std::as_const(m_request.enabled))
        element->enableChild(name, true);
    for (const QString& name : std::as_const(m_request.disabled))
        element->enableChild(name, false);
    if (!m_request.focus.isEmpty())
        element->setChildFocus(m_request.focus);
}

void FormSession::respond(ZEFPipeFacilityInvocationContext* context, int selection) const
{
    QVariantMap values;
    for (const QString& name : m_request.returned)
        values.insert(name, valueOf(m_host->element(), name));
    static_cast<RequestContext*>(context)->answer(FormAnswer::closed(selection, values));
}

void FormSession::close()
{
    m_host->element()->close();
}
