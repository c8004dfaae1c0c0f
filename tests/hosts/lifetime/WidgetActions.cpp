#include "WidgetActions.h"

#include <ZEFCalendarWidget.h>
#include <ZEFCommandLinkButton.h>
#include <ZEFEllipsisLabel.h>
#include <ZEFFlatButton.h>
#include <ZEFFormatEdit.h>
#include <ZEFHyperlinkLabel.h>
#include <ZEFLightStdButton.h>
#include <ZEFLightStdSSButton.h>
#include <ZEFLightStdSSCheckbox.h>
#include <ZEFListValidator.h>
#include <ZEFToggleButton.h>

#include <QtCore/QHash>
#include <QtCore/QPointer>
#include <QtCore/QSet>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialog>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QKeySequenceEdit>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolBox>
#include <QtWidgets/QToolButton>

using namespace Qt::StringLiterals;

namespace {

Qt::MouseButton buttonFrom(const QString& name)
{
    return name == u"right" ? Qt::RightButton : name == u"middle" ? Qt::MiddleButton : Qt::LeftButton;
}

QPointF pointFrom(const QString& name, const QWidget* widget)
{
    if (name == u"outside")
        return QPointF(widget->width() + 5, widget->height() + 5);
    return name == u"corner" ? QPointF(1, 1) : QPointF(widget->rect().center());
}

void sendMouse(QWidget* target, QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons buttons,
               const QString& side)
{
    const QPointF position = pointFrom(side, target);
    QMouseEvent event(type, position, target->mapToGlobal(position), button, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &event);
}

void sendKey(QWidget* target, QEvent::Type type, int key, Qt::KeyboardModifiers modifiers,
             const QString& text)
{
    QKeyEvent event(type, key, modifiers, text);
    QCoreApplication::sendEvent(target, &event);
}

//! The tool buttons of a calendar wait in menus for a user.
bool opensMenu(const QWidget* widget)
{
    return qobject_cast<const QToolButton*>(widget) && WidgetActions::belongsToQt(widget);
}

//! A widget of Qt's that consists of others.
bool isWhole(const QObject* object)
{
    return qobject_cast<const QAbstractItemView*>(object) || qobject_cast<const QAbstractSpinBox*>(object)
        || qobject_cast<const QCalendarWidget*>(object) || qobject_cast<const QComboBox*>(object)
        || qobject_cast<const QDialogButtonBox*>(object) || qobject_cast<const QKeySequenceEdit*>(object)
        || qobject_cast<const QLineEdit*>(object) || qobject_cast<const QPlainTextEdit*>(object)
        || qobject_cast<const QMenu*>(object);
}

bool isInCalendar(const QWidget* widget)
{
    while (widget && !qobject_cast<const QCalendarWidget*>(widget))
        widget = widget->parentWidget();
    return widget;
}

//! Presses and releases the key; what it does to its target may end with the press.
void typeKey(QWidget* target, const QString& name)
{
    static const QHash<QString, int> named = {{u"Backspace"_s, Qt::Key_Backspace},
                                              {u"Delete"_s, Qt::Key_Delete},
                                              {u"Left"_s, Qt::Key_Left},
                                              {u"Right"_s, Qt::Key_Right},
                                              {u"Home"_s, Qt::Key_Home},
                                              {u"End"_s, Qt::Key_End},
                                              {u"Tab"_s, Qt::Key_Tab},
                                              {u"Backtab"_s, Qt::Key_Backtab},
                                              {u"Return"_s, Qt::Key_Return},
                                              {u"Enter"_s, Qt::Key_Enter},
                                              {u"Space"_s, Qt::Key_Space},
                                              {u"Escape"_s, Qt::Key_Escape},
                                              {u"Up"_s, Qt::Key_Up},
                                              {u"Down"_s, Qt::Key_Down},
                                              {u"Paste"_s, Qt::Key_V},
                                              {u"Undo"_s, Qt::Key_Z},
                                              {u"SelectAll"_s, Qt::Key_A}};
    const bool isNamed = named.contains(name);
    const bool withControl = name == u"Paste" || name == u"Undo" || name == u"SelectAll";
    const int key = isNamed ? named.value(name) : name.at(0).toUpper().unicode();
    const QString text = !isNamed ? name : name == u"Space" ? u" "_s : QString();
    const Qt::KeyboardModifiers modifiers = withControl ? Qt::ControlModifier : Qt::NoModifier;
    // Qt's calendar leaks what edits the date when it dies while one is typed.
    if (!text.isEmpty() && isInCalendar(target))
        return;
    const QPointer<QWidget> guard(target);
    sendKey(target, QEvent::KeyPress, key, modifiers, text);
    if (guard)
        sendKey(guard, QEvent::KeyRelease, key, modifiers, text);
}

//! A click as the window system sends it, which moves the focus too.
void clickWindow(QWidget* target, Qt::MouseButton button)
{
    const QPointer<QWindow> window(target->window()->windowHandle());
    const QPoint position = target->mapTo(target->window(), target->rect().center());
    if (!target->isVisible() || !window || !QRect(QPoint(), window->size()).contains(position)
        || opensMenu(target->window()->childAt(position)))
        return;
    QTest::mousePress(window, button, Qt::NoModifier, position);
    if (window)
        QTest::mouseRelease(window, button, Qt::NoModifier, position);
}

void callEdit(ZEFFormatEdit* edit, const QString& what, const QString& text)
{
    if (what == u"copy")
        edit->copy();
    else if (what == u"paste")
        edit->paste();
    else if (what == u"cut")
        edit->cut();
    else if (what == u"clear")
        edit->clear();
    else if (what == u"select" || what == u"deselect")
        edit->globalSelect(what == u"select");
    else if (what == u"validate")
        edit->validate();
    else if (what == u"alternate")
        edit->addAlternateCheck(text, 1);
    else if (what == u"noalternate")
        edit->clearAlternate();
    else if (what == u"savefocus")
        edit->saveFocus();
    else if (what == u"restorefocus")
        edit->restoreFocus();
    else if (what == u"case")
        edit->setEnforceCase(static_cast<int>(text.size() % 3));
    else if (what == u"highlight")
        edit->setCellBottomHighlight(static_cast<int>(text.size()), Qt::red);
    else
        edit->setText(text);
}

void callCell(ZEFFormatCell* cell, const QString& what, const QString& text)
{
    if (what == u"copy")
        cell->copy();
    else if (what == u"paste")
        cell->paste();
    else if (what == u"cut")
        cell->cut();
    else if (what == u"clear")
        cell->clear();
    else if (what == u"validate")
        cell->validate();
    else if (what == u"equivs")
        cell->setEquivs(text);
    else if (what == u"pattern")
        cell->setRegexp(text);
    else if (what == u"alternate")
        cell->setFinalRegExp(text);
    else if (what == u"reselect")
        cell->reselect();
    else if (what == u"highlight")
        cell->setMaxLength(static_cast<int>(text.size()));
    else if (what == u"case")
        cell->setEnforceCase(static_cast<int>(text.size() % 3));
    else if (what == u"select")
        cell->selectAll();
    else if (what == u"toggle")
        cell->insert(text);
    else
        cell->setText(text);
}

void callButton(QAbstractButton* button, const QString& what, const QString& text)
{
    auto* link = qobject_cast<ZEFCommandLinkButton*>(button);
    if (what == u"toggle") {
        button->toggle();
    } else if (what == u"select") {
        button->setCheckable(true);
    } else if (what == u"keypress" && link) {
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        link->keyPressByDefault(&key);
    } else if (what == u"click") {
        button->click();
    } else if (what == u"popup") {
        button->animateClick();
    } else {
        button->setText(text);
    }
}

} // namespace

