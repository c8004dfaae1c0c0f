#pragma once

#include <ZEFStdSSButton.h>
#include <ZEFUIExport.h>

/*!
 * The style-sheet push button of forms: it looks as the style sheet says, with centred text and without a
 * focus rectangle.
 *
 * Its object name is "ZEFLightStdSSButton" at first, for the selectors of a style sheet; a form gives it
 * the form's own name. It carries a style of its own, which its style sheet goes on top of; do not share
 * that style with other widgets.
 *
 * \image html zeflightstdssbutton.png
 */
class ZEFUI_EXPORT ZEFLightStdSSButton : public ZEFStdSSButton {
    Q_OBJECT

public:
    explicit ZEFLightStdSSButton(QWidget* parent = nullptr);
    ~ZEFLightStdSSButton() override;

private:
    Q_DISABLE_COPY_MOVE(ZEFLightStdSSButton)
};
