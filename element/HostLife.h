#pragma once

#include <QtCore/QPointer>

class QWidget;
class ZEFUIElement;

/*!
 * The end of one host: it is closed, answers the client once, and is deleted.
 *
 * A host is deleted at once unless a Work holds it. It is then deleted once the last Work has ended and
 * control has returned to the event loop that the work was begun from, never in a nested one: Qt may
 * go on with a widget after the code of others ran.
 */
class HostLife {
public:
    /*!
     * Holds the host of \a object, and every host that would take \a object or \a element with it.
     * One lives while Qt handles an event of a host, while the library writes to a widget, while
     * respondClosed() is received, and during a slot connected by name. Whatever these call may close
     * the form.
     */
    class Work {
    public:
        enum Hold {
            Always,
            //! The code that is called may delete the host itself; only what a nested event loop does must
            //! wait.
            InNestedLoops
        };
        Work(QObject* object, ZEFUIElement* element, Hold hold = Always);
        ~Work();

    private:
        Q_DISABLE_COPY_MOVE(Work)
        friend class HostLife;
        const QPointer<QObject> m_object;
        const QPointer<ZEFUIElement> m_element;
        const int m_loopLevel;
    };

    explicit HostLife(ZEFUIElement* element);

    static HostLife& of(const ZEFUIElement* element);

    //! Marks the form closing and answers. Returns false if a receiver has deleted the element.
    bool closeAndAnswer(QWidget* host);
    //! Emits respondClosed() of \a host unless it has been emitted before.
    void answer(QWidget* host);
    //! Deletes the host at once, or as soon as nothing holds it any more.
    void end();

    //! Set once the deletion was asked for; later requests add nothing to it.
    bool isEnding = false;

private:
    Q_DISABLE_COPY_MOVE(HostLife)
    bool isHeld() const;
    bool takesAlong(const Work& work) const;

    ZEFUIElement* const m_element;
    bool m_answered = false;
};
