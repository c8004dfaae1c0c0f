#pragma once

#include <ZEFFormatCell.h>
#include <ZEFUIExport.h>

#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QFocusEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QValidator>
#include <QtWidgets/QWidget>

#include <memory>

class ZEFFormatEditPrivate;

/*!
 * A row of input cells with fixed separators between them, built from a format.
 *
 * A product key of three parts; a zero is read as the letter O:
 *
 * \code
 * auto* key = new ZEFFormatEdit(form);
 * key->setFormat(u"{1:0O|1:0O|1:0O|1:0O|1:0O|}([A-Z0-9]*)([A-Z1-9]*)"
 *                u"-{5}([A-Z0-9]*)([A-Z1-9]*)-{5}([A-Z0-9]*)([A-Z1-9]*)"_s);
 * key->setText(u"00000-00000-00000"_s);
 * key->validate();
 * key->text(); // "OOOOO-OOOOO-OOOOO"
 * \endcode
 *
 * Coercion needs a final pattern, and the n-th coercion of a cell is asked about its n-th character only.
 * Closed coercions, those before a "|", go to every later cell as well.
 *
 * The format language stands in docs/format-language.md. A form gives the format in the property
 * "format". There is no property for the text: whoever shows the form finds the widget and calls text().
 *
 * text() joins the texts of the cells and the separators; setText() and paste() spread a whole text over
 * the cells, with or without its separators. The validity is announced by validityChanged(), every edit
 * of the user by textChanged().
 *
 * setFormat(), addAlternateCheck() and the destructor drop the cells: pointers from editor() end there.
 * All of them may be called from any slot, also from one that a cell's key press has led to. Receivers of
 * any signal of the edit or its cells may delete the edit. The edit keeps its place in the tab order, and the
 * first new cell gets the focus if an old one had it.
 *
 * Whatever the patterns and the text, an action of the user or a setText() spends at most about 200 ms on
 * them. A text for which that is not enough counts as one that does not fit.
 *
 * setFocus() without an argument hides a function of QWidget that is not virtual.
 */
class ZEFUI_EXPORT ZEFFormatEdit : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString format READ format WRITE setFormat)
    Q_PROPERTY(QString ignore READ ignore WRITE setIgnore)
    Q_PROPERTY(int spacing READ spacing WRITE setSpacing)
    Q_PROPERTY(int leftMargin READ leftMargin WRITE setLeftMargin)
    Q_PROPERTY(int rightMargin READ rightMargin WRITE setRightMargin)
    Q_PROPERTY(int topMargin READ topMargin WRITE setTopMargin)
    Q_PROPERTY(int bottomMargin READ bottomMargin WRITE setBottomMargin)

public:
    //! \a name becomes the object name, read as UTF-8; null means none. Without cells until setFormat().
    explicit ZEFFormatEdit(QWidget* parent, const char* name = nullptr, Qt::WindowFlags flags = {});
    ~ZEFFormatEdit() override;

    //! The texts of the cells that are not empty, each with the separators around it.
    QString text() const;
    //! The format of the last setFormat().
    QString format() const;
    //! The pattern of the whole text, anchored; separators are optional in it.
    QString masterRegexp() const;
    QString ignore() const;
    //! 0 none, 1 lower case, 2 upper case.
    int enforceCase() const;

    //! The verdict that was announced last; Invalid at first.
    QValidator::State state() const;
    /*!
     * The present verdict: Acceptable, or Invalid as soon as one cell is empty against its minimum or fails
     * its pattern or final pattern; never Intermediate. An outside validator's verdict on text() replaces
     * it. Cells that pass in another form (case, coerced characters) are rewritten to it.
     */
    QValidator::State validate();
    //! A validator for the whole text; not owned; it may die first; null removes it.
    const QValidator* validator() const;
    void setValidator(const QValidator* validator);

    //! The number of cells.
    int lineEditCount() const;
    //! The cell at \a index, which must be from 0 to lineEditCount() - 1.
    ZEFFormatCell* editor(int index) const;

    /*!
     * Rebuilds the edit from \a format for id 0. Any other \a id stores the format's pattern as an
     * alternate; the edit loses its cells and separators all the same. Always false. Any text is a
     * format: mistakes are written to Qt's debug output and skipped.
     *
     * At most 1,000 cells and 1,001 separators are built. What follows them still counts for the pattern
     * of the whole text: setText() passes over its groups.
     */
    bool parseFormat(const QString& format, int id);

    int alternateCount() const;
    int alternateId() const;
    //! The pattern stored under \a id; empty when there is none.
    QString alternatePattern(int id) const;
    //! The lowest id whose pattern matches the whole of \a text; 0 when there is none, and for a text of more
    //! than 10,000 characters.
    int checkAlternates(const QString& text) const;

    //! restoreFocus()
    void setFocus();
    using QWidget::setFocus;

    /*!
     * Whether Ctrl+V, Shift+Insert and the platform's other keys for Paste act as ZEFFormatCell::paste(),
     * which spreads what is too long for the cell over the row. At first they fill the cell alone. A form
     * turns it on by a dynamic property "keyboardPasteSpreads".
     */
    bool keyboardPasteSpreads() const;
    void setKeyboardPasteSpreads(bool on);

    //! ZEFFormatCell::setBottomHighlight() for the present cells.
    void setCellBottomHighlight(int height, const QColor& colour);

    //! Pixels between the cells and separators, at most QWIDGETSIZE_MAX; negative means the style's own.
    int spacing() const;
    void setSpacing(int spacing);
    //! Pixels around the row, at most QWIDGETSIZE_MAX; negative means the style's own.
    int leftMargin() const;
    void setLeftMargin(int margin);
    int rightMargin() const;
    void setRightMargin(int margin);
    int topMargin() const;
    void setTopMargin(int margin);
    int bottomMargin() const;
    void setBottomMargin(int margin);

