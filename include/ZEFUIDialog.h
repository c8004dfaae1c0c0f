#pragma once

#include <ZEFPipeFacilityInvocationContext.h>
#include <ZEFUIExport.h>

#include <QtCore/QPointer>
#include <QtWidgets/QDialog>

class ZEFUIElement;

/*!
 * A dialog that shows one form and answers one client request.
 *
 * However the form is closed (by the window system, Escape, a widget named "close", close() or the
 * element's close()), respondClosed() is emitted at most once, and the dialog deletes itself a
 * millisecond later; the element's close() deletes it at once. Enter and Return go to the first visible
 * default ZEFCommandLinkButton, if there is one. A dialog that is hidden without being closed is shown again
 * by the element's next tick, also one that Escape hid while enableCloseOnEscape() is off.
 *
 * Receivers of dialog_show() and dialog_hide(), and of rejected(), accepted() and finished(), run in the
 * middle of Qt's own showing, hiding and closing: they may call the element's close(),
 * but must not delete the dialog themselves.
 */
class ZEFUI_EXPORT ZEFUIDialog : public QDialog {
    Q_OBJECT

public:
    /*!
     * Loads the form at once; element()->loaded() says whether it worked. Takes over \a context. The
     * dialog is window modal when it has a parent, and modeless otherwise.
     */
    ZEFUIDialog(const QString& form, const QString& locale, QWidget* parent, Qt::WindowFlags flags,
                ZEFPipeFacilityInvocationContext* context);
    //! A host without a form yet; unlike the widget host it wants a dialog as parent and stays on top. Takes
    //! over \a context.
    explicit ZEFUIDialog(QDialog* parent = nullptr, Qt::WindowFlags flags = Qt::WindowStaysOnTopHint,
                         ZEFPipeFacilityInvocationContext* context = nullptr);
    //! Deletes the element, and with it the context.
    ~ZEFUIDialog() override;

    /*!
     * A dialog of fixed size with the form loaded, or null. When the form cannot be loaded the empty
     * dialog is kept all the same: it appears about 100 ms later and lives until the user closes it. The
     * context is null until the caller sets one on the element.
     */
    static ZEFUIDialog* create(const QString& form, const QString& locale, QWidget* parent,
                               Qt::WindowFlags flags);

    //! The form's element; owned. Null only after the element was deleted on its own.
    ZEFUIElement* element() const;

    /*!
     * Ties the dialog's size to its form's size hint, or frees it from every constraint, the form's
     * minimum size included. Does nothing before a form is loaded. A form loaded later is not fixed, but
     * the dialog takes the size that it asks for; call setFixedSize(true) again to tie it.
     */
    void setFixedSize(bool fixed);
    using QDialog::setFixedSize;

    //! Whether Escape closes the dialog and answers the request; true at first.
    void enableCloseOnEscape(bool enable);

    //! Emits dialog_clicked() for every release of a mouse button that reaches the dialog itself.
    void mouseReleaseEvent(QMouseEvent* e) override;
    //! As QDialog's; a form that is closed meanwhile is deleted afterwards.
    void done(int result) override;

Q_SIGNALS:
    /*!
     * The form was closed with \a selection. \a context is deleted soon after the signal: use it in a
     * direct connection. The receiver may delete the host.
     */
    void respondClosed(ZEFPipeFacilityInvocationContext* context, int selection);
    void dialog_clicked();
    void dialog_key_pressed(int key);
    void dialog_show();
    void dialog_hide();

public Q_SLOTS:
    //! Dispatches the click of the sending widget to the delegate; nothing when called directly.
    void clicked(bool checked = false);
    //! Closes the host.
    void rootClosed();

protected:
    void keyPressEvent(QKeyEvent* e) override;
    void closeEvent(QCloseEvent* e) override;
    void showEvent(QShowEvent* e) override;
    void hideEvent(QHideEvent* e) override;

private:
    Q_DISABLE_COPY_MOVE(ZEFUIDialog)
    void closeAndAnswer();

    QPointer<ZEFUIElement> m_element;
    bool m_closeOnEscape = true;
};
