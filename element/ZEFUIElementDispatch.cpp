// From a widget's signal to the delegate: dispatch by name, and the wiring of the form's widgets.

#include "ZEFUIElementPrivate.h"

#include "NamedSlotWatch.h"
#include "StyleSheetNames.h"
#include "debugOutput.h"
#include "widgetLookup.h"

#include <ZEFPipeFacilityInvocationContext.h>

#include <QtCore/QHash>
#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <QtCore/QStringBuilder>

#include <array>
#include <optional>
#include <utility>

namespace {

constexpr qsizetype maximumValueCount = 9;

//! The value of the last widget of that name that has the property; nothing when there is none.
QVariant lastPropertyValue(const QWidget* host, const QString& widgetName, const QString& propertyName)
{
    QVariant value;
    const QByteArray property = propertyName.toUtf8();
    for (const QPointer<QWidget>& widget : widgetsNamed(host, widgetName)) {
        const int index = widget ? widget->metaObject()->indexOfProperty(property.constData()) : -1;
        if (index < 0)
            continue;
        value = widget->metaObject()->property(index).read(widget);
        writeDebug(u"got property from " % widgetName % u'.' % propertyName % u'='
                   % shownValue(widget, value.toString()));
    }
    return value;
}

/*!
 * The values that the parameters of a delegate method ask for, the first parameter left out; nothing
 * when one of them names no widget or property.
 */
std::optional<QList<QVariant>> valuesFor(const QMetaMethod& method, const QWidget* host)
{
    QList<QVariant> values;
    const QList<QByteArray> parameterNames = method.parameterNames();
    for (const QByteArray& parameterName : parameterNames.mid(1)) {
        const QStringList pieces = QString::fromUtf8(parameterName).split(u'_');
        // A name of another form adds no value; the call then has one value too few, and Qt finds no
        // method for it.
        if (pieces.size() != 2)
            continue;
        const QVariant value = lastPropertyValue(host, pieces.at(0), pieces.at(1));
        if (!value.isValid()) {
            writeDebug(QStringLiteral("Could not find a widget %1 with property %2")
                           .arg(pieces.at(0), pieces.at(1)));
            return std::nullopt;
        }
        values.append(value);
    }
    return values;
}

//! The signal of \a candidate with that signature, or -1. A slot is none, however alike it looks.
int signalIndex(const QMetaObject* candidate, const QByteArray& signature)
{
    const int found = candidate->indexOfMethod(signature.constData());
    if (found >= 0 && candidate->method(found).methodType() == QMetaMethod::Signal)
        return found;
    for (int index = candidate->methodOffset(); index < candidate->methodCount(); ++index) {
        const QMetaMethod method = candidate->method(index);
        if (method.methodType() == QMetaMethod::Signal && method.methodSignature() == signature)
            return index;
    }
    return -1;
}

bool hasClicked(const QObject* object)
{
    return object->metaObject()->indexOfSignal("clicked(bool)") >= 0;
}

} // namespace

void ZEFUIElement::dispatch(QObject* sender, const char* signal)
{
    if (!sender || !d->delegate)
        return;
    const QString name = QStringLiteral("%1_%2").arg(sender->objectName(), QString::fromUtf8(signal));
    const int index = findMethod(name);
    if (index < 0) {
        writeDebug(QStringLiteral("Could not find a method %1 on delegate").arg(name));
        return;
    }
    const auto values = valuesFor(d->delegate->metaObject()->method(index), d->widget);
    if (!values || values->size() > maximumValueCount)
        return;

    // by this name a call is queued to a delegate that lives in another thread
    static const int contextType =
        qRegisterMetaType<ZEFPipeFacilityInvocationContext*>("ZEFPipeFacilityInvocationContext*");
    Q_UNUSED(contextType)
    // The method may delete everything. But when it runs an event loop, what a user does there must not
    // delete the form and the context before the method has returned.
    const HostLife::Work work(d->widget, this, HostLife::Work::InNestedLoops);
    ZEFPipeFacilityInvocationContext* context = d->context;
    std::array<QGenericArgument, maximumValueCount + 1> arguments;
    arguments[0] = QGenericArgument("ZEFPipeFacilityInvocationContext*", &context);
    for (qsizetype i = 0; i < values->size(); ++i)
        arguments[static_cast<size_t>(i) + 1] = QGenericArgument("QVariant", &values->at(i));
    // By name, so that Qt chooses the overload.
    QMetaObject::invokeMethod(d->delegate, name.toUtf8().constData(), Qt::AutoConnection,
                              QGenericReturnArgument(), arguments[0], arguments[1], arguments[2],
                              arguments[3], arguments[4], arguments[5], arguments[6], arguments[7],
                              arguments[8], arguments[9]);
}

