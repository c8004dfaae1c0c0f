#pragma once

#include <ZEFUIExport.h>

#include <QtWidgets/QCheckBox>

#include <memory>

class ZEFStdSSControlStyle;

/*!
 * A check box for style sheets that wraps its text, from the top left. The object name "ZEFStdSSCheckbox"
 * is its selector.
 *
 * Users take ZEFLightStdSSCheckbox; a DLL exports only those members of this class that they may bind to.
 */
class ZEFUI_SHARED_TYPE ZEFStdSSCheckbox : public QCheckBox {
    Q_OBJECT

public:
    explicit ZEFStdSSCheckbox(QWidget* parent = nullptr);
    ~ZEFStdSSCheckbox() override;

    /*!
     * The size of the text wrapped to the current width.
     *
     * The height is never below the current height plus the style's margins, so that each new layout may
     * make the box a little taller: give it a fixed or a maximum height in the form.
     */
    ZEFUI_EXPORT QSize sizeHint() const override;

private:
    Q_DISABLE_COPY_MOVE(ZEFStdSSCheckbox)

    std::unique_ptr<ZEFStdSSControlStyle> m_style;
};
