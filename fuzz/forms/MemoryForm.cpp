#include "MemoryForm.h"

#include <support/FuzzTarget.h>
#include <tools/preview/ResourceFile.h>

#include <QtCore/QFile>
#include <QtCore/QResource>

namespace {

const uchar* bytesOf(const QByteArray& resource)
{
    return reinterpret_cast<const uchar*>(resource.constData());
}

} // namespace

MemoryForm::MemoryForm(const QString& name, QByteArrayView form)
    : m_resource(resourceFile({{QString(u"forms/" + name + u".ui"), form.toByteArray()}}))
{
    FUZZ_REQUIRE(QResource::registerResource(bytesOf(m_resource)));
    // Without its form the target would find nothing, and nobody would notice.
    FUZZ_REQUIRE(QFile::exists(u":/forms/" + name + u".ui"));
}

MemoryForm::~MemoryForm()
{
    FUZZ_REQUIRE(QResource::unregisterResource(bytesOf(m_resource)));
}