Q_SIGNALS:
    void validityChanged(QValidator::State nValid);
    //! After every change of a cell's text, once the state is up to date.
    void textChanged(QValidator::State validity);
    //! Never emitted.
    void clearFormatList();

public Q_SLOTS:
    /*!
     * Spreads \a text over the cells: group 1 of the master pattern goes to the first cell, and so on.
     * False, and nothing changed, when the text does not fit or has more than 10,000 characters; white space
     * around it is no obstacle and does not count.
     */
    virtual bool setText(const QString& text);
    //! Replaces all cells and separators. What was typed is gone, and no signal is emitted.
    virtual void setFormat(const QString& format);
    //! Characters that are swallowed when they are typed, in the present and all later cells.
    virtual void setIgnore(const QString& characters);
    //! Focuses the cell before \a id, caret at its end, and sends it \a e unless that is null.
    virtual void moveLeft(int id, QKeyEvent* e);
    //! Focuses the cell after \a id, caret at its start, and sends it \a e unless that is null.
    virtual void moveRight(int id, QKeyEvent* e);
    //! Focuses the cell \a nIdTo; sends it \a e unless that is null or the cell is where the key came from.
    virtual void moveTo(int nIdFrom, int nIdTo, QKeyEvent* e);
    //! Does nothing.
    virtual void childFocusedOut(int id, QFocusEvent* e);
    //! Brings the state up to date and announces it.
    virtual void editorTextChanged(int id);
    //! Puts text() on the clipboard, and on the selection clipboard where there is one.
    virtual void copy();
    //! setText() with the selection clipboard's text, or else the clipboard's. Pasted by the user in a cell,
    //! it leaves cells alone that are read-only or disabled.
    virtual void paste();
    //! copy() and clear(), unless there is no text.
    virtual void cut();
    //! Empties all cells but the first and focuses the first. The state is not brought up to date.
    virtual void clear();
    //! Puts text() on the selection clipboard where there is one; any new selection there ends it.
    virtual void globalSelect(bool bGlobal);
    virtual void deselect();
    //! The case of texts that are set from now on, in the present and all later cells.
    virtual void setEnforceCase(int nEnforce);
    //! parseFormat(): alternates are added before setFormat(), as it drops the cells.
    virtual void addAlternateCheck(const QString& pattern, int id);
    //! Drops the fallback text and brings the state up to date without announcing it.
    virtual void clearAlternate();
    //! Remembers the focused cell, or the first one, for restoreFocus().
    virtual void saveFocus();
    virtual void restoreFocus();

protected:
    void childEvent(QChildEvent* e) override;

    //! For a subclass that collects text; emptied whenever a cell's text changes.
    QString pendingText() const;
    void setPendingText(const QString& text);
    //! text() while all cells are empty; a subclass may set it.
    QString fallbackText() const;
    void setFallbackText(const QString& text);
    //! Sets alternateId(), which nothing else does.
    void setAlternateId(int id);

private:
    Q_DISABLE_COPY_MOVE(ZEFFormatEdit)
    friend class ZEFFormatEditPrivate;
    std::unique_ptr<ZEFFormatEditPrivate> d;
};
