#include "LifetimeWorld.h"

#include <ZEFCalendarWidget.h>
#include <ZEFCommandLinkButton.h>
#include <ZEFDictionary.h>
#include <ZEFDictionaryList.h>
#include <ZEFEllipsisLabel.h>
#include <ZEFFlatButton.h>
#include <ZEFFormatEdit.h>
#include <ZEFHyperlinkLabel.h>
#include <ZEFLightStdButton.h>
#include <ZEFLightStdSSButton.h>
#include <ZEFLightStdSSCheckbox.h>
#include <ZEFListValidator.h>
#include <ZEFToggleButton.h>
#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>
#include <ZEFUIWidget.h>

#include <QtCore/QDate>
#include <QtCore/QEventLoop>
#include <QtCore/QMetaMethod>
#include <QtCore/QScopeGuard>
#include <QtCore/QSet>
#include <QtCore/QTimer>
#include <QtGui/QClipboard>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

#include <algorithm>
#include <cstdlib>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostHosts = 12;
constexpr int mostChildren = 60;
constexpr int mostWaiting = 40;
constexpr int deepest = 4;

LifetimeWorld* currentWorld = nullptr;

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

//! Parts of Qt's own widgets, which nobody but Qt may delete or move.
bool belongsToQt(const QObject* object)
{
    for (const QObject* part = object; part; part = part->parent()) {
        if (part != object && qobject_cast<const QCalendarWidget*>(part))
            return true;
        if (part != object
            && (qobject_cast<const QLineEdit*>(part) || qobject_cast<const QAbstractSpinBox*>(part)))
            return true;
        if (qobject_cast<const QMenu*>(part))
            return true;
    }
    return false;
}

bool isCellOfEdit(const QObject* object)
{
    const auto* edit = object ? qobject_cast<const ZEFFormatEdit*>(object->parent()) : nullptr;
    for (int i = 0; edit && i < edit->lineEditCount(); ++i) {
        if (edit->editor(i) == object)
            return true;
    }
    return false;
}

bool isPartOf(const QObject* object, const QObject* whole)
{
    for (; object; object = object->parent()) {
        if (object == whole)
            return true;
    }
    return false;
}

//! The widgets below \a object. QObject::findChildren() cannot be asked while some of them are being deleted.
QList<QWidget*> widgetsBelow(const QObject* object)
{
    QList<QWidget*> widgets;
    for (QObject* child : object->children()) {
        if (!child)
            continue;
        if (child->isWidgetType())
            widgets.append(static_cast<QWidget*>(child));
        widgets.append(widgetsBelow(child));
    }
    return widgets;
}

ZEFDictionary dictionary(const QString& key, const QString& value)
{
    ZEFDictionary dictionary;
    dictionary.setString(key, value);
    return dictionary;
}

} // namespace

class LifetimeWorld::Context : public ZEFPipeFacilityInvocationContext {
public:
    explicit Context(std::shared_ptr<Request> request)
        : m_request(std::move(request))
    {
    }
    ~Context() override { ++m_request->deletions; }

private:
    Q_DISABLE_COPY_MOVE(Context)
    std::shared_ptr<Request> m_request;
};

bool LifetimeWorld::Frame::keeps(const QObject* other) const
{
    switch (keeping) {
    case Nothing:
        break;
    case Itself:
        return object == other;
    case Owners:
        return object && isPartOf(object, other);
    case Everything:
        return true;
    case EverythingButEdit:
        return !object || other != object->parent();
    }
    return false;
}

class LifetimeWorld::Busy {
public:
    Busy(LifetimeWorld* world, const Frame& frame)
        : m_world(world)
    {
        m_world->m_frames.append(frame);
    }
    ~Busy() { m_world->m_frames.removeLast(); }

private:
    Q_DISABLE_COPY_MOVE(Busy)
    LifetimeWorld* m_world;
};

LifetimeWorld::LifetimeWorld()
{
    currentWorld = this;
    qApp->installEventFilter(this);
}

LifetimeWorld::~LifetimeWorld()
{
    currentWorld = nullptr;
}

