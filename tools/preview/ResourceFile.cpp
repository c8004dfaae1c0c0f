#include "ResourceFile.h"

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QList>

#include <algorithm>

namespace {

constexpr quint32 formatVersion = 1;
constexpr quint32 headerSize = 20;
constexpr quint16 directoryFlag = 2;
constexpr quint16 fileFlag = 0;
// Qt's numbers for "any territory" and the language "C".
constexpr quint16 anyTerritory = 0;
constexpr quint16 languageC = 1;

//! The hash of a name, part of the format: the entries of a folder are sorted by it.
quint32 nameHash(const QString& name)
{
    quint32 hash = 0;
    for (const QChar character : name) {
        hash = (hash << 4) + character.unicode();
        hash ^= (hash & 0xf0000000) >> 23;
        hash &= 0x0fffffff;
    }
    return hash;
}

struct Node {
    QString name;
    QByteArray contents;
    bool isFolder = false;
    quint32 childCount = 0;
    quint32 firstChild = 0;
};

void sortByHash(QStringList* names)
{
    std::sort(names->begin(), names->end(),
              [](const QString& a, const QString& b) { return nameHash(a) < nameHash(b); });
}

//! The root, then the folders, then the files, each folder's together.
QList<Node> nodesOf(const ResourceContents& contents)
{
    QMap<QString, QStringList> folders;
    for (auto entry = contents.cbegin(); entry != contents.cend(); ++entry)
        folders[entry.key().section(u'/', 0, 0)].append(entry.key().section(u'/', 1));
    QStringList folderNames = folders.keys();
    sortByHash(&folderNames);

    QList<Node> nodes{{QString(), QByteArray(), true, static_cast<quint32>(folderNames.size()), 1}};
    auto firstChild = static_cast<quint32>(folderNames.size()) + 1;
    for (const QString& folder : std::as_const(folderNames)) {
        const auto childCount = static_cast<quint32>(folders.value(folder).size());
        nodes.append({folder, QByteArray(), true, childCount, firstChild});
        firstChild += childCount;
    }
    for (const QString& folder : std::as_const(folderNames)) {
        QStringList files = folders.value(folder);
        sortByHash(&files);
        for (const QString& file : std::as_const(files))
            nodes.append({file, contents.value(folder + u'/' + file)});
    }
    return nodes;
}

} // namespace

QByteArray resourceFile(const ResourceContents& contents)
{
    QByteArray tree;
    QByteArray data;
    QByteArray names;
    QDataStream treeStream(&tree, QIODevice::WriteOnly);
    QDataStream dataStream(&data, QIODevice::WriteOnly);
    QDataStream nameStream(&names, QIODevice::WriteOnly);
    for (const Node& node : nodesOf(contents)) {
        treeStream << static_cast<quint32>(names.size());
        if (node.isFolder) {
            treeStream << directoryFlag << node.childCount << node.firstChild;
        } else {
            treeStream << fileFlag << anyTerritory << languageC << static_cast<quint32>(data.size());
            // Not the operator for a byte array, which writes another size for a null one.
            dataStream << static_cast<quint32>(node.contents.size());
            dataStream.writeRawData(node.contents.constData(), static_cast<int>(node.contents.size()));
        }
        nameStream << static_cast<quint16>(node.name.size()) << nameHash(node.name);
        for (const QChar character : node.name)
            nameStream << character.unicode();
    }

    QByteArray file;
    QDataStream stream(&file, QIODevice::WriteOnly);
    stream.writeRawData("qres", 4);
    stream << formatVersion << headerSize << headerSize + static_cast<quint32>(tree.size())
           << headerSize + static_cast<quint32>(tree.size() + data.size());
    return file + tree + data + names;
}
