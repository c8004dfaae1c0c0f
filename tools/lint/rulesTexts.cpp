// Texts of a form: what the service fills in, and what translators write.

#include "ClassCatalog.h"
#include "RuleGroups.h"

#include <QtCore/QMetaProperty>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestKey = 1000;

/*!
 * The keys of the placeholders in \a text that \a isKnown does not know. As the library does it: when
 * "%{a%{b}" is no placeholder as a whole, the inner one may be.
 */
template <typename IsKnown> QStringList unknownPlaceholders(const QString& text, IsKnown isKnown)
{
    QStringList unknown;
    for (qsizetype from = text.indexOf(u"%{"); from >= 0;) {
        const qsizetype end = text.indexOf(u'}', from + 2);
        if (end < 0)
            break;
        if (end - from > longestKey) {
            from = text.lastIndexOf(u"%{", end);
            if (end - from > longestKey) {
                from = text.indexOf(u"%{", end);
                continue;
            }
        }
        const QString key = text.mid(from + 2, end - from - 2);
        if (isKnown(key)) {
            from = text.indexOf(u"%{", end + 1);
            continue;
        }
        if (!key.contains(u"%{"))
            unknown.append(key);
        from = text.indexOf(u"%{", from + 2);
    }
    return unknown;
}

bool hasPlaceholder(const QString& text)
{
    return !unknownPlaceholders(text, [](const QString&) { return false; }).isEmpty();
}

//! Whether interpolation reaches the property. Of a class that is not created nothing is known.
bool isInterpolated(const FormWidget& widget, const FormProperty& property)
{
    const QMetaObject* meta = widget.created;
    if (!meta)
        return true;
    const int index = meta->indexOfProperty(property.name.toUtf8().constData());
    return index >= 0 && meta->property(index).metaType() == QMetaType::fromType<QString>();
}

//! The widgets that a property key reaches, and whether one of them has the property.
struct Target {
    bool widgetExists = false;
    bool propertyExists = false;
};

Target targetOf(const Project& project, const QString& widgetName, const QString& propertyName)
{
    Target target;
    for (const Form& form : project.forms) {
        for (const FormWidget& widget : form.widgets) {
            if (widget.name != widgetName)
                continue;
            target.widgetExists = true;
            const QMetaObject* meta = widget.created;
            if (!meta || meta->indexOfProperty(propertyName.toUtf8().constData()) >= 0)
                target.propertyExists = true;
        }
    }
    return target;
}

//! Whether there is anything to translate beside placeholders, digits and signs.
bool hasWords(QStringView text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i).isLetter())
            return true;
        if (text.at(i) == u'%' && text.sliced(i).startsWith(u"%{")) {
            const qsizetype end = text.indexOf(u'}', i);
            if (end >= 0)
                i = end;
        }
    }
    return false;
}

//! Interpolation translates the properties that it reaches once more, in contexts of its own.
bool isTranslatedLater(const Translation& translation, const FormText& text)
{
    return translation.covers(u"zefmain"_s, text.text, QString())
        || translation.covers(QString(), text.text, QString());
}

//! The properties that a label shows which takes markup for rich text.
QList<QLatin1String> labelTexts(const QMetaObject* meta)
{
    if (ClassCatalog::inherits(meta, "QLabel"))
        return {"text"_L1};
    if (ClassCatalog::inherits(meta, "ZEFCommandLinkButton"))
        return {"title"_L1, "description"_L1};
    if (ClassCatalog::inherits(meta, "ZEFToggleButton"))
        return {"offText"_L1, "onText"_L1};
    return {};
}

QString richTextAdvice(const QMetaObject* meta)
{
    if (ClassCatalog::inherits(meta, "ZEFHyperlinkLabel")) {
        return u"Let the service escape the value by QString::toHtmlEscaped(), and excuse this finding by a "
               "comment."_s;
    }
    if (ClassCatalog::inherits(meta, "QLabel"))
        return u"Set its textFormat to Qt::PlainText."_s;
    return u"Its labels have no textFormat to set: show the value in a label of its own."_s;
}

} // namespace

QSet<QString> filledProperties(const Project& project)
{
    QSet<QString> filled;
    for (const Values& values : project.values) {
        for (const Values::Entry& entry : values.properties)
            filled.insert(entry.key.section(u'_', 0, 1));
    }
    return filled;
}

