#pragma once

#include "SignalWatch.h"

#include <ZEFUIElement.h>

#include <QtCore/QMap>
#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtCore/QSize>
#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include <functional>

class StringProperties;

/*!
 * The state of a ZEFUIElement. The element owns the context; the widget and the delegate belong to others and
 * may die at any time.
 */
class ZEFUIElementPrivate {
public:
    ZEFUIElementPrivate(QWidget* widget, ZEFUIElement* parentElement);

    //! For the hosts, and for tests of states that no operation of the library sets.
    static ZEFUIElementPrivate* get(const ZEFUIElement* element) { return element->d.get(); }

    /*!
     * Keeps close() and destroy() from deleting the host while a guard lives. One is held wherever Qt goes
     * on working with a widget after code of others ran: in the host's own events, and in every operation
     * that shows, hides, enables, focuses or writes to a widget, whose slots may close the form.
     */
    class DeletionGuard {
    public:
        explicit DeletionGuard(ZEFUIElement* element);
        ~DeletionGuard();

    private:
        Q_DISABLE_COPY_MOVE(DeletionGuard)
        QPointer<ZEFUIElement> m_element;
        bool m_wasSignalling = false;
    };

    //! The text from which interpolation made \a text, or \a text itself.
    QString templateOf(const QString& text) const;
    void interpolateWidget(ZEFUIElement* element, QWidget* target, const ZEFDictionaryList& dictionaries,
                           StringProperties& stringProperties);

    //! Whether a DeletionGuard lives for the element or for one whose host would be deleted with its own.
    bool isGuarded() const;
    //! Whether Qt may be in the middle of a signal of the form, or of one that would be deleted with it.
    bool isSignalling() const;
    /*!
     * Called by the destructor of \a host: keeps the hosts around it until it is gone. Qt closes its window
     * and moves the focus away from it first, and slots of that may close them.
     */
    static void spareHostsAround(QWidget* host);
    //! Deletes the host, or has destroy() called in a millisecond while it must not be deleted.
    void deleteHost(ZEFUIElement* element, bool later);

    QPointer<QObject> delegate;
    QString formPath;
    QString styleSheetPath;
    QPointer<QWidget> widget;
    QMap<QString, QString> interpolationSources;
    QList<ZEFUIElement*> childElements;
    QPointer<ZEFUIElement> parentElement;
    bool loaded = false;
    bool closing = false;
    bool geometryPending = false;
    bool mayRaise = true;
    bool secondary = false;
    //! Set by the destructor: in a ring of elements a child must not delete its parent once more.
    bool beingDeleted = false;
    int deletionGuards = 0;
    SignalWatch signalWatch;
    //! Answers the client unless that has been done; set by the hosts, empty around a plain widget.
    std::function<void()> answer;
    //! How many close events the host has received: close() sees by it whether Qt delivered one.
    int closeEvents = 0;
    bool inClose = false;
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
    template <class Predicate> bool anyDeletedTogether(const Predicate& predicate) const;
};
