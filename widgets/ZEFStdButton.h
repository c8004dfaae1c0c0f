#pragma once

#include <ZEFUIExport.h>

#include <QtGui/QBrush>
#include <QtGui/QColor>
#include <QtWidgets/QPushButton>

#include <memory>

/*!
 * A push button that draws itself: a rounded body with a gradient, a border, a focus ring and a centred
 * text. A concrete variant sets gradients and colours in setProperties(). The object name is
 * "ZEFStdButton".
 *
 * The states of the drawing follow the events, only while the button is enabled: a button that is disabled
 * while it is hovered, focused or pressed is so again when it is enabled. The pressed look ends when the key
 * or the mouse button is released or the focus leaves, whichever comes first.
 *
 * Users take ZEFLightStdButton; a DLL exports only those members of this class that they may bind to.
 */
class ZEFUI_SHARED_TYPE ZEFStdButton : public QPushButton {
    Q_OBJECT

public:
    explicit ZEFStdButton(QWidget* parent = nullptr);
    ~ZEFStdButton() override;

    //! As wide as the text asks, which may be less than the minimum; always 28 high.
    ZEFUI_EXPORT QSize sizeHint() const override;
    //! Always 78 × 28.
    ZEFUI_EXPORT QSize minimumSizeHint() const override;

protected:
    //! Sets the gradients and colours of a variant. Called once, by the first painting.
    virtual void setProperties() = 0;
    //! Draws the whole button, \a rect being its outline, in the state of now.
    ZEFUI_EXPORT virtual void drawButton(QPainter* painter, QRectF rect);

    ZEFUI_EXPORT void paintEvent(QPaintEvent* e) override;
    ZEFUI_EXPORT void enterEvent(QEnterEvent* e) override;
    ZEFUI_EXPORT void leaveEvent(QEvent* e) override;
    ZEFUI_EXPORT void focusInEvent(QFocusEvent* e) override;
    ZEFUI_EXPORT void focusOutEvent(QFocusEvent* e) override;
    ZEFUI_EXPORT void keyPressEvent(QKeyEvent* e) override;
    ZEFUI_EXPORT void keyReleaseEvent(QKeyEvent* e) override;
    ZEFUI_EXPORT void mousePressEvent(QMouseEvent* e) override;
    ZEFUI_EXPORT void mouseReleaseEvent(QMouseEvent* e) override;

    // For the variants. What the drawing does not use is there for theirs.
    bool m_initialised = false;
    double m_sideMargin = 3.0;
    double m_borderWidth = 1.0;
    double m_spareWidth1 = 1.0;
    double m_padding = 1.0;
    double m_spareWidth2 = 1.0;
    double m_focusRingWidth = 1.0;
    double m_textMargin = 2.0;
    QLinearGradient m_normalGradient;
    QLinearGradient m_hoverGradient;
    QLinearGradient m_pressedGradient;
    QLinearGradient m_disabledGradient;
    QColor m_accentColor;
    QColor m_spareColor;
    QColor m_borderColor;
    QColor m_disabledBorderColor;
    QColor m_secondColor;
    QColor m_disabledSecondColor;
    QColor m_thirdColor;
    QColor m_disabledThirdColor;
    QColor m_fourthColor;
    QColor m_disabledFourthColor;
    QColor m_textColor;
    QColor m_disabledTextColor;
    bool m_hovered = false;
    bool m_focused = false;
    bool m_pressed = false;
    // chosen by drawButton()
    QLinearGradient m_workingGradient;
    QColor m_workingBorderColor;
    QColor m_workingSecondColor;
    QColor m_workingThirdColor;
    QColor m_workingFourthColor;
    QColor m_workingTextColor;

private:
    Q_DISABLE_COPY_MOVE(ZEFStdButton)
    struct Body;
    void initialise();
    void chooseColors();
    bool showsFocus() const;
    void drawBody(QPainter* painter, QRectF rect) const;
    const QImage& bodyImage(double ratio);
    void noteState(const QString& event, bool& flag, bool value);

    // what most paintings repeat
    std::unique_ptr<Body> m_body;
};
