#pragma once

#include "Operation.h"

#include <ZEFPipeFacilityInvocationContext.h>

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QSet>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtWidgets/QApplication>

#include <memory>

class QWidget;

/*!
 * Nested hosts full of custom widgets and format edits, and everything that may happen to them. Whatever the
 * order: at most one answer per host, every context deleted exactly once, no crash.
 *
 * It listens to every signal of every object that it makes, those of Qt's base classes included, and
 * performs the waiting operations inside them. It deletes what the headers of the library allow to be
 * deleted there; where they ask for close() or deleteLater(), it does that.
 *
 * Timers run only in "wait" and "tick", so that a run does not depend on the speed of the machine.
 */
class LifetimeWorld : public QObject {
    Q_OBJECT

public:
    LifetimeWorld();
    ~LifetimeWorld() override;

    void perform(const Operation& operation);
    //! Deletes everything, after which failures() is complete.
    void settle();
    QStringList failures() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

    //! The world learns from it which events are being handled.
    class Application : public QApplication { // clazy:exclude=missing-qobject-macro
    public:
        using QApplication::QApplication;
        bool notify(QObject* receiver, QEvent* event) override;
    };

public Q_SLOTS:
    // the delegate of every form
    void okButton_clicked(ZEFPipeFacilityInvocationContext* context);
    void agree_clicked(ZEFPipeFacilityInvocationContext* context, QVariant, QVariant);
    void under_score_clicked(ZEFPipeFacilityInvocationContext* context);
    void myCommandLinkButton_clicked(ZEFPipeFacilityInvocationContext* context);
    void myLightStdButton_clicked(ZEFPipeFacilityInvocationContext* context);
    void myLightStdSSButton();

private Q_SLOTS:
    void heard();

private:
    struct Request {
        int answers = 0;
        int deletions = 0;
    };
    class Context;
    class Busy;

    //! An object that Qt or the caller works with further up the stack, and what must stay alive for it.
    struct Frame {
        enum Keeping {
            Nothing,
            Itself,
            //! The object and all that it is part of.
            Owners,
            Everything,
            //! All but the parent, which is the edit of a cell: a cell survives its edit.
            EverythingButEdit
        };
        QPointer<QObject> object;
        Keeping keeping = Nothing;
        bool destroying = false;
        //! A signal of Qt's that no element hears, such as the new title of a host.
        bool unheard = false;

        bool keeps(const QObject* other) const;
    };

    void react(const QString& signal, QObject* emitter);
    void run(const Operation& operation, QObject* emitter);
    void input(const Operation& operation, QWidget* target);
    void tinker(const Operation& operation, QWidget* target);
    void closeOrDelete(const Operation& operation, QWidget* target, const QObject* emitter);
    void call(const Operation& operation, QWidget* target);
    void useElement(const Operation& operation, QWidget* host);

    void create(const QString& kind, const QString& form, QWidget* parent);
    template <class Host> void adopt(Host* host, const std::shared_ptr<Request>& request);
    void add(const QString& kind, QWidget* parent);
    void markAdded(QWidget* top);
    void watch(QObject* object);
    void watchAll(QWidget* top);

    QWidget* widgetAt(const Operation::Place& place, QObject* emitter);
    static QWidget* hostOf(QObject* object);
    bool isDying(const QObject* object) const;
    bool isDestroying() const;
    //! Whether no element hears the signals of a widget: it was added, or the element was deleted on its own.
    bool isUnwatched(const QObject* object) const;
    bool mayDelete(const QObject* object) const;
    bool mayClose(const QWidget* host, const QObject* emitter) const;
    Frame frameOf(const QString& signal, QObject* emitter) const;
    static Frame frameOf(const Operation& operation, QWidget* target);
    static Frame frameOf(const QEvent* event, QObject* receiver);
    void erase(QWidget* target, const QObject* emitter);
    void wait();

    QList<QPointer<QWidget>> m_hosts;
    QList<std::shared_ptr<Request>> m_requests;
    QList<Operation> m_waiting;
    QHash<const QObject*, const QMetaObject*> m_watched;
    //! The widgets that no form was loaded with.
    QSet<const QObject*> m_added;
    QList<Frame> m_frames;
    //! What is emitting destroyed() right now.
    QList<const QObject*> m_emittingDestroyed;
    QStringList m_marks;
    int m_depth = 0;
    bool m_timersRun = false;
};
