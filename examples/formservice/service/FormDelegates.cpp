#include "FormDelegates.h"

#include <ZEFDictionaryList.h>
#include <ZEFFormatEdit.h>
#include <ZEFListValidator.h>
#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLayout>

namespace {

constexpr long productKeyLength = 16;

//! Answers with \a selection. Form, delegate and context are gone afterwards.
void closeWith(ZEFUIDialog* host, Selection selection)
{
    host->element()->setCloseSelection(selection);
    host->element()->close();
}

//! Opens \a form in front of \a parent, whose element becomes its parent element.
ZEFUIDialog* openChildForm(const QString& form, ZEFUIDialog* parent, const ZEFDictionaryList& dictionaries)
{
    auto* child = new ZEFUIDialog(form, parent->element()->locale(), parent, Qt::WindowFlags(), nullptr);
    ZEFUIElement* element = child->element();
    child->setWindowTitle(parent->windowTitle());
    child->setLayoutDirection(parent->layoutDirection());
    element->interpolate(dictionaries);
    element->setClientPID(parent->element()->clientPID());
    element->setDelegate(makeFormDelegate(form, child, dictionaries));
    fitToForm(child);
    element->show();
    return child;
}

} // namespace

QObject* makeFormDelegate(const QString& form, ZEFUIDialog* host, const ZEFDictionaryList& dictionaries)
{
    if (form == u"signin")
        return new SignInDelegate(host);
    if (form == u"activation")
        return new ActivationDelegate(host, dictionaries);
    if (form == u"confirmation")
        return new ConfirmationDelegate(host);
    return nullptr;
}

void fitToForm(ZEFUIDialog* host)
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    host->setFixedSize(false);
    host->setMinimumSize(0, 0);
    // Not adjustSize(), which cuts a window at two thirds of the screen.
    const QLayout* layout = host->layout();
    QSize size = layout->totalSizeHint();
    if (layout->hasHeightForWidth())
        size.setHeight(layout->totalHeightForWidth(size.width()));
    size = size.boundedTo(host->screen()->availableSize());
    host->resize(size);
    host->setMinimumSize(size);
}

SignInDelegate::SignInDelegate(ZEFUIDialog* host)
    : QObject(host)
    , m_host(host)
{
    host->element()->connectSlotsByName(this);
}

void SignInDelegate::okButton_clicked(ZEFPipeFacilityInvocationContext*, QVariant user_text,
                                      QVariant password_text)
{
    const bool userMissing = user_text.toString().trimmed().isEmpty();
    if (!userMissing && !password_text.toString().isEmpty()) {
        closeWith(m_host, Confirmed);
        return;
    }
    showError(true);
    m_host->element()->setChildFocus(userMissing ? QStringLiteral("user") : QStringLiteral("password"));
}

void SignInDelegate::on_user_textEdited(const QString&)
{
    showError(false);
}

void SignInDelegate::on_password_textEdited(const QString&)
{
    showError(false);
}

void SignInDelegate::showError(bool visible)
{
    const QString label = QStringLiteral("errorLabel");
    if (m_host->element()->childProperty(label, QStringLiteral("visible")).toBool() == visible)
        return;
    m_host->element()->showChild(label, visible);
    fitToForm(m_host);
}

void SignInDelegate::cancelButton_clicked(ZEFPipeFacilityInvocationContext*)
{
    closeWith(m_host, Cancelled);
}

ActivationDelegate::ActivationDelegate(ZEFUIDialog* host, const ZEFDictionaryList& dictionaries)
    : QObject(host)
    , m_host(host)
    , m_dictionaries(dictionaries)
{
    auto* productKey = host->findChild<ZEFFormatEdit*>(QStringLiteral("productKey"));
    // A client may set any property, names and formats included.
    if (!productKey || productKey->lineEditCount() == 0)
        return;
    // The format cannot give the first group both a least length and coercions.
    productKey->editor(0)->setMinLength(productKey->editor(0)->maxLength());
    productKey->setCellBottomHighlight(2, productKey->palette().color(QPalette::Highlight));

    const QString keys = dictionaries.search(QStringLiteral("product_keys"), nullptr);
    if (!keys.isEmpty()) {
        auto* validator = new ZEFListValidator(this, keys.split(u' ', Qt::SkipEmptyParts));
        validator->setMinimumLength(productKeyLength);
        connect(validator, &ZEFListValidator::validityMessageChanged, this,
                &ActivationDelegate::showKeyMessage);
        productKey->setValidator(validator);
    }
    host->element()->connectSlotsByName(this);
    on_productKey_textChanged(productKey->validate());
}

void ActivationDelegate::on_productKey_textChanged(QValidator::State validity)
{
    m_host->element()->enableChild(QStringLiteral("okButton"), validity == QValidator::Acceptable);
}

void ActivationDelegate::showKeyMessage(const QString& message)
{
    auto* label = m_host->findChild<QLabel*>(QStringLiteral("keyMessage"));
    if (!label)
        return;
    label->setText(message);
    m_host->element()->interpolateWidget(label, m_dictionaries);
    fitToForm(m_host);
}

void ActivationDelegate::okButton_clicked(ZEFPipeFacilityInvocationContext*)
{
    closeWith(m_host, Confirmed);
}

void ActivationDelegate::laterButton_clicked(ZEFPipeFacilityInvocationContext*)
{
    const ZEFUIDialog* question = openChildForm(QStringLiteral("confirmation"), m_host, m_dictionaries);
    connect(question, &ZEFUIDialog::respondClosed, this,
            [this](ZEFPipeFacilityInvocationContext*, int selection) {
                if (selection == Confirmed)
                    closeWith(m_host, Postponed);
            });
}

void ActivationDelegate::cancelButton_clicked(ZEFPipeFacilityInvocationContext*)
{
    closeWith(m_host, Cancelled);
}

ConfirmationDelegate::ConfirmationDelegate(ZEFUIDialog* host)
    : QObject(host)
    , m_host(host)
{
}

void ConfirmationDelegate::okButton_clicked(ZEFPipeFacilityInvocationContext*)
{
    closeWith(m_host, Confirmed);
}

void ConfirmationDelegate::cancelButton_clicked(ZEFPipeFacilityInvocationContext*)
{
    closeWith(m_host, Cancelled);
}