bool WidgetActions::isInput(const QString& verb)
{
    static const QSet<QString> verbs = {u"press"_s, u"move"_s, u"release"_s, u"click"_s, u"realclick"_s,
                                        u"key"_s,   u"type"_s, u"enter"_s,   u"leave"_s};
    return verbs.contains(verb);
}

void WidgetActions::input(const Operation& operation, QWidget* target)
{
    if (opensMenu(target))
        return;
    const QPointer<QWidget> guard(target);
    const QString& verb = operation.verb;
    const Qt::MouseButton button = buttonFrom(operation.argument(0));
    if (verb == u"press" || verb == u"click")
        sendMouse(target, QEvent::MouseButtonPress, button, button, operation.argument(1));
    if (guard && (verb == u"release" || verb == u"click"))
        sendMouse(target, QEvent::MouseButtonRelease, button, Qt::NoButton, operation.argument(1));
    if (verb == u"move")
        sendMouse(target, QEvent::MouseMove, Qt::NoButton, Qt::LeftButton, operation.argument(0));
    if (verb == u"realclick")
        clickWindow(target, button);
    if (verb == u"enter") {
        QEnterEvent event(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
        QCoreApplication::sendEvent(target, &event);
    }
    if (verb == u"leave") {
        QEvent event(QEvent::Leave);
        QCoreApplication::sendEvent(target, &event);
    }
    if (verb == u"key")
        typeKey(target, operation.argument(0));
    if (verb == u"type") {
        for (const QChar character : operation.argument(0)) {
            // Where the focus is: a format edit moves it on.
            QWidget* focused = guard ? guard->window()->focusWidget() : nullptr;
            if (focused)
                typeKey(focused, character);
        }
    }
}

void WidgetActions::call(const QString& what, const QString& text, QWidget* target)
{
    if (opensMenu(target))
        return;
    if (auto* edit = qobject_cast<ZEFFormatEdit*>(target)) {
        callEdit(edit, what, text);
    } else if (auto* cell = qobject_cast<ZEFFormatCell*>(target)) {
        callCell(cell, what, text);
    } else if (auto* line = qobject_cast<QLineEdit*>(target)) {
        line->setText(text);
    } else if (auto* label = qobject_cast<QLabel*>(target)) {
        if (what == u"link")
            QMetaObject::invokeMethod(label, "linkActivated", Q_ARG(QString, text));
        else
            label->setText(what == u"popup" ? u"<a href='x:'>link</a>"_s : text);
    } else if (auto* button = qobject_cast<QAbstractButton*>(target)) {
        callButton(button, what, text);
    } else if (qobject_cast<ZEFToggleButton*>(target)) {
        QMetaObject::invokeMethod(target, what == u"click" ? "setOn" : "toggle");
    } else if (auto* calendar = qobject_cast<QCalendarWidget*>(target)) {
        if (what == u"month")
            calendar->showNextMonth();
        else if (what == u"select")
            calendar->setSelectedDate(calendar->selectedDate().addDays(text.size()));
        else if (what == u"deselect")
            calendar->setDateRange(QDate(2026, 1, 5), QDate(2026, 1, 20));
        else
            calendar->setNavigationBarVisible(what == u"click");
    } else if (auto* combo = qobject_cast<QComboBox*>(target)) {
        if (what == u"popup")
            combo->showPopup();
        else if (what == u"clear")
            combo->clear();
        else if (what == u"click")
            combo->hidePopup();
        else
            combo->addItem(text);
    } else if (auto* spin = qobject_cast<QAbstractSpinBox*>(target)) {
        what == u"toggle" ? spin->stepDown() : spin->stepUp();
    } else if (auto* dialog = qobject_cast<QDialog*>(target)) {
        what == u"toggle" ? dialog->reject() : what == u"click" ? dialog->accept() : dialog->done(2);
    } else if (auto* view = qobject_cast<QAbstractItemView*>(target)) {
        if (QAbstractItemModel* model = view->model())
            view->setCurrentIndex(model->index(static_cast<int>(text.size() % 3), 0));
    }
}

QWidget* WidgetActions::added(const QString& kind, QWidget* parent)
{
    if (kind == u"toggle")
        return new ZEFToggleButton(parent);
    if (kind == u"stdbutton")
        return new ZEFLightStdButton(parent);
    if (kind == u"ssbutton")
        return new ZEFLightStdSSButton(parent);
    if (kind == u"sscheckbox")
        return new ZEFLightStdSSCheckbox(parent);
    if (kind == u"calendar")
        return new ZEFCalendarWidget(parent);
    if (kind == u"lineedit")
        return new QLineEdit(parent);
    if (kind == u"pushbutton")
        return new QPushButton(u"&button"_s, parent);
    if (kind == u"commandlink") {
        auto* link = new ZEFCommandLinkButton(parent);
        link->setDefault(true);
        return link;
    }
    if (kind == u"flat") {
        auto* flat = new ZEFFlatButton(parent);
        flat->setFocusPolicy(Qt::StrongFocus);
        return flat;
    }
    if (kind == u"hyperlink" || kind == u"ellipsis") {
        QLabel* label = kind == u"ellipsis" ? static_cast<QLabel*>(new ZEFEllipsisLabel(parent))
                                            : new ZEFHyperlinkLabel(parent);
        label->setText(kind == u"ellipsis" ? u"a text that does not fit"_s : u"<a href='x:'>link</a>"_s);
        return label;
    }
    if (kind == u"formatedit" || kind == u"listedit") {
        auto* edit = new ZEFFormatEdit(parent);
        edit->setFormat(u"{2}(\\d*)-{2}(\\d*)-{1}([A-Z]*)"_s);
        if (kind == u"listedit")
            edit->setValidator(new ZEFListValidator(edit, {u"1234A"_s, u"1"_s}));
        return edit;
    }
    if (kind == u"cell") {
        auto* cell = new ZEFFormatCell(parent);
        cell->setRegexp(u"\\w*"_s);
        cell->setMaxLength(3);
        return cell;
    }
    return nullptr;
}

bool WidgetActions::belongsToQt(const QObject* object)
{
    for (const QObject* whole = object->parent(); whole; whole = whole->parent()) {
        if (isWhole(whole))
            return true;
    }
    // Pages are the form's, what holds them is not.
    return object->objectName().startsWith(u"qt_")
        || (qobject_cast<const QToolBox*>(object->parent()) && object->objectName().isEmpty());
}

bool WidgetActions::mayHold(const QWidget* widget)
{
    return !isWhole(widget) && !belongsToQt(widget) && !qobject_cast<const ZEFFormatEdit*>(widget);
}

QWidget* WidgetActions::editOfCell(const QObject* object)
{
    auto* edit = object ? qobject_cast<ZEFFormatEdit*>(object->parent()) : nullptr;
    for (int i = 0; edit && i < edit->lineEditCount(); ++i) {
        if (edit->editor(i) == object)
            return edit;
    }
    return nullptr;
}
