#include "pages.h"

#include "Page.h"

#include <ZEFCalendarWidget.h>
#include <ZEFCommandLinkButton.h>
#include <ZEFEllipsisLabel.h>
#include <ZEFFlatButton.h>
#include <ZEFFormatCell.h>
#include <ZEFFormatEdit.h>
#include <ZEFHyperlinkLabel.h>
#include <ZEFLightStdButton.h>
#include <ZEFLightStdSSButton.h>
#include <ZEFLightStdSSCheckbox.h>
#include <ZEFToggleButton.h>

#include <QtGui/QPainter>
#include <QtGui/QTextCharFormat>
#include <QtWidgets/QApplication>

namespace {

//! A text of a widget, which a translator may replace.
QString shown(const char* text)
{
    return QCoreApplication::translate(galleryContext, text);
}

//! A length that grows with the font; \a pixels at the usual size of 9 points.
int grown(const QWidget* widget, int pixels)
{
    constexpr double usualPoints = 9;
    return qRound(pixels * qMax(1.0, widget->font().pointSizeF() / usualPoints));
}

QPixmap drawn(const QSize& size, const std::function<void(QPainter&)>& draw)
{
    constexpr int ratio = 2;
    QPixmap pixmap(size * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter);
    return pixmap;
}

QPixmap arrowIcon()
{
    return drawn(QSize(32, 32), [](QPainter& painter) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0, 120, 70));
        painter.drawEllipse(2, 2, 28, 28);
        painter.setPen(QPen(Qt::white, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(QPolygonF({QPointF(9, 16), QPointF(22, 16), QPointF(16, 10)}));
        painter.drawLine(QPointF(22, 16), QPointF(16, 22));
    });
}

QPixmap switchImage(bool on)
{
    return drawn(QSize(40, 22), [on](QPainter& painter) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(on ? QColor(6, 150, 215) : QColor(160, 160, 164));
        painter.drawRoundedRect(QRectF(1, 1, 38, 20), 10, 10);
        painter.setBrush(Qt::white);
        painter.drawEllipse(QPointF(on ? 29 : 11, 11), 8, 8);
    });
}

