#include "AccessibleFlatButton.h"

#include "labelText.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtGui/QMouseEvent>

namespace {

void pressMouse(QWidget* button)
{
    const QPointer<QWidget> guard(button);
    const QPointF center = QRectF(button->rect()).center();
    const QPointF global = button->mapToGlobal(center);
    QMouseEvent press(QEvent::MouseButtonPress, center, center, global, Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(button, &press);
    if (!guard)
        return;
    QMouseEvent release(QEvent::MouseButtonRelease, center, center, global, Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    QCoreApplication::sendEvent(button, &release);
}

} // namespace

AccessibleFlatButton::AccessibleFlatButton(ZEFFlatButton* button)
    : AccessibleLeaf(button, QAccessible::Button, pressAction(), pressMouse)
{
}

ZEFFlatButton* AccessibleFlatButton::button() const
{
    return static_cast<ZEFFlatButton*>(widget());
}

QString AccessibleFlatButton::content() const
{
    return readableText(button());
}
