#include "StyleSheetNames.h"

#include <QtCore/QResource>

#include <algorithm>

namespace {

class Folder : public QResource {
public:
    using QResource::children; // much less work than QDir::entryList()
    using QResource::QResource;
};

} // namespace

StyleSheetNames::StyleSheetNames()
{
    const QString suffix = QStringLiteral(".css");
    const QString windowsPrefix = QStringLiteral("win_");
    for (QString name : Folder(QStringLiteral(":/css")).children()) {
        if (!name.endsWith(suffix))
            continue;
        name.chop(suffix.size());
        m_names.insert(name);
        if (name.startsWith(windowsPrefix))
            m_names.insert(name.sliced(windowsPrefix.size()));
    }
}

bool StyleSheetNames::mayContain(const QString& objectName) const
{
    // A name with separators leads to another folder, or to this one by a detour.
    const auto isSeparator = [](QChar character) { return character == u'/' || character == u'\\'; };
    return m_names.contains(objectName) || std::any_of(objectName.cbegin(), objectName.cend(), isSeparator);
}