QPixmap closeImage()
{
    return drawn(QSize(24, 24), [](QPainter& painter) {
        painter.setPen(QPen(QColor(150, 30, 30), 3, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(6, 6), QPointF(18, 18));
        painter.drawLine(QPointF(18, 6), QPointF(6, 18));
    });
}

ZEFCommandLinkButton* commandLink()
{
    auto* button = new ZEFCommandLinkButton;
    button->setTitle(shown("Save and continue"));
    button->setDescription(shown("Keeps what you have written and opens the next form."));
    button->setIcon(arrowIcon());
    button->setStyleSheet(QStringLiteral("#title { font-weight: bold; }"));
    button->setFrameColor(button->palette().color(QPalette::WindowText));
    button->ensurePolished();
    const int width = grown(button, 250);
    button->setFixedSize(width, button->heightForWidth(width));
    button->setAutoDefault(false);
    return button;
}

Page* commandLinkPage()
{
    auto* page = new Page(QStringLiteral("ZEFCommandLinkButton"), 3);
    page->add(QStringLiteral("normal"), commandLink());
    auto* hovered = commandLink();
    page->add(QStringLiteral("hovered"), hovered, [hovered] { hover(hovered); });
    auto* isDefault = commandLink();
    isDefault->setDefault(true);
    page->add(QStringLiteral("default"), isDefault);
    auto* pressed = commandLink();
    page->add(QStringLiteral("pressed"), pressed, [pressed] { pressMouse(pressed); });
    auto* all = commandLink();
    all->setDefault(true);
    page->add(QStringLiteral("hovered, default and focused"), all, [all] {
        hover(all);
        focus(all);
    });
    auto* disabled = commandLink();
    disabled->setDefault(true);
    disabled->setEnabled(false);
    page->add(QStringLiteral("disabled"), disabled);
    return page;
}

ZEFToggleButton* toggle(bool on)
{
    auto* button = new ZEFToggleButton;
    button->setOffText(shown("Notifications are off"));
    button->setOnText(shown("Notifications are on"));
    button->setOffImage(switchImage(false));
    button->setOnImage(switchImage(true));
    button->setSpacing(8);
    button->setMinimumWidth(grown(button, 200));
    button->setProperty("isOn", on);
    return button;
}

Page* togglePage()
{
    auto* page = new Page(QStringLiteral("ZEFToggleButton"), 3);
    page->add(QStringLiteral("off"), toggle(false));
    page->add(QStringLiteral("on"), toggle(true));
    auto* disabled = toggle(true);
    disabled->setEnabled(false);
    page->add(QStringLiteral("on, disabled"), disabled);
    return page;
}

template <class Button> Button* button(const QString& text)
{
    auto* button = new Button;
    button->setText(text);
    button->setAutoDefault(false);
    return button;
}

//! The states that all push buttons have.
template <class Button> void addButtonStates(Page* page)
{
    const QString text = shown("&Continue");
    page->add(QStringLiteral("normal"), button<Button>(text));
    auto* hovered = button<Button>(text);
    page->add(QStringLiteral("hovered"), hovered, [hovered] { hover(hovered); });
    auto* pressed = button<Button>(text);
    page->add(QStringLiteral("pressed"), pressed, [pressed] { pressMouse(pressed); });
    auto* focused = button<Button>(text);
    page->add(QStringLiteral("focused"), focused, [focused] { focus(focused); });
    auto* isDefault = button<Button>(text);
    isDefault->setDefault(true);
    page->add(QStringLiteral("default"), isDefault);
    auto* disabled = button<Button>(text);
    disabled->setEnabled(false);
    page->add(QStringLiteral("disabled"), disabled);
}

Page* paintedButtonPage()
{
    auto* page = new Page(QStringLiteral("ZEFLightStdButton"), 3);
    addButtonStates<ZEFLightStdButton>(page);
    page->add(QStringLiteral("long text"), button<ZEFLightStdButton>(shown("Continue without saving")));
    page->add(QStringLiteral("no text"), button<ZEFLightStdButton>(QString()));
    return page;
}

Page* styleSheetButtonPage()
{
    auto* page = new Page(QStringLiteral("ZEFLightStdSSButton"), 3);
    page->setStyleSheet(QStringLiteral(
        "#ZEFLightStdSSButton { background: #f4f4f5; color: #333333; border: 1px solid #6e6f75;"
        " border-radius: 4px; padding: 4px 12px; min-width: 90px; }"
        "#ZEFLightStdSSButton:default { border-width: 2px; }"
        "#ZEFLightStdSSButton:hover { background: #fff2d8; }"
        "#ZEFLightStdSSButton:pressed { background: #b8dcf2; }"
        "#ZEFLightStdSSButton:focus { border-color: #0696d7; }"
        "#ZEFLightStdSSButton:disabled { color: #a0a0a4; border-color: #c0c0c4; }"));
    addButtonStates<ZEFLightStdSSButton>(page);
    return page;
}

ZEFLightStdSSCheckbox* checkBox(const QString& text, bool on)
{
    auto* box = new ZEFLightStdSSCheckbox;
    box->setText(text);
    box->setChecked(on);
    // the size hint follows the current size, so that the size is up to the form
    const int width = grown(box, 220);
    const QRect lines = box->fontMetrics().boundingRect(0, 0, width - grown(box, 24), QWIDGETSIZE_MAX,
                                                        Qt::TextWordWrap, text);
    box->setFixedSize(width, lines.height() + 4);
    return box;
}

Page* checkBoxPage()
{
    auto* page = new Page(QStringLiteral("ZEFLightStdSSCheckbox"), 3);
    const QString text = shown("&Remember me");
    page->add(QStringLiteral("off"), checkBox(text, false));
    page->add(QStringLiteral("on"), checkBox(text, true));
    auto* hovered = checkBox(text, false);
    page->add(QStringLiteral("hovered"), hovered, [hovered] { hover(hovered); });
    auto* focused = checkBox(text, true);
    page->add(QStringLiteral("focused"), focused, [focused] { focus(focused); });
    auto* pressed = checkBox(text, false);
    page->add(QStringLiteral("pressed"), pressed, [pressed] { pressed->setDown(true); });
    auto* disabled = checkBox(text, true);
    disabled->setEnabled(false);
    page->add(QStringLiteral("disabled"), disabled);
    auto* wrapped = checkBox(
        shown("I have read the terms of use, all of them, and I do agree with each and every one."), true);
    wrapped->setStyleSheet(QStringLiteral("QCheckBox::indicator { subcontrol-position: left top; }"));
    page->add(QStringLiteral("wrapped text"), wrapped);
    return page;
}

ZEFEllipsisLabel* ellipsisLabel(const QString& text, int width)
{
    auto* label = new ZEFEllipsisLabel;
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setFixedWidth(grown(label, width));
    return label;
}

Page* ellipsisLabelPage()
{
    auto* page = new Page(QStringLiteral("ZEFEllipsisLabel"), 2);
    const QString text = shown("Quarterly report of the northern branch office.pdf");
    page->add(QStringLiteral("fits"), ellipsisLabel(shown("Report.pdf"), 200));
    page->add(QStringLiteral("elided"), ellipsisLabel(text, 200));
    auto* framed = ellipsisLabel(text, 200);
    framed->setFrameStyle(QFrame::Box | QFrame::Plain);
    page->add(QStringLiteral("elided, framed"), framed);
    auto* disabled = ellipsisLabel(text, 200);
    disabled->setEnabled(false);
    page->add(QStringLiteral("elided, disabled"), disabled);
    return page;
}

ZEFHyperlinkLabel* hyperlinkLabel()
{
    auto* label = new ZEFHyperlinkLabel;
    label->setText(shown("See the <a href='https://example.com'>terms of use</a>."));
    return label;
}

Page* hyperlinkLabelPage()
{
    auto* page = new Page(QStringLiteral("ZEFHyperlinkLabel"), 3);
    page->add(QStringLiteral("normal"), hyperlinkLabel());
    auto* disabled = hyperlinkLabel();
    disabled->setEnabled(false);
    page->add(QStringLiteral("disabled"), disabled);
    return page;
}

ZEFFlatButton* flatButton()
{
    auto* button = new ZEFFlatButton;
    button->setText(shown("Forgot your password?"));
    button->setCursor(Qt::PointingHandCursor);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setStyleSheet(
        QStringLiteral("QLabel { color: palette(link); padding: 3px; border: 1px solid transparent; }"
                       "QLabel:hover { text-decoration: underline; }"
                       "QLabel:focus { border: 1px dotted palette(link); }"
                       "QLabel:disabled { color: #808080; }"));
    return button;
}

Page* flatButtonPage()
{
    auto* page = new Page(QStringLiteral("ZEFFlatButton"), 3);
    page->add(QStringLiteral("normal"), flatButton());
    auto* hovered = flatButton();
    page->add(QStringLiteral("hovered"), hovered, [hovered] { hover(hovered); });
    auto* pressed = flatButton();
    page->add(QStringLiteral("pressed"), pressed, [pressed] { pressMouse(pressed); });
    auto* focused = flatButton();
    page->add(QStringLiteral("focused"), focused, [focused] { focus(focused); });
    auto* disabled = flatButton();
    disabled->setEnabled(false);
    page->add(QStringLiteral("disabled"), disabled);
    auto* image = new ZEFFlatButton;
    image->setPixmap(closeImage());
    image->setAccessibleName(QStringLiteral("Close"));
    image->setFocusPolicy(Qt::StrongFocus);
    page->add(QStringLiteral("an image"), image);
    return page;
}

ZEFFormatEdit* formatEdit(const QString& format, const QString& text)
{
    auto* edit = new ZEFFormatEdit(nullptr);
    edit->setFormat(format);
    edit->setText(text);
    return edit;
}

Page* formatEditPage()
{
    const QString key = QStringLiteral("{5}([A-Z0-9]*)-{5}([A-Z0-9]*)-{5}([A-Z0-9]*)");
    auto* page = new Page(QStringLiteral("ZEFFormatEdit"), 2);
    page->add(QStringLiteral("empty"), formatEdit(key, QString()));
    page->add(QStringLiteral("filled"), formatEdit(key, QStringLiteral("AB12C-DE34F-GH56I")));
    auto* highlighted = formatEdit(key, QStringLiteral("AB12C-DE34F-GH56I"));
    highlighted->setCellBottomHighlight(3, QColor(0, 120, 70));
    page->add(QStringLiteral("highlighted"), highlighted);
    auto* disabled = formatEdit(key, QStringLiteral("AB12C-DE34F-GH56I"));
    disabled->setEnabled(false);
    page->add(QStringLiteral("disabled"), disabled);
    page->add(QStringLiteral("optional cell"),
              formatEdit(QStringLiteral("{3}(\\d*)/{0,2}(\\d*)"), QStringLiteral("123/")));
    page->add(QStringLiteral("text behind the last cell"),
              formatEdit(QStringLiteral("{5}(\\d*)kg{}"), QStringLiteral("125")));
    return page;
}

ZEFFormatCell* formatCell(const QString& text)
{
    auto* cell = new ZEFFormatCell(nullptr);
    cell->setMaxLength(8);
    cell->setText(text);
    return cell;
}

Page* formatCellPage()
{
    auto* page = new Page(QStringLiteral("ZEFFormatCell"), 4);
    page->add(QStringLiteral("normal"), formatCell(QStringLiteral("AB12")));
    auto* optional = formatCell(QString());
    optional->setMinLength(0);
    page->add(QStringLiteral("optional"), optional);
    auto* highlighted = formatCell(QStringLiteral("AB12"));
    highlighted->setBottomHighlight(3, QColor(0, 120, 70));
    page->add(QStringLiteral("highlighted"), highlighted);
    auto* disabled = formatCell(QStringLiteral("AB12"));
    disabled->setEnabled(false);
    page->add(QStringLiteral("disabled"), disabled);
    return page;
}

ZEFCalendarWidget* calendar()
{
    auto* calendar = new ZEFCalendarWidget;
    calendar->setLocale(QLocale(QLocale::English, QLocale::UnitedKingdom));
    calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    // Qt's red of weekends is too pale for small text, on white as well as on black.
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
        calendar->setWeekdayTextFormat(day, QTextCharFormat());
    calendar->setSelectedDate(QDate(2024, 5, 15));
    calendar->setFixedSize(grown(calendar, 260), grown(calendar, 190));
    return calendar;
}

Page* calendarPage()
{
    auto* page = new Page(QStringLiteral("ZEFCalendarWidget"), 3);
    page->add(QStringLiteral("normal"), calendar());
    auto* ranged = calendar();
    ranged->setDateRange(QDate(2024, 5, 8), QDate(2024, 5, 24));
    page->add(QStringLiteral("days out of range"), ranged);
    auto* disabled = calendar();
    disabled->setDateRange(QDate(2024, 5, 8), QDate(2024, 5, 24));
    disabled->setEnabled(false);
    page->add(QStringLiteral("disabled"), disabled);
    return page;
}

} // namespace

QList<Page*> createPages()
{
    return {commandLinkPage(), togglePage(),        paintedButtonPage(),  styleSheetButtonPage(),
            checkBoxPage(),    ellipsisLabelPage(), hyperlinkLabelPage(), flatButtonPage(),
            calendarPage(),    formatEditPage(),    formatCellPage()};
}
