#pragma once

#include <ZEFUIExport.h>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <memory>

class QPixmap;
class QWidget;
class ZEFDictionary;
class ZEFDictionaryList;
class ZEFPipeFacilityInvocationContext;
class ZEFUIDialog;
class ZEFUIElementPrivate;
class ZEFUIWidget;

/*!
 * One shown form: a Qt Designer form, loaded by name from the application's resources into a host
 * widget, translated, styled, filled with data and connected to a delegate by name.
 *
 * A service normally does not create elements. It creates a host (ZEFUIDialog or ZEFUIWidget), asks
 * it for its element() and tells the element what to do:
 *
 * \code
 * ZEFUIDialog* dialog = ZEFUIDialog::create(u"login"_s, u"de"_s, nullptr, Qt::Dialog);
 * dialog->element()->setDelegate(&delegate);
 * dialog->element()->setContext(request);
 * dialog->element()->interpolate(dictionaries);
 * dialog->element()->show();
 * \endcode
 *
 * Names: a form "login" is the resource :/forms/win_login.ui, else :/forms/login.ui. A widget "ok"
 * is styled by :/css/win_ok.css, else :/css/ok.css, and its click calls the delegate's method
 * ok_clicked(). Texts are translated by :/i18n/zefmain_<locale>.qm.
 *
 * Lifetime: the host owns its element and deletes it in its destructor. The element never deletes
 * the form widget; it deletes its host only in close() and destroy(). Every signal of an element or a
 * host, and every delegate method, may close the form: treat the element as gone after any call that
 * emits, unless a QPointer says otherwise. A slot of a signal of the form's widgets may run in the middle of
 * Qt's work with that widget: see close() for how it closes the form. It must not delete the host directly,
 * nor call setFormPath() except from a click.
 *
 * Threads: everything runs on the GUI thread. Nothing here throws; what goes wrong is logged and the
 * call returns. An element that has lost its widget (after setClosing(false), or because the widget
 * died) ignores every operation.
 */
class ZEFUI_EXPORT ZEFUIElement : public QObject {
    Q_OBJECT

public:
    /*!
     * Loads the form \a formName into \a widget at once and starts the housekeeping.
     *
     * \param widget the host; not owned; null gives an element that does nothing
     * \param parentElement the element of the form this one was opened from, or null; it deletes
     *        this element when it goes first
     * \param formName the name of the form, not a path; a form that cannot be loaded leaves
     *        loaded() false
     * \param locale a locale name as QLocale accepts it; it chooses the translator
     * \param context the client request that the form answers; owned from here on; may be null
     * \param clientPID the process id of the requesting client, 0 when it is not known
     */
    ZEFUIElement(QWidget* widget, ZEFUIElement* parentElement, const QString& formName, const QString& locale,
                 ZEFPipeFacilityInvocationContext* context, long clientPID);

    /*!
     * As above, but without a form and without a locale: setFormPath() loads one later. Takes over
     * \a context as well.
     */
    ZEFUIElement(QWidget* widget, ZEFUIElement* parentElement, ZEFPipeFacilityInvocationContext* context,
                 long clientPID);

    //! Deletes the child elements and the context, and leaves the parent element's list.
    ~ZEFUIElement() override;

    // What the form belongs to

    //! The object that receives the form's clicks; not owned; null after it died.
    QObject* delegate() const;
    /*!
     * Replaces the delegate and connects the form's widgets to its like-named signals and slots
     * (makeOrBreakConnections()). Connections made for an earlier delegate stay, so the same delegate set
     * twice gets each direct click twice; a form loaded afterwards gets no direct connections. Clicks
     * that are dispatched by name are not concerned. \a delegate is not owned, may be null and may die
     * at any time.
     */
    void setDelegate(QObject* delegate);

    //! The process whose foreground windows the form may step in front of; 0 at first for hosts.
    long clientPID() const;
    void setClientPID(long pid);

    //! Marks the element for the caller's own use; nothing in the library acts on it.
    void setSecondary(bool secondary);

    //! The client request that the form answers; owned by the element; may be null.
    ZEFPipeFacilityInvocationContext* context() const;
    //! Replaces the request. The previous one is not deleted: it belongs to the caller again.
    void setContext(ZEFPipeFacilityInvocationContext* context);

    //! The host widget; null after setClosing(false) and after the widget died.
    QWidget* widget() const;

    // Loading and styling

