#include "LifetimeWorld.h"

#include "WidgetActions.h"

#include <ZEFDictionary.h>
#include <ZEFDictionaryList.h>
#include <ZEFFormatEdit.h>
#include <ZEFListValidator.h>
#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>
#include <ZEFUIWidget.h>

#include <QtCore/QEventLoop>
#include <QtCore/QScopeGuard>
#include <QtCore/QSet>
#include <QtCore/QTimer>
#include <QtGui/QClipboard>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLayout>

#include <algorithm>
#include <cstdlib>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostHosts = 12;
constexpr int mostChildren = 120;
constexpr int mostWaiting = 40;
constexpr int deepest = 4;

LifetimeWorld* currentWorld = nullptr;

const QSet<QString> loops = {u"wait"_s, u"spin"_s, u"loop"_s};
const QSet<QString> closings = {u"close"_s,      u"elementclose"_s, u"destroy"_s,
                                u"setclosing"_s, u"accept"_s,       u"escape"_s};
const QSet<QString> endings = {u"delete"_s, u"deletelater"_s, u"deleteelement"_s, u"load"_s};
const QSet<QString> elements = {u"locale"_s, u"interpolate"_s, u"update"_s, u"child"_s, u"tick"_s};

bool isPartOf(const QObject* object, const QObject* whole)
{
    while (object && object != whole)
        object = object->parent();
    return object;
}

bool isHost(const QObject* object)
{
    return qobject_cast<const ZEFUIWidget*>(object) || qobject_cast<const ZEFUIDialog*>(object);
}

QWidget* hostOf(QObject* object)
{
    const ZEFUIElement* element = ZEFUIElement::elementFromChild(object);
    return element ? element->widget() : nullptr;
}

//! Whether the destructor of \a object, or of what it is part of, has begun to delete children.
bool isDying(const QObject* object)
{
    for (; object; object = object->parent()) {
        if (object->children().contains(nullptr))
            return true;
    }
    return false;
}

//! The widgets below \a object. QObject::findChildren() cannot be asked while some of them are being deleted.
QList<QWidget*> widgetsBelow(const QObject* object)
{
    QList<QWidget*> widgets;
    if (isDying(object))
        return widgets;
    for (QObject* child : object->children()) {
        if (child->isWidgetType())
            widgets.append(static_cast<QWidget*>(child));
        widgets.append(widgetsBelow(child));
    }
    return widgets;
}

bool isOwn(const QMetaMethod& signal)
{
    return QByteArrayView(signal.enclosingMetaObject()->className()).startsWith("ZEF");
}

//! Every class that emits these lets the receiver delete the sender.
bool isClick(const QMetaMethod& signal)
{
    return signal.methodSignature() == "clicked(bool)";
}

//! The signals of a dialog in whose slots close() may be called, but which come while Qt works with it.
bool isWhileDialogWorks(const QMetaMethod& signal, const QObject* emitter)
{
    static const QSet<QByteArray> names = {"dialog_show", "dialog_hide", "accepted", "rejected", "finished"};
    return qobject_cast<const ZEFUIDialog*>(emitter) && names.contains(signal.name());
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

    QWidget* host() const { return m_request->host; }

private:
    Q_DISABLE_COPY_MOVE(Context)
    std::shared_ptr<Request> m_request;
};