bool LifetimeWorld::Application::notify(QObject* receiver, QEvent* event)
{
    const bool movesFocus = event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut;
    if (!currentWorld || !movesFocus || !receiver->isWidgetType())
        return QApplication::notify(receiver, event);
    const Busy busy(currentWorld, frameOf(event, receiver));
    return QApplication::notify(receiver, event);
}

void LifetimeWorld::perform(const Operation& operation)
{
    if (operation.signal.isEmpty()) {
        run(operation, nullptr);
        return;
    }
    m_waiting.append(operation);
    if (m_waiting.size() > mostWaiting)
        m_waiting.removeFirst();
}

void LifetimeWorld::settle()
{
    m_waiting.clear();
    while (!m_hosts.isEmpty())
        delete m_hosts.takeLast();
    wait();
}

QStringList LifetimeWorld::failures() const
{
    QStringList failures;
    for (const auto& request : m_requests) {
        if (request->answers > 1)
            failures.append(u"a request was answered %1 times"_s.arg(request->answers));
        if (request->deletions != 1)
            failures.append(u"a context was deleted %1 times"_s.arg(request->deletions));
    }
    return failures;
}

bool LifetimeWorld::eventFilter(QObject* watched, QEvent* event)
{
    // A button of a form is called "deleteLater", which is a slot of every delegate.
    if (watched == this && event->type() == QEvent::DeferredDelete)
        return true;
    if (event->type() != QEvent::Timer)
        return false;
    // The ticks of elements come by "tick" alone.
    const auto* timer = qobject_cast<const QTimer*>(watched);
    return !m_timersRun || (timer && timer->interval() == 100);
}

void LifetimeWorld::okButton_clicked(ZEFPipeFacilityInvocationContext*)
{
    react(u"delegate"_s, nullptr);
}

void LifetimeWorld::agree_clicked(ZEFPipeFacilityInvocationContext*, QVariant, QVariant)
{
    react(u"delegate"_s, nullptr);
}

void LifetimeWorld::under_score_clicked(ZEFPipeFacilityInvocationContext*)
{
    react(u"delegate"_s, nullptr);
}

void LifetimeWorld::myCommandLinkButton_clicked(ZEFPipeFacilityInvocationContext*)
{
    react(u"delegate"_s, nullptr);
}

void LifetimeWorld::myLightStdButton_clicked(ZEFPipeFacilityInvocationContext*)
{
    react(u"delegate"_s, nullptr);
}

void LifetimeWorld::myLightStdSSButton()
{
    react(u"delegate"_s, nullptr);
}

void LifetimeWorld::heard()
{
    QObject* emitter = sender();
    const int index = senderSignalIndex();
    if (!emitter || index < 0 || index >= emitter->metaObject()->methodCount())
        return;
    const bool destroyed = index == staticMetaObject.indexOfSignal("destroyed(QObject*)");
    if (destroyed)
        m_emittingDestroyed.append(emitter);
    react(QString::fromLatin1(emitter->metaObject()->method(index).name()), emitter);
    if (destroyed) {
        m_emittingDestroyed.removeLast();
        m_watched.remove(emitter);
        m_added.remove(emitter);
    }
}

void LifetimeWorld::react(const QString& signal, QObject* emitter)
{
    if (m_depth >= deepest)
        return;
    for (qsizetype i = 0; i < m_waiting.size(); ++i) {
        if (m_waiting.at(i).signal != signal && (m_waiting.at(i).signal != u"any" || signal == u"destroyed"))
            continue;
        const Operation operation = m_waiting.takeAt(i);
        const Busy busy(this, frameOf(signal, emitter));
        run(operation, emitter);
        return;
    }
}

