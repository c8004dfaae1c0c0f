#pragma once

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtGui/QKeyEvent>

//! Counts this class's own clicked(bool), connected by signature as forms do.
class Clicks : public QObject {
    Q_OBJECT

public:
    explicit Clicks(QObject* button) { connect(button, SIGNAL(clicked(bool)), this, SLOT(count(bool))); }

    QList<bool> values;

private Q_SLOTS:
    void count(bool checked) { values.append(checked); }
};

inline QKeyEvent keyPress(int key)
{
    return QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier);
}
