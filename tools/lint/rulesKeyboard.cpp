// What those who use no mouse, or do not see the form, are left with.

#include "ClassCatalog.h"
#include "RuleGroups.h"

#include <QtCore/QHash>
#include <QtCore/QRegularExpression>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

enum class Focus { None, Click, Tab };

bool isLabel(const FormWidget& widget)
{
    static const ClassCatalog::Families labels{"QLabel"};
    return labels.contain(widget.created);
}

QString valueOf(const FormWidget& widget, QLatin1String name)
{
    const FormProperty* property = widget.property(name);
    return property ? property->value.text : QString();
}

//! How the widget gets the focus. Of a class that is not created nothing is known.
Focus focusOf(const FormWidget& widget)
{
    if (const QString policy = valueOf(widget, "focusPolicy"_L1); !policy.isEmpty()) {
        if (policy.endsWith(u"NoFocus"))
            return Focus::None;
        return policy.endsWith(u"ClickFocus") ? Focus::Click : Focus::Tab;
    }
    // These properties bring a focus policy with them.
    if (valueOf(widget, "textInteractionFlags"_L1).contains(u"Keyboard")
        || (ClassCatalog::inherits(widget.created, "QGroupBox")
            && valueOf(widget, "checkable"_L1) == u"true"))
        return Focus::Tab;
    return !widget.created || ClassCatalog::takesFocus(widget.created) ? Focus::Tab : Focus::None;
}

//! The key after a single ampersand, null without one.
QChar mnemonicOf(const QString& text)
{
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        if (text.at(i) != u'&')
            continue;
        if (text.at(i + 1) != u'&')
            return text.at(i + 1);
        ++i;
    }
    return QChar();
}

//! A text as it is read, to be compared with others.
QString readText(QString text)
{
    static const QRegularExpression markup(u"<[^<>]*>"_s);
    return text.remove(markup).remove(u'&').simplified().toCaseFolded();
}

//! What the widget says of itself, in each of its states.
QStringList textsOf(const FormWidget& widget)
{
    QStringList texts;
    for (const QLatin1String name : {"text"_L1, "title"_L1, "offText"_L1, "onText"_L1}) {
        if (const QString text = readText(valueOf(widget, name)); !text.isEmpty())
            texts.append(text);
    }
    return texts;
}

//! What the controls of the form say that the keyboard reaches.
QSet<QString> textsForTheKeyboard(const Form& form)
{
    static const ClassCatalog::Families actors{"QAbstractButton", "ZEFHyperlinkLabel", "ZEFFlatButton"};
    QSet<QString> texts;
    for (const FormWidget& widget : form.widgets) {
        if (!actors.contain(widget.created) || focusOf(widget) != Focus::Tab)
            continue;
        for (const QString& text : textsOf(widget))
            texts.insert(text);
    }
    return texts;
}

//! Reports the widgets that \a isForTheMouse, unless a control for the keyboard says the same.
template <typename Predicate, typename Message>
void reportMouseOnly(const Project& project, QLatin1String rule, Findings* findings, Predicate isForTheMouse,
                     Message message)
{
    for (const Form& form : project.forms) {
        std::optional<QSet<QString>> others;
        for (const FormWidget& widget : form.widgets) {
            if (!isForTheMouse(widget))
                continue;
            if (!others)
                others = textsForTheKeyboard(form);
            const QStringList texts = textsOf(widget);
            const bool hasTwin = std::any_of(texts.cbegin(), texts.cend(),
                                             [&](const QString& text) { return others->contains(text); });
            if (!hasTwin)
                findings->append({rule, form.path, widget.line, message(widget)});
        }
    }
}

//! Whether the user works with the widget, and not only reads it.
bool isControl(const FormWidget& widget)
{
    static const ClassCatalog::Families controls{
        "QAbstractButton", "QAbstractItemView", "QAbstractSpinBox", "QComboBox", "QKeySequenceEdit",
        "QLineEdit",       "QPlainTextEdit",    "QTextEdit",        "QSlider",   "QDial",
        "ZEFFlatButton",   "ZEFFormatEdit",     "ZEFToggleButton"};
    // What it shows is read, and its links have texts.
    static const ClassCatalog::Families browsers{"QTextBrowser"};
    return controls.contain(widget.created) && !browsers.contain(widget.created);
}

//! The properties that name a control of this class.
QList<QLatin1String> namingProperties(const QMetaObject* meta)
{
    QList<QLatin1String> names{"accessibleName"_L1};
    if (ClassCatalog::inherits(meta, "ZEFCommandLinkButton"))
        names.append("title"_L1);
    else if (ClassCatalog::inherits(meta, "QAbstractButton") || ClassCatalog::inherits(meta, "ZEFFlatButton"))
        names.append("text"_L1);
    else if (ClassCatalog::inherits(meta, "ZEFToggleButton"))
        names.append({"offText"_L1, "onText"_L1});
    return names;
}

