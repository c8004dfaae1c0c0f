// Dictionaries and placeholders: values, lists of dictionaries, and a small form that is filled again and
// again.
//
// Lines: "d" starts another dictionary, "k<key>" names the key that "v<value>" sets and "r" removes;
// "t<text>" is filled, "n<text>" read as a number; "w<text>" becomes the next widget's text; "i" interpolates
// the form, "u" updates its properties, "c<key>" applies the operations on children.

#include <support/FuzzApplication.h>
#include <support/FuzzTarget.h>
#include <support/FuzzText.h>

#include <ZEFCommandLinkButton.h>
#include <ZEFDictionary.h>
#include <ZEFDictionaryList.h>
#include <ZEFFormatEdit.h>
#include <ZEFToggleButton.h>
#include <ZEFUIElement.h>
#include <ZEFValue.h>

#include <QtCore/QHash>
#include <QtCore/QRegularExpression>
#include <QtCore/QTranslator>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>

#include <limits>
#include <memory>
#include <vector>

namespace {

constexpr qsizetype mostSteps = 100;

//! Knows the texts that start with a T.
class Translator : public QTranslator {
public:
    QString translate(const char*, const char* source, const char*, int) const override
    {
        const QString text = QString::fromUtf8(source);
        return text.startsWith(u'T') ? u"<%{" + text + u"}>" : QString();
    }
    bool isEmpty() const override { return false; }
};

//! A dictionary and a second account of what it holds.
struct Dictionary {
    ZEFDictionary dictionary;
    QStringList keys;
    QHash<QString, QString> values;

    void set(const QString& key, const QString& value)
    {
        if (!values.contains(key))
            keys.append(key);
        values[key] = value;
        dictionary.setString(key, value);
    }

    void remove(const QString& key)
    {
        keys.removeAll(key);
        values.remove(key);
        dictionary.remove(key);
    }

    void check() const
    {
        FUZZ_REQUIRE(dictionary.keys() == keys);
        for (const QString& key : keys) {
            FUZZ_REQUIRE(dictionary.contains(key));
            FUZZ_REQUIRE(dictionary.getString(key) == values.value(key));
        }
    }
};

class Scenario {
public:
    Scenario();

    void run(const FuzzStep& step);
    void check() const;

private:
    Q_DISABLE_COPY_MOVE(Scenario)

    void makeForm();

    QString filled(const QString& text, QTranslator* translator) const;
    void fill(const QString& text);
    void readNumber(const QString& text) const;
    void setNextText(const QString& text);
    void interpolate();
    void updateProperties();
    void operateOnChildren(const QString& key);

    const Dictionary* holderOf(const QString& key) const;

    std::vector<std::unique_ptr<Dictionary>> m_dictionaries;
    ZEFDictionaryList m_list;
    QString m_key;

