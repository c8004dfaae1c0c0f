#pragma once

#include <ZEFBASEExport.h>

#include <QtCore/QString>

class QTranslator;

/*!
 * The translators of this process, by file and locale, loaded once and reference counted. Use it on
 * the GUI thread only.
 */
class ZEFBASE_EXPORT ZEFTranslatorCache {
public:
    static void retain();
    //! Pairs with retain(); the last release deletes every translator. One too many is ignored.
    static void release();

    /*!
     * The translator :/i18n/<base>_<locale>.qm for \a fileName (<base>.qm, or just the base), else the
     * one for the locale without its last part (de for de_AT), else the same names in the folder
     * "translations" beside the executable. Null when there is none; misses are remembered too.
     *
     * A locale has at most 64 letters, digits and separators ('_', '-', '.', '@'); there is none for
     * any other name ("../x"). The cache owns what it returns until the last release.
     */
    static QTranslator* translatorForLocale(const QString& fileName, const QString& locale);

    /*!
     * The translation of \a text in the context "zefmain", else in the empty context. \a ok, which may
     * be null, says whether there was one; without one, or with a null translator, \a text comes back.
     * An empty text has no translation.
     */
    static QString localizeString(const QString& text, QTranslator* translator, bool* ok);
};
