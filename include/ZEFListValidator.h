#pragma once

#include <ZEFUIExport.h>

#include <QtCore/QStringList>
#include <QtGui/QValidator>

/*!
 * Accepts exactly the strings of a list, whatever hyphens the user typed between their characters.
 *
 * Besides the state it keeps a message for it, a placeholder such as "%{list_valid_message}" that a
 * form fills from its dictionaries. A label shows it when it takes the text of
 * validityMessageChanged() and is interpolated afterwards (ZEFUIElement::interpolateWidget()).
 *
 * The placeholders: list_empty_message (nothing but hyphens), list_incomplete_message (shorter than the
 * minimum length), list_valid_message and list_invalid_message.
 */
class ZEFUI_EXPORT ZEFListValidator : public QValidator {
    Q_OBJECT

public:
    //! \a list is compared exactly, letter case included; entries with a hyphen can never be met.
    ZEFListValidator(QObject* parent, const QStringList& list);

    /*!
     * Removes every hyphen from \a input and judges the rest: Acceptable for an entry of the list,
     * Intermediate for an empty or too short text, Invalid otherwise; the beginning of an entry is
     * Invalid too. \a pos stays as it is and may point behind the end of the shortened text.
     *
     * Emits the signals below when the outcome differs from the last one; a receiver may delete the
     * validator.
     */
    QValidator::State validate(QString& input, int& pos) const override;

    //! The least number of characters, hyphens not counted; 0, as at first, or less means none.
    long minimumLength() const;
    //! Takes effect with the next validate().
    void setMinimumLength(long length);

    //! The placeholder of the last validation; empty before the first.
    virtual QString lastMessage() const;

Q_SIGNALS:
    void validityMessageChanged(const QString& message);
    //! Emitted before validityMessageChanged(). The state before the first validation counts as Invalid.
    void validityChanged(QValidator::State validity);

protected:
    //! Records an outcome, announces what changed and returns the state.
    QValidator::State updateValidity(QValidator::State state, const QString& message) const;
    QValidator::State updateValidity(QValidator::State state, const QString& message);

private:
    Q_DISABLE_COPY_MOVE(ZEFListValidator)

    QStringList m_list;
    long m_minimumLength = 0;
    QValidator::State m_validity = QValidator::Invalid;
    QString m_lastMessage;
};
