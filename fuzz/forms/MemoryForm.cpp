#include "MemoryForm.h"

#include <support/FuzzTarget.h>

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QResource>

#include <array>

namespace {

constexpr quint32 headerSize = 20;
constexpr quint32 nodeSize = 14;
constexpr quint16 directoryFlag = 2;
constexpr quint16 anyTerritory = 0;
constexpr quint16 cLanguage = 1;

quint32 hashOf(const QString& name)
{
    quint32 hash = 0;
    for (const QChar c : name) {
        hash = (hash << 4) + c.unicode();
        hash ^= (hash & 0xf0000000) >> 23;
        hash &= 0x0fffffff;
    }
    return hash;
}

//! A tree of three nodes, root, folder and file, then their names, then the file.
QByteArray resourceOf(const QString& folder, const QString& file, QByteArrayView content)
{
    const std::array names = {QString(), folder, file};
    std::array<quint32, names.size()> nameOffsets = {};
    QByteArray nameTable;
    QDataStream nameStream(&nameTable, QIODevice::WriteOnly);
    for (std::size_t i = 1; i < names.size(); ++i) {
        nameOffsets[i] = static_cast<quint32>(nameTable.size());
        nameStream << static_cast<quint16>(names[i].size()) << hashOf(names[i]);
        for (const QChar c : names[i])
            nameStream << c.unicode();
    }

    const auto tree = headerSize;
    const auto nameStart = static_cast<quint32>(tree + names.size() * nodeSize);
    const auto data = static_cast<quint32>(nameStart + static_cast<quint32>(nameTable.size()));
    QByteArray resource;
    QDataStream stream(&resource, QIODevice::WriteOnly);
    stream.writeRawData("qres", 4);
    stream << quint32(1) << tree << data << nameStart;
    for (quint32 child = 1; child < names.size(); ++child)
        stream << nameOffsets[child - 1] << directoryFlag << quint32(1) << child;
    stream << nameOffsets.back() << quint16(0) << anyTerritory << cLanguage << quint32(0);
    stream.writeRawData(nameTable.constData(), static_cast<int>(nameTable.size()));
    stream << static_cast<quint32>(content.size());
    stream.writeRawData(content.data(), static_cast<int>(content.size()));
    return resource;
}

const uchar* bytesOf(const QByteArray& resource)
{
    return reinterpret_cast<const uchar*>(resource.constData());
}

} // namespace

MemoryForm::MemoryForm(const QString& name, QByteArrayView form)
    : m_resource(resourceOf(QStringLiteral("forms"), name + u".ui", form))
{
    FUZZ_REQUIRE(QResource::registerResource(bytesOf(m_resource)));
}

MemoryForm::~MemoryForm()
{
    FUZZ_REQUIRE(QResource::unregisterResource(bytesOf(m_resource)));
}
