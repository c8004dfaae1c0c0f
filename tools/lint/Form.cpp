#include "Form.h"

#include "ClassCatalog.h"
#include "tools/common/InputFile.h"

#include <QtCore/QXmlStreamReader>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 endOfForm = std::numeric_limits<qint64>::max();

//! What an open element is to the reader.
enum class Element {
    Document,
    Ui,
    FormClass,
    FormComment,
    Widget,
    //! An item, action, layout and the like: its properties are nobody's that the library fills.
    Holder,
    WidgetProperty,
    OtherProperty,
    StringList,
    String,
    PlainValue,
    ValuePart,
    CustomWidget,
    CustomClass,
    CustomBase,
    Other
};

//! Whether the text of the element matters; most of a form is blanks between elements.
bool hasText(Element element)
{
    return element == Element::String || element == Element::PlainValue || element == Element::ValuePart
        || element == Element::FormClass || element == Element::FormComment || element == Element::CustomClass
        || element == Element::CustomBase;
}

class FormReader {
public:
    FormReader(const QString& path, const QByteArray& contents)
        : m_xml(contents)
        , m_check(ClassCatalog::formClasses())
    {
        m_form.path = path;
    }

    std::optional<Form> read(QString* error);

private:
    struct OpenSuppression {
        qsizetype depth;
        qsizetype index;
    };

    void startElement();
    void endElement();
    void comment();
    Element elementIn(Element parent);
    void startWidget();
    void startString();
    void endString();
    void addPart(QStringView name, QStringView value);
    QString attribute(QLatin1String name) const { return m_xml.attributes().value(name).toString(); }

    QXmlStreamReader m_xml;
    FormCheck m_check;
    Form m_form;
    QList<Element> m_open{Element::Document};
    QList<qsizetype> m_openWidgets;
    FormProperty m_property;
    FormText m_string;
    QString m_text;
    QString m_customClass;
    QString m_customBase;
    Suppressions m_pendingSuppressions;
    QList<OpenSuppression> m_openSuppressions;
};

std::optional<Form> FormReader::read(QString* error)
{
    while (!m_xml.atEnd() && !m_xml.hasError()) {
        m_xml.readNext();
        m_check.look(m_xml);
        switch (m_xml.tokenType()) {
        case QXmlStreamReader::StartElement:
            startElement();
            break;
        case QXmlStreamReader::EndElement:
            endElement();
            break;
        case QXmlStreamReader::Characters:
        case QXmlStreamReader::EntityReference:
            if (hasText(m_open.constLast()))
                m_text += m_xml.text();
            break;
        case QXmlStreamReader::Comment:
            comment();
            break;
        default:
            break;
        }
    }
    if (!m_xml.hasError() && m_form.widgets.isEmpty())
        m_xml.raiseError(u"the form holds no widget"_s);
    if (m_xml.hasError()) {
        *error = m_form.path + u':' + QString::number(m_xml.lineNumber()) + u": "
            + m_xml.errorString().simplified();
        return std::nullopt;
    }
    m_form.faults = m_check.faults();
    // The promotions stand at the end of a form.
    for (FormWidget& widget : m_form.widgets)
        widget.created = ClassCatalog::created(m_form, widget);
    return std::move(m_form);
}

void FormReader::startElement()
{
    const Element element = elementIn(m_open.constLast());
    m_open.append(element);
    m_text.clear();
    for (const Suppression& suppression : std::as_const(m_pendingSuppressions)) {
        m_openSuppressions.append({m_open.size(), m_form.suppressions.size()});
        m_form.suppressions.append(suppression);
    }
    m_pendingSuppressions.clear();

    switch (element) {
    case Element::Widget:
        startWidget();
        break;
    case Element::WidgetProperty:
        m_property = FormProperty();
        m_property.name = attribute("name"_L1);
        m_property.value.line = m_xml.lineNumber();
        break;
    case Element::StringList:
        startString();
        break;
    case Element::String:
        // In a list only the list says how its strings are translated.
        if (m_open.at(m_open.size() - 2) != Element::StringList)
            startString();
        m_string.line = m_xml.lineNumber();
        break;
    case Element::PlainValue:
        for (const QXmlStreamAttribute& attribute : m_xml.attributes())
            addPart(attribute.name(), attribute.value());
        break;
    case Element::CustomWidget:
        m_customClass.clear();
        m_customBase.clear();
        break;
    default:
        break;
    }
}

