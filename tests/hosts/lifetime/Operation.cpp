#include "Operation.h"

#include <QtCore/QList>
#include <QtCore/QRandomGenerator>

using namespace Qt::StringLiterals;

namespace {

struct Verb {
    QString name;
    int weight;
    //! For each argument what it may be.
    QList<QStringList> choices;
};

const QStringList forms = {u"names"_s,     u"labels"_s,      u"allwidgets"_s, u"allwidgets"_s,
                           u"qtwidgets"_s, u"formatinput"_s, u"dialogroot"_s, u"missing"_s};
const QStringList kinds = {u"toggle"_s,     u"commandlink"_s, u"stdbutton"_s, u"ssbutton"_s, u"sscheckbox"_s,
                           u"flat"_s,       u"hyperlink"_s,   u"ellipsis"_s,  u"calendar"_s, u"formatedit"_s,
                           u"formatedit"_s, u"cell"_s,        u"listedit"_s,  u"lineedit"_s, u"pushbutton"_s};
const QStringList formats = {
    u"{3}(\\d*)-{4}(\\d*)"_s,
    u"{2,4}([A-Z0-9]*)([A-Z]{2}[0-9]*)"_s,
    u"{1:0O|1:0O|1:0O|}([A-Z0-9]*)([A-Z1-9]*)-{2}([A-Z0-9]*)([A-Z1-9]*)/{1}(\\w*)kg{}"_s,
    u"{1}(.*){1}(.*){1}(.*){1}(.*)"_s,
    u"((("_s,
    u"{2|,}"_s};
const QStringList texts = {u"1"_s, u"12-3456"_s, u"OO0"_s, u"ab"_s, u"<a"_s, u"%1%n%{key}"_s, u"AAAA-1111"_s};
const QStringList keys = {u"1"_s,         u"A"_s,     u"0"_s,     u"-"_s,      u"Backspace"_s, u"Delete"_s,
                          u"Left"_s,      u"Right"_s, u"Home"_s,  u"End"_s,    u"Tab"_s,       u"Backtab"_s,
                          u"Return"_s,    u"Enter"_s, u"Space"_s, u"Escape"_s, u"Paste"_s,     u"Undo"_s,
                          u"SelectAll"_s, u"Down"_s,  u"Up"_s};
const QStringList buttons = {u"left"_s, u"left"_s, u"left"_s, u"right"_s, u"middle"_s};
const QStringList sides = {u"centre"_s, u"centre"_s, u"corner"_s, u"outside"_s};
const QStringList sheets = {u"none"_s, u"QWidget{color:red}"_s, u"*{padding:3px}"_s};
const QStringList small = {u"0"_s, u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s};
const QStringList many = {u"0"_s,  u"1"_s,  u"2"_s,  u"3"_s,  u"4"_s,  u"5"_s,  u"7"_s, u"9"_s,
                          u"11"_s, u"13"_s, u"17"_s, u"19"_s, u"23"_s, u"29"_s, u"31"_s};
const QStringList properties = {u"text"_s,
                                u"title"_s,
                                u"description"_s,
                                u"isOn"_s,
                                u"onText"_s,
                                u"offText"_s,
                                u"format"_s,
                                u"ignore"_s,
                                u"spacing"_s,
                                u"leftMargin"_s,
                                u"checked"_s,
                                u"default"_s,
                                u"objectName"_s,
                                u"windowTitle"_s,
                                u"toolTip"_s,
                                u"maxLength"_s,
                                u"selectedDate"_s,
                                u"visible"_s,
                                u"layoutDirection"_s,
                                u"value"_s,
                                u"value"_s,
                                u"currentIndex"_s,
                                u"currentIndex"_s,
                                u"currentRow"_s,
                                u"plainText"_s,
                                u"checked"_s,
                                u"time"_s};
const QStringList calls = {u"click"_s,     u"toggle"_s,      u"link"_s,      u"copy"_s,         u"paste"_s,
                           u"cut"_s,       u"clear"_s,       u"select"_s,    u"deselect"_s,     u"validate"_s,
                           u"alternate"_s, u"noalternate"_s, u"savefocus"_s, u"restorefocus"_s, u"case"_s,
                           u"highlight"_s, u"reselect"_s,    u"month"_s,     u"equivs"_s,       u"pattern"_s,
                           u"popup"_s,     u"keypress"_s};
const QStringList signalNames = {u"any"_s,
                                 u"any"_s,
                                 u"clicked"_s,
                                 u"clicked"_s,
                                 u"pressed"_s,
                                 u"released"_s,
                                 u"toggled"_s,
                                 u"stateChanged"_s,
                                 u"on"_s,
                                 u"off"_s,
                                 u"mouseClicked"_s,
                                 u"enterKeyClicked"_s,
                                 u"linkActivated"_s,
                                 u"checkInternetConnection"_s,
                                 u"internetNotConnected"_s,
                                 u"textChanged"_s,
                                 u"textChanged"_s,
                                 u"textEdited"_s,
                                 u"editingFinished"_s,
                                 u"returnPressed"_s,
                                 u"selectionChanged"_s,
                                 u"cursorPositionChanged"_s,
                                 u"inputRejected"_s,
                                 u"validityChanged"_s,
                                 u"validityMessageChanged"_s,
                                 u"moveLeft"_s,
                                 u"moveRight"_s,
                                 u"moveTo"_s,
                                 u"focusOut"_s,
                                 u"copyMe"_s,
                                 u"pasteMe"_s,
                                 u"cutMe"_s,
                                 u"deleteMe"_s,
                                 u"selectOutside"_s,
                                 u"destroyed"_s,
                                 u"respondClosed"_s,
                                 u"dialog_clicked"_s,
                                 u"dialog_key_pressed"_s,
                                 u"dialog_show"_s,
                                 u"dialog_hide"_s,
                                 u"finished"_s,
                                 u"rejected"_s,
                                 u"accepted"_s,
                                 u"closing"_s,
                                 u"localeChanged"_s,
                                 u"delegate"_s,
                                 u"delegate"_s,
                                 u"activated"_s,
                                 u"currentPageChanged"_s,
                                 u"valueChanged"_s,
                                 u"valueChanged"_s,
                                 u"currentIndexChanged"_s,
                                 u"currentTextChanged"_s,
                                 u"editTextChanged"_s,
                                 u"highlighted"_s,
                                 u"dateTimeChanged"_s,
                                 u"sliderPressed"_s,
                                 u"sliderMoved"_s,
                                 u"sliderReleased"_s,
                                 u"actionTriggered"_s,
                                 u"currentRowChanged"_s,
                                 u"itemSelectionChanged"_s,
                                 u"itemPressed"_s,
                                 u"itemClicked"_s,
                                 u"currentItemChanged"_s,
                                 u"itemExpanded"_s,
                                 u"currentChanged"_s,
                                 u"tabBarClicked"_s,
                                 u"currentCellChanged"_s,
                                 u"cellPressed"_s,
                                 u"keySequenceChanged"_s,
                                 u"undoAvailable"_s,
                                 u"accepted"_s};

const QList<Verb>& verbs()
{
    static const QList<Verb> table = {
        {u"create"_s,
         12,
         {{u"dialog"_s, u"widget"_s, u"formlessdialog"_s, u"formlesswidget"_s},
          forms,
          {u"top"_s, u"child"_s}}},
        {u"add"_s, 14, {kinds}},
        {u"press"_s, 6, {buttons, sides}},
        {u"move"_s, 4, {sides}},
        {u"release"_s, 6, {buttons, sides}},
        {u"click"_s, 10, {buttons}},
        {u"realclick"_s, 3, {{u"left"_s}}},
        {u"key"_s, 16, {keys}},
        {u"type"_s, 6, {texts}},
        {u"enter"_s, 1, {}},
        {u"leave"_s, 1, {}},
        {u"focus"_s, 8, {}},
        {u"unfocus"_s, 1, {}},
        {u"activate"_s, 2, {}},
        {u"hide"_s, 2, {}},
        {u"show"_s, 5, {}},
        {u"enable"_s, 3, {}},
        {u"disable"_s, 2, {}},
        {u"reparent"_s, 2, {small, many}},
        {u"sheet"_s, 2, {sheets}},
        {u"style"_s, 1, {{u"Fusion"_s, u"Windows"_s}}},
        {u"language"_s, 2, {}},
        {u"paint"_s, 2, {}},
        {u"resize"_s, 2, {{u"0"_s, u"1"_s, u"20"_s, u"90"_s, u"300"_s}, {u"0"_s, u"1"_s, u"20"_s, u"90"_s}}},
        {u"set"_s, 8, {properties, texts + small + formats}},
        {u"call"_s, 14, {calls, texts}},
        {u"clipboard"_s, 1, {texts}},
        {u"delete"_s, 6, {}},
        {u"deletelater"_s, 2, {}},
        {u"close"_s, 2, {}},
        {u"elementclose"_s, 1, {}},
        {u"setclosing"_s, 1, {{u"0"_s, u"1"_s, u"1"_s, u"1"_s}}},
        {u"destroy"_s, 1, {}},
        {u"deleteelement"_s, 1, {}},
        {u"load"_s, 1, {forms}},
        {u"locale"_s, 1, {{u"de"_s, u"en"_s}}},
        {u"interpolate"_s, 1, {texts}},
        {u"update"_s,
         1,
         {{u"okButton"_s, u"myFlatButton"_s},
          {u"enabled"_s, u"visible"_s, u"text"_s},
          {u"true"_s, u"false"_s}}},
        {u"child"_s, 2, {{u"show"_s, u"hide"_s, u"enable"_s, u"disable"_s, u"focus"_s}}},
        {u"escape"_s, 1, {}},
        {u"accept"_s, 1, {}},
        {u"tick"_s, 2, {}},
        {u"wait"_s, 4, {}},
        {u"spin"_s, 2, {}},
        {u"loop"_s, 2, {small}},
    };
    return table;
}

//! What happens inside of signals more often than outside: a form that ends there is what all this is about.
const QList<Verb> endings = {{u"delete"_s, 0, {}},       {u"delete"_s, 0, {}},    {u"elementclose"_s, 0, {}},
                             {u"elementclose"_s, 0, {}}, {u"destroy"_s, 0, {}},   {u"close"_s, 0, {}},
                             {u"wait"_s, 0, {}},         {u"loop"_s, 0, {small}}, {u"loop"_s, 0, {small}}};
constexpr int insideSignals = 35; // percent
constexpr int endingsInside = 60; // percent

class Lot {
public:
    explicit Lot(quint32 seed)
        : m_random(seed)
    {
    }

