#include <ZEFLightStdSSCheckbox.h>

ZEFLightStdSSCheckbox::ZEFLightStdSSCheckbox(QWidget* parent)
    : ZEFStdSSCheckbox(parent)
{
    setObjectName(QStringLiteral("ZEFLightStdSSCheckbox"));
}

ZEFLightStdSSCheckbox::~ZEFLightStdSSCheckbox() = default;
