#pragma once

#include <QtCore/QString>
#include <QtCore/QStringView>

//! What a format says about one cell.
struct FormatCell {
    QString pattern;
    //! The text of the separator before the cell.
    QString prefix;
    int maxLength = 0;
    //! -1 when the format gives no minimum.
    int minLength = -1;
    //! Whether the cell has a coercion of its own, from coercionStart to the end of its text.
    bool coercing = false;
    QString coercionText;
    int coercionStart = 0;
};

/*!
 * Turns what FormatParser decides into something: widgets, a list, nothing. Calls come in the order of
 * the format. By default each does nothing.
 */
class FormatBuilder {
public:
    FormatBuilder() = default;
    virtual ~FormatBuilder() = default;

    //! A separator; \a text as it is shown, without the spaces around it.
    virtual void addSeparator(const QString& text);
    //! A closed coercion range, for every cell that is built after it.
    virtual void addCoercion(const QString& text, int start, int end);
    virtual void addCell(const FormatCell& cell);
    //! The final pattern of the last cell; there may be none.
    virtual void setFinalPattern(const QString& pattern);
    //! The separator after the last cell, at the end of the format; there may be no cell.
    virtual void setSuffix(const QString& text);
    //! \a character is one character, not more than two code units.
    virtual void reportUnexpected(const QString& character);
    virtual void reportUnexpectedAfterMinimum(const QString& character);
    //! The format ends inside a separator, group, escape or count block, of which nothing is built.
    virtual void reportDropped(const QString& text);

private:
    Q_DISABLE_COPY_MOVE(FormatBuilder)
};

/*!
 * The machine that reads the format language. It decides what a format means and leaves the building to
 * a FormatBuilder, so that it runs without a window. Any text is a format: nothing is refused, and what
 * is left open at the end is dropped.
 */
class FormatParser {
public:
    FormatParser(QStringView format, FormatBuilder& builder);

    //! Reads the format and returns the master pattern, without anchors.
    QString run();

private:
    Q_DISABLE_COPY_MOVE(FormatParser)

    enum class State { Between, Literal, Escape, Group, Count };

    // One function for each state: what it does with the character c. A function that returns false
    // has only changed the state, and c is read again there.
    bool readBetween(QChar c);
    bool readLiteral(QChar c);
    bool readEscape(QChar c);
    bool readGroup(QChar c);
    bool readCount(QChar c);

    void startEscape(State returnTo);
    void flushLiteral();
    void finishGroup();
    void addNumberToMaxLength();
    void reportUnexpected();
    void reportDropped();

    QStringView m_format;
    FormatBuilder& m_builder;

    State m_state = State::Between;
    //! Where an escape returns to.
    State m_savedState = State::Between;
    qsizetype m_position = 0;
    //! Open groups inside the current group.
    qsizetype m_depth = 0;
    int m_number = 0;
    int m_maxLength = 0;
    int m_explicitMinimum = 0;
    bool m_hasMinimum = false;
    bool m_coercing = false;
    //! A group that follows at once is the last cell's final pattern.
    bool m_afterCell = false;
    int m_coercionStart = 0;
    QString m_coercionText;
    //! The pattern of the current group, or the current literal as it is shown.
    QString m_text;
    //! The current literal as a pattern.
    QString m_patternText;
    //! The literal flushed since the last cell.
    QString m_prefix;
    QString m_master;
};
