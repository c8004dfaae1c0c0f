#pragma once

#include <ZEFCoercionSpec.h>
#include <ZEFUIExport.h>

#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QFocusEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QPalette>
#include <QtWidgets/QLineEdit>

#include <memory>

class ZEFFormatCellPrivate;

/*!
 * One segment of a ZEFFormatEdit: a line edit that accepts what its pattern allows, steps to its
 * neighbours at its edges, and judges its finished text by a final pattern.
 *
 * ZEFFormatEdit creates and configures its cells from a format. A cell can also stand alone in a form;
 * its signals then ask for what only an edit can do, and nothing happens unless somebody answers.
 *
 * copy(), paste(), cut(), clear(), setText(), insert() and setMaxLength() hide functions of QLineEdit
 * that are not virtual: a call through a QLineEdit pointer, the "text" property and the keyboard's
 * shortcuts for the clipboard get QLineEdit's own behaviour. The entries of the context menu call one
 * or the other, depending on the version of Qt.
 *
 * What an input method or a dead key composes is typed like any other character, and so is a printable text
 * with Control and Alt, which is AltGr on Windows. No function leaves half a surrogate pair in a cell.
 *
 * A slot of any signal, those of QLineEdit included, may rebuild or delete the edit of the cell, also in an
 * event loop of its own. A cell that its edit drops leaves the edit at once, sends no signals any more and is
 * deleted once control returns to the event loop. To delete a cell itself in a slot, use deleteLater(); also
 * to delete the edit while its first cell gets the focus: Qt may still be focusing the edit, whose focus
 * proxy is that cell.
 */
class ZEFUI_EXPORT ZEFFormatCell : public QLineEdit {
    Q_OBJECT

public:
    //! \a name becomes the object name, read as UTF-8; null means none.
    explicit ZEFFormatCell(QWidget* parent, const char* name = nullptr);
    ~ZEFFormatCell() override;

    //! The cell's position in its edit, from 0; sent with most signals; 0 at first.
    int id() const;
    //! The least length, which the edit demands; 0 marks an optional cell; -1, as at first, means none was
    //! given.
    int minLength() const;
    //! 0 none, 1 lower case, 2 upper case.
    int enforceCase() const;
    //! Whether the whole edit counts as selected; see setSelectOutside().
    bool selectOutside() const;
    //! The pattern of setRegexp(); empty when a validator of another kind is installed.
    QString regexp() const;
    //! The pattern of setFinalRegExp().
    QString finalRegExp() const;
    QString ignore() const;
    QString prefix() const;
    QString suffix() const;
    //! The pairs of the last setEquivs() whose length was even.
    QString equivs() const;

    /*!
     * Draws a line of \a height pixels in \a colour along the bottom edge and makes room for it. A
     * height of 0 or less takes the height away and keeps the colour: a line of one pixel stays.
     */
    void setBottomHighlight(int height, const QColor& colour);

    //! The application palette with the base colour of a tool tip, a little darker where both are the same,
    //! and nearer to the application's own where its text could not be read on it (contrast below 3 to 1).
    static QPalette optionalPalette();
    //! The application palette in the colours of a selection. The library itself never uses it.
    static QPalette selectedPalette();