    std::unique_ptr<QWidget> m_host;
    std::unique_ptr<ZEFUIElement> m_element;
    QList<QWidget*> m_texts;
    qsizetype m_nextText = 0;
    bool m_untouched = true;
};

const char* textPropertyOf(const QWidget* widget)
{
    return qobject_cast<const QGroupBox*>(widget) ? "title" : "text";
}

QString textOfWidget(const QWidget* widget)
{
    return widget->property(textPropertyOf(widget)).toString();
}

template <class Widget> Widget* made(QWidget* parent, const char* name)
{
    auto* widget = new Widget(parent);
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

Scenario::Scenario()
{
    m_dictionaries.push_back(std::make_unique<Dictionary>());
    m_list.append(&m_dictionaries.back()->dictionary);
}

//! Makes the form when the first step needs it.
void Scenario::makeForm()
{
    if (m_host)
        return;
    m_host = std::make_unique<QWidget>();
    auto* group = made<QGroupBox>(m_host.get(), "group");
    // In the order in which the form's widgets are filled.
    m_texts = {group, made<QLabel>(group, "label"), made<QPushButton>(group, "button")};
    made<QSpinBox>(m_host.get(), "spin");
    made<QLineEdit>(m_host.get(), "line");
    made<ZEFToggleButton>(m_host.get(), "toggle");
    made<ZEFCommandLinkButton>(m_host.get(), "link");
    made<ZEFFormatEdit>(m_host.get(), "edit");
    m_texts.append(made<QLabel>(m_host.get(), "label"));
    m_element = std::make_unique<ZEFUIElement>(m_host.get(), nullptr, nullptr, 0);
}

void Scenario::run(const FuzzStep& step)
{
    Dictionary& current = *m_dictionaries.back();
    switch (step.what) {
    case 'd':
        m_dictionaries.push_back(std::make_unique<Dictionary>());
        m_list.append(&m_dictionaries.back()->dictionary);
        break;
    case 'k':
        m_key = step.text();
        break;
    case 'v':
        current.set(m_key, step.text());
        break;
    case 'r':
        current.remove(m_key);
        break;
    case 't':
        fill(step.text());
        break;
    case 'n':
        readNumber(step.text());
        break;
    case 'w':
        makeForm();
        setNextText(step.text());
        break;
    case 'i':
        makeForm();
        interpolate();
        break;
    case 'u':
        makeForm();
        updateProperties();
        break;
    case 'c':
        makeForm();
        operateOnChildren(step.text());
        break;
    default:
        break;
    }
}

void Scenario::check() const
{
    for (const auto& dictionary : m_dictionaries)
        dictionary->check();
}

//! The rule in its plainest form: from the left, the shortest placeholder at each place that a dictionary
//! holds.
QString Scenario::filled(const QString& text, QTranslator* translator) const
{
    QString result;
    qsizetype position = 0;
    while (position < text.size()) {
        const bool opens = QStringView(text).sliced(position).startsWith(u"%{");
        const qsizetype end = opens ? text.indexOf(u'}', position) : -1;
        const QString key = end < 0 ? QString() : text.sliced(position + 2, end - position - 2);
        const Dictionary* holder = end < 0 ? nullptr : holderOf(key);
        if (!holder) {
            result += text.at(position++);
            continue;
        }
        const QString value = holder->values.value(key);
        const bool translatable = translator && !value.contains(QChar::Null) && value.startsWith(u'T');
        result += translatable ? translator->translate("zefmain", value.toUtf8().constData()) : value;
        position = end + 1;
    }
    return result;
}

void Scenario::fill(const QString& text)
{
    Translator translator;
    FUZZ_REQUIRE(m_list.interpolateString(text, nullptr) == filled(text, nullptr));
    FUZZ_REQUIRE(m_list.interpolateString(text, &translator) == filled(text, &translator));
    FUZZ_REQUIRE(ZEFDictionaryList().interpolateString(text, &translator) == text);

    ZEFDictionaryBase* where = &m_dictionaries.front()->dictionary;
    const Dictionary* holder = holderOf(text);
    const ZEFValue value = m_list.search(text, &where);
    FUZZ_REQUIRE(where == (holder ? &holder->dictionary : nullptr));
    FUZZ_REQUIRE(value.asString() == (holder ? holder->values.value(text) : QString()));
}

void Scenario::readNumber(const QString& text) const
{
    static const QRegularExpression decimal(QStringLiteral("\\A[+-]?[0-9]+\\z"));
    const QString number = text.trimmed();
    bool inRange = false;
    const qlonglong value = number.toLongLong(&inRange);
    const bool isLong = decimal.match(number).hasMatch() && inRange
        && value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
    FUZZ_REQUIRE(ZEFValue(text).asLong() == (isLong ? value : 0));
    FUZZ_REQUIRE(QString(ZEFValue(text)) == text);
}

void Scenario::setNextText(const QString& text)
{
    QWidget* widget = m_texts.at(m_nextText++ % m_texts.size());
    widget->setProperty(textPropertyOf(widget), text);
}

void Scenario::interpolate()
{
    QStringList expected;
    QHash<QString, QString> sources;
    for (const QWidget* widget : std::as_const(m_texts)) {
        const QString shown = textOfWidget(widget);
        const QString source = sources.value(shown, shown);
        expected.append(filled(source, nullptr));
        if (expected.constLast() != source)
            sources[expected.constLast()] = source;
    }
    m_element->interpolate(m_list);
    QStringList first;
    for (const QWidget* widget : std::as_const(m_texts))
        first.append(textOfWidget(widget));
    // A form that was never filled before knows no templates but those it meets.
    if (m_untouched)
        FUZZ_REQUIRE(first == expected);
    m_untouched = false;

    // Filled again from the same dictionaries it shows the same.
    m_element->interpolate(m_list);
    QStringList second;
    for (const QWidget* widget : std::as_const(m_texts))
        second.append(textOfWidget(widget));
    FUZZ_REQUIRE(second == first);
}

void Scenario::updateProperties()
{
    m_untouched = false;
    const Dictionary& current = *m_dictionaries.back();
    QString expected;
    bool writesText = false;
    bool renames = false;
    for (const QString& key : current.keys) {
        const QByteArrayList pieces = key.toLatin1().split('_');
        renames = renames || pieces.value(1) == "objectName";
        if (pieces.size() < 2 || pieces.at(0) != "label" || pieces.at(1) != "text")
            continue;
        writesText = true;
        expected = current.values.value(key);
    }
    m_element->updateProperties(current.dictionary);
    if (!writesText || renames)
        return;
    const QList<QLabel*> labels = m_host->findChildren<QLabel*>(QStringLiteral("label"));
    for (const QLabel* label : labels)
        FUZZ_REQUIRE(label->text() == expected);
}

void Scenario::operateOnChildren(const QString& key)
{
    const Dictionary* holder = holderOf(key);
    const QString value = holder ? holder->values.value(key) : QString();
    const auto* spin = m_host->findChild<QSpinBox*>(QStringLiteral("spin"));
    if (!spin)
        return;
    m_element->enableChildIf(QStringLiteral("spin"), key, &m_list);
    FUZZ_REQUIRE(spin->isEnabledTo(m_host.get()) == (value != u"False"));
    m_element->showChildIf(QStringLiteral("spin"), key, &m_list);
    FUZZ_REQUIRE(spin->isHidden() == (value != u"True"));
    const bool wasHidden = spin->isHidden();
    m_element->showChild(QStringLiteral("spin"), key, &m_list);
    const long display = ZEFValue(value).asLong();
    FUZZ_REQUIRE(spin->isHidden() == (display == 2 || (wasHidden && display != 0 && display != 1)));
    m_element->setChildProperty(key, value, value);
    m_element->childProperty(QStringLiteral("label"), key);
}

const Dictionary* Scenario::holderOf(const QString& key) const
{
    for (const auto& dictionary : m_dictionaries) {
        if (dictionary->values.contains(key))
            return dictionary.get();
    }
    return nullptr;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QList<FuzzStep> steps = stepsOf(QByteArrayView(data, static_cast<qsizetype>(size)));
    Scenario scenario;
    for (const FuzzStep& step : steps.first(std::min(steps.size(), mostSteps))) {
        scenario.run(step);
        scenario.check();
    }
    FuzzApplication::takeDebugLines();
    FuzzApplication::takeWarnings();
    return 0;
}
