#pragma once

#include <ZEFStdSSCheckbox.h>
#include <ZEFUIExport.h>

/*!
 * The style-sheet check box of forms, whose text wraps to its width and stands at the top left.
 *
 * Its size hint is never below its current height plus the style's margins (4 pixels in most styles), so
 * that every new layout can make it grow. A form gives it a fixed or a maximum height, above all in a
 * dialog of fixed size.
 *
 * Its object name is "ZEFLightStdSSCheckbox" at first, for the selectors of a style sheet; a form gives it
 * the form's own name. It carries a style of its own, which its style sheet goes on top of; do not share
 * that style with other widgets.
 *
 * \image html zeflightstdsscheckbox.png
 */
class ZEFUI_EXPORT ZEFLightStdSSCheckbox : public ZEFStdSSCheckbox {
    Q_OBJECT

public:
    explicit ZEFLightStdSSCheckbox(QWidget* parent = nullptr);
    ~ZEFLightStdSSCheckbox() override;

private:
    Q_DISABLE_COPY_MOVE(ZEFLightStdSSCheckbox)
};