bool LifetimeWorld::Frame::allows(const QObject* other) const
{
    switch (deletable) {
    case Everything:
        return true;
    case Itself:
        return object == other;
    case OtherHosts:
        return object && isHost(other) && !isPartOf(object, other);
    case Nothing:
        break;
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

//! Qt goes on with the widget that loses the focus, the one that gets it, and the windows of both. Only the
//! edit of a cell that loses the focus may be deleted, unless its first cell gets it: Qt may be focusing the
//! edit.
bool LifetimeWorld::Application::notify(QObject* receiver, QEvent* event)
{
    const bool movesFocus = event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut;
    if (!currentWorld || !movesFocus)
        return QApplication::notify(receiver, event);
    QWidget* edit = event->type() == QEvent::FocusOut ? WidgetActions::editOfCell(receiver) : nullptr;
    const QWidget* next = focusWidget();
    const bool mayGo = edit && next != edit->focusProxy()
        && (!isPartOf(next, edit) || WidgetActions::editOfCell(next) == edit);
    const Busy busy(currentWorld, {mayGo ? Frame::Itself : Frame::Nothing, edit, true});
    return QApplication::notify(receiver, event);
}

LifetimeWorld::LifetimeWorld(std::function<bool()> performNext)
    : m_performNext(std::move(performNext))
    , m_namedSlots([this](const QMetaMethod& signal, QObject* emitter) { react(signal, emitter, ByName); })
{
    currentWorld = this;
    qApp->installEventFilter(this);
}

LifetimeWorld::~LifetimeWorld()
{
    currentWorld = nullptr;
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
    runLoop({{}, u"wait"_s, {}, {}});
}

QStringList LifetimeWorld::failures() const
{
    QStringList failures = m_failures;
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

void LifetimeWorld::agree_clicked(ZEFPipeFacilityInvocationContext* context, QVariant, QVariant)
{
    dispatched(context);
}

void LifetimeWorld::tool_clicked(ZEFPipeFacilityInvocationContext* context, QVariant, QVariant)
{
    dispatched(context);
}

void LifetimeWorld::send_clicked(ZEFPipeFacilityInvocationContext* context, QVariant)
{
    dispatched(context);
}

void LifetimeWorld::dispatched(ZEFPipeFacilityInvocationContext* context)
{
    QWidget* host = context ? static_cast<Context*>(context)->host() : nullptr;
    react(u"delegate"_s, host, {Frame::Everything}, true);
}

void LifetimeWorld::heard()
{
    if (QObject* emitter = sender())
        react(emitter->metaObject()->method(senderSignalIndex()), emitter, ByHand);
}

void LifetimeWorld::react(const QMetaMethod& signal, QObject* emitter, Connection connection)
{
    const Frame frame = frameOf(signal, emitter, connection);
    // QDialog looks for its buttons when it is hidden, and crashes when something in it is deleting its
    // children.
    const bool mayClose = connection == ByName
        ? !isDying(emitter)
        : frame.deletable == Frame::Everything || isWhileDialogWorks(signal, emitter);
    react(QString::fromLatin1(signal.name()), emitter, frame, mayClose);
}

LifetimeWorld::Frame LifetimeWorld::frameOf(const QMetaMethod& signal, QObject* emitter,
                                            Connection connection)
{
    if (signal.name() == "destroyed")
        return {Frame::Nothing, nullptr, true};
    if (isWhileDialogWorks(signal, emitter))
        return {};
    if (isClick(signal) || (isOwn(signal) && (isHost(emitter) || qobject_cast<ZEFUIElement*>(emitter))))
        return {Frame::Everything};
    if (QWidget* edit = WidgetActions::editOfCell(emitter))
        return {Frame::Itself, edit};
    if (isOwn(signal) && emitter->isWidgetType() && !qobject_cast<ZEFFormatCell*>(emitter))
        return {Frame::Itself, emitter};
    if (connection == ByName)
        return {Frame::OtherHosts, emitter};
    return {};
}

//! Performs the first operation that waits for the signal.
void LifetimeWorld::react(const QString& signal, QObject* emitter, const Frame& frame, bool mayClose)
{
    if (m_depth >= deepest)
        return;
    const Busy busy(this, frame);
    const auto isPossible = [&](const QString& verb) {
        static const QSet<QString> ofOwn = {u"delete"_s, u"set"_s,  u"call"_s,
                                            u"wait"_s,   u"spin"_s, u"loop"_s};
        if (mayClose)
            return !onlyCloses() || closings.contains(verb);
        return verb == u"elementclose" || (frame.object && !onlyCloses() && ofOwn.contains(verb))
            || (frame.object && verb == u"delete" && mayDelete(frame.object));
    };
    const auto found = std::find_if(m_waiting.cbegin(), m_waiting.cend(), [&](const Operation& operation) {
        return (operation.signal == signal || operation.signal == u"any") && isPossible(operation.verb);
    });
    if (found == m_waiting.cend())
        return;
    const Operation operation = *found;
    m_waiting.erase(found);

    const bool held =
        !frame.onlyCloses && (frame.deletable == Frame::OtherHosts || frame.deletable == Frame::Nothing);
    const QPointer<QObject> guard(held ? emitter : nullptr);
    // Whoever answers a client or runs for its delegate needs the context, also across an event loop.
    // A delegate that calls processEvents() runs none: nothing tells that from a close() of its own.
    const bool needsContext =
        signal == u"respondClosed" || (signal == u"delegate" && operation.verb != u"spin");
    const auto request = needsContext && emitter ? requestOf(emitter) : nullptr;
    const int erasures = m_erasures;
    mayClose ? run(operation, emitter) : runByHand(operation, emitter, qobject_cast<QWidget*>(frame.object));
    if (held && !guard)
        m_failures.append(u"what emitted %1 was deleted during its slot"_s.arg(signal));
    if (request && loops.contains(operation.verb) && erasures == m_erasures && request->deletions > 0)
        m_failures.append(u"a context was deleted while the receiver of %1 ran an event loop"_s.arg(signal));
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
    if (loops.contains(verb)) {
        runLoop(operation);
        return;
    }
    QWidget* target = onlyCloses() ? hostOf(emitter) : widgetAt(operation.place, emitter);
    if (verb == u"create")
        create(operation.argument(0), operation.argument(1),
               operation.argument(2) == u"child" && target ? hostOf(target) : nullptr);
    else if (!target)
        return;
    else if (verb == u"add")
        add(operation.argument(0), target);
    else if (closings.contains(verb) || endings.contains(verb))
        closeOrDelete(operation, target);
    else if (WidgetActions::isInput(verb))
        WidgetActions::input(operation, target);
    else if (elements.contains(verb))
        useElement(operation, hostOf(target));
    else
        tinker(operation, target);
}

//! What slots do that are connected by hand to a widget's own work; \a deletable is what they may delete.
void LifetimeWorld::runByHand(const Operation& operation, QObject* emitter, QWidget* deletable)
{
    const QString& verb = operation.verb;
    if (loops.contains(verb)) {
        runLoop(operation);
    } else if (verb == u"delete") {
        if (mayDelete(deletable))
            erase(deletable);
    } else if (verb == u"set" || verb == u"call") {
        tinker(operation, deletable);
    } else if (ZEFUIElement* element = ZEFUIElement::elementFromChild(emitter)) {
        QMetaObject::invokeMethod(element, &ZEFUIElement::close, Qt::QueuedConnection);
    }
}

void LifetimeWorld::runLoop(const Operation& operation)
{
    if (operation.verb == u"spin") {
        QCoreApplication::processEvents();
        return;
    }
    QEventLoop loop;
    int lines = operation.number(0);
    std::function<void()> step = [&] {
        if (--lines < 0 || !m_performNext())
            loop.quit();
        else
            QMetaObject::invokeMethod(&loop, step, Qt::QueuedConnection);
    };
    const bool before = std::exchange(m_timersRun, operation.verb == u"wait");
    if (m_timersRun) // longer than the millisecond after which closed hosts are destroyed
        QTimer::singleShot(3, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    else
        QMetaObject::invokeMethod(&loop, step, Qt::QueuedConnection);
    loop.exec();
    m_timersRun = before;
}

void LifetimeWorld::tinker(const Operation& operation, QWidget* target)
{
    const QString& verb = operation.verb;
    if (verb == u"set" || verb == u"call") {
        const QPointer<QWidget> guard(target);
        const QByteArray property = operation.argument(0).toLatin1();
        const Busy busy(this, {property == "visible" ? Frame::Nothing : Frame::Everything});
        if (verb == u"call")
            WidgetActions::call(operation.argument(0), operation.argument(1), target);
        else if (target->metaObject()->indexOfProperty(property.constData()) >= 0
                 && !WidgetActions::belongsToQt(target))
            target->setProperty(property.constData(), operation.argument(1));
        if (guard)
            watchAll(guard); // an edit may have new cells
        return;
    }
    // Qt goes on with the children, too, of what it hides or disables.
    const Busy busy(this, {Frame::Nothing});
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
        if (!isHost(target) && parent && !isPartOf(parent, target) && !WidgetActions::belongsToQt(target)
            && WidgetActions::mayHold(parent))
            target->setParent(parent);
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
    } else if (verb == u"clipboard") {
        QApplication::clipboard()->setText(operation.argument(0));
    }
}

void LifetimeWorld::closeOrDelete(const Operation& operation, QWidget* target)
{
    const QString& verb = operation.verb;
    if (verb == u"delete") {
        erase(target);
        return;
    }
    if (verb == u"deletelater") {
        if (mayDelete(target)) {
            ++m_erasures;
            target->deleteLater();
        }
        return;
    }
    QWidget* host = hostOf(target);
    if (!host)
        return;
    ZEFUIElement* element = ZEFUIElement::elementFromQObject(host);
    if (verb == u"close") {
        host->close();
    } else if (verb == u"escape") {
        WidgetActions::input({{}, u"key"_s, {}, {u"Escape"_s}}, host);
    } else if (verb == u"accept") {
        if (auto* dialog = qobject_cast<QDialog*>(host))
            dialog->accept();
    } else if (verb == u"elementclose") {
        element->close();
    } else if (verb == u"setclosing") {
        element->setClosing(operation.number(0) != 0);
    } else if (verb == u"destroy") {
        element->destroy();
    } else if (verb == u"deleteelement") {
        // A service that does this never hears of the form again.
        if (mayDelete(host)) {
            ++m_erasures;
            delete element;
        }
    } else if (verb == u"load") {
        const QObject* form =
            host->layout() && host->layout()->itemAt(0) ? host->layout()->itemAt(0)->widget() : nullptr;
        if (form && !mayDelete(form))
            return;
        const QPointer<QWidget> guard(host);
        const Busy busy(this, {Frame::Nothing, nullptr, true});
        element->setFormPath(operation.argument(0));
        if (guard)
            watchAll(guard);
        if (guard && element->loaded())
            element->connectSlotsByName(&m_namedSlots);
    }
}

void LifetimeWorld::useElement(const Operation& operation, QWidget* host)
{
    ZEFUIElement* element = ZEFUIElement::elementFromQObject(host);
    if (!element)
        return;
    const QString& verb = operation.verb;
    const QString& what = operation.argument(0);
    const Busy busy(this, {verb == u"update" || verb == u"child" ? Frame::Nothing : Frame::Everything});
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
    if (m_hosts.size() >= mostHosts)
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
    request->host = host;
    m_hosts.append(QPointer<QWidget>(host));
    m_requests.append(request);
    host->element()->setDelegate(this);
    host->element()->connectSlotsByName(&m_namedSlots);
    watch(host->element());
    watchAll(host);
    host->show();
}

void LifetimeWorld::add(const QString& kind, QWidget* parent)
{
    if (!WidgetActions::mayHold(parent) || widgetsBelow(parent->window()).size() > mostChildren)
        return;
    QWidget* added = WidgetActions::added(kind, parent);
    if (!added)
        return;
    added->setGeometry(0, 0, 90, 30);
    watchAll(added);
    added->show();
}

//! Connects every signal by hand.
void LifetimeWorld::watch(QObject* object)
{
    const QMetaObject* meta = object->metaObject();
    static const int slot = staticMetaObject.indexOfSlot("heard()");
    for (int index = 0; index < meta->methodCount(); ++index) {
        const QMetaMethod method = meta->method(index);
        if (method.methodType() == QMetaMethod::Signal && !(method.attributes() & QMetaMethod::Cloned))
            QMetaObject::connect(object, index, this, slot, Qt::DirectConnection | Qt::UniqueConnection);
    }
}

void LifetimeWorld::watchAll(QWidget* top)
{
    watch(top);
    if (const auto* edit = qobject_cast<ZEFFormatEdit*>(top); edit && edit->validator())
        watch(const_cast<QValidator*>(edit->validator()));
    const QList<QWidget*> widgets = widgetsBelow(top);
    for (QWidget* widget : widgets) {
        if (!WidgetActions::belongsToQt(widget))
            watch(widget);
    }
}

QWidget* LifetimeWorld::widgetAt(const Operation::Place& place, QObject* emitter)
{
    QObject* object = emitter;
    if (emitter && place.kind != Operation::Place::Numbered) {
        if (const auto* element = qobject_cast<ZEFUIElement*>(emitter))
            object = element->widget();
        if (place.kind == Operation::Place::Parent && object)
            object = object->parent();
        if (place.kind == Operation::Place::Host)
            object = hostOf(object);
    } else {
        // what is left of a host in its destructor is none any more
        m_hosts.removeIf([](const QPointer<QWidget>& host) { return !isHost(host); });
        if (m_hosts.isEmpty())
            return nullptr;
        QWidget* host = m_hosts.at(place.host % m_hosts.size());
        const QList<QWidget*> children = widgetsBelow(host);
        const qsizetype index = place.widget % (children.size() + 1);
        object = index == 0 ? host : children.at(index - 1);
    }
    return object && object->isWidgetType() && !isDying(object) ? static_cast<QWidget*>(object) : nullptr;
}

bool LifetimeWorld::onlyCloses() const
{
    return std::any_of(m_frames.cbegin(), m_frames.cend(),
                       [](const Frame& frame) { return frame.onlyCloses; });
}

bool LifetimeWorld::mayDelete(const QObject* object) const
{
    // Whatever is going on, a cell of an edit may be at work in it.
    return !WidgetActions::belongsToQt(object) && (m_frames.isEmpty() || !WidgetActions::editOfCell(object))
        && std::all_of(m_frames.cbegin(), m_frames.cend(),
                       [object](const Frame& frame) { return frame.allows(object); });
}

void LifetimeWorld::erase(QWidget* target)
{
    if (mayDelete(target)) {
        ++m_erasures;
        const Busy busy(this, {Frame::Nothing, nullptr, !isHost(target)});
        delete target;
    } else if (ZEFUIElement* element = ZEFUIElement::elementFromQObject(target)) {
        element->close();
    }
}

std::shared_ptr<LifetimeWorld::Request> LifetimeWorld::requestOf(const QObject* host) const
{
    const auto found = std::find_if(m_requests.cbegin(), m_requests.cend(),
                                    [host](const auto& request) { return request->host == host; });
    return found == m_requests.cend() ? nullptr : *found;
}
