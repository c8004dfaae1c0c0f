#include "StyleSheetNames.h"

#include <QtCore/QDir>

StyleSheetNames::StyleSheetNames()
{
    const QString suffix = QStringLiteral(".css");
    const QString windowsPrefix = QStringLiteral("win_");
    const QDir folder(QStringLiteral(":/css"));
    // hidden ones too: the sheet of widgets without a name is called ".css"
    for (QString name :
         folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Unsorted)) {
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
    return m_names.contains(objectName) || objectName.contains(u'/') || objectName.contains(u'\\');
}