void LifetimeWorld::run(const Operation& operation, QObject* emitter)
{
    ++m_depth;
    const auto leave = qScopeGuard([this] { --m_depth; });
    const QString& verb = operation.verb;
    if (verb == u"mark") {
        m_marks.append(operation.argument(0));
        return;
    }
    if (verb == u"planted") {
        // A fault for tests of the search for faults.
        if (m_marks.contains(u"red"_s) && m_marks.lastIndexOf(u"blue"_s) > m_marks.indexOf(u"red"_s))
            std::abort();
        return;
    }
    static const QSet<QString> runningLoops = {u"wait"_s, u"spin"_s, u"realclick"_s};
    if (runningLoops.contains(verb) && !m_frames.isEmpty())
        return; // nobody runs an event loop in the middle of a widget's own work
    if (verb == u"wait" || verb == u"spin") {
        verb == u"wait" ? wait() : QCoreApplication::processEvents();
        return;
    }
    QWidget* target = widgetAt(operation.place, emitter);
    if (verb == u"create") {
        create(operation.argument(0), operation.argument(1),
               operation.argument(2) == u"child" ? hostOf(target) : nullptr);
        return;
    }
    if (!target || isDying(target))
        return;
    static const QSet<QString> inputs = {u"press"_s, u"move"_s, u"release"_s, u"click"_s, u"realclick"_s,
                                         u"key"_s,   u"type"_s, u"enter"_s,   u"leave"_s, u"escape"_s};
    static const QSet<QString> endings = {u"delete"_s,       u"deletelater"_s, u"close"_s,
                                          u"elementclose"_s, u"destroy"_s,     u"deleteelement"_s,
                                          u"setclosing"_s,   u"accept"_s,      u"load"_s};
    static const QSet<QString> elements = {u"locale"_s, u"interpolate"_s, u"update"_s, u"child"_s, u"tick"_s};
    if (verb == u"add")
        add(operation.argument(0), target);
    else if (inputs.contains(verb) && mayClose(hostOf(target), nullptr)) // as any click or key may
        input(operation, target);
    else if (inputs.contains(verb))
        return;
    else if (endings.contains(verb))
        closeOrDelete(operation, target, emitter);
    else if (elements.contains(verb))
        useElement(operation, hostOf(target));
    else
        tinker(operation, target);
}

void LifetimeWorld::input(const Operation& operation, QWidget* target)
{
    // The tool buttons of a calendar wait in menus for a user.
    if (qobject_cast<QToolButton*>(target))
        return;
    const QPointer<QWidget> guard(target);
    const QString& verb = operation.verb;
    // Escape deletes a widget host at once.
    const bool escapes = verb == u"escape" || (verb == u"key" && operation.argument(0) == u"Escape");
    if (escapes && qobject_cast<ZEFUIWidget*>(hostOf(target)) && !mayDelete(hostOf(target)))
        return;
    const Qt::MouseButton button = buttonFrom(operation.argument(0));
    if (verb == u"press" || verb == u"click")
        sendMouse(target, QEvent::MouseButtonPress, button, button, operation.argument(1));
    if (guard && (verb == u"release" || verb == u"click"))
        sendMouse(target, QEvent::MouseButtonRelease, button, Qt::NoButton, operation.argument(1));
    if (verb == u"move")
        sendMouse(target, QEvent::MouseMove, Qt::NoButton, Qt::LeftButton, operation.argument(0));
    if (verb == u"realclick" && target->isVisible() && target->window()->windowHandle()) {
        // The way of a click from the window system, which moves the focus too.
        const QPoint position = target->mapTo(target->window(), target->rect().center());
        const QPointer<QWindow> window(target->window()->windowHandle());
        if (!QRect(QPoint(), window->size()).contains(position)
            || qobject_cast<QToolButton*>(target->window()->childAt(position)))
            return;
        // Qt may focus any widget of the window then.
        const Busy busy(this, {target->window(), Frame::Owners});
        QTest::mousePress(window, button, Qt::NoModifier, position);
        if (window)
            QTest::mouseRelease(window, button, Qt::NoModifier, position);
    }
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
    if (verb == u"escape" && hostOf(target))
        typeKey(hostOf(target), u"Escape"_s);
    if (verb == u"type") {
        for (const QChar character : operation.argument(0)) {
            // Where the focus is: a format edit moves it on.
            QWidget* focused = guard ? guard->window()->focusWidget() : nullptr;
            if (focused)
                typeKey(focused, character);
        }
    }
}