int ZEFUIElement::findMethod(const QString& name) const
{
    if (!d->delegate)
        return -1;
    const QMetaObject* meta = d->delegate->metaObject();
    const QByteArray wanted = name.toUtf8();
    for (int index = 0; index < meta->methodCount(); ++index) {
        if (meta->method(index).name() == wanted)
            return index;
    }
    return -1;
}

void ZEFUIElement::connectWidgetTree(bool connect, QWidget* root)
{
    if (!d->widget)
        return;
    const QPointer<ZEFUIElement> self(this);
    const QPointer<QWidget> guardedRoot(root);
    const auto wire = [connect](QObject* sender, const char* signal, QObject* receiver, const char* slot) {
        if (connect)
            QObject::connect(sender, signal, receiver, slot);
        else
            QObject::disconnect(sender, signal, receiver, slot);
    };

    const StyleSheetNames styleSheets;
    QList<QPointer<QWidget>> styled;
    QHash<const QMetaObject*, bool> clickable;
    forEachDescendant(d->widget, [&](QObject* object) {
        if (!object->isWidgetType())
            return;
        const QMetaObject* meta = object->metaObject();
        auto known = clickable.constFind(meta);
        if (known == clickable.cend())
            known = clickable.insert(meta, hasClicked(object));
        if (*known)
            wire(object, "2clicked(bool)", d->widget, "1clicked(bool)");
        const QString name = object->objectName();
        if (name == u"close")
            wire(object, "2clicked()", d->widget, "1rootClosed()");
        if (styleSheets.mayContain(name))
            styled.append(static_cast<QWidget*>(object));
    });
    // A style sheet sets off slots, which may close the host or load another form.
    for (const QPointer<QWidget>& widget : std::as_const(styled)) {
        if (widget)
            setWidgetStyleSheet(widget, QString());
        if (!self || !d->widget)
            return;
    }
    // No host has this slot: Qt refuses the connection, and nothing hears of the form's death. The
    // attempt stays as it is.
    if (guardedRoot)
        wire(guardedRoot, "2destroyed()", d->widget, "1rootDestroyed()");
}

void ZEFUIElement::makeOrBreakConnections(bool make)
{
    if (!d->delegate || !d->widget)
        return;
    const QMetaObject* meta = d->delegate->metaObject();
    for (int index = 0; index < meta->methodCount(); ++index) {
        const QMetaMethod method = meta->method(index);
        if (method.methodType() == QMetaMethod::Method)
            continue;
        const QByteArray signature = method.methodSignature();
        const QByteArray member = (method.methodType() == QMetaMethod::Signal ? '2' : '1') + signature;
        for (const QPointer<QWidget>& widget : widgetsNamed(d->widget, QString::fromUtf8(method.name()))) {
            if (!hasClicked(widget))
                continue;
            // Breaking goes without Qt's code digits, which Qt rejects: the connections stay in place.
            // Delegates rely on it.
            if (make)
                QObject::connect(widget, "2clicked(bool)", d->delegate, member.constData());
            else
                QObject::disconnect(widget, "clicked(bool)", d->delegate, signature.constData());
        }
    }
}

void ZEFUIElement::connectSlotsByName(QObject* receiver)
{
    if (!d->widget || !receiver)
        return;
    QObjectList candidates;
    forEachDescendant(d->widget, [&](QObject* object) { candidates.append(object); });
    const QMetaObject* meta = receiver->metaObject();
    for (int index = meta->methodOffset(); index < meta->methodCount(); ++index) {
        const QByteArray slot = meta->method(index).methodSignature();
        if (!slot.startsWith("on_"))
            continue;
        bool matched = false;
        for (QObject* candidate : candidates) {
            const QByteArray prefix = "on_" + candidate->objectName().toUtf8() + '_';
            if (candidate->objectName().isEmpty() || !slot.startsWith(prefix))
                continue;
            const int signal = signalIndex(candidate->metaObject(), slot.mid(prefix.size()));
            if (signal >= 0 && NamedSlotWatch::connect(candidate, signal, receiver, index, this)) {
                matched = true;
                break;
            }
        }
        if (matched) {
            while (index + 1 < meta->methodCount()
                   && (meta->method(index + 1).attributes() & QMetaMethod::Cloned))
                ++index;
        } else if (!(meta->method(index).attributes() & QMetaMethod::Cloned)) {
            writeDebug(u"QMetaObject::connectSlotsByName: No matching signal for "
                       + QString::fromLatin1(slot));
        }
    }
}
