#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>

class QWidget;

/*!
 * Notices the signals of a form's widgets. Qt goes on working with most widgets after it has emitted a
 * signal (a line edit after returnPressed(), a check box after toggled()), so that a slot which closes the
 * form must not have it deleted at once. Nothing tells when Qt is done; what is sure is that it is when
 * control is back in the event loop.
 *
 * clicked() and the signals of the library's own widgets do not count: their receivers may delete the sender.
 * pressed() and released() do: Qt goes on after them in animateClick(), as a shortcut calls it, and when a
 * pressed button loses the focus.
 */
class SignalWatch : public QObject {
    Q_OBJECT

public:
    void watch(QWidget* widget);
    //! Whether Qt may be in the middle of a watched signal.
    bool isSignalling() const { return m_emission; }
    void forget();

private Q_SLOTS:
    void heard();
    void pushed();
    void clicked();

private:
    //! Lives until control is back in the event loop.
    QPointer<QObject> m_emission;
    QPointer<QObject> m_first;
    QPointer<QObject> m_latest;
};
