#pragma once

#include <tools/preview/ResourceFile.h>

#include <QtCore/QResource>

//! Files that are resources while this object lives, by paths such as "forms/login.ui". The test's sources
//! need ResourceFile.cpp too.
class TestResources {
public:
    explicit TestResources(const ResourceContents& contents)
        : m_bytes(resourceFile(contents))
    {
        QResource::registerResource(reinterpret_cast<const uchar*>(m_bytes.constData()));
    }
    ~TestResources() { QResource::unregisterResource(reinterpret_cast<const uchar*>(m_bytes.constData())); }

private:
    Q_DISABLE_COPY_MOVE(TestResources)
    QByteArray m_bytes;
};
