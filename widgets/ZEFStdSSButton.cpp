#include "ZEFStdSSButton.h"

#include "ZEFStdSSControlStyle.h"

ZEFStdSSButton::ZEFStdSSButton(QWidget* parent)
    : QPushButton(parent)
    , m_style(std::make_unique<ZEFStdSSControlStyle>(false, Qt::AlignCenter, 0))
{
    setObjectName(QStringLiteral("ZEFStdSSButton"));
    setStyle(m_style.get());
}

ZEFStdSSButton::~ZEFStdSSButton()
{
    ZEFStdSSControlStyle::leave(this);
}

QSize ZEFStdSSButton::sizeHint() const
{
    return QPushButton::sizeHint();
}

QSize ZEFStdSSButton::minimumSizeHint() const
{
    return {78, 28};
}
