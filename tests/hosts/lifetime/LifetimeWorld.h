#pragma once

#include "NamedSlots.h"
#include "Operation.h"

#include <ZEFPipeFacilityInvocationContext.h>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtWidgets/QApplication>

#include <functional>
#include <memory>

class QWidget;

/*!
 * Nested hosts full of Qt's and the custom widgets, and everything that may happen to them. Whatever the
 * order: at most one answer per host, every context deleted exactly once, nothing deleted under a slot that
 * the library promised to hold it for, no crash.
 *
 * It is connected as services are: by dispatch, by connectSlotsByName(), to the library's own signals, and by
 * hand to all others. The waiting operations are performed inside these slots. By hand it only queues
 * close().
 *
 * Timers run only in "wait" and "tick", so that a run does not depend on the speed of the machine.
 */
class LifetimeWorld : public QObject {
    Q_OBJECT

public:
    //! \a performNext performs the next operation of the list, in an event loop that runs inside a slot; it
    //! returns false at the end of the list.
    explicit LifetimeWorld(std::function<bool()> performNext);
    ~LifetimeWorld() override;

    void perform(const Operation& operation);
    //! Deletes everything, after which failures() is complete.
    void settle();
    QStringList failures() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

    //! The world learns from it when Qt moves the focus.
    class Application : public QApplication { // clazy:exclude=missing-qobject-macro
    public:
        using QApplication::QApplication;
        bool notify(QObject* receiver, QEvent* event) override;
    };

public Q_SLOTS:
    // The delegate of every form. A parameter without a name would get no value.
    void okButton_clicked(ZEFPipeFacilityInvocationContext* context) { dispatched(context); }
    void under_score_clicked(ZEFPipeFacilityInvocationContext* context) { dispatched(context); }
    void myCommandLinkButton_clicked(ZEFPipeFacilityInvocationContext* context) { dispatched(context); }
    void myLightStdButton_clicked(ZEFPipeFacilityInvocationContext* context) { dispatched(context); }
    void main_clicked(ZEFPipeFacilityInvocationContext* context) { dispatched(context); }
    void agree_clicked(ZEFPipeFacilityInvocationContext* context, QVariant nameEdit_text,
                       QVariant count_value);
    void tool_clicked(ZEFPipeFacilityInvocationContext* context, QVariant line_text, QVariant spin_value);
    void send_clicked(ZEFPipeFacilityInvocationContext* context, QVariant entry_text);
    //! Connected to the click of its widget, as it is named like it.
    void myLightStdSSButton() { dispatched(nullptr); }

private Q_SLOTS:
    void heard();

private:
    struct Request {
        QPointer<QWidget> host;
        int answers = 0;
        int deletions = 0;
    };
    class Context;
    class Busy;

    //! Code further up the stack that has called a slot, or Qt, and goes on when that returns.
    struct Frame {
        //! What may be deleted meanwhile.
        enum Deletable { Everything, Itself, OtherHosts, Nothing };
        Deletable deletable = Nothing;
        QPointer<QObject> object = nullptr;
        //! Something is half deleted, or Qt moves the focus: slots only close their own form.
        bool onlyCloses = false;

        bool allows(const QObject* other) const;
    };
    enum Connection { ByName, ByHand };

    void dispatched(ZEFPipeFacilityInvocationContext* context);
    void react(const QMetaMethod& signal, QObject* emitter, Connection connection);
    void react(const QString& signal, QObject* emitter, const Frame& frame, bool mayClose);
    static Frame frameOf(const QMetaMethod& signal, QObject* emitter, Connection connection);
    void run(const Operation& operation, QObject* emitter);
    void runByHand(const Operation& operation, QObject* emitter, QWidget* deletable);
    void tinker(const Operation& operation, QWidget* target);
    void closeOrDelete(const Operation& operation, QWidget* target);
    void useElement(const Operation& operation, QWidget* host);
    void runLoop(const Operation& operation);

    void create(const QString& kind, const QString& form, QWidget* parent);
    template <class Host> void adopt(Host* host, const std::shared_ptr<Request>& request);
    void add(const QString& kind, QWidget* parent);
    void watch(QObject* object);
    void watchAll(QWidget* top);

    QWidget* widgetAt(const Operation::Place& place, QObject* emitter);
    bool onlyCloses() const;
    bool mayDelete(const QObject* object) const;
    void erase(QWidget* target);
    std::shared_ptr<Request> requestOf(const QObject* host) const;

    const std::function<bool()> m_performNext;
    NamedSlots m_namedSlots;
    QList<QPointer<QWidget>> m_hosts;
    QList<std::shared_ptr<Request>> m_requests;
    QList<Operation> m_waiting;
    QList<Frame> m_frames;
    QStringList m_marks;
    QStringList m_failures;
    //! How often it has deleted something itself.
    int m_erasures = 0;
    int m_depth = 0;
    bool m_timersRun = false;
};