    bool event(QEvent* e) override;

public Q_SLOTS:
    /*!
     * Whether the text passes the final pattern as it stands, with characters coerced, in upper case or
     * in lower case; the text is rewritten to the form that passed. The minimum length is not asked.
     *
     * Coercion needs a final pattern, and the n-th coercion of a cell is asked about its n-th character only.
     * It gives up after 2,000 forms, 10 million characters in them, or when the patterns of the present
     * action have taken 150 ms altogether; a pattern that is slow for a single text gives up as well. The
     * text then counts as not matched. It is searched again when it or a setting of the cell has changed.
     */
    virtual bool validate();
    /*!
     * Adds \a spec to those that validate() tries. The n-th spec of the cell is asked about the n-th
     * character only. It is not taken over: the caller keeps it, longer than the cell lives, and may add
     * it to several cells. Null is ignored.
     */
    virtual void addCoercionSpec(ZEFCoercionSpec* spec);
    /*!
     * Installs a validator for \a pattern, which must match the whole text. The validator that was
     * installed before is deleted, also one that the caller made: give the cell only validators that
     * were created with new and that nobody else uses. An invalid pattern accepts no characters.
     */
    virtual void setRegexp(const QString& pattern);
    //! The pattern that a finished text must fill; empty accepts any text, an invalid one only an empty text.
    virtual void setFinalRegExp(const QString& pattern);
    /*!
     * Adds a coercion, owned by the cell, whose range is the whole cell; as the n-th one it is asked
     * about the n-th character only. Each call adds another: as many calls as the cell has characters
     * cover it. equivs() changes only when the length of \a pairs is even.
     */
    virtual void setEquivs(const QString& pairs);
    virtual void setId(int id);
    /*!
     * Limits the text to \a length characters and fixes the cell's width accordingly: average wide
     * characters for \a length + 1 of them, and 10 pixels, also when the font changes later. Negative counts
     * as 0.
     */
    virtual void setMaxLength(int length);
    //! The characters that are swallowed when they are typed.
    virtual void setIgnore(const QString& characters);
    //! The separators before and after the cell, as the edit joins them into its text.
    virtual void setPrefix(const QString& text);
    virtual void setSuffix(const QString& text);
    //! Copies the selected text, or asks by copyMe() for the text of the whole edit.
    virtual void copy();
    //! Pastes what fits into this cell, or asks by pasteMe() for the clipboard to be spread over the edit. At
    //! most 10,000 characters are pasted.
    virtual void paste();
    //! Only asks, by cutMe().
    virtual void cut();
    //! Only asks, by deleteMe(). To empty the cell, set an empty text.
    virtual void clear();
    //! Stores \a length; an optional cell (0) gets the base colour of optionalPalette(), others the
    //! application palette, and again whenever the application's palette changes.
    virtual void setMinLength(int length);
    /*!
     * Changes nothing. A subclass that selects whole edits overrides it and calls storeSelectOutside().
     */
    virtual void setSelectOutside(bool on);
    //! The case of setText() and insert() from now on; what is typed or pasted keeps its case.
    virtual void setEnforceCase(int mode);
    virtual void setText(const QString& text);
    virtual void insert(const QString& text);
    //! Selects again, and puts the caret back to, what was kept at the last release of the mouse.
    virtual void reselect();

protected Q_SLOTS:
    //! Emits textChanged(int, QString&) for every change of the text.
    virtual void textChanged(const QString& text);

public Q_SLOTS:
    //! \a text in the enforced case.
    virtual QString checkInput(const QString& text);

Q_SIGNALS:
    /*!
     * The caret wants to leave at that side. \a e is a key that the neighbour should handle as well, or
     * null.
     */
    void moveLeft(int id, QKeyEvent* e);
    void moveRight(int id, QKeyEvent* e);
    void moveTo(int idFrom, int idTo, QKeyEvent* e);
    void focusOut(int id, QFocusEvent* e);
    //! \a text is a copy: changing it does not change the cell.
    void textChanged(int id, QString& text);
    void copyMe();
    void pasteMe();
    void cutMe();
    void deleteMe();
    //! The mouse left or entered the cell while it was selecting.
    void selectOutside(bool outside);

protected:
    void mousePressEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void inputMethodEvent(QInputMethodEvent* e) override;
    void focusOutEvent(QFocusEvent* e) override;
    void paintEvent(QPaintEvent* e) override;
    void connectNotify(const QMetaMethod& signal) override;

    //! Sets selectOutside(), for a subclass: the whole edit is selected, and keys act on all of it.
    void storeSelectOutside(bool on);

private:
    Q_DISABLE_COPY_MOVE(ZEFFormatCell)
    friend class ZEFFormatCellPrivate;
    std::unique_ptr<ZEFFormatCellPrivate> d;
};
