#pragma once

#include <ZEFPipeFacilityInvocationContext.h>
#include <ZEFUIExport.h>

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

class ZEFUIElement;

/*!
 * A plain top-level window that shows one form and answers one client request.
 *
 * However the form is closed (by the window system, Escape, a widget named "close", close() or the
 * element's close()), respondClosed() is emitted at most once, and the window deletes itself:
 * at once after Escape and in the element's close(), else at the next tick of its element, at most
 * about 100 ms later. A window that is hidden without being closed is shown again by the next tick.
 *
 * With another host as \a parent the form becomes that form's child: the parent deletes it. A class
 * derived from this one is not recognised as a host by the element's lookups.
 */
class ZEFUI_EXPORT ZEFUIWidget : public QWidget {
    Q_OBJECT

public:
    //! Loads the form at once; element()->loaded() says whether it worked. Takes over \a context.
    ZEFUIWidget(const QString& form, const QString& locale, QWidget* parent, Qt::WindowFlags flags,
                ZEFPipeFacilityInvocationContext* context);
    //! A host without a form yet. Takes over \a context.
    explicit ZEFUIWidget(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::Widget,
                         ZEFPipeFacilityInvocationContext* context = nullptr);
    //! Deletes the element, and with it the context.
    ~ZEFUIWidget() override;

    /*!
     * A host with the form loaded, or null. When the form cannot be loaded the empty host is kept all
     * the same: it appears about 100 ms later and lives until the user closes it. The context is null
     * until the caller sets one on the element.
     */
    static ZEFUIWidget* create(const QString& form, const QString& locale, QWidget* parent,
                               Qt::WindowFlags flags);

    //! The form's element; owned. Null only after the element was deleted on its own.
    ZEFUIElement* element() const;

Q_SIGNALS:
    /*!
     * The form was closed with \a selection. \a context is deleted soon after the signal: use it in a
     * direct connection. The receiver may delete the host.
     */
    void respondClosed(ZEFPipeFacilityInvocationContext* context, int selection);

public Q_SLOTS:
    //! Dispatches the click of the sending widget to the delegate; nothing when called directly.
    void clicked(bool checked = false);
    //! Closes the host.
    void rootClosed();

protected:
    void keyPressEvent(QKeyEvent* e) override;
    void closeEvent(QCloseEvent* e) override;

private:
    Q_DISABLE_COPY_MOVE(ZEFUIWidget)

    QPointer<ZEFUIElement> m_element;
};
