#pragma once

#include <ZEFStdButton.h>
#include <ZEFUIExport.h>

/*!
 * The painted push button of forms: light grey gradients, a dark border and a blue focus ring, drawn
 * without the help of a style. Its minimum size hint is 78 × 28 and its height hint 28; its width hint
 * follows its text.
 *
 * Its object name is "ZEFLightStdButton" at first; a form gives it the form's own name.
 *
 * \image html zeflightstdbutton.png
 */
class ZEFUI_EXPORT ZEFLightStdButton : public ZEFStdButton {
    Q_OBJECT

public:
    explicit ZEFLightStdButton(QWidget* parent = nullptr);
    ~ZEFLightStdButton() override;

protected:
    void setProperties() override;

private:
    Q_DISABLE_COPY_MOVE(ZEFLightStdButton)
};