void LifetimeWorld::tinker(const Operation& operation, QWidget* target)
{
    const QPointer<QWidget> guard(target);
    const QString& verb = operation.verb;
    // Qt would paint what is half destroyed too, or give it the focus.
    if (isDestroying() && (verb == u"paint" || verb == u"show"))
        return;
    const Busy busy(this, frameOf(operation, target));
    if (verb == u"focus") {
        target->setFocus();
    } else if (verb == u"unfocus") {
        target->clearFocus();
    } else if (verb == u"activate") {
        target->activateWindow();
    } else if (verb == u"hide") {
        target->hide();
    } else if (verb == u"show") {
        target->show();
    } else if (verb == u"enable" || verb == u"disable") {
        target->setEnabled(verb == u"enable");
    } else if (verb == u"reparent") {
        QWidget* parent =
            widgetAt({Operation::Place::Numbered, operation.number(0), operation.number(1)}, nullptr);
        // Hosts keep the parent that they were made with; their elements form a tree.
        if (!m_hosts.contains(target) && parent && !isPartOf(parent, target) && !belongsToQt(target)
            && !belongsToQt(parent) && !isDying(parent)) {
            const Busy receiving(this, {parent, Frame::Owners});
            markAdded(target); // its former form's element still listens to it, the new one's does not
            target->setParent(parent);
        }
    } else if (verb == u"sheet") {
        target->setStyleSheet(operation.argument(0) == u"none" ? QString() : operation.argument(0));
    } else if (verb == u"style") {
        QApplication::setStyle(operation.argument(0));
    } else if (verb == u"language") {
        QEvent event(QEvent::LanguageChange);
        QCoreApplication::sendEvent(target, &event);
    } else if (verb == u"paint") {
        target->grab();
    } else if (verb == u"resize") {
        target->resize(operation.number(0), operation.number(1));
    } else if (verb == u"set") {
        const QByteArray property = operation.argument(0).toLatin1();
        if (target->metaObject()->indexOfProperty(property.constData()) >= 0 && !belongsToQt(target))
            target->setProperty(property.constData(), operation.argument(1));
        if (guard)
            watchAll(guard);
    } else if (verb == u"call") {
        call(operation, target);
        if (guard)
            watchAll(guard);
    } else if (verb == u"clipboard") {
        QApplication::clipboard()->setText(operation.argument(0));
    }
}