//! Designer's text for a button that shall have none is three dots.
bool saysSomething(const QString& text)
{
    return std::any_of(text.cbegin(), text.cend(),
                       [](QChar c) { return !c.isSpace() && c != u'.' && c != u'…'; });
}

bool isNamed(const Form& form, const FormWidget& widget, const QSet<QString>& buddies,
             const QSet<QString>& filled)
{
    const QList<QLatin1String> names = namingProperties(widget.created);
    const bool byItself = std::any_of(names.cbegin(), names.cend(), [&](QLatin1String name) {
        return saysSomething(valueOf(widget, name)) || filled.contains(widget.name + u'_' + name);
    });
    if (byItself || buddies.contains(widget.name))
        return true;
    // As Qt does: the title of the group box right around it names a control.
    if (widget.parent < 0)
        return false;
    const FormWidget& parent = form.widgets.at(widget.parent);
    return ClassCatalog::inherits(parent.created, "QGroupBox") && saysSomething(valueOf(parent, "title"_L1));
}

//! What a control without a text of its own is named by.
QString namingAdvice(const QMetaObject* meta)
{
    if (namingProperties(meta).size() > 1)
        return u"Give it a text, or an accessibleName when it shows a picture."_s;
    return u"Make it the buddy of a label, or give it an accessibleName."_s;
}

} // namespace

void checkMnemonics(const Project& project, QLatin1String rule, Findings* findings)
{
    for (const Form& form : project.forms) {
        QHash<QString, const FormWidget*> byName;
        const auto find = [&](const QString& name) {
            if (byName.isEmpty()) {
                // The first of a name, as Qt finds it
                for (auto widget = form.widgets.crbegin(); widget != form.widgets.crend(); ++widget)
                    byName.insert(widget->name, &*widget);
            }
            return byName.value(name);
        };
        for (const FormWidget& label : form.widgets) {
            const FormProperty* buddy = isLabel(label) ? label.property("buddy"_L1) : nullptr;
            const QChar key = buddy ? mnemonicOf(valueOf(label, "text"_L1)) : QChar();
            if (key.isNull())
                continue;
            const auto report = [&](const QString& problem) {
                findings->append(
                    {rule, form.path, buddy->value.line,
                     u"Alt+"_s + key.toUpper() + u" of \"" + label.name + u"\" does nothing: " + problem});
            };
            const FormWidget* target = find(buddy->value.text);
            if (!target) {
                report(u"no widget is named \"" + buddy->value.text + u"\". Correct its buddy.");
            } else if (focusOf(*target) == Focus::None
                       // The mnemonic presses a button, whatever its focus policy.
                       && !ClassCatalog::inherits(target->created, "QAbstractButton")) {
                report(u"its buddy \"" + target->name
                       + u"\" takes no focus. Set the focusPolicy of the buddy to Qt::StrongFocus.");
            }
        }
    }
}

void checkLabelsForTheMouse(const Project& project, QLatin1String rule, Findings* findings)
{
    const auto isForTheMouse = [](const FormWidget& widget) {
        static const ClassCatalog::Families labels{"ZEFHyperlinkLabel", "ZEFFlatButton"};
        return labels.contain(widget.created) && focusOf(widget) != Focus::Tab;
    };
    reportMouseOnly(project, rule, findings, isForTheMouse, [](const FormWidget& widget) -> QString {
        const QString what = ClassCatalog::inherits(widget.created, "ZEFHyperlinkLabel")
            ? u"links of \""_s
            : u"flat button \""_s;
        return u"the keyboard does not reach the "_s + what + widget.name
            + u"\". Set its focusPolicy to Qt::StrongFocus, or show a button with the same text too.";
    });
}

void checkTogglesForTheMouse(const Project& project, QLatin1String rule, Findings* findings)
{
    const auto isForTheMouse = [](const FormWidget& widget) {
        static const ClassCatalog::Families toggles{"ZEFToggleButton"};
        return toggles.contain(widget.created);
    };
    reportMouseOnly(project, rule, findings, isForTheMouse, [](const FormWidget& widget) -> QString {
        return u"the toggle button \"" + widget.name
            + u"\" works with the mouse only. Take a check box, or show one with the same text too.";
    });
}

void checkControlNames(const Project& project, QLatin1String rule, Findings* findings)
{
    const QSet<QString> filled = filledProperties(project);
    for (const Form& form : project.forms) {
        QSet<QString> buddies;
        for (const FormWidget& widget : form.widgets) {
            if (const FormProperty* buddy = isLabel(widget) ? widget.property("buddy"_L1) : nullptr)
                buddies.insert(buddy->value.text);
        }
        for (const FormWidget& widget : form.widgets) {
            if (!isControl(widget) || isNamed(form, widget, buddies, filled))
                continue;
            findings->append({rule, form.path, widget.line,
                              u"a screen reader has no name for the "_s + widget.className + u" \""
                                  + widget.name + u"\". " + namingAdvice(widget.created)});
        }
    }
}
