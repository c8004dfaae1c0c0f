#include "FormRoot.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QDialog>
#include <QtWidgets/QPushButton>

void FormRoot::adopt(QWidget* root)
{
    release();
    m_root = root;
    root->installEventFilter(this);
    if (auto* dialog = qobject_cast<QDialog*>(root))
        connect(dialog, &QDialog::finished, this, &FormRoot::closeHost);
    if (root->isWindow())
        root->setParent(root->parentWidget(), Qt::Widget);
}

void FormRoot::release()
{
    if (m_root) {
        m_root->removeEventFilter(this);
        m_root->disconnect(this);
    }
    m_root = nullptr;
    m_mainDefault = nullptr;
}

bool FormRoot::eventFilter(QObject* watched, QEvent* event)
{
    const auto* dialog = qobject_cast<QDialog*>(watched);
    switch (event->type()) {
    case QEvent::Close:
        event->ignore();
        closeHost();
        return true;
    case QEvent::Show:
        if (dialog)
            findMainDefault();
        return false;
    case QEvent::KeyPress:
        return dialog && takeKey(static_cast<QKeyEvent*>(event));
    default:
        return false;
    }
}

/*!
 * Whether the dialog is to know nothing of the key, which Qt then offers to the host. The host decides what
 * Escape does; and if it is a dialog itself, what every key does, as with any other form.
 */
bool FormRoot::takeKey(QKeyEvent* key)
{
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)
        restoreMainDefault();
    if (!key->matches(QKeySequence::Cancel) && !qobject_cast<QDialog*>(m_root->parentWidget()))
        return false;
    key->ignore();
    return true;
}

//! As a dialog chooses it that is a window: the default button, or else the first that may be.
void FormRoot::findMainDefault()
{
    if (m_mainDefault)
        return;
    for (QPushButton* button : m_root->findChildren<QPushButton*>()) {
        if (button->isDefault()) {
            m_mainDefault = button;
            return;
        }
    }
    for (QWidget* next = m_root->nextInFocusChain(); next != m_root; next = next->nextInFocusChain()) {
        auto* button = qobject_cast<QPushButton*>(next);
        if (button && button->autoDefault() && button->focusPolicy() != Qt::NoFocus) {
            m_mainDefault = button;
            return;
        }
    }
}

/*!
 * In a dialog that is no window, Qt leaves a button the default after the focus has left it: Return in a line
 * edit would press the button that had the focus last.
 */
void FormRoot::restoreMainDefault()
{
    if (!m_mainDefault || !m_mainDefault->isVisible())
        return;
    for (QPushButton* button : m_root->findChildren<QPushButton*>())
        button->setDefault(button == m_mainDefault);
}

void FormRoot::closeHost()
{
    const QPointer<QWidget> root(m_root);
    QWidget* host = root->parentWidget();
    // The host may take this object with it. One that does not want to be closed does not stay empty.
    if (host && !host->close() && root)
        root->show();
}

#include "moc_FormRoot.cpp"
