#include <ZEFLightStdButton.h>

namespace {

void setColors(QLinearGradient& gradient, const QColor& top, const QColor& bottom)
{
    gradient.setColorAt(0.0, top);
    gradient.setColorAt(1.0, bottom);
}

QColor halfTransparent(QColor color)
{
    color.setAlphaF(color.alphaF() * 0.5F);
    return color;
}

} // namespace

ZEFLightStdButton::ZEFLightStdButton(QWidget* parent)
    : ZEFStdButton(parent)
{
    setObjectName(QStringLiteral("ZEFLightStdButton"));
}

ZEFLightStdButton::~ZEFLightStdButton() = default;

void ZEFLightStdButton::setProperties()
{
    const QColor normalTop(233, 233, 234);
    const QColor normalBottom(184, 184, 187);
    setColors(m_normalGradient, normalTop, normalBottom);
    setColors(m_hoverGradient, QColor(243, 243, 244), QColor(212, 212, 214));
    setColors(m_pressedGradient, QColor(200, 200, 201), QColor(157, 157, 159));
    setColors(m_disabledGradient, halfTransparent(normalTop), halfTransparent(normalBottom));
    m_accentColor = QColor(6, 150, 215);
    m_borderColor = QColor(110, 111, 117);
    m_disabledBorderColor = halfTransparent(m_borderColor);
    m_disabledSecondColor = halfTransparent(m_secondColor);
    m_disabledThirdColor = halfTransparent(m_thirdColor);
    m_disabledFourthColor = halfTransparent(m_fourthColor);
    m_textColor = QColor(51, 51, 51);
    m_disabledTextColor = m_textColor;
    m_disabledTextColor.setAlphaF(0.5);
}