void checkPlaceholders(const Project& project, QLatin1String rule, Findings* findings)
{
    if (project.values.isEmpty())
        return;
    QSet<QString> keys;
    for (const Values& values : project.values) {
        for (const Values::Dictionary& dictionary : values.dictionaries) {
            for (const Values::Entry& entry : dictionary)
                keys.insert(entry.key);
        }
    }
    for (const Form& form : project.forms) {
        for (const FormWidget& widget : form.widgets) {
            for (const FormProperty& property : widget.properties) {
                if (!property.isString || !property.value.text.contains(u"%{")
                    || !isInterpolated(widget, property))
                    continue;
                const QStringList unknown = unknownPlaceholders(
                    property.value.text, [&](const QString& key) { return keys.contains(key); });
                for (const QString& key : unknown) {
                    findings->append({rule, form.path, property.value.line,
                                      u"no dictionary holds the key \"" + key + u"\": the user will read %{"
                                          + key + u"} in " + property.name + u" of \"" + widget.name
                                          + u"\". Add the key to a dictionary, or correct the placeholder."});
                }
            }
        }
    }
}

void checkPlaceholderPlaces(const Project& project, QLatin1String rule, Findings* findings)
{
    for (const Form& form : project.forms) {
        for (const FormText& text : form.otherTexts) {
            if (hasPlaceholder(text.text)) {
                findings->append(
                    {rule, form.path, text.line,
                     u"the placeholder in \""_s + text.text
                         + u"\" is never filled: only text properties of widgets are, not items, "
                           "titles of pages, actions or lists. Show the value in a widget's text."});
            }
        }
        for (const FormWidget& widget : form.widgets) {
            for (const FormProperty& property : widget.properties) {
                if (property.isString && hasPlaceholder(property.value.text)
                    && !isInterpolated(widget, property)) {
                    findings->append(
                        {rule, form.path, property.value.line,
                         u"the placeholder in the property " + property.name + u" of \"" + widget.name
                             + u"\" is never filled: it is no text property of the class " + widget.className
                             + u". Show the value in a property that is one."});
                }
            }
        }
    }
}

void checkPropertyKeys(const Project& project, QLatin1String rule, Findings* findings)
{
    for (const Values& values : project.values) {
        for (const Values::Entry& entry : values.properties) {
            const QStringList pieces = entry.key.split(u'_');
            const auto report = [&](const QString& problem) {
                findings->append(
                    {rule, values.path, entry.line, u"the property key \"" + entry.key + u"\" " + problem});
            };
            if (pieces.size() < 2) {
                report(u"is skipped, since it has no underscore. Write it as <objectName>_<property>."_s);
                continue;
            }
            const Target target = targetOf(project, pieces.at(0), pieces.at(1));
            if (!target.widgetExists) {
                report(u"reaches nothing, since no widget is named \"" + pieces.at(0)
                       + u"\". Correct the key, or name a widget so.");
            } else if (!target.propertyExists) {
                report(u"changes nothing, since \"" + pieces.at(0) + u"\" has no property \"" + pieces.at(1)
                       + u"\". Correct the name of the property.");
            }
        }
    }
}

void checkRichText(const Project& project, QLatin1String rule, Findings* findings)
{
    const QSet<QString> filled = filledProperties(project);
    for (const Form& form : project.forms) {
        for (const FormWidget& widget : form.widgets) {
            const FormProperty* format = widget.property("textFormat"_L1);
            if (format && format->value.text.endsWith(u"PlainText"))
                continue;
            for (const QLatin1String name : labelTexts(widget.created)) {
                const FormProperty* text = widget.property(name);
                if (!(text && hasPlaceholder(text->value.text))
                    && !filled.contains(widget.name + u'_' + name))
                    continue;
                findings->append({rule, form.path, text ? text->value.line : widget.line,
                                  u"\"" + widget.name
                                      + u"\" would show markup in a client's value as rich "
                                        u"text, links and pictures included. "
                                      + richTextAdvice(widget.created)});
            }
        }
    }
}

void checkTranslations(const Project& project, QLatin1String rule, Findings* findings)
{
    const auto check = [&](const Form& form, const FormText& text, auto isFilledLater) {
        if (!text.translatable || !hasWords(text.text))
            return;
        for (const Translation& translation : project.translations) {
            if (translation.covers(form.className, text.text, text.comment)
                || (isTranslatedLater(translation, text) && isFilledLater()))
                continue;
            findings->append({rule, form.path, text.line,
                              u"\"" + text.text.simplified() + u"\" has no translation for the locale "
                                  + translation.locale
                                  + u". Translate it, or mark the text as not translatable in Designer."});
        }
    };
    if (project.translations.isEmpty())
        return;
    for (const Form& form : project.forms) {
        for (const FormText& text : form.otherTexts)
            check(form, text, [] { return false; });
        for (const FormWidget& widget : form.widgets) {
            for (const FormProperty& property : widget.properties) {
                if (property.isString)
                    check(form, property.value, [&] { return isInterpolated(widget, property); });
            }
        }
    }
}
