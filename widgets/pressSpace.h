#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QWidget>

//! Sends \a widget a press and a release of Space. The press may delete it.
inline void pressSpace(QWidget* widget)
{
    const QPointer<QWidget> guard(widget);
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "));
        if (guard)
            QCoreApplication::sendEvent(guard, &event);
    }
}
