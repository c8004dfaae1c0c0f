#include "widgetDescriptions.h"

#include <QtCore/QHash>

using namespace Qt::StringLiterals;

namespace {

QString text(QLatin1String property, const QString& value)
{
    return u"<property name=\"%1\"><string>%2</string></property>"_s.arg(property, value);
}

QString untranslated(QLatin1String property, const QString& value)
{
    return u"<property name=\"%1\"><string notr=\"true\">%2</string></property>"_s.arg(property, value);
}

QString size(QLatin1String property, int width, int height)
{
    return u"<property name=\"%1\"><size><width>%2</width><height>%3</height></size></property>"_s
        .arg(property)
        .arg(width)
        .arg(height);
}

QString geometry(int width, int height)
{
    return u"<property name=\"geometry\"><rect><x>0</x><y>0</y><width>%1</width><height>%2</height></rect>"
           "</property>"_s.arg(width)
               .arg(height);
}

QString preferredSizePolicy()
{
    return u"<property name=\"sizePolicy\"><sizepolicy hsizetype=\"Preferred\" vsizetype=\"Preferred\">"
           "<horstretch>0</horstretch><verstretch>0</verstretch></sizepolicy></property>"_s;
}

// The texts of labels may come from a client, who must not bring markup with them.
QString plainText()
{
    return u"<property name=\"textFormat\"><enum>Qt::PlainText</enum></property>"_s;
}

// Without it the keyboard does not reach links and flat buttons, nor a click the edit beside its cells.
QString focusPolicy()
{
    return u"<property name=\"focusPolicy\"><enum>Qt::StrongFocus</enum></property>"_s;
}

// Product keys are read from the left in every language.
QString leftToRight()
{
    return u"<property name=\"layoutDirection\"><enum>Qt::LeftToRight</enum></property>"_s;
}

QString code(QLatin1String property)
{
    return u"<stringpropertyspecification name=\"%1\" notr=\"true\" type=\"singleline\"/>"_s.arg(property);
}

QString line(QLatin1String property)
{
    return u"<stringpropertyspecification name=\"%1\" type=\"singleline\"/>"_s.arg(property);
}

QString lines(QLatin1String property)
{
    return u"<stringpropertyspecification name=\"%1\" type=\"multiline\"/>"_s.arg(property);
}

QHash<QLatin1String, WidgetDescription> makeDescriptions()
{
    return {
        {"ZEFCommandLinkButton"_L1,
         {u"Command Link Button"_s, u"A push button with an icon, a title and a description"_s,
          u"Margins and fonts come from the style sheet; its labels are called title, description and icon. "
          "Enter presses the first visible default command link of a dialog."_s,
          u"commandLinkButton"_s,
          // Of its own the class is as low as an empty push button, in any layout.
          geometry(240, 64) + preferredSizePolicy() + size("minimumSize"_L1, 160, 0)
              + text("title"_L1, u"Title"_s) + text("description"_L1, u"What happens then"_s),
          line("title"_L1) + lines("description"_L1)}},
        {"ZEFToggleButton"_L1,
         {u"Toggle Button"_s, u"A switch with a text and an image for each of its two states"_s,
          u"It has no clicked() signal: read its property isOn, or connect to on() and off()."_s,
          u"toggleButton"_s, geometry(120, 32) + text("offText"_L1, u"Off"_s) + text("onText"_L1, u"On"_s),
          lines("offText"_L1) + lines("onText"_L1)}},
        {"ZEFFormatCell"_L1,
         {u"Format Cell"_s,
          u"One segment of a formatted input, alone"_s,
          u"Its pattern is set by the service. For input with a format take the Format Edit."_s,
          u"formatCell"_s,
          geometry(80, 28),
          {}}},
        {"ZEFFormatEdit"_L1,
         {u"Format Edit"_s, u"A row of input cells with separators, built from a format"_s,
          u"The format {3}(\\d*)-{4}(\\d*) makes two cells for 3 and 4 digits with a dash between them."_s,
          u"formatEdit"_s,
          geometry(180, 32) + focusPolicy() + leftToRight()
              + untranslated("format"_L1, u"{4}(\\d*)-{4}(\\d*)"_s),
          code("format"_L1) + code("ignore"_L1)}},
        {"ZEFEllipsisLabel"_L1,
         {u"Ellipsis Label"_s,
          u"A label that shortens its text when it does not fit"_s,
          u"The whole text is the tool tip then. The text is captured when the label is first painted: fill "
          "the form before it is shown. Here in Designer nothing is shortened."_s,
          u"ellipsisLabel"_s,
          geometry(160, 20) + text("text"_L1, u"A text that may be long"_s) + plainText(),
          {}}},
        {"ZEFHyperlinkLabel"_L1,
         {u"Hyperlink Label"_s,
          u"A label with links that asks before it opens one"_s,
          u"Without a receiver of checkInternetConnection() no link is ever opened."_s,
          u"hyperlinkLabel"_s,
          geometry(160, 20)
              + text("text"_L1, u"&lt;a href=&quot;https://example.org/&quot;&gt;Link&lt;/a&gt;"_s)
              + focusPolicy(),
          {}}},
        {"ZEFFlatButton"_L1,
         {u"Flat Button"_s,
          u"A label that acts as a button"_s,
          u"Its signals are mouseClicked() and enterKeyClicked(); it has no clicked()."_s,
          u"flatButton"_s,
          geometry(100, 24) + text("text"_L1, u"Flat button"_s) + plainText() + focusPolicy()
              + u"<property name=\"cursor\"><cursorShape>PointingHandCursor</cursorShape></property>"_s,
          {}}},
        {"ZEFLightStdSSButton"_L1,
         {u"Light Style-Sheet Button"_s,
          u"A push button that looks as its style sheet says"_s,
          u"Its text is centred, and it never shows a focus rectangle."_s,
          u"styledButton"_s,
          geometry(96, 28) + text("text"_L1, u"Button"_s),
          {}}},
        {"ZEFLightStdSSCheckbox"_L1,
         {u"Light Style-Sheet Check Box"_s,
          u"A check box for style sheets that wraps its text"_s,
          u"Its size hint never shrinks and may grow with each layout: keep its "
          "maximum height, which is a line and a half of its font."_s,
          u"styledCheckBox"_s,
          geometry(160, 24) + untranslated("styleSheet"_L1, u"ZEFLightStdSSCheckbox { max-height: 1.5em; }"_s)
              + text("text"_L1, u"Check box"_s),
          {}}},
        {"ZEFLightStdButton"_L1,
         {u"Light Painted Button"_s,
          u"A push button that draws itself in light grey"_s,
          u"It looks the same in every style."_s,
          u"paintedButton"_s,
          geometry(96, 28) + text("text"_L1, u"Button"_s),
          {}}},
    };
}

} // namespace

WidgetDescription widgetDescription(QLatin1String className)
{
    static const auto descriptions = makeDescriptions();
    return descriptions.value(className);
}
