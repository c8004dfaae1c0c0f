#pragma once

#include "Operation.h"

class QObject;
class QWidget;

//! What users and services do to single widgets.
namespace WidgetActions {

//! Keys and the mouse: the verbs press, move, release, click, realclick, key, type, escape, enter, leave.
bool isInput(const QString& verb);
void input(const Operation& operation, QWidget* target);

//! A function of the class of \a target, as the arguments say.
void call(const QString& what, const QString& text, QWidget* target);

//! A new widget of that kind in \a parent.
QWidget* added(const QString& kind, QWidget* parent);

//! A part of a widget of Qt's, which nobody but Qt may delete or move.
bool belongsToQt(const QObject* object);

//! Whether a form may put other widgets into \a widget, which does not consist of parts itself.
bool mayHold(const QWidget* widget);

//! The format edit of a cell, or null.
QWidget* editOfCell(const QObject* object);

} // namespace WidgetActions
