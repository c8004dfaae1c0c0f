#pragma once

#include <ZEFUIExport.h>

#include <QtWidgets/QPushButton>

#include <memory>

class ZEFStdSSControlStyle;

/*!
 * A push button for style sheets: its text is centred and it never shows a focus rectangle. The object
 * name "ZEFStdSSButton" is its selector.
 *
 * Users take ZEFLightStdSSButton; a DLL exports only those members of this class that they may bind to.
 */
class ZEFUI_SHARED_TYPE ZEFStdSSButton : public QPushButton {
    Q_OBJECT

public:
    explicit ZEFStdSSButton(QWidget* parent = nullptr);
    ~ZEFStdSSButton() override;

    //! The hint of a push button.
    ZEFUI_EXPORT QSize sizeHint() const override;
    //! Always 78 × 28.
    ZEFUI_EXPORT QSize minimumSizeHint() const override;

private:
    Q_DISABLE_COPY_MOVE(ZEFStdSSButton)

    std::unique_ptr<ZEFStdSSControlStyle> m_style;
};
