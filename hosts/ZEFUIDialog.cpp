#include <ZEFUIDialog.h>

#include <ZEFCommandLinkButton.h>
#include <ZEFUIElement.h>

#include <element/HostLife.h>
#include <element/debugOutput.h>

#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QLayout>

#include <algorithm>

namespace {

//! The command link that Enter and Return press, or null.
ZEFCommandLinkButton* defaultCommandLink(const QWidget* dialog)
{
    const auto links = dialog->findChildren<ZEFCommandLinkButton*>();
    const auto found = std::find_if(links.begin(), links.end(), [](const ZEFCommandLinkButton* link) {
        return link->isDefault() && link->isVisible();
    });
    return found == links.end() ? nullptr : *found;
}

} // namespace

ZEFUIDialog::ZEFUIDialog(const QString& form, const QString& locale, QWidget* parent, Qt::WindowFlags flags,
                         ZEFPipeFacilityInvocationContext* context)
    : QDialog(parent, flags)
{
    writeDebug(u"formpath in ZEFUIDialog is " + form);
    m_element = new ZEFUIElement(this, ZEFUIElement::elementFromQObject(parent), form, locale, context, 0);
    setWindowModality(parent ? Qt::WindowModal : Qt::NonModal);
}

ZEFUIDialog::ZEFUIDialog(QDialog* parent, Qt::WindowFlags flags, ZEFPipeFacilityInvocationContext* context)
    : QDialog(parent, flags)
    , m_element(new ZEFUIElement(this, ZEFUIElement::elementFromQObject(parent), context, 0))
{
}

ZEFUIDialog::~ZEFUIDialog()
{
    delete m_element;
}

ZEFUIDialog* ZEFUIDialog::create(const QString& form, const QString& locale, QWidget* parent,
                                 Qt::WindowFlags flags)
{
    writeDebug(u"ZEFUIDialog::create form: " + form);
    auto* host = new ZEFUIDialog(form, locale, parent, flags, nullptr);
    // A host without its form stays alive on purpose: the user sees an empty dialog and closes it.
    if (!host->element()->loaded())
        return nullptr;
    host->setFixedSize(true);
    return host;
}

ZEFUIElement* ZEFUIDialog::element() const
{
    return m_element;
}

void ZEFUIDialog::setFixedSize(bool fixed)
{
    // Not SetDefaultConstraint: a dialog that is not fixed may shrink below its form's minimum size.
    QLayout* formLayout = layout();
    if (!formLayout)
        return;
    const bool wasFixed = formLayout->sizeConstraint() == QLayout::SetFixedSize;
    formLayout->setSizeConstraint(fixed ? QLayout::SetFixedSize : QLayout::SetNoConstraint);
    if (wasFixed && !fixed) {
        // the layout leaves behind what it had fixed
        setMinimumSize(0, 0);
        setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    }
}

void ZEFUIDialog::enableCloseOnEscape(bool enable)
{
    m_closeOnEscape = enable;
}

void ZEFUIDialog::clicked(bool)
{
    if (m_element)
        m_element->dispatch(sender(), "clicked");
}

void ZEFUIDialog::rootClosed()
{
    close();
}

void ZEFUIDialog::done(int result)
{
    const HostLife::Work work(this, m_element);
    QDialog::done(result);
}

void ZEFUIDialog::closeEvent(QCloseEvent* e)
{
    const QPointer<ZEFUIDialog> self(this);
    const HostLife::Work work(this, m_element);
    QDialog::closeEvent(e);
    if (!self || !m_element || m_element->isClosing())
        return;
    e->accept();
    closeAndAnswer();
}

void ZEFUIDialog::keyPressEvent(QKeyEvent* e)
{
    if (!e)
        return;
    const int key = e->key();
    if (key == Qt::Key_Enter || key == Qt::Key_Return) {
        if (ZEFCommandLinkButton* link = defaultCommandLink(this)) {
            // A disabled default link swallows the key; an enabled one may delete this dialog.
            if (link->isEnabled())
                link->keyPressByDefault(e);
            return;
        }
    }
    const QPointer<ZEFUIDialog> self(this);
    Q_EMIT dialog_key_pressed(key);
    if (!self)
        return;
    QDialog::keyPressEvent(e);
    // The closing flag is not asked: an element that was marked closing without an answer still answers.
    if (key == Qt::Key_Escape && self && m_closeOnEscape && m_element)
        closeAndAnswer();
}

void ZEFUIDialog::mouseReleaseEvent(QMouseEvent*)
{
    Q_EMIT dialog_clicked();
}

void ZEFUIDialog::showEvent(QShowEvent* e)
{
    const QPointer<ZEFUIDialog> self(this);
    const HostLife::Work work(this, m_element);
    Q_EMIT dialog_show();
    if (self)
        QDialog::showEvent(e);
}

void ZEFUIDialog::hideEvent(QHideEvent* e)
{
    const QPointer<ZEFUIDialog> self(this);
    const HostLife::Work work(this, m_element);
    Q_EMIT dialog_hide();
    if (self)
        QDialog::hideEvent(e);
}

void ZEFUIDialog::closeAndAnswer()
{
    if (HostLife::of(m_element).closeAndAnswer(this))
        QTimer::singleShot(1, m_element, SLOT(destroy()));
}

#include "moc_ZEFUIDialog.cpp"
