#include <ZEFFlatButton.h>

#include <QtCore/QPointer>
#include <QtGui/QKeyEvent>

ZEFFlatButton::ZEFFlatButton(QWidget* parent)
    : QLabel(parent)
{
}

ZEFFlatButton::~ZEFFlatButton() = default;

void ZEFFlatButton::mousePressEvent(QMouseEvent* e)
{
    m_pressed = true;
    QLabel::mousePressEvent(e);
}

void ZEFFlatButton::mouseReleaseEvent(QMouseEvent* e)
{
    const QPointer<ZEFFlatButton> self(this);
    if (m_pressed) {
        // before the signal: another release that arrives in a receiver is no second click
        m_pressed = false;
        // The position is deliberately not tested.
        Q_EMIT mouseClicked();
    }
    if (self)
        QLabel::mouseReleaseEvent(e);
}

void ZEFFlatButton::keyPressEvent(QKeyEvent* e)
{
    if (!e)
        return;
    if (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter) {
        e->accept();
        Q_EMIT enterKeyClicked();
        return;
    }
    QLabel::keyPressEvent(e);
}
