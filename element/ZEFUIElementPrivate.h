#pragma once

#include "FormRoot.h"
#include "HostLife.h"

#include <ZEFUIElement.h>

#include <QtCore/QMap>
#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtCore/QSize>
#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include <memory>

class StringProperties;

/*!
 * The state of a ZEFUIElement. The element owns the context; the widget and the delegate belong to others and
 * may die at any time.
 */
class ZEFUIElementPrivate {
public:
    ZEFUIElementPrivate(ZEFUIElement* element, QWidget* widget);

    //! For the hosts, and for tests of states that no operation of the library sets.
    static ZEFUIElementPrivate* get(const ZEFUIElement* element) { return element->d.get(); }

    //! Shows a hidden host. False when there is none, or none any more.
    bool showHost(ZEFUIElement* element);
    //! Part of the tick: bringToFront(false), which shares its question with the other forms.
    void stayInFront(ZEFUIElement* element);
    //! Part of the tick: applies the saved size and position.
    void restoreGeometry(ZEFUIElement* element);
    //! The text from which interpolation made \a text, or \a text itself.
    QString templateOf(const QString& text) const;
    void interpolateWidget(ZEFUIElement* element, QWidget* target, const ZEFDictionaryList& dictionaries,
                           StringProperties& stringProperties);

    QPointer<QObject> delegate;
    QString formPath;
    QString styleSheetPath;
    QPointer<QWidget> widget;
    FormRoot formRoot;
    QMap<QString, QString> interpolationSources;
    QList<ZEFUIElement*> childElements;
    //! The elements that have this one as a child: the parent element, and those that it was added to by
    //! hand.
    QList<ZEFUIElement*> owners;
    bool loaded = false;
    bool closing = false;
    bool geometryPending = false;
    bool mayRaise = true;
    bool secondary = false;
    //! Set by the destructor: in a ring of elements a child must not delete its parent once more.
    bool beingDeleted = false;
    HostLife life;
    ZEFPipeFacilityInvocationContext* context = nullptr;
    QTimer housekeepingTimer;
    long clientPID = 0;
    QPoint savedPosition;
    QSize savedSize;
    QString locale;
    QString formName;
    int closeSelection = 0;

private:
    Q_DISABLE_COPY_MOVE(ZEFUIElementPrivate)
};