    /*!
     * Loads the form \a name into the host and replaces a form that is already there.
     *
     * The previous form is deleted first, also when the new one cannot be loaded. All widgets below
     * the host are wired and styled, those of child hosts parented to it included. A form whose top widget
     * is a window, a QDialog or a QMainWindow, becomes a plain widget inside the host. What the form itself
     * does to end its top widget (a connection to close(), or to accept() or reject() of a dialog) closes the
     * host.
     *
     * The library log has the name and the locale of every load, the form's custom widgets and the style
     * sheets that were found. On failure Qt's debug output says "Could not open file ... for reading",
     * or "Could not load UI file: ..." when the file holds no form, or one that Qt cannot build (a layout of
     * an unknown class, a class promoted in a circle or more than 300 times, elements nested deeper than 300,
     * more than 10,000 rows or columns), with the path that was tried last; loaded() stays false.
     */
    void setFormPath(const QString& name);
    //! The resource path that setFormPath() chose last, also when that form could not be loaded.
    QString formPath() const;
    //! Whether the host holds a form.
    bool loaded() const;

    /*!
     * Writes the style sheet :/css/win_<name>.css, else :/css/<name>.css, to \a widget; an empty
     * \a name means the widget's object name. Without such a resource, or with an empty one, or for a
     * null widget, nothing happens.
     */
    void setWidgetStyleSheet(QWidget* widget, const QString& name);
    //! Remembers \a path; the style of no widget changes. Any path is accepted.
    void setStyleSheetPath(const QString& path);
    QString styleSheetPath() const;

    //! Stores the locale for the next setFormPath() and emits localeChanged(), also when it is the same.
    void setLocale(const QString& locale);
    QString locale() const;

    // Filling the form

    /*!
     * Writes values into widgets. A key is <objectName>_<property>, read as Latin-1; pieces after a second
     * underscore are ignored; a key without an underscore is skipped. All widgets of that name are
     * written, the value converted to the property's type. Unknown names are skipped. Each write leaves
     * a line in Qt's debug output, with the object name that the widget has after it, and with asterisks for
     * the value when the widget is a line edit that hides its text.
     */
    void updateProperties(const ZEFDictionary& properties);
    /*!
     * Translates every string property of the host and of every widget below it, and replaces its
     * %{key} placeholders by the values of \a dictionaries. It may be run again with other values:
     * the template behind each text that it wrote is remembered while the element lives, and the
     * map of templates only grows.
     *
     * All string properties take part, objectName and styleSheet included. A text that equals one it
     * wrote counts as that one, wherever it stands; after an empty value this holds for every empty
     * text. A placeholder that no dictionary holds any more leaves the text of the earlier run.
     */
    void interpolate(const ZEFDictionaryList& dictionaries);
    //! The same for one widget; a null \a widget is ignored.
    void interpolateWidget(QWidget* widget, const ZEFDictionaryList& dictionaries);

    // Named children: the first widget of that name below the host; unknown names are ignored

    void hideChild(const QString& name);
    void showChild(const QString& name);
    void showChild(const QString& name, bool visible);
    /*!
     * Shows by the number under \a key: 0 enables and shows, 1 disables and shows, 2 disables and
     * hides, any other number changes nothing. A key that no dictionary holds counts as 0. A null
     * list changes nothing.
     */
    void showChild(const QString& name, const QString& key, ZEFDictionaryList* dictionaries);
    void enableChild(const QString& name, bool enabled);
    //! Enables the child unless the value under \a key is exactly "False". A null list changes nothing.
    void enableChildIf(const QString& name, const QString& key, ZEFDictionaryList* dictionaries);
    //! Shows the child if the value under \a key is exactly "True", hides it otherwise. A null list changes
    //! nothing.
    void showChildIf(const QString& name, const QString& key, ZEFDictionaryList* dictionaries);
    void setChildFocus(const QString& name);
    //! setWidgetProperty() on the child; false when there is no such child.
    bool setChildProperty(const QString& name, const QString& property, const QVariant& value);
    //! widgetProperty() of the child; invalid when there is no such child.
    QVariant childProperty(const QString& name, const QString& property) const;
    /*!
     * Fills the child's background with \a pixmap; \a scaled stretches it to the child's current
     * size. False when there is no such child or \a name is empty.
     */
    bool setChildBackground(const QString& name, const QPixmap& pixmap, bool scaled);
    /*!
     * Writes \a pixmap into \a property of every widget whose property is a QPixmap, up to the first
     * widget whose property is a QIcon: that one is written too, and ends the walk with true. False
     * when no icon property was met. \a extra is not used.
     */
    bool setChildProperties(const QString& property, const QPixmap& pixmap, const QString& extra);

    //! Writes a property by name; false for a null widget or an unknown property; dynamic ones do not count.
    static bool setWidgetProperty(QWidget* widget, const QString& property, const QVariant& value);
    //! Reads a property by name; invalid for a null widget or an unknown property.
    static QVariant widgetProperty(QWidget* widget, const QString& property);

    // From any object of a form back to its element and host; null in, null out