    QString line()
    {
        Operation operation;
        const bool inside = below(100) < insideSignals;
        if (inside)
            operation.signal = oneOf(signalNames);
        const Verb verb = inside && below(100) < endingsInside ? oneOf(endings) : drawnVerb();
        operation.verb = verb.name;
        operation.place.kind =
            inside ? static_cast<Operation::Place::Kind>(below(4)) : Operation::Place::Numbered;
        operation.place.host = below(6);
        operation.place.widget = below(3) == 0 ? 0 : below(40);
        for (const QStringList& choice : verb.choices)
            operation.arguments.append(oneOf(choice));
        return operation.toLine();
    }

private:
    int below(int bound) { return m_random.bounded(bound); }

    template <class T> T oneOf(const QList<T>& choice)
    {
        return choice.at(below(static_cast<int>(choice.size())));
    }

    Verb drawnVerb()
    {
        int total = 0;
        for (const Verb& verb : verbs())
            total += verb.weight;
        int number = below(total);
        for (const Verb& verb : verbs()) {
            number -= verb.weight;
            if (number < 0)
                return verb;
        }
        return verbs().constLast();
    }

    QRandomGenerator m_random;
};

QString toText(const Operation::Place& place)
{
    switch (place.kind) {
    case Operation::Place::Numbered:
        break;
    case Operation::Place::Emitter:
        return u"emitter"_s;
    case Operation::Place::Parent:
        return u"parent"_s;
    case Operation::Place::Host:
        return u"host"_s;
    }
    return QString::number(place.host) + u'.' + QString::number(place.widget);
}

std::optional<Operation::Place> placeFrom(const QString& text)
{
    if (text == u"emitter")
        return Operation::Place{Operation::Place::Emitter};
    if (text == u"parent")
        return Operation::Place{Operation::Place::Parent};
    if (text == u"host")
        return Operation::Place{Operation::Place::Host};
    const QStringList numbers = text.split(u'.');
    bool isHost = false;
    bool isWidget = false;
    const int host = numbers.value(0).toInt(&isHost);
    const int widget = numbers.value(1).toInt(&isWidget);
    if (numbers.size() != 2 || !isHost || !isWidget || host < 0 || widget < 0)
        return std::nullopt;
    return Operation::Place{Operation::Place::Numbered, host, widget};
}

} // namespace

std::optional<Operation> Operation::fromLine(const QString& line)
{
    QStringList words = line.split(u' ', Qt::SkipEmptyParts);
    Operation operation;
    if (words.size() > 2 && words.constFirst() == u"when") {
        operation.signal = words.at(1);
        words = words.mid(2);
    }
    if (words.size() < 2)
        return std::nullopt;
    operation.verb = words.takeFirst();
    const std::optional<Place> place = placeFrom(words.takeFirst());
    if (!place)
        return std::nullopt;
    operation.place = *place;
    operation.arguments = words;
    return operation;
}

QString Operation::toLine() const
{
    QStringList words;
    if (!signal.isEmpty())
        words = QStringList{u"when"_s, signal};
    words << verb << toText(place);
    return (words + arguments).join(u' ');
}

QStringList drawnOperations(quint32 seed, int count)
{
    Lot lot(seed);
    QStringList lines;
    for (int i = 0; i < count; ++i)
        lines.append(lot.line());
    return lines;
}
