#pragma once

#include <ZEFUIExport.h>

#include <QtCore/QPointer>
#include <QtGui/QColor>
#include <QtGui/QPixmap>
#include <QtWidgets/QPushButton>

class QLabel;

/*!
 * A push button with an icon on the left and a title above a description beside it.
 *
 * It has no bevel, no background and no text of its own: it paints thin frames that tell hover (outermost),
 * default and keyboard focus (innermost), and nothing at all while it is disabled. Margins, fonts and
 * backgrounds come from the form's style sheet; the labels are called "title", "description" and "icon".
 *
 * Its size hint is that of an empty push button, and its vertical policy is Fixed: in a layout it becomes as
 * flat as such a button and hides its texts. Give it the vertical policy Preferred, with which its height
 * follows its width as the texts wrap, and a minimum width.
 *
 * The property "shortcut", or a mnemonic in the property "text", presses it like Space. Neither is shown.
 *
 * In a ZEFUIDialog, Enter and Return press the first visible default command link, wherever the focus is.
 *
 * setIcon() and icon() hide the functions of QAbstractButton, which take a QIcon and have no effect here,
 * and clicked() hides QAbstractButton::clicked().
 *
 * \image html zefcommandlinkbutton.png
 */
class ZEFUI_EXPORT ZEFCommandLinkButton : public QPushButton {
    Q_OBJECT
    Q_PROPERTY(QString title READ title WRITE setTitle)
    Q_PROPERTY(QString description READ description WRITE setDescription)
    Q_PROPERTY(QPixmap icon READ icon WRITE setIcon)
    Q_PROPERTY(QColor frameColor READ frameColor WRITE setFrameColor)

public:
    explicit ZEFCommandLinkButton(QWidget* parent = nullptr);
    ~ZEFCommandLinkButton() override;

    //! Text that looks like markup is shown as rich text: escape what comes from a client. Links in it are
    //! not active, as clicks belong to the button.
    QString title() const;
    void setTitle(const QString& title);

    //! As title().
    QString description() const;
    void setDescription(const QString& description);

    //! Null when there is no icon. The icon is shown as it is, never scaled.
    QPixmap icon() const;
    void setIcon(const QPixmap& icon);

    //! The frame of a hovered button; black at first. An invalid colour draws black, here and below.
    QColor frameColor() const;
    void setFrameColor(const QColor& color);

    //! The frame of a default button; cyan at first.
    QColor defaultFrameColor() const;
    void setDefaultFrameColor(const QColor& color);

    //! The dotted focus frame is drawn in the inverse of this colour, opaque; gray at first.
    QColor kbdFocusFrameColor() const;
    void setKbdFocusFrameColor(const QColor& color);

    /*!
     * Handles a key press that went to another widget as if it had come to this button; null is ignored.
     * It may emit clicked(), whose receiver may delete the button.
     */
    void keyPressByDefault(QKeyEvent* e);

    bool event(QEvent* e) override;

Q_SIGNALS:
    /*!
     * The button was used: any mouse button was released, also when the pointer has left the button
     * meanwhile, or Space or Select was pressed, or Enter or Return on a default or auto-default button. A
     * key that is held counts once.
     *
     * This is not QAbstractButton::clicked(), which follows its own rules; connect to one of the two
     * only. \a checked is always false. The receiver may delete the button.
     */
    void clicked(bool checked = false);

protected:
    void mouseReleaseEvent(QMouseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void enterEvent(QEnterEvent* e) override;
    void leaveEvent(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    Q_DISABLE_COPY_MOVE(ZEFCommandLinkButton)
    void pressByShortcut();
    void setHovered(bool hovered);

    QPointer<QLabel> m_title;
    QPointer<QLabel> m_description;
    QPointer<QLabel> m_icon;
    bool m_hovered = false;
    QColor m_frameColor = Qt::black;
    QColor m_defaultFrameColor = Qt::cyan;
    QColor m_kbdFocusFrameColor = Qt::gray;
};