    //! The element of \a object if it is a host of exactly one of the two host classes, else null.
    static ZEFUIElement* elementFromQObject(QObject* object);
    //! The element of the nearest host at or above \a object, else null.
    static ZEFUIElement* elementFromChild(QObject* object);
    //! The top-most ancestor of \a object if it is a ZEFUIDialog. A host that has a parent is not found.
    static ZEFUIDialog* dialogFromChild(QObject* object);
    //! The top-most ancestor of \a object if it is a ZEFUIWidget. A host that has a parent is not found.
    static ZEFUIWidget* widgetFromChild(QObject* object);

    // Dispatch and wiring

    /*!
     * Calls the delegate's method <objectName of sender>_<signal> with the context and the values of
     * the properties that its parameter names ask for: a QVariant parameter nameEdit_text receives
     * the text of the widget nameEdit, of the last one if there are several. Up to nine values; with
     * more the method is not called. The method may delete the form. A delegate in another thread is
     * called from that thread's event loop; the form and its context may be gone by then.
     *
     * Qt's debug output has each value that was read, a method that the delegate does not have, and a
     * widget or property that does not exist; the method is not called then. A parameter name without
     * exactly one underscore adds no value: the call has one value too few, and Qt finds no method for it.
     * What was typed into a line edit that hides its text is shown as a row of asterisks.
     *
     * A method that runs an event loop, such as QDialog::exec(), keeps its form and its context until it
     * returns, whatever the user closes meanwhile. QCoreApplication::processEvents() is no event loop.
     */
    void dispatch(QObject* sender, const char* signal);
    //! The index of the delegate's first method called \a name; -1 without one or without a delegate.
    int findMethod(const QString& name) const;
    //! Connects (or disconnects) the clicks of all widgets below the host to the host, and styles them.
    void connectWidgetTree(bool connect, QWidget* root);
    /*!
     * Connects the clicks of widgets to the delegate's signals and slots of the same name. Breaking
     * leaves the connections in place.
     */
    void makeOrBreakConnections(bool make);
    /*!
     * Connects the slots on_<object>_<signal> of \a receiver to the objects of the form. Only slots that
     * the receiver's own class declares count, not inherited ones; of several objects that fit the first
     * wins. A slot without a match leaves a line in Qt's debug output. A second call connects a second time.
     * The slots may call close().
     */
    void connectSlotsByName(QObject* receiver);

    // The tree of forms

    //! Adds a form opened from this one, once. The child is deleted by this element's destructor.
    void addChildElement(ZEFUIElement* child);
    //! Takes the child out of the list without deleting it.
    void removeChildElement(ZEFUIElement* child);
    //! The child at \a index, in order of creation; null for an index outside 0 to childElementCount() - 1.
    ZEFUIElement* childElement(int index) const;
    int childElementCount() const;

    // Showing and closing

    //! Whether the form is closing; never goes back to false.
    bool isClosing() const;
    /*!
     * Marks the form closing and emits closing(). With \a closeWidget the host is closed as well;
     * without it the element forgets its host without closing it, and ignores every later operation.
     */
    void setClosing(bool closeWidget);
    //! The answer that the host sends with respondClosed(); 0 at first.
    int closeSelection() const;
    void setCloseSelection(int selection);
    /*!
     * Closes the host, which answers the client, and deletes it at once and with it this element: nothing of
     * the form may be touched afterwards. While an event of the host, an operation of this class, a receiver
     * of respondClosed(), or a slot of connectSlotsByName() is still running, the client is answered just as
     * well, and the host is deleted when that has returned to the event loop. In a slot that you connected
     * yourself to a signal of a widget, other than clicked(), queue the call: \c
     * QMetaObject::invokeMethod(element, &ZEFUIElement::close, Qt::QueuedConnection).
     */
    void close();
    //! bringToFront(true)
    void show();
    /*!
     * Shows a hidden host, and puts it in front when the foreground window belongs to the client's
     * process. False when there is no foreground window. The argument is not used.
     */
    bool bringToFront(bool);

public Q_SLOTS:
    //! The tick, every 100 ms until the form closes.
    void housekeeping();
    //! Deletes the host, which deletes this element: at once, or later as close() does.
    void destroy();
    //! Forgets the host.
    void widgetDestroyed();
    //! Makes the host the active window and raises it; logs the element's address. The tick calls it when it
    //! restores a geometry.
    void activateAndRaise();

Q_SIGNALS:
    //! Emitted by every setClosing().
    void closing();
    //! Emitted by every setLocale().
    void localeChanged();

private:
    Q_DISABLE_COPY_MOVE(ZEFUIElement)
    friend class ZEFUIElementPrivate;
    std::unique_ptr<ZEFUIElementPrivate> d;
};
