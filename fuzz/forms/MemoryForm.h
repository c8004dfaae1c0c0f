#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

//! A form that exists in memory only, and is the resource :/forms/<name>.ui as long as this object lives.
class MemoryForm {
public:
    MemoryForm(const QString& name, QByteArrayView form);
    ~MemoryForm();

private:
    Q_DISABLE_COPY_MOVE(MemoryForm)

    // In the format of Qt's resource compiler, which can be registered while the program runs.
    QByteArray m_resource;
};
