#include "FormSession.h"

#include "FormDelegates.h"
#include "RequestContext.h"

#include <protocol/FormAnswer.h>

#include <ZEFFormatEdit.h>
#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>

#include <QtCore/QLocale>
#include <QtWidgets/QLayout>

namespace {

constexpr qsizetype longestQuote = 60;

//! The format edit whose text is meant; it has no property for it.
ZEFFormatEdit* formatEditMeant(const QWidget* host, const QString& widget, const QString& property)
{
    return property == u"text" ? host->findChild<ZEFFormatEdit*>(widget) : nullptr;
}

//! The value of <widget>.<property>; invalid when the form has no such widget or property.
QVariant valueOf(const ZEFUIDialog* host, const QString& name)
{
    // An object name may hold a dot, a property name cannot.
    const qsizetype dot = name.lastIndexOf(u'.');
    const QString widget = name.first(dot);
    const QString property = name.mid(dot + 1);
    if (const ZEFFormatEdit* edit = formatEditMeant(host, widget, property))
        return edit->text();
    return host->element()->childProperty(widget, property);
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
    , m_ownTexts{
          {QStringLiteral("list_empty_message"),
           QStringLiteral("Enter the four groups of your product key.")},
          {QStringLiteral("list_incomplete_message"), QStringLiteral("The key is not complete yet.")},
          {QStringLiteral("list_valid_message"), QStringLiteral("This key fits your order.")},
          {QStringLiteral("list_invalid_message"), QStringLiteral("This key does not belong to your order.")},
      }
{
    connect(host, &ZEFUIDialog::respondClosed, this, &FormSession::respond);
    for (ZEFDictionary& dictionary : m_request.dictionaries)
        m_dictionaries.append(&dictionary);
    m_dictionaries.append(&m_ownTexts);
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
    m_host->setLayoutDirection(QLocale(m_request.locale).textDirection());
    m_host->setWindowTitle(m_request.title.isEmpty() ? form->windowTitle() : m_request.title);

    // Values come after the placeholders were filled: they are data, and a %{key} in one stays as it is.
    element->interpolate(m_dictionaries);
    setValues();

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

void FormSession::setValues()
{
    m_host->element()->updateProperties(m_request.values);
    for (const QString& key : m_request.values.keys()) {
        const QStringList pieces = key.split(u'_');
        if (ZEFFormatEdit* edit = formatEditMeant(m_host, pieces.at(0), pieces.at(1)))
            edit->setText(m_request.values.getString(key));
    }
}

void FormSession::respond(ZEFPipeFacilityInvocationContext* context, int selection) const
{
    QVariantMap values;
    for (const QString& name : m_request.returned)
        values.insert(name, valueOf(m_host, name));
    static_cast<RequestContext*>(context)->answer(FormAnswer::closed(selection, values));
}

void FormSession::close()
{
    m_host->element()->close();
}
