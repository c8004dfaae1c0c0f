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
 * Clicks and the signals of the library's own widgets do not count: their receivers may delete the sender.
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
    void clicked();

private:
    //! Lives until control is back in the event loop.
    QPointer<QObject> m_emission;
    QPointer<QObject> m_emitter;
};