//! What the element that was just opened is, below \a parent.
Element FormReader::elementIn(Element parent)
{
    const QStringView name = m_xml.name();
    switch (parent) {
    case Element::Document:
        if (name != u"ui") {
            m_xml.raiseError(u"is no Qt Designer form"_s);
        } else if (const auto version = m_xml.attributes().value("version"_L1);
                   !version.isEmpty() && version.toDouble() < 4) {
            m_xml.raiseError(u"is a form of an old Qt Designer, which the form loader refuses"_s);
        }
        return Element::Ui;
    case Element::Ui:
        if (name == u"class")
            return Element::FormClass;
        if (name == u"comment")
            return Element::FormComment;
        if (name == u"widget")
            return Element::Widget;
        return Element::Other;
    case Element::WidgetProperty:
    case Element::OtherProperty:
        if (name == u"string")
            return Element::String;
        return name == u"stringlist" ? Element::StringList : Element::PlainValue;
    case Element::StringList:
        return name == u"string" ? Element::String : Element::Other;
    case Element::PlainValue:
        return Element::ValuePart;
    case Element::String:
    case Element::ValuePart:
    case Element::FormClass:
    case Element::FormComment:
    case Element::CustomClass:
    case Element::CustomBase:
        return Element::Other;
    case Element::CustomWidget:
        if (name == u"class")
            return Element::CustomClass;
        if (name == u"extends")
            return Element::CustomBase;
        return Element::Other;
    case Element::Widget:
        if (name == u"property")
            return Element::WidgetProperty;
        break;
    case Element::Holder:
    case Element::Other:
        break;
    }
    if (name == u"widget")
        return Element::Widget;
    if (name == u"property" || name == u"attribute")
        return Element::OtherProperty;
    if (name == u"customwidget")
        return Element::CustomWidget;
    return parent == Element::Widget ? Element::Holder : parent;
}

void FormReader::startWidget()
{
    FormWidget widget;
    widget.className = attribute("class"_L1);
    widget.name = attribute("name"_L1);
    widget.parent = m_openWidgets.isEmpty() ? -1 : m_openWidgets.constLast();
    widget.line = m_xml.lineNumber();
    m_openWidgets.append(m_form.widgets.size());
    m_form.widgets.append(std::move(widget));
}

void FormReader::endElement()
{
    const Element element = m_open.takeLast();
    switch (element) {
    case Element::FormClass:
        m_form.className = m_text.trimmed();
        break;
    case Element::FormComment:
        if (const auto rules = suppressedRules(m_text))
            m_form.suppressions.append({0, endOfForm, *rules});
        break;
    case Element::Widget:
        m_openWidgets.removeLast();
        break;
    case Element::String:
        endString();
        break;
    case Element::PlainValue:
        if (m_open.constLast() == Element::WidgetProperty)
            m_property.value.text = m_text.trimmed();
        break;
    case Element::ValuePart:
        addPart(m_xml.name(), QStringView(m_text).trimmed());
        break;
    case Element::WidgetProperty:
        m_form.widgets[m_openWidgets.constLast()].properties.append(std::move(m_property));
        break;
    case Element::CustomClass:
        m_customClass = m_text.trimmed();
        break;
    case Element::CustomBase:
        m_customBase = m_text.trimmed();
        break;
    case Element::CustomWidget:
        if (!m_customBase.isEmpty())
            m_form.promotedClasses.insert(m_customClass, m_customBase);
        break;
    default:
        break;
    }
    m_text.clear();
    while (!m_openSuppressions.isEmpty() && m_openSuppressions.constLast().depth > m_open.size()) {
        m_form.suppressions[m_openSuppressions.constLast().index].lastLine = m_xml.lineNumber();
        m_openSuppressions.removeLast();
    }
    // A comment with nothing after it in its element speaks of nothing.
    m_pendingSuppressions.clear();
}

void FormReader::startString()
{
    m_string = FormText();
    m_string.comment = attribute("comment"_L1);
    m_string.translatable = m_xml.attributes().value("notr"_L1) != "true"_L1;
}

void FormReader::endString()
{
    m_string.text = m_text;
    if (m_open.constLast() == Element::WidgetProperty) {
        m_property.value = m_string;
        m_property.isString = true;
    } else {
        m_form.otherTexts.append(m_string);
    }
}

void FormReader::addPart(QStringView name, QStringView value)
{
    // Of a property of an item or a layout the parts are lost: the next property of a widget begins anew.
    m_property.parts.insert(name.toString(), value.toString());
}

void FormReader::comment()
{
    if (const auto rules = suppressedRules(m_xml.text()))
        m_pendingSuppressions.append({m_xml.lineNumber(), endOfForm, *rules});
}

} // namespace

const FormProperty* FormWidget::property(QLatin1String propertyName) const
{
    const auto found =
        std::find_if(properties.cbegin(), properties.cend(),
                     [&](const FormProperty& property) { return property.name == propertyName; });
    return found == properties.cend() ? nullptr : &*found;
}

std::optional<Form> readForm(const QString& path, QString* error)
{
    const std::optional<QByteArray> contents = readInputFile(path, error);
    return contents ? parseForm(path, *contents, error) : std::nullopt;
}

std::optional<Form> parseForm(const QString& path, const QByteArray& contents, QString* error)
{
    return FormReader(path, contents).read(error);
}