void LifetimeWorld::call(const Operation& operation, QWidget* target)
{
    const QString& what = operation.argument(0);
    const QString& text = operation.argument(1);
    if (auto* edit = qobject_cast<ZEFFormatEdit*>(target)) {
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
    } else if (auto* cell = qobject_cast<ZEFFormatCell*>(target)) {
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
    } else if (auto* line = qobject_cast<QLineEdit*>(target)) {
        line->setText(text);
    } else if (auto* label = qobject_cast<QLabel*>(target)) {
        if (what == u"link")
            QMetaObject::invokeMethod(label, "linkActivated", Q_ARG(QString, text));
        else
            label->setText(what == u"popup" ? u"<a href='x:'>link</a>"_s : text);
    } else if (qobject_cast<QToolButton*>(target)) {
        return; // those of a calendar wait in menus for a user
    } else if (auto* button = qobject_cast<QAbstractButton*>(target)) {
        auto* link = qobject_cast<ZEFCommandLinkButton*>(target);
        if (what == u"toggle")
            button->toggle();
        else if (what == u"select")
            button->setCheckable(true);
        else if (what == u"keypress" && link) {
            QKeyEvent key(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
            link->keyPressByDefault(&key);
        } else if (what == u"click")
            button->click();
        else if (what == u"popup") {
            // Qt goes on with the button after pressed(), also when a slot of it clicks the button.
            const Busy busy(this, {button, Frame::Everything});
            button->animateClick();
        } else
            button->setText(text);
    } else if (qobject_cast<ZEFToggleButton*>(target)) {
        QMetaObject::invokeMethod(target, what == u"click" ? "setOn" : "toggle");
    } else if (auto* calendar = qobject_cast<ZEFCalendarWidget*>(target)) {
        if (what == u"month")
            calendar->showNextMonth();
        else if (what == u"select")
            calendar->setSelectedDate(calendar->selectedDate().addDays(text.size()));
        else if (what == u"deselect")
            calendar->setDateRange(QDate(2026, 1, 5), QDate(2026, 1, 20));
        else
            calendar->setNavigationBarVisible(what == u"click");
    }
}

void LifetimeWorld::closeOrDelete(const Operation& operation, QWidget* target, const QObject* emitter)
{
    const QString& verb = operation.verb;
    if (verb == u"delete") {
        erase(target, emitter);
        return;
    }
    if (verb == u"deletelater") {
        if (!belongsToQt(target))
            target->deleteLater();
        return;
    }
    QWidget* host = hostOf(target);
    if (!host || isDying(host) || !mayClose(host, emitter))
        return;
    ZEFUIElement* element = ZEFUIElement::elementFromQObject(host);
    if (verb == u"close") {
        host->close();
    } else if (verb == u"accept") {
        if (auto* dialog = qobject_cast<QDialog*>(host))
            dialog->accept();
    } else if (!element) {
        return;
    } else if (verb == u"elementclose") {
        element->close();
    } else if (verb == u"setclosing") {
        element->setClosing(operation.number(0) != 0);
    } else if (verb == u"destroy") {
        mayDelete(host) ? element->destroy() : element->close();
    } else if (verb == u"deleteelement") {
        // A service that does this never hears of the form again.
        if (m_frames.isEmpty())
            delete element;
    } else if (verb == u"load") {
        const QObject* form =
            host->layout() && host->layout()->itemAt(0) ? host->layout()->itemAt(0)->widget() : nullptr;
        if (form && !mayDelete(form))
            return;
        const QPointer<QWidget> guard(host);
        const Busy busy(this, {host, Frame::Everything, true});
        element->setFormPath(operation.argument(0));
        if (guard)
            watchAll(guard);
    }
}

void LifetimeWorld::useElement(const Operation& operation, QWidget* host)
{
    ZEFUIElement* element = ZEFUIElement::elementFromQObject(host);
    if (!element)
        return;
    const QString& verb = operation.verb;
    const QString& what = operation.argument(0);
    // Slots in the middle of these ask the element to close.
    const Busy busy(this, {nullptr, Frame::Everything});
    if (verb == u"locale") {
        element->setLocale(what);
    } else if (verb == u"interpolate") {
        ZEFDictionary values = dictionary(u"key"_s, what);
        ZEFDictionaryList list;
        list.append(&values);
        element->interpolate(list);
    } else if (verb == u"update") {
        element->updateProperties(dictionary(what + u'_' + operation.argument(1), operation.argument(2)));
    } else if (verb == u"tick") {
        element->housekeeping();
    } else if (what == u"show" || what == u"hide") {
        element->showChild(u"okButton"_s, what == u"show");
    } else if (what == u"focus") {
        element->setChildFocus(u"nameEdit"_s);
    } else {
        element->enableChild(u"nameEdit"_s, what == u"enable");
    }
}

void LifetimeWorld::create(const QString& kind, const QString& form, QWidget* parent)
{
    m_hosts.removeAll(QPointer<QWidget>());
    if (m_hosts.size() >= mostHosts || (parent && isDying(parent)))
        return;
    const auto request = std::make_shared<Request>();
    auto* context = new Context(request);
    if (kind == u"widget")
        adopt(new ZEFUIWidget(form, u"en"_s, parent, Qt::Window, context), request);
    else if (kind == u"formlesswidget")
        adopt(new ZEFUIWidget(parent, Qt::Window, context), request);
    else if (kind == u"formlessdialog")
        adopt(new ZEFUIDialog(qobject_cast<QDialog*>(parent), Qt::Dialog, context), request);
    else
        adopt(new ZEFUIDialog(form.isEmpty() ? u"names"_s : form, u"de"_s, parent, Qt::Dialog, context),
              request);
}

template <class Host> void LifetimeWorld::adopt(Host* host, const std::shared_ptr<Request>& request)
{
    connect(host, &Host::respondClosed, this, [request] { ++request->answers; });
    m_hosts.append(QPointer<QWidget>(host));
    m_requests.append(request);
    host->element()->setDelegate(this);
    watch(host->element());
    watchAll(host);
    const Busy busy(this, {host, Frame::Everything});
    host->show();
}

void LifetimeWorld::add(const QString& kind, QWidget* parent)
{
    // Nothing can be added to what has left Qt's chain of the focus.
    for (const QWidget* around = parent; around; around = around->parentWidget()) {
        if (isDying(around))
            return;
    }
    if (belongsToQt(parent) || qobject_cast<QLineEdit*>(parent) || qobject_cast<QCalendarWidget*>(parent)
        || widgetsBelow(parent->window()).size() > mostChildren)
        return;
    QWidget* added = nullptr;
    if (kind == u"toggle") {
        added = new ZEFToggleButton(parent);
    } else if (kind == u"commandlink") {
        auto* link = new ZEFCommandLinkButton(parent);
        if (!isDestroying()) // or Qt's dialog would search what is being deleted for another default button
            link->setDefault(true);
        added = link;
    } else if (kind == u"stdbutton") {
        added = new ZEFLightStdButton(parent);
    } else if (kind == u"ssbutton") {
        added = new ZEFLightStdSSButton(parent);
    } else if (kind == u"sscheckbox") {
        added = new ZEFLightStdSSCheckbox(parent);
    } else if (kind == u"flat") {
        added = new ZEFFlatButton(parent);
        added->setFocusPolicy(Qt::StrongFocus);
    } else if (kind == u"hyperlink") {
        auto* label = new ZEFHyperlinkLabel(parent);
        label->setText(u"<a href='x:'>link</a>"_s);
        added = label;
    } else if (kind == u"ellipsis") {
        auto* label = new ZEFEllipsisLabel(parent);
        label->setText(u"a text that does not fit"_s);
        added = label;
    } else if (kind == u"calendar") {
        added = new ZEFCalendarWidget(parent);
    } else if (kind == u"formatedit" || kind == u"listedit") {
        auto* edit = new ZEFFormatEdit(parent);
        edit->setFormat(u"{2}(\\d*)-{2}(\\d*)-{1}([A-Z]*)"_s);
        if (kind == u"listedit") {
            auto* validator = new ZEFListValidator(edit, {u"1234A"_s, u"1"_s});
            watch(validator);
            edit->setValidator(validator);
        }
        added = edit;
    } else if (kind == u"cell") {
        auto* cell = new ZEFFormatCell(parent);
        cell->setRegexp(u"\\w*"_s);
        cell->setMaxLength(3);
        added = cell;
    } else if (kind == u"lineedit") {
        added = new QLineEdit(parent);
    } else {
        added = new QPushButton(u"&button"_s, parent);
    }
    added->setGeometry(0, 0, 90, 30);
    markAdded(added);
    watchAll(added);
    const Busy busy(this, {added, Frame::Everything});
    added->show();
}

void LifetimeWorld::markAdded(QWidget* top)
{
    m_added.insert(top);
    const QList<QWidget*> parts = widgetsBelow(top);
    for (const QWidget* part : parts)
        m_added.insert(part);
}

void LifetimeWorld::watch(QObject* object)
{
    if (m_watched.contains(object))
        return;
    const QMetaObject* meta = object->metaObject();
    m_watched.insert(object, meta);
    static const int slot = staticMetaObject.indexOfSlot("heard()");
    for (int index = 0; index < meta->methodCount(); ++index) {
        const QMetaMethod method = meta->method(index);
        if (method.methodType() == QMetaMethod::Signal && !(method.attributes() & QMetaMethod::Cloned))
            QMetaObject::connect(object, index, this, slot, Qt::DirectConnection);
    }
}

void LifetimeWorld::watchAll(QWidget* top)
{
    watch(top);
    const QList<QWidget*> widgets = widgetsBelow(top);
    for (QWidget* widget : widgets) {
        if (!belongsToQt(widget))
            watch(widget);
    }
}

QWidget* LifetimeWorld::widgetAt(const Operation::Place& place, QObject* emitter)
{
    if (emitter && place.kind != Operation::Place::Numbered) {
        const auto* element = qobject_cast<ZEFUIElement*>(emitter);
        QObject* object = element ? element->widget() : emitter;
        if (place.kind == Operation::Place::Parent && object)
            object = object->parent();
        if (place.kind == Operation::Place::Host)
            object = hostOf(object);
        return object && object->isWidgetType() ? static_cast<QWidget*>(object) : nullptr;
    }
    m_hosts.removeAll(QPointer<QWidget>());
    if (m_hosts.isEmpty())
        return nullptr;
    QWidget* host = m_hosts.at(place.host % m_hosts.size());
    // The children of what is being deleted are not to be looked at.
    if (isDying(host))
        return nullptr;
    if (isDestroying())
        return host;
    const QList<QWidget*> children = widgetsBelow(host);
    const qsizetype index = place.widget % (children.size() + 1);
    return index == 0 ? host : children.at(index - 1);
}

QWidget* LifetimeWorld::hostOf(QObject* object)
{
    const ZEFUIElement* element = ZEFUIElement::elementFromChild(object);
    return element ? element->widget() : nullptr;
}

bool LifetimeWorld::isDying(const QObject* object) const
{
    // Its destructor has come to QWidget, which emits destroyed() and then deletes the children, or at least
    // to its base classes.
    if (m_emittingDestroyed.contains(object) || object->children().contains(nullptr))
        return true;
    const QMetaObject* meta = m_watched.value(object);
    return meta && object->metaObject() != meta;
}

bool LifetimeWorld::isDestroying() const
{
    return std::any_of(m_frames.cbegin(), m_frames.cend(),
                       [](const Frame& frame) { return frame.destroying; });
}

bool LifetimeWorld::mayDelete(const QObject* object) const
{
    // Whatever is going on, a cell of an edit may be at work in it.
    if (isDying(object) || belongsToQt(object) || (isCellOfEdit(object) && !m_frames.isEmpty()))
        return false;
    for (const Frame& frame : m_frames) {
        if (frame.keeps(object))
            return false;
    }
    return true;
}

bool LifetimeWorld::isUnwatched(const QObject* object) const
{
    if (m_added.contains(object))
        return true;
    for (const QObject* around = object; around; around = around->parent()) {
        const auto* widget = qobject_cast<const ZEFUIWidget*>(around);
        const auto* dialog = qobject_cast<const ZEFUIDialog*>(around);
        // A host without an element still looks after itself.
        if (widget || dialog)
            return around != object && !(widget ? widget->element() : dialog->element());
    }
    return false;
}

bool LifetimeWorld::mayClose(const QWidget* host, const QObject* emitter) const
{
    // Qt is in the middle of deleting a part of the form, or of a signal that no element hears.
    if (isDestroying() || std::any_of(m_frames.cbegin(), m_frames.cend(), [this](const Frame& frame) {
            return frame.unheard || (frame.object && isUnwatched(frame.object));
        }))
        return false;
    // While Qt moves the focus or shows a window, any other form may be what it goes on with.
    if (isPartOf(emitter, host) && !isUnwatched(emitter))
        return true;
    const auto* element = qobject_cast<const ZEFUIElement*>(emitter);
    const bool ofTheHost = element && element->widget() == host;
    return std::none_of(m_frames.cbegin(), m_frames.cend(), [&](const Frame& frame) {
        const bool keepsForms =
            frame.keeping == Frame::Everything || frame.keeping == Frame::EverythingButEdit;
        return keepsForms && !(ofTheHost && (!frame.object || isPartOf(frame.object, host)));
    });
}

LifetimeWorld::Frame LifetimeWorld::frameOf(const QString& signal, QObject* emitter) const
{
    static const QSet<QString> whileFocusMoves = {u"editingFinished"_s, u"focusOut"_s};
    static const QSet<QString> whileClosing = {u"rejected"_s, u"accepted"_s, u"finished"_s, u"dialog_show"_s,
                                               u"dialog_hide"_s};
    static const QSet<QString> ofElements = {u"closing"_s, u"localeChanged"_s};
    static const QSet<QString> ofButtons = {u"clicked"_s, u"pressed"_s, u"released"_s};
    static const QSet<QString> ofLabels = {u"linkActivated"_s,        u"mouseClicked"_s,
                                           u"enterKeyClicked"_s,      u"checkInternetConnection"_s,
                                           u"internetNotConnected"_s, u"openUrlSuccess"_s};
    static const QSet<QString> ofHosts = {u"respondClosed"_s, u"dialog_clicked"_s, u"dialog_key_pressed"_s};
    static const QSet<QString> ofToggles = {u"on"_s, u"off"_s};
    static const QSet<QString> ofEdits = {u"textChanged"_s, u"validityChanged"_s};

    if (!emitter) // the delegate
        return {};
    if (signal == u"destroyed") // of what no QPointer can hold any more
        return {nullptr, Frame::Everything, true};
    if (isCellOfEdit(emitter))
        return {emitter, whileFocusMoves.contains(signal) ? Frame::EverythingButEdit : Frame::Itself};
    if (whileFocusMoves.contains(signal) || whileClosing.contains(signal))
        return {emitter, Frame::Everything};
    if (qobject_cast<ZEFUIElement*>(emitter) && ofElements.contains(signal))
        return {};
    if (qobject_cast<QAbstractButton*>(emitter) && ofButtons.contains(signal))
        return {};
    if (qobject_cast<QLabel*>(emitter) && ofLabels.contains(signal))
        return {};
    const bool ofAHost = m_hosts.contains(QPointer<QWidget>(qobject_cast<QWidget*>(emitter)));
    if (ofAHost && ofHosts.contains(signal))
        return {};
    if (qobject_cast<ZEFToggleButton*>(emitter) && ofToggles.contains(signal))
        return {};
    if (qobject_cast<ZEFFormatEdit*>(emitter) && ofEdits.contains(signal))
        return {};
    if (qobject_cast<ZEFListValidator*>(emitter))
        return {};
    return {emitter, Frame::Owners, false, ofAHost};
}

LifetimeWorld::Frame LifetimeWorld::frameOf(const Operation& operation, QWidget* target)
{
    static const QSet<QString> movingFocus = {u"focus"_s,   u"unfocus"_s,  u"activate"_s,
                                              u"hide"_s,    u"show"_s,     u"enable"_s,
                                              u"disable"_s, u"reparent"_s, u"visible"_s};
    static const QSet<QString> ownProperties = {u"isOn"_s, u"checked"_s, u"format"_s};
    const QString& verb = operation.verb;
    if (verb == u"style" || (movingFocus.contains(verb) && !isCellOfEdit(target)))
        return {target, Frame::Everything};
    if (movingFocus.contains(verb))
        return {target, Frame::EverythingButEdit};
    if (verb == u"set" && movingFocus.contains(operation.argument(0)))
        return {target, Frame::Everything};
    if (verb == u"set" && ownProperties.contains(operation.argument(0)))
        return {};
    if (verb == u"call" && isCellOfEdit(target))
        return {target, Frame::Itself};
    if (verb == u"call" && !qobject_cast<QLineEdit*>(target) && !qobject_cast<QCalendarWidget*>(target))
        return {};
    return {target, Frame::Owners};
}

LifetimeWorld::Frame LifetimeWorld::frameOf(const QEvent* event, QObject* receiver)
{
    const bool cell = isCellOfEdit(receiver);
    // Qt goes on with both, the widget that loses the focus and the one that gets it next.
    if (event->type() == QEvent::FocusOut)
        return {receiver, cell ? Frame::EverythingButEdit : Frame::Everything};
    // A cell survives its edit, but Qt may have focused the first one through the edit, whose proxy it is.
    if (cell)
        return {receiver->parent(),
                static_cast<QWidget*>(receiver->parent())->focusProxy() == receiver ? Frame::Owners
                                                                                    : Frame::Nothing};
    return {receiver, Frame::Owners};
}

void LifetimeWorld::erase(QWidget* target, const QObject* emitter)
{
    if (belongsToQt(target) || isDying(target))
        return;
    if (mayDelete(target)) {
        const Busy busy(this, {target, Frame::Everything, true});
        delete target;
        return;
    }
    ZEFUIElement* element = ZEFUIElement::elementFromQObject(target);
    if (element && mayClose(target, emitter))
        element->close();
    else
        target->deleteLater();
}

void LifetimeWorld::wait()
{
    // Longer than the millisecond after which closed hosts are destroyed.
    const bool before = std::exchange(m_timersRun, true);
    QEventLoop loop;
    QTimer::singleShot(3, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
    m_timersRun = before;
}
