#pragma once

#include <ZEFUIExport.h>

#include <QtWidgets/QLabel>

/*!
 * A label that acts as a button. Text, image, cursor and focus policy come from the form; a flat button
 * that shall react to Enter needs a focus policy.
 *
 * \image html zefflatbutton.png
 */
class ZEFUI_EXPORT ZEFFlatButton : public QLabel {
    Q_OBJECT

public:
    explicit ZEFFlatButton(QWidget* parent = nullptr);
    ~ZEFFlatButton() override;

Q_SIGNALS:
    /*!
     * A mouse button was pressed on the label and released, wherever the pointer is by then. The receiver
     * may delete the button.
     */
    void mouseClicked();
    //! Enter or Return was pressed while the label had the focus. The receiver may delete the button.
    void enterKeyClicked();

protected:
    void mousePressEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;

private:
    Q_DISABLE_COPY_MOVE(ZEFFlatButton)

    bool m_pressed = false;
};
