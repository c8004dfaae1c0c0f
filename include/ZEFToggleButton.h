#pragma once

#include <ZEFUIExport.h>

#include <QtCore/QPointer>
#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

class QLabel;

/*!
 * A switch with an image and a text for each of its two states, off at first.
 *
 * Every release of a mouse button flips it. The labels, called "title" and "image", stay empty until a
 * text or an image is set for the current state, or the state changes. There is no keyboard handling;
 * assistive technology sees a check box, which it can toggle.
 *
 * The state is changed through the property isOn, or through the slots toggle() and setOn(bool) by name.
 *
 * \image html zeftogglebutton.png
 */
class ZEFUI_EXPORT ZEFToggleButton : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString offText READ offText WRITE setOffText)
    Q_PROPERTY(QString onText READ onText WRITE setOnText)
    Q_PROPERTY(QPixmap offImage READ offImage WRITE setOffImage)
    Q_PROPERTY(QPixmap onImage READ onImage WRITE setOnImage)
    Q_PROPERTY(bool isOn READ isOn WRITE setOn)
    Q_PROPERTY(QSize imageSize READ imageSize WRITE setImageSize)
    Q_PROPERTY(int spacing READ spacing WRITE setSpacing)

public:
    explicit ZEFToggleButton(QWidget* parent = nullptr);
    ~ZEFToggleButton() override;

    //! Shown while off. Text that looks like markup is shown as rich text: escape what comes from a client.
    //! Links in it are not active, as clicks belong to the button.
    QString offText() const;
    void setOffText(const QString& text);

    //! Shown while on; as offText().
    QString onText() const;
    void setOnText(const QString& text);

    //! Shown while off, as it is; may be null.
    QPixmap offImage() const;
    void setOffImage(const QPixmap& image);

    //! Shown while on, as it is; may be null.
    QPixmap onImage() const;
    void setOnImage(const QPixmap& image);

    bool isOn() const;

    //! Kept for the form's own use, 32 × 32 at first: no image is ever scaled to it.
    QSize imageSize() const;
    void setImageSize(const QSize& size);

    //! The gap between image and text in pixels, 4 at first; a negative one means the style's own. More than
    //! QWIDGETSIZE_MAX is kept, and that much is shown.
    int spacing() const;
    void setSpacing(int spacing);

Q_SIGNALS:
    /*!
     * The state has changed; image and text change right afterwards. The receiver may switch back, and
     * may delete the button.
     */
    void off();
    //! As off().
    void on();

protected:
    void mouseReleaseEvent(QMouseEvent* e) override;

private Q_SLOTS:
    void toggle();
    void setOn(bool on = true);

private:
    Q_DISABLE_COPY_MOVE(ZEFToggleButton)
    void showText();
    void showImage();

    bool m_on = false;
    QString m_offText;
    QString m_onText;
    QPixmap m_offImage;
    QPixmap m_onImage;
    QPointer<QLabel> m_textLabel;
    QPointer<QLabel> m_imageLabel;
    QSize m_imageSize{32, 32};
    int m_spacing = 4;
};
