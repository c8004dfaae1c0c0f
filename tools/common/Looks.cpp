#include "Looks.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

namespace {

struct Colours {
    QColor window;
    QColor base;
    QColor button;
    QColor text;
    QColor disabledText;
    QColor highlight;
    QColor link;
};

QPalette paletteOf(const Colours& colours)
{
    // Qt derives the shades between button and window.
    QPalette palette(colours.button, colours.window);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                           QPalette::BrightText, QPalette::ToolTipText}) {
        palette.setColor(QPalette::All, role, colours.text);
        palette.setColor(QPalette::Disabled, role, colours.disabledText);
    }
    palette.setColor(QPalette::Base, colours.base);
    palette.setColor(QPalette::AlternateBase, colours.button);
    palette.setColor(QPalette::ToolTipBase, colours.base);
    palette.setColor(QPalette::PlaceholderText, colours.disabledText);
    palette.setColor(QPalette::Highlight, colours.highlight);
    palette.setColor(QPalette::HighlightedText, Qt::black);
    palette.setColor(QPalette::Link, colours.link);
    palette.setColor(QPalette::LinkVisited, colours.link);
    return palette;
}

} // namespace

QPalette Looks::darkPalette()
{
    return paletteOf({QColor(0x20, 0x20, 0x20), QColor(0x2b, 0x2b, 0x2b), QColor(0x3a, 0x3a, 0x3a), Qt::white,
                      QColor(0x9a, 0x9a, 0x9a), QColor(0x60, 0xcd, 0xff), QColor(0x60, 0xcd, 0xff)});
}

QPalette Looks::highContrastPalette()
{
    return paletteOf({Qt::black, Qt::black, Qt::black, Qt::white, QColor(0x3f, 0xf2, 0x3f),
                      QColor(0x1a, 0xeb, 0xff), Qt::yellow});
}

void Looks::apply(const QPalette& palette)
{
    QApplication::setPalette(palette);
    // Qt keeps another one for them, which desktops change too.
    QPalette toolTip = palette;
    toolTip.setBrush(QPalette::Base, palette.brush(QPalette::ToolTipBase));
    QToolTip::setPalette(toolTip);
}

void Looks::setFontSize(double points)
{
    QFont font = QApplication::font();
    font.setPointSizeF(points);
    QApplication::setFont(font);
}
