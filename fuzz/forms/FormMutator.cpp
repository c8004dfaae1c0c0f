// Changes a form as a tree of elements: classes, names, properties, values and nesting.

#include "FormInput.h"

#include <support/FuzzMutator.h>

#include <QtCore/QStringList>
#include <QtXml/QDomDocument>

#include <algorithm>
#include <array>
#include <cstring>
#include <random>
#include <vector>

namespace {

constexpr const char* planLetters = "icmzuknerlshtpbgvdxqfoaW.y";

QStringList wordsOf(const char* text)
{
    return QString::fromUtf8(text).simplified().split(u' ');
}

QStringList linesOf(const char* text)
{
    return QString::fromUtf8(text).split(u'\n');
}

const QStringList& classes()
{
    static const QStringList list = wordsOf(R"(
        QWidget QFrame QGroupBox QLabel QPushButton QLineEdit QCheckBox QRadioButton QComboBox QSpinBox QDialog
        QTabWidget QStackedWidget QScrollArea QTextEdit QPlainTextEdit QListWidget QTreeWidget QTableWidget
        QProgressBar QSlider QToolButton QToolBox QSplitter QDateEdit QCommandLinkButton QDialogButtonBox
        QMainWindow QMenuBar QDockWidget QWizard QWizardPage QMdiArea QVBoxLayout QHBoxLayout QGridLayout
        QFormLayout QStackedLayout Spacer Line ZEFCommandLinkButton ZEFToggleButton ZEFFormatCell ZEFFormatEdit
        ZEFEllipsisLabel ZEFHyperlinkLabel ZEFFlatButton ZEFLightStdSSButton ZEFLightStdSSCheckbox
        ZEFLightStdButton ZEFStdButton ZEFStdSSButton ZEFStdSSCheckbox ZEFCalendarWidget ZEFUIDialog ZEFUIWidget
        zeftogglebutton)");
    return list;
}

const QStringList& names()
{
    static const QStringList list = linesOf(R"(
okButton
close
cancelButton
reloadButton
signalButton
slotButton
deleteLater
user
password
errorLabel
titleLabel
form
qt_spacer
under_score
title
description
icon
image
%{a}
%s%n
a.b
ok/../Button)");
    return list;
}

const QStringList& tags()
{
    static const QStringList list = wordsOf(R"(
        widget layout item property attribute spacer string number bool enum set rect size x width connection
        connections row column action addaction customwidget customwidgets buttongroups buttongroup pixmap
        iconset font palette color cstring class tabstops tabstop zorder stringlist double sizepolicy ui)");
    return list;
}

const QStringList& texts()
{
    static const QStringList list = linesOf(R"(
0
1
-1
7
100
65536
2147483647
-2147483648
99999999999
1e9
true
false
%{a}
%{b}%{c}
%{
%s%n%1
<b>%{a}</b>
<a href='x'>y</a>
{3}(\d*)-{4}(\d*)
{2,4}([A-Z]*)([A-Z]{2})kg{}
{1:0O|1:0O|}(.*)(O*)
([
{99999}(.*)
Qt::AlignCenter
Qt::Vertical
QFrame::Box
QSizePolicy::Fixed
Qt::RichText
Qt::PlainText
QToolButton::InstantPopup
QLabel { color: red }
* { min-width: 40px; font-size: 200pt }
okButton
clicked()
clicked(bool)
close()
deleteLater()
setFocus()
toggle()
setText(QString)
textChanged(QString)
hide()
user
form
:/css/form.css
nothing)");
    return list;
}

//! Names of properties, each with the element of its value.
const QStringList& properties()
{
    static const QStringList list = wordsOf(R"(
        text:string title:string description:string format:string ignore:string objectName:string
        styleSheet:string toolTip:string windowTitle:string onText:string offText:string isOn:bool
        imageSize:size onImage:pixmap icon:iconset icon:pixmap frameColor:color spacing:number
        leftMargin:number bottomMargin:number maxLength:number inputMask:string echoMode:enum enabled:bool
        visible:bool checked:bool checkable:bool default:bool autoDefault:bool wordWrap:bool textFormat:enum
        alignment:set geometry:rect minimumSize:size maximumSize:size windowModality:enum buddy:cstring
        currentIndex:number value:number maximum:number focusPolicy:enum font:font sizeConstraint:enum
        shortcut:string locale:locale frameShape:enum url:string link:string unknown:string _q_dynamic:string)");
    return list;
}

class TreeMutator {
public:
    TreeMutator(QDomDocument document, unsigned int seed)
        : m_document(std::move(document))
        , m_random(seed)
    {
        collect(m_document.documentElement());
    }

    QDomDocument mutated()
    {
        for (std::size_t rest = 1 + below(3); rest > 0; --rest)
            mutateOnce();
        return m_document;
    }

private:
    void mutateOnce()
    {
        using Mutation = void (TreeMutator::*)();
        static constexpr std::array<Mutation, 12> mutations = {
            &TreeMutator::removeElement, &TreeMutator::repeatElement, &TreeMutator::copyElement,
            &TreeMutator::swapElements,  &TreeMutator::changeClass,   &TreeMutator::changeClass,
            &TreeMutator::changeName,    &TreeMutator::changeText,    &TreeMutator::changeText,
            &TreeMutator::wrapElement,   &TreeMutator::addProperty,   &TreeMutator::changeTag};
        m_elements.clear();
        collect(m_document.documentElement());
        if (!m_elements.empty())
            (this->*mutations[below(mutations.size())])();
    }

    //! The elements below the root.
    void collect(const QDomElement& parent)
    {
        for (QDomElement child = parent.firstChildElement(); !child.isNull();
             child = child.nextSiblingElement()) {
            m_elements.push_back(child);
            collect(child);
        }
    }

    std::size_t below(std::size_t limit) { return m_random() % limit; }
    QString oneOf(const QStringList& pool)
    {
        return pool.at(static_cast<qsizetype>(below(static_cast<std::size_t>(pool.size()))));
    }
    QDomElement anyElement() { return m_elements[below(m_elements.size())]; }

    QDomElement anyWidget()
    {
        std::vector<QDomElement> widgets;
        std::copy_if(
            m_elements.begin(), m_elements.end(), std::back_inserter(widgets), [](const QDomElement& e) {
                return e.tagName() == u"widget" || e.tagName() == u"layout" || e.tagName() == u"spacer";
            });
        return widgets.empty() ? QDomElement() : widgets[below(widgets.size())];
    }

    void removeElement()
    {
        QDomElement element = anyElement();
        element.parentNode().removeChild(element);
    }

    void repeatElement()
    {
        const QDomElement element = anyElement();
        element.parentNode().insertAfter(element.cloneNode(), element);
    }

    void copyElement()
    {
        const QDomNode copy = anyElement().cloneNode();
        anyElement().appendChild(copy);
    }

    void swapElements()
    {
        QDomElement one = anyElement();
        QDomElement other = anyElement();
        const QDomNode copyOfOne = one.cloneNode();
        const QDomNode copyOfOther = other.cloneNode();
        one.parentNode().replaceChild(copyOfOther, one);
        if (!other.parentNode().isNull())
            other.parentNode().replaceChild(copyOfOne, other);
    }

    void changeClass()
    {
        QDomElement widget = anyWidget();
        if (!widget.isNull())
            widget.setAttribute(QStringLiteral("class"), oneOf(classes()));
    }

    void changeName()
    {
        QDomElement element = anyElement();
        const QString other = anyElement().attribute(QStringLiteral("name"));
        element.setAttribute(QStringLiteral("name"),
                             other.isEmpty() || below(2) == 0 ? oneOf(names()) : other);
    }

    void changeText()
    {
        std::vector<QDomElement> leaves;
        std::copy_if(m_elements.begin(), m_elements.end(), std::back_inserter(leaves),
                     [](const QDomElement& e) { return e.firstChildElement().isNull(); });
        QDomElement leaf = leaves[below(leaves.size())];
        while (leaf.hasChildNodes())
            leaf.removeChild(leaf.firstChild());
        leaf.appendChild(m_document.createTextNode(oneOf(texts())));
    }

    void wrapElement()
    {
        QDomElement element = anyWidget();
        if (element.isNull())
            return;
        QDomElement wrapper = newElement("widget", oneOf(classes()));
        const QDomNode copy = element.cloneNode();
        element.parentNode().replaceChild(wrapper, element);
        if (below(2) == 0) {
            wrapper.appendChild(copy);
            return;
        }
        QDomElement layout = newElement("layout", QStringLiteral("QVBoxLayout"));
        QDomElement item = m_document.createElement(QStringLiteral("item"));
        wrapper.appendChild(layout);
        layout.appendChild(item);
        item.appendChild(copy);
    }

    QDomElement newElement(const char* tag, const QString& className)
    {
        QDomElement element = m_document.createElement(QString::fromLatin1(tag));
        element.setAttribute(QStringLiteral("class"), className);
        element.setAttribute(QStringLiteral("name"), oneOf(names()));
        return element;
    }

    void addProperty()
    {
        QDomElement widget = anyWidget();
        if (widget.isNull())
            return;
        const QStringList chosen = oneOf(properties()).split(u':');
        QDomElement property = m_document.createElement(below(8) == 0 ? QStringLiteral("attribute")
                                                                      : QStringLiteral("property"));
        property.setAttribute(QStringLiteral("name"), chosen.at(0));
        QDomElement value = m_document.createElement(chosen.at(1));
        property.appendChild(value);
        const bool rectangle = chosen.at(1) == u"rect";
        if (rectangle || chosen.at(1) == u"size") {
            for (const char* part : {"x", "y", "width", "height"}) {
                if (!rectangle && (*part == 'x' || *part == 'y'))
                    continue;
                QDomElement number = m_document.createElement(QString::fromLatin1(part));
                number.appendChild(m_document.createTextNode(oneOf(texts())));
                value.appendChild(number);
            }
        } else {
            value.appendChild(m_document.createTextNode(oneOf(texts())));
        }
        widget.insertBefore(property, widget.firstChild());
    }

    void changeTag() { anyElement().setTagName(oneOf(tags())); }

    QDomDocument m_document;
    std::mt19937 m_random;
    std::vector<QDomElement> m_elements;
};

QByteArray mutatedPlan(QByteArrayView plan, std::mt19937* random)
{
    QByteArray changed = plan.toByteArray();
    const char letter = planLetters[(*random)() % std::strlen(planLetters)];
    const qsizetype position =
        static_cast<qsizetype>((*random)() % (static_cast<std::size_t>(plan.size()) + 1));
    if (position < plan.size() && (*random)() % 2 == 0)
        changed.remove(position, 1);
    else
        changed.insert(position, letter);
    return changed;
}

} // namespace

std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maximumSize,
                                    unsigned int seed)
{
    std::mt19937 random(seed);
    const FormInput input(QByteArrayView(data, static_cast<qsizetype>(size)));
    QDomDocument document;
    // Now and then the text itself: forms that are no XML.
    if (random() % 20 == 0 || !document.setContent(input.form.toByteArray()))
        return LLVMFuzzerMutate(data, size, maximumSize);

    const QByteArray mutant = random() % 5 == 0 ? mutatedPlan(input.plan, &random) + input.form.toByteArray()
                                                : input.plan.toByteArray()
            + TreeMutator(document, static_cast<unsigned int>(random())).mutated().toByteArray(-1);
    if (mutant.size() > static_cast<qsizetype>(maximumSize))
        return size;
    std::memcpy(data, mutant.constData(), static_cast<std::size_t>(mutant.size()));
    return static_cast<std::size_t>(mutant.size());
}
