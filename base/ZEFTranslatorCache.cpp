#include <ZEFTranslatorCache.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QStringBuilder>
#include <QtCore/QStringList>
#include <QtCore/QTranslator>

#include <algorithm>
#include <memory>
#include <unordered_map>
#include <utility>

namespace {

// What QLocale accepts between the parts of a locale's name.
constexpr QStringView localeSeparators = u"_-.@";

constexpr qsizetype longestLocale = 64;
constexpr int mostMisses = 1000;

int references = 0;

struct Cache {
    // By path; a null translator remembers that there is none.
    std::unordered_map<QString, std::unique_ptr<QTranslator>> translators;
    int misses = 0;
};

Cache& cache()
{
    static Cache instance;
    return instance;
}

//! Whether \a locale is a plain name. It may come from a client and becomes part of a file name.
bool isLocaleName(const QString& locale)
{
    const auto isPlain = [](QChar c) {
        return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9')
            || localeSeparators.contains(c);
    };
    return !locale.isEmpty() && locale.size() <= longestLocale
        && std::all_of(locale.cbegin(), locale.cend(), isPlain);
}

//! de_AT, then de.
QStringList withFallbacks(const QString& locale)
{
    QStringList locales = {locale};
    for (qsizetype end = locale.size() - 1; end > 0; --end) {
        if (localeSeparators.contains(locale[end]))
            locales.append(locale.first(end));
    }
    return locales;
}

QTranslator* translatorAt(const QString& path)
{
    auto& [translators, misses] = cache();
    if (const auto found = translators.find(path); found != translators.end())
        return found->second.get();

    auto translator = std::make_unique<QTranslator>();
    if (QFileInfo(path).isFile() && translator->load(path))
        return translators.emplace(path, std::move(translator)).first->second.get();

    // Clients name locales at will, but the files that are there set the limit for the hits.
    if (misses == mostMisses) {
        std::erase_if(translators, [](const auto& entry) { return !entry.second; });
        misses = 0;
    }
    translators.emplace(path, nullptr);
    ++misses;
    return nullptr;
}

} // namespace

void ZEFTranslatorCache::retain()
{
    ++references;
}

void ZEFTranslatorCache::release()
{
    if (references == 0 || --references > 0)
        return;
    // A translator that is installed tells the application of its end, and that may call back into here.
    const Cache emptied = std::exchange(cache(), {});
}

QTranslator* ZEFTranslatorCache::translatorForLocale(const QString& fileName, const QString& locale)
{
    if (!isLocaleName(locale))
        return nullptr;
    const QString base = fileName.endsWith(u".qm") ? fileName.chopped(3) : fileName;
    QStringList folders = {QStringLiteral(":/i18n")};
    if (QCoreApplication::instance())
        folders.append(QCoreApplication::applicationDirPath() + u"/translations");
    const QStringList locales = withFallbacks(locale);
    for (const QString& folder : std::as_const(folders)) {
        for (const QString& name : locales) {
            if (QTranslator* translator = translatorAt(folder % u'/' % base % u'_' % name % u".qm"))
                return translator;
        }
    }
    return nullptr;
}

QString ZEFTranslatorCache::localizeString(const QString& text, QTranslator* translator, bool* ok)
{
    QString translation;
    // Qt would take the text up to a null character for the whole of it.
    if (translator && !text.isEmpty() && !text.contains(QChar::Null)) {
        const QByteArray source = text.toUtf8();
        translation = translator->translate("zefmain", source.constData());
        if (translation.isNull())
            translation = translator->translate("", source.constData());
    }
    if (ok)
        *ok = !translation.isNull();
    return translation.isNull() ? text : translation;
}
