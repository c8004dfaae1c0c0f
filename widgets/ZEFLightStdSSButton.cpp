#include <ZEFLightStdSSButton.h>

ZEFLightStdSSButton::ZEFLightStdSSButton(QWidget* parent)
    : ZEFStdSSButton(parent)
{
    setObjectName(QStringLiteral("ZEFLightStdSSButton"));
}

ZEFLightStdSSButton::~ZEFLightStdSSButton() = default;
