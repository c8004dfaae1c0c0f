#pragma once

#include <QtCore/QSet>
#include <QtCore/QString>

/*!
 * The names that the style sheets in the resources have at the moment. A form's widgets look into this list,
 * so that nothing has to be searched for those without a sheet, which are nearly all.
 */
class StyleSheetNames {
public:
    StyleSheetNames();

    //! Whether there may be a sheet for widgets of that name; false only if there is none.
    bool mayContain(const QString& objectName) const;

private:
    QSet<QString> m_names;
};
