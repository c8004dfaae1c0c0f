#include <ZEFTranslatorCache.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <QtCore/QTranslator>

#include <memory>
#include <unordered_map>

namespace {

int references = 0;

// A null translator remembers a miss.
std::unordered_map<QString, std::unique_ptr<QTranslator>>& cachedTranslators()
{
    static std::unordered_map<QString, std::unique_ptr<QTranslator>> translators;
    return translators;
}

std::unique_ptr<QTranslator> loadFrom(const QString& folder, const QString& base, QString locale)
{
    while (!locale.isEmpty()) {
        const QString path = folder + u'/' + base + u'_' + locale + u".qm";
        auto translator = std::make_unique<QTranslator>();
        if (QFileInfo(path).isFile() && translator->load(path))
            return translator;
        locale.truncate(std::max<qsizetype>(locale.lastIndexOf(u'_'), 0));
    }
    return nullptr;
}

} // namespace

void ZEFTranslatorCache::retain()
{
    ++references;
}

void ZEFTranslatorCache::release()
{
    if (references > 0 && --references == 0)
        cachedTranslators().clear();
}

QTranslator* ZEFTranslatorCache::translatorForLocale(const QString& fileName, const QString& locale)
{
    // The locale may come from a client: it must not lead out of the translation folders.
    if (locale.contains(u'/') || locale.contains(u'\\'))
        return nullptr;
    const QString base = fileName.endsWith(u".qm") ? fileName.chopped(3) : fileName;
    const QString key = base + u'_' + locale;
    auto& translators = cachedTranslators();
    if (const auto found = translators.find(key); found != translators.end())
        return found->second.get();

    auto translator = loadFrom(QStringLiteral(":/i18n"), base, locale);
    if (!translator)
        translator = loadFrom(QCoreApplication::applicationDirPath() + u"/translations", base, locale);
    return translators.emplace(key, std::move(translator)).first->second.get();
}

QString ZEFTranslatorCache::localizeString(const QString& text, QTranslator* translator, bool* ok)
{
    QString translation;
    if (translator) {
        const QByteArray source = text.toUtf8();
        translation = translator->translate("zefmain", source.constData());
        if (translation.isNull())
            translation = translator->translate("", source.constData());
    }
    if (ok)
        *ok = !translation.isNull();
    return translation.isNull() ? text : translation;
}
